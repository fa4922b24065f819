#pragma once

#include <filesystem>
#include <string>

namespace testsupport {

// A fresh, empty folder under the system's temporary folder, removed with everything in it when
// the object goes. Names hold the process id and a counter, so parallel tests never meet.
class ScratchDir {
public:
    explicit ScratchDir(std::string const& purpose = "test");
    ~ScratchDir();
    ScratchDir(ScratchDir const&) = delete;
    ScratchDir& operator=(ScratchDir const&) = delete;

    std::filesystem::path const& path() const { return root; }
    std::filesystem::path operator/(std::filesystem::path const& relative) const {
        return root / relative;
    }
    std::string str() const { return root.string(); }

private:
    std::filesystem::path root;
};

} // namespace testsupport
