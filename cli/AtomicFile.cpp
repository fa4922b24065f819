#include "AtomicFile.h"

#include "TempFiles.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unistd.h>

namespace {

std::atomic<unsigned> counter{0};

std::string reason(int error) {
    return std::strerror(error != 0 ? error : EIO);
}

} // namespace

AtomicFile::AtomicFile(std::filesystem::path target) : targetPath(std::move(target)) {
    temporaryPath = targetPath;
    temporaryPath += ".tmp" + std::to_string(getpid()) + "_" + std::to_string(counter++);
    auto const held = TempFiles::lock();
    TempFiles::add(temporaryPath.string());
    errno = 0;
    out.open(temporaryPath, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!out) {
        int const error = errno;
        TempFiles::remove(temporaryPath.string());
        throw std::runtime_error("cannot write " + targetPath.string() + ": " + reason(error));
    }
}

AtomicFile::~AtomicFile() {
    if (!committed) {
        out.close();
        std::error_code ignored;
        std::filesystem::remove(temporaryPath, ignored);
        TempFiles::remove(temporaryPath.string());
    }
}

void AtomicFile::commit() {
    errno = 0;
    out.flush();
    bool const written = static_cast<bool>(out);
    int error = errno;
    out.close();
    if (written && out.fail() && error == 0)
        error = errno;
    std::error_code renameError;
    if (written && !out.fail())
        std::filesystem::rename(temporaryPath, targetPath, renameError);
    if (!written || out.fail() || renameError) {
        std::error_code ignored;
        std::filesystem::remove(temporaryPath, ignored);
        TempFiles::remove(temporaryPath.string());
        throw std::runtime_error("cannot write " + targetPath.string() + ": " +
                                 (renameError ? renameError.message() : reason(error)));
    }
    TempFiles::remove(temporaryPath.string());
    committed = true;
}
