#pragma once

#include <string>
#include <vector>

namespace koltx {

// A list of file extensions such as ".jpg;.jpeg;", matched without regard to ASCII case.
class FileExtensions {
public:
    FileExtensions() = default;
    // Items are separated by ";"; a missing leading dot is added, blanks around items dropped.
    explicit FileExtensions(std::wstring const& list);

    std::vector<std::wstring> const& getExtensions() const { return extensions; }
    bool empty() const { return extensions.empty(); }
    // True if the path, file name or URI (query and fragment ignored) ends in one of the items.
    bool matches(std::wstring const& pathOrURI) const;
    // The items, each followed by ";", in lower case.
    std::wstring toString() const;

private:
    std::vector<std::wstring> extensions;
};

} // namespace koltx
