#include "FileNames.h"

#include <kolt/StringUtils.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

std::string FileNames::lowerExtension(std::string const& path) {
    std::string ext = fs::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

bool FileNames::isCityGML(std::string const& path) {
    std::string const ext = lowerExtension(path);
    return ext == ".gml" || ext == ".citygml" || ext == ".xml";
}

bool FileNames::sameFile(fs::path const& a, fs::path const& b) {
    std::error_code error;
    if (fs::equivalent(a, b, error))
        return true;
    std::error_code errorA;
    std::error_code errorB;
    fs::path const canonicalA = fs::weakly_canonical(fs::absolute(a), errorA);
    fs::path const canonicalB = fs::weakly_canonical(fs::absolute(b), errorB);
    return !errorA && !errorB && canonicalA == canonicalB;
}

bool FileNames::holds(fs::path const& file, std::string const& content) {
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) != content.size())
        return false;
    std::ifstream in(file, std::ios::binary);
    std::string existing(content.size(), '\0');
    in.read(existing.data(), static_cast<std::streamsize>(existing.size()));
    return in && existing == content;
}

bool FileNames::sameContent(fs::path const& a, fs::path const& b) {
    std::error_code error;
    if (!fs::is_regular_file(a, error) || !fs::is_regular_file(b, error) ||
        fs::file_size(a, error) != fs::file_size(b, error))
        return false;
    std::ifstream x(a, std::ios::binary);
    std::ifstream y(b, std::ios::binary);
    char bx[65536];
    char by[65536];
    while (x && y) {
        x.read(bx, sizeof bx);
        y.read(by, sizeof by);
        if (x.gcount() != y.gcount() || !std::equal(bx, bx + x.gcount(), by))
            return false;
    }
    return x.eof() && y.eof();
}

std::vector<std::string> FileNames::lines(std::wstring const& text) {
    std::vector<std::string> out;
    std::wistringstream in(text);
    for (std::wstring line; std::getline(in, line);)
        if (!line.empty())
            out.push_back(kolt::StringUtils::toUTF8(line));
    return out;
}
