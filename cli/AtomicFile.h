#pragma once

#include <filesystem>
#include <fstream>

// A file that appears under its name only when complete: it is written to a temporary file in
// the same folder and renamed into place by commit(). Dropped uncommitted, it leaves nothing.
class AtomicFile {
public:
    // Throws std::runtime_error when the temporary file cannot be created.
    explicit AtomicFile(std::filesystem::path target);
    AtomicFile(AtomicFile const&) = delete;
    AtomicFile& operator=(AtomicFile const&) = delete;
    ~AtomicFile();

    std::ostream& stream() { return out; }
    std::filesystem::path const& target() const { return targetPath; }
    // Throws std::runtime_error when writing or renaming failed; the temporary file is gone then.
    void commit();

private:
    std::filesystem::path targetPath;
    std::filesystem::path temporaryPath;
    std::ofstream out;
    bool committed = false;
};
