#include "koltx/FileOutputCallbacks.h"

#include "kolt/StringUtils.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace koltx {

namespace {

void setStatus(kolt::Status* status, kolt::Status value) {
    if (status != nullptr)
        *status = value;
}

} // namespace

FileOutputCallbacks::FileOutputCallbacks(std::string directory) : directory(std::move(directory)) {}

FileOutputCallbacks::~FileOutputCallbacks() {
    // Outputs that were never closed leave nothing behind.
    for (auto& entry : outputs) {
        std::fclose(entry.second.file);
        ::unlink(entry.second.temporaryPath.c_str());
    }
}

std::string FileOutputCallbacks::targetPath(std::wstring const& name) const {
    if (name.empty() || name.front() == L'/' || name.find(L'\0') != std::wstring::npos)
        return std::string();
    size_t start = 0;
    while (start <= name.size()) {
        size_t end = name.find(L'/', start);
        if (end == std::wstring::npos)
            end = name.size();
        // ".." climbs out; "." names a folder, never a file.
        if (name.compare(start, end - start, L"..") == 0 ||
            name.compare(start, end - start, L".") == 0)
            return std::string();
        start = end + 1;
    }
    if (name.back() == L'/')
        return std::string();
    std::string path = directory.empty() ? std::string(".") : directory;
    if (path.back() != '/')
        path += '/';
    return path + kolt::StringUtils::toUTF8(name);
}

uint64_t FileOutputCallbacks::open(wchar_t const* /*encoderId*/, int32_t /*contentType*/,
                                   wchar_t const* name, int32_t mode, uint64_t /*sizeHint*/,
                                   kolt::Status* status) {
    std::string const target = targetPath(name == nullptr ? std::wstring() : std::wstring(name));
    if (target.empty()) {
        setStatus(status, STATUS_NAME_REFUSED);
        return 0;
    }
    struct stat info;
    if (mode == OPEN_KEEP && ::stat(target.c_str(), &info) == 0) {
        setStatus(status, STATUS_EXISTS);
        return 0;
    }
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(target).parent_path(), error);
    if (error) {
        setStatus(status, STATUS_IO);
        return 0;
    }
    // The temporary file sits beside its target, so that the final rename stays on one file system.
    std::filesystem::path const targetFs(target);
    std::string temporary =
        (targetFs.parent_path() / ("." + targetFs.filename().string() + ".XXXXXX")).string();
    int const fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        setStatus(status, STATUS_IO);
        return 0;
    }
    ::fchmod(fd, 0644);
    std::FILE* file = ::fdopen(fd, "w+b");
    if (file == nullptr) {
        ::close(fd);
        ::unlink(temporary.c_str());
        setStatus(status, STATUS_IO);
        return 0;
    }
    // Documents run to gigabytes and come in small blocks: few, large writes to the system. The
    // C library takes the size only with a buffer of our own; without one it keeps 4 KiB.
    std::size_t const bufferSize = std::size_t(1) << 20;
    std::unique_ptr<char[]> buffer(new char[bufferSize]);
    std::setvbuf(file, buffer.get(), _IOFBF, bufferSize);
    std::lock_guard<std::mutex> lock(mutex);
    uint64_t const handle = nextHandle++;
    outputs[handle] = Output{file, temporary, target, false, std::move(buffer)};
    setStatus(status, 0);
    return handle;
}

kolt::Status FileOutputCallbacks::write(uint64_t handle, void const* data, size_t size) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = outputs.find(handle);
    if (it == outputs.end())
        return STATUS_BAD_HANDLE;
    if (size == 0)
        return 0;
    if (data == nullptr || std::fwrite(data, 1, size, it->second.file) != size) {
        it->second.failed = true;
        return STATUS_IO;
    }
    return 0;
}

kolt::Status FileOutputCallbacks::seek(uint64_t handle, int64_t offset, int32_t direction) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = outputs.find(handle);
    if (it == outputs.end())
        return STATUS_BAD_HANDLE;
    int whence;
    switch (direction) {
    case FROM_BEGIN:
        whence = SEEK_SET;
        break;
    case FROM_CURRENT:
        whence = SEEK_CUR;
        break;
    case FROM_END:
        whence = SEEK_END;
        break;
    default:
        return 1;
    }
    return ::fseeko(it->second.file, static_cast<off_t>(offset), whence) == 0 ? 0 : STATUS_IO;
}

uint64_t FileOutputCallbacks::tell(uint64_t handle, kolt::Status* status) {
    std::lock_guard<std::mutex> lock(mutex);
    auto it = outputs.find(handle);
    if (it == outputs.end()) {
        setStatus(status, STATUS_BAD_HANDLE);
        return 0;
    }
    off_t const position = ::ftello(it->second.file);
    if (position < 0) {
        setStatus(status, STATUS_IO);
        return 0;
    }
    setStatus(status, 0);
    return static_cast<uint64_t>(position);
}

kolt::Status FileOutputCallbacks::close(uint64_t handle, bool discard, uint64_t* size) {
    Output output;
    {
        std::lock_guard<std::mutex> lock(mutex);
        auto it = outputs.find(handle);
        if (it == outputs.end())
            return STATUS_BAD_HANDLE;
        output = std::move(it->second);
        outputs.erase(it);
    }
    if (size != nullptr) {
        *size = 0;
        if (std::fseek(output.file, 0, SEEK_END) == 0) {
            off_t const end = ::ftello(output.file);
            if (end >= 0)
                *size = static_cast<uint64_t>(end);
        }
    }
    bool const flushed = std::fclose(output.file) == 0;
    if (discard || !flushed || output.failed) {
        ::unlink(output.temporaryPath.c_str());
        return discard ? 0 : STATUS_IO;
    }
    if (std::rename(output.temporaryPath.c_str(), output.targetPath.c_str()) != 0) {
        ::unlink(output.temporaryPath.c_str());
        return STATUS_IO;
    }
    return 0;
}

} // namespace koltx
