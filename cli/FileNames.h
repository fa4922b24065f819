#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What the tool knows about file names and paths, in one place.
class FileNames {
public:
    // ".gml" for "a/B.GML"; empty when there is none.
    static std::string lowerExtension(std::string const& path);
    // .gml, .citygml and .xml are CityGML, as input and as output.
    static bool isCityGML(std::string const& path);
    // True when `a` and `b` name one file: the same path after links, or one hard-linked file.
    static bool sameFile(std::filesystem::path const& a, std::filesystem::path const& b);
    // `name` in `folder`, or "stem_1.ext", "stem_2.ext"... when `taken` says the name is used.
    template <typename Taken>
    static std::string unique(std::string const& name, Taken const& taken) {
        std::filesystem::path const base(name);
        std::string candidate = name;
        for (int n = 1; taken(candidate); ++n)
            candidate = base.stem().string() + "_" + std::to_string(n) + base.extension().string();
        return candidate;
    }
    // True when the file holds exactly `content`.
    static bool holds(std::filesystem::path const& file, std::string const& content);
    // True when both files exist and hold the same bytes.
    static bool sameContent(std::filesystem::path const& a, std::filesystem::path const& b);
    // The lines of a warning text, without empty ones, as UTF-8.
    static std::vector<std::string> lines(std::wstring const& text);
};
