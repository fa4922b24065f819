#include "gml/internal/GenericAttributes.h"

#include "gml/XmlWriter.h"

#include <cerrno>
#include <climits>
#include <cwchar>

namespace gml {

bool tryParseInt(std::wstring const& text, int& result) {
    wchar_t const* begin = text.c_str();
    wchar_t* end = nullptr;
    int const savedErrno = errno;
    errno = 0;
    long const value = std::wcstol(begin, &end, 10);
    bool const rangeError = errno == ERANGE;
    errno = savedErrno;
    if (end == begin || rangeError || value < INT_MIN || value > INT_MAX)
        return false;
    if (static_cast<std::size_t>(end - begin) != text.size())
        return false;
    result = static_cast<int>(value);
    return true;
}

bool tryParseDouble(std::wstring const& text, double& result) {
    wchar_t const* begin = text.c_str();
    wchar_t* end = nullptr;
    int const savedErrno = errno;
    errno = 0;
    double const value = std::wcstod(begin, &end);
    bool const rangeError = errno == ERANGE;
    errno = savedErrno;
    if (end == begin || rangeError)
        return false;
    if (static_cast<std::size_t>(end - begin) != text.size())
        return false;
    result = value;
    return true;
}

void writeGenericAttribute(XmlWriter& writer, std::wstring const& typeName,
                           std::wstring const& name, std::wstring const& value) {
    if (writer.version < 3) {
        writer.startElement(L"gen:" + typeName, std::wstring(), {{L"name", name}});
        writer.writeTextElement(L"gen:value", value);
        writer.endElement();
        return;
    }
    writer.startElement(L"core:genericAttribute");
    writer.startElement(L"gen:" + typeName);
    writer.writeTextElement(L"gen:name", name);
    writer.writeTextElement(L"gen:value", value);
    writer.endElement();
    writer.endElement();
}

} // namespace gml
