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

std::vector<std::string> tableRows(std::filesystem::path const& path) {
    std::vector<std::string> rows;
    std::istringstream in(readFile(path));
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#')
            rows.push_back(line);
    return rows;
}

std::vector<std::string> split(std::string const& line, std::string const& separator) {
    std::vector<std::string> parts;
    if (separator == " ") {
        std::istringstream in(line);
        for (std::string word; in >> word;)
            parts.push_back(word);
        return parts;
    }
    for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + separator.size()) {
        end = line.find(separator, start);
        std::string const part = line.substr(start, end - start);
        parts.push_back(part.substr(0, part.find_last_not_of(' ') + 1));
    }
    return parts;
}

} // namespace testsupport
