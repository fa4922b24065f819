#pragma once

#include <koltx/FileOutputCallbacks.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// The host's file outputs as the tool wants them: completed files are remembered so that a
// conversion that fails half-way can take them back; the document goes to the name the user
// asked for; no output replaces a file the conversion read; a texture image never replaces
// another file of that name: it gets a unique name, which fixDocument() then writes into the
// document. Temporary files are known to TempFiles, so a signal removes them.
class TrackedFileOutputs : public koltx::FileOutputCallbacks {
public:
    explicit TrackedFileOutputs(std::string directory);

    kolt::Status close(uint64_t handle, bool discard, uint64_t* size) override;
    uint64_t open(wchar_t const* encoderId, int32_t contentType, wchar_t const* name, int32_t mode,
                  uint64_t sizeHint, kolt::Status* status) override;

    // Outputs onto this file are refused (with STATUS_EXISTS).
    void protect(std::string const& path);
    // The protected file that an output was refused for, or empty.
    std::string const& refused() const { return refusedPath; }
    // "cannot write FILE: reason" for the first output that failed, or empty.
    std::string const& failure() const { return failed; }
    // The output the encoder names `encoderName` is written as `fileName` in the directory.
    void renameOutput(std::wstring const& encoderName, std::wstring const& fileName);

    // Paths of the files written so far, in order of completion.
    std::vector<std::string> const& written() const { return files; }
    // Removes every file written so far.
    void removeWritten();
    // Writes the unique names that texture images got into the finished document at `path`.
    void fixDocument(std::string const& path) const;

private:
    void noteFailure(std::string const& path);

    struct Pending {
        std::string path;
        std::wstring name;   // as the encoder asked for it
        std::wstring actual; // as written
        bool texture = false;
    };

    std::map<uint64_t, Pending> pending;
    std::vector<std::string> files;
    std::vector<std::string> protectedPaths;
    std::string refusedPath;
    std::string failed;
    std::map<std::wstring, std::wstring> documentNames; // encoder's name to file name
    std::map<std::wstring, std::wstring> imageRenames;  // texture images that took a free name
};
