#include "TrackedFileOutputs.h"

#include "AtomicFile.h"
#include "FileNames.h"
#include "TempFiles.h"

#include <kolt/ContentType.h>
#include <kolt/StringUtils.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

TrackedFileOutputs::TrackedFileOutputs(std::string directory)
    : koltx::FileOutputCallbacks(std::move(directory)) {}

void TrackedFileOutputs::protect(std::string const& path) {
    protectedPaths.push_back(path);
}

void TrackedFileOutputs::renameOutput(std::wstring const& encoderName,
                                      std::wstring const& fileName) {
    documentNames[encoderName] = fileName;
}

uint64_t TrackedFileOutputs::open(wchar_t const* encoderId, int32_t contentType,
                                  wchar_t const* name, int32_t mode, uint64_t sizeHint,
                                  kolt::Status* status) {
    if (name == nullptr)
        return koltx::FileOutputCallbacks::open(encoderId, contentType, name, mode, sizeHint,
                                                status);
    std::wstring actual = name;
    auto const renamed = documentNames.find(actual);
    if (renamed != documentNames.end())
        actual = renamed->second;
    bool const texture = contentType == kolt::CT_TEXTURE;
    std::string target = targetPath(actual);
    std::error_code error;
    if (texture && !target.empty() && fs::exists(target, error) &&
        std::find(files.begin(), files.end(), target) == files.end()) {
        // Another file has this name: the image takes a free one.
        std::string const free =
            FileNames::unique(fs::path(target).filename().string(), [&](std::string const& n) {
                std::error_code absent;
                return fs::exists(fs::path(target).parent_path() / n, absent);
            });
        actual = fs::path(actual).replace_filename(free).wstring();
        target = targetPath(actual);
    }
    auto const guarded =
        std::find_if(protectedPaths.begin(), protectedPaths.end(),
                     [&](std::string const& p) { return FileNames::sameFile(p, target); });
    if (!target.empty() && guarded != protectedPaths.end()) {
        refusedPath = *guarded;
        if (status != nullptr)
            *status = kolt::SimpleOutputCallbacks::STATUS_EXISTS;
        return 0;
    }
    kolt::Status local = kolt::STATUS_UNSPECIFIED_ERROR;
    uint64_t handle = 0;
    errno = 0;
    {
        auto const held = TempFiles::lock();
        if (!target.empty())
            TempFiles::addPattern(fs::path(target).parent_path().string(),
                                  "." + fs::path(target).filename().string() + ".");
        handle = koltx::FileOutputCallbacks::open(encoderId, contentType, actual.c_str(), mode,
                                                  sizeHint, &local);
    }
    if (local == kolt::STATUS_OK)
        pending[handle] = Pending{target, name, actual, texture};
    else
        noteFailure(target.empty() ? kolt::StringUtils::toUTF8(actual) : target);
    if (status != nullptr)
        *status = local;
    return handle;
}

void TrackedFileOutputs::noteFailure(std::string const& path) {
    if (failed.empty())
        failed = "cannot write " + path + ": " + std::strerror(errno != 0 ? errno : EIO);
}

kolt::Status TrackedFileOutputs::close(uint64_t handle, bool discard, uint64_t* size) {
    errno = 0;
    kolt::Status const status = koltx::FileOutputCallbacks::close(handle, discard, size);
    auto const found = pending.find(handle);
    if (found == pending.end())
        return status;
    Pending const output = found->second;
    pending.erase(found);
    if (status != kolt::STATUS_OK && !discard)
        noteFailure(output.path);
    if (status != kolt::STATUS_OK || discard)
        return status;
    if (output.texture && output.actual != output.name) {
        // The same image under its own name already: that file serves.
        std::string const original = targetPath(output.name);
        if (FileNames::sameContent(original, output.path)) {
            std::error_code ignored;
            fs::remove(output.path, ignored);
            return status;
        }
        imageRenames[output.name] = output.actual;
    }
    files.push_back(output.path);
    return status;
}

void TrackedFileOutputs::removeWritten() {
    for (auto const& file : files) {
        std::error_code ignored;
        fs::remove(file, ignored);
    }
    files.clear();
}

void TrackedFileOutputs::fixDocument(std::string const& path) const {
    std::vector<std::pair<std::string, std::string>> images;
    for (auto const& [name, actual] : imageRenames)
        images.emplace_back("<app:imageURI>" + kolt::StringUtils::toUTF8(name) + "<",
                            "<app:imageURI>" + kolt::StringUtils::toUTF8(actual) + "<");
    if (images.empty())
        return;
    std::ifstream in(path, std::ios::binary);
    AtomicFile out(path);
    for (std::string line; std::getline(in, line);) {
        for (auto const& [from, to] : images) {
            auto const at = line.find(from);
            if (at != std::string::npos)
                line.replace(at, from.size(), to);
        }
        out.stream() << line << (in.eof() ? "" : "\n");
    }
    out.commit();
}
