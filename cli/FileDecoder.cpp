#include "FileDecoder.h"

#include "CountingStreamBuf.h"
#include "FileNames.h"
#include "ProgressBar.h"
#include "ReaderDiagnostics.h"

#include <kolt/Cache.h>
#include <kolt/StringUtils.h>
#include <koltx/ExtensionManager.h>
#include <koltx/Geometry.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Mesh.h>

#include <libxml/xmlreader.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

std::string const CityGMLNamespaces = "http://www.opengis.net/citygml/";

thread_local std::function<void(uint64_t)> batchHook;

} // namespace

bool FileDecoder::inBatch() {
    return static_cast<bool>(batchHook);
}

void FileDecoder::setBatchHook(std::function<void(uint64_t)> onBytes) {
    batchHook = std::move(onBytes);
}

FileDecoder::FileDecoder(koltx::ExtensionManager& extensionManager) : manager(extensionManager) {}

std::string FileDecoder::rootElement(std::string const& path) {
    // Only the start of the document is read; no entity is expanded and nothing is fetched.
    xmlTextReaderPtr reader = xmlReaderForFile(path.c_str(), nullptr,
                                               XML_PARSE_NONET | XML_PARSE_NOERROR |
                                                   XML_PARSE_NOWARNING | XML_PARSE_NOBLANKS);
    if (reader == nullptr)
        return std::string();
    std::string root;
    while (xmlTextReaderRead(reader) == 1) {
        if (xmlTextReaderNodeType(reader) != XML_READER_TYPE_ELEMENT)
            continue;
        auto text = [](xmlChar const* value) {
            return value == nullptr ? std::string() : reinterpret_cast<char const*>(value);
        };
        root = "{" + text(xmlTextReaderConstNamespaceUri(reader)) + "}" +
               text(xmlTextReaderConstLocalName(reader));
        break;
    }
    xmlFreeTextReader(reader);
    return root;
}

std::string FileDecoder::nothingToConvert(DecodedFile const& file, std::string const& path) {
    if (file.geometry)
        for (auto const& mesh : file.geometry->getMeshes())
            if (mesh->getFaceCount() > 0)
                return std::string();
    if (!file.cityGML) {
        auto const close = file.root.find('}');
        if (close == std::string::npos)
            return path + " is not a CityGML document: no root element was found";
        std::string const ns = file.root.substr(1, close - 1);
        return path + " is not a CityGML document: its root element is <" +
               file.root.substr(close + 1) + "> " +
               (ns.empty() ? std::string("without namespace") : "in namespace " + ns);
    }
    std::size_t const drops = file.reader ? file.reader->count() : 0;
    return path + " holds no polygon" +
           (drops > 0 ? " that the reader kept (" + std::to_string(drops) + " problems reported)"
                      : std::string());
}

DecodedFile FileDecoder::decode(std::string const& path, bool progressAllowed,
                                bool keepToExit) const {
    DecodedFile out;
    std::error_code error;
    std::filesystem::path const absolute = std::filesystem::absolute(path, error);
    std::filebuf file;
    // Pipes and devices could block or never end.
    if (!error && std::filesystem::exists(absolute) &&
        !std::filesystem::is_regular_file(absolute)) {
        out.error = "cannot read " + path + ": not a regular file";
        out.warnings = kolt::StringUtils::toUTF16(out.error) + L"\n";
        return out;
    }
    errno = 0;
    if (error || file.open(absolute, std::ios::in | std::ios::binary) == nullptr) {
        out.error = "cannot read " + path + ": " + std::strerror(errno != 0 ? errno : ENOENT);
        out.warnings = kolt::StringUtils::toUTF16(out.error) + L"\n";
        return out;
    }
    uint64_t const size = std::filesystem::file_size(absolute, error);
    if (!error && size == 0) {
        out.error = "cannot read " + path + ": the file is empty";
        out.warnings = kolt::StringUtils::toUTF16(out.error) + L"\n";
        return out;
    }
    out.root = rootElement(absolute.string());
    out.cityGML = out.root.compare(0, CityGMLNamespaces.size() + 1, "{" + CityGMLNamespaces) == 0;

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
    out.reader = std::make_shared<ReaderDiagnostics>();
    {
        ReaderDiagnostics::Scope const listening(out.reader);
        decoder->decode(results, stream, cache.get(), kolt::StringUtils::toUTF16(absolute.string()),
                        nullptr, out.warnings);
    }
    if (bar)
        bar->finish();

    static std::wstring const LoadFailure = L"Failed to load citygml file: ";
    out.loaded = !(results.empty() && out.warnings.rfind(LoadFailure, 0) == 0);
    if (!out.loaded) {
        auto const lines = FileNames::lines(out.warnings.substr(LoadFailure.size()));
        out.error = "cannot read " + path + ": " + (lines.empty() ? "not CityGML" : lines.front());
    }
    // The tool decodes once and then exits: the operating system reclaims a large model's meshes
    // far faster than freeing them one by one would, so they are kept to the end of the process.
    static auto* const retained = new std::vector<std::shared_ptr<koltx::Content>>();
    if (!batch && keepToExit)
        retained->insert(retained->end(), results.begin(), results.end());
    for (auto const& content : results) {
        if (auto geometry = std::dynamic_pointer_cast<koltx::Geometry>(content)) {
            out.geometry = geometry;
            break;
        }
    }
    return out;
}
