#include "FileDecoder.h"

#include "CountingStreamBuf.h"
#include "ProgressBar.h"

#include <kolt/Cache.h>
#include <kolt/StringUtils.h>
#include <koltx/ExtensionManager.h>
#include <koltx/Geometry.h>
#include <koltx/KOLTUtils.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

std::wstring const LoadFailure = L"Failed to load citygml file: ";

thread_local std::function<void(uint64_t)> batchHook;

} // namespace

void FileDecoder::setBatchHook(std::function<void(uint64_t)> onBytes) {
    batchHook = std::move(onBytes);
}

FileDecoder::FileDecoder(koltx::ExtensionManager& extensionManager) : manager(extensionManager) {}

DecodedFile FileDecoder::decode(std::string const& path, bool progressAllowed) const {
    DecodedFile out;
    std::error_code error;
    std::filesystem::path const absolute = std::filesystem::absolute(path, error);
    std::filebuf file;
    if (error || std::filesystem::is_directory(absolute) ||
        file.open(absolute, std::ios::in | std::ios::binary) == nullptr) {
        out.warnings = L"Cannot open " + kolt::StringUtils::toUTF16(path) + L"\n";
        return out;
    }
    uint64_t const size = std::filesystem::file_size(absolute, error);

    std::optional<ProgressBar> bar;
    bool const batch = static_cast<bool>(batchHook);
    if (progressAllowed && !batch && !error && size > ProgressThreshold &&
        isatty(STDERR_FILENO) == 1)
        bar.emplace(std::cerr, "decoding", size);
    CountingStreamBuf counting(file, [&bar](uint64_t done) {
        if (bar)
            bar->update(done);
        if (batchHook)
            batchHook(done);
    });
    std::istream stream(&counting);

    std::shared_ptr<koltx::GeometryDecoder> const decoder = manager.createDecoder(DecoderID);
    auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
    std::vector<std::shared_ptr<koltx::Content>> results;
    decoder->decode(results, stream, cache.get(), kolt::StringUtils::toUTF16(absolute.string()),
                    nullptr, out.warnings);
    if (bar)
        bar->finish();

    out.loaded = !(results.empty() && out.warnings.rfind(LoadFailure, 0) == 0);
    // The tool decodes once and then exits: the operating system reclaims a large model's meshes
    // far faster than freeing them one by one would, so they are kept to the end of the process.
    static auto* const retained = new std::vector<std::shared_ptr<koltx::Content>>();
    if (!batch)
        retained->insert(retained->end(), results.begin(), results.end());
    for (auto const& content : results) {
        if (auto geometry = std::dynamic_pointer_cast<koltx::Geometry>(content)) {
            out.geometry = geometry;
            break;
        }
    }
    return out;
}
