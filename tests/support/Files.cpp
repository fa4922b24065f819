#include "Files.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace testsupport {

std::string readFile(std::filesystem::path const& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void writeFile(std::filesystem::path const& path, std::string const& bytes) {
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

std::size_t countOf(std::string const& text, std::string const& what) {
    std::size_t n = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

std::vector<std::string> filesIn(std::filesystem::path const& folder) {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace testsupport
