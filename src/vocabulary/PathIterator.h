#pragma once

#include <string_view>

// Walks the components of a mesh path ("tag[id]\" or "tag\", each closed by a backslash).
// Text after the last backslash is never yielded. The end state has all four views empty.
class PathIterator {
public:
    PathIterator() = default;
    explicit PathIterator(std::wstring_view path);

    PathIterator& operator++();
    bool operator==(PathIterator const& other) const;
    bool operator!=(PathIterator const& other) const { return !(*this == other); }

    bool atEnd() const { return tag.empty() && id.empty() && previous.empty() && rest.empty(); }

    std::wstring_view tag;      // the current component's tag
    std::wstring_view id;       // its ID, without brackets
    std::wstring_view previous; // the text from the current component on
    std::wstring_view rest;     // the text behind the current component
};
