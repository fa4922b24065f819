#include "ScratchDir.h"

#include <unistd.h>

#include <atomic>

namespace testsupport {

ScratchDir::ScratchDir(std::string const& purpose) {
    static std::atomic<unsigned> counter{0};
    root = std::filesystem::temp_directory_path() /
           ("kolt_" + purpose + "_" + std::to_string(::getpid()) + "_" + std::to_string(counter++));
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root);
}

ScratchDir::~ScratchDir() {
    std::error_code ignored;
    std::filesystem::permissions(root, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(root, ignored);
}

} // namespace testsupport
