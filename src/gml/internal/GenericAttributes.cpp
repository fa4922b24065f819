#include "gml/internal/GenericAttributes.h"

#include "gml/XmlWriter.h"

#include <cerrno>
#include <climits>
#include <cwchar>

namespace gml {

bool tryParseInt(const std::wstring& text, int& result) {
    const wchar_t* begin = text.c_str();
    wchar_t* end = nullptr;
    const int savedErrno = errno;
    errno = 0;
    const long value = std::wcstol(begin, &end, 10);
    const bool rangeError = errno == ERANGE;
    errno = savedErrno;
    if (end == begin || rangeError || value < INT_MIN || value > INT_MAX)
        return false;
    if (static_cast<std::size_t>(end - begin) != text.size())
        return false;
    result = static_cast<int>(value);
    return true;
}

bool tryParseDouble(const std::wstring& text, double& result) {
    const wchar_t* begin = text.c_str();
    wchar_t* end = nullptr;
    const int savedErrno = errno;
    errno = 0;
    const double value = std::wcstod(begin, &end);
    const bool rangeError = errno == ERANGE;
    errno = savedErrno;
    if (end == begin || rangeError)
        return false;
    if (static_cast<std::size_t>(end - begin) != text.size())
        return false;
    result = value;
    return true;
}

void writeGenericAttribute(XmlWriter& writer, const std::wstring& typeName,
                           const std::wstring& name, const std::wstring& value) {
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
