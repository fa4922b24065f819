#include "vocabulary/PathIterator.h"

PathIterator::PathIterator(std::wstring_view path) : rest(path) {
    ++(*this);
}

PathIterator& PathIterator::operator++() {
    previous = rest;
    std::size_t const pos = rest.find(L'\\');
    if (rest.empty() || pos == std::wstring_view::npos) {
        *this = PathIterator();
        return *this;
    }
    // A leading backslash makes the whole remainder one component; the following steps then
    // yield its parts one by one. Paths written by older tools rely on this.
    std::wstring_view const component = pos == 0 ? rest.substr(1) : rest.substr(0, pos);
    std::size_t const bracket = component.find(L'[');
    if (bracket == std::wstring_view::npos) {
        tag = component;
        id = std::wstring_view();
    } else {
        tag = component.substr(0, bracket);
        id = component.substr(bracket + 1);
        // The closing "]" is not checked: whatever the last character is, it goes.
        if (!id.empty())
            id.remove_suffix(1);
    }
    rest = rest.substr(pos + 1);
    return *this;
}

bool PathIterator::operator==(PathIterator const& other) const {
    return tag == other.tag && id == other.id && previous == other.previous && rest == other.rest;
}
