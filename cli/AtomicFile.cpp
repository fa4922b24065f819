#include "AtomicFile.h"

#include <atomic>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unistd.h>

namespace {

std::atomic<unsigned> counter{0};

} // namespace

AtomicFile::AtomicFile(std::filesystem::path target) : targetPath(std::move(target)) {
    temporaryPath = targetPath;
    temporaryPath += ".tmp" + std::to_string(getpid()) + "_" + std::to_string(counter++);
    out.open(temporaryPath, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!out)
        throw std::runtime_error("cannot write " + targetPath.string());
}

AtomicFile::~AtomicFile() {
    if (!committed) {
        out.close();
        std::error_code ignored;
        std::filesystem::remove(temporaryPath, ignored);
    }
}

void AtomicFile::commit() {
    out.flush();
    bool const written = static_cast<bool>(out);
    out.close();
    std::error_code error;
    if (written && !out.fail())
        std::filesystem::rename(temporaryPath, targetPath, error);
    if (!written || out.fail() || error) {
        std::filesystem::remove(temporaryPath, error);
        throw std::runtime_error("cannot write " + targetPath.string());
    }
    committed = true;
}
