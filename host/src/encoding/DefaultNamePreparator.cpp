#include "koltx/DefaultNamePreparator.h"

#include <map>
#include <set>
#include <stdexcept>
#include <utility>

namespace koltx {

namespace {

class NameSpaceRecord : public NamePreparator::Namespace {
public:
    // Names given out, per kind.
    std::map<int32_t, std::set<std::wstring>> used;
    // Next counter to try, per kind and (stem, extension), so that n equal names cost O(n log n).
    std::map<std::pair<int32_t, std::pair<std::wstring, std::wstring>>, uint64_t> next;
};

bool isFileNameChar(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') ||
           c == L'-' || c == L'_' || c == L'.';
}

bool isHighSurrogate(wchar_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool isLowSurrogate(wchar_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

// Splits a file name into stem and extension (with its dot). A dot at the start is no extension.
std::pair<std::wstring, std::wstring> splitExtension(std::wstring const& name) {
    auto const dot = name.rfind(L'.');
    if (dot == std::wstring::npos || dot == 0)
        return {name, std::wstring()};
    return {name.substr(0, dot), name.substr(dot)};
}

} // namespace

DefaultNamePreparator::DefaultNamePreparator(std::wstring separator1, std::wstring separator2)
    : separator1(std::move(separator1)), separator2(std::move(separator2)) {}

DefaultNamePreparator::~DefaultNamePreparator() = default;

NamePreparator::NamespacePtr DefaultNamePreparator::newNamespace() {
    return std::make_shared<NameSpaceRecord>();
}

void DefaultNamePreparator::legalizeName(std::wstring& name, int32_t kind) const {
    std::wstring out;
    out.reserve(name.size());
    bool leading = true;
    for (size_t i = 0; i < name.size(); ++i) {
        wchar_t const c = name[i];
        bool keep;
        if (kind == KIND_FILE)
            keep = isFileNameChar(c) && !(leading && c == L'.');
        else
            keep = c >= 0x20 && c != 0x7F;
        if (keep) {
            out += c;
        } else {
            out += separator1;
            // One character outside the plane is one replacement, not two.
            if (isHighSurrogate(c) && i + 1 < name.size() && isLowSurrogate(name[i + 1]))
                ++i;
        }
        if (c != L'.')
            leading = false;
    }
    name.swap(out);
}

bool DefaultNamePreparator::isLegalName(std::wstring const& name, int32_t kind) const {
    std::wstring copy = name;
    legalizeName(copy, kind);
    return copy == name;
}

void DefaultNamePreparator::legalizeAndUniqueName(std::wstring& name, int32_t kind,
                                                  NamespacePtr const& nameSpace) {
    legalizeName(name, kind);
    std::wstring result;
    uniqueName(result, name, kind, nameSpace);
    name.swap(result);
}

void DefaultNamePreparator::uniqueName(std::wstring& result, std::wstring const& name, int32_t kind,
                                       NamespacePtr const& nameSpace) {
    auto* record = dynamic_cast<NameSpaceRecord*>(nameSpace.get());
    if (record == nullptr)
        throw std::invalid_argument("uniqueName: name space not made by this name preparator");
    auto& used = record->used[kind];
    if (used.insert(name).second) {
        result = name;
        return;
    }
    auto parts = kind == KIND_FILE ? splitExtension(name) : std::make_pair(name, std::wstring());
    auto& counter = record->next[{kind, parts}];
    for (;;) {
        ++counter;
        std::wstring candidate = parts.first + separator2 + std::to_wstring(counter) + parts.second;
        if (used.insert(candidate).second) {
            result = std::move(candidate);
            return;
        }
    }
}

} // namespace koltx
