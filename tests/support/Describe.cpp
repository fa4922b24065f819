#include "Describe.h"

#include <kolt/StringUtils.h>

#include <iomanip>
#include <sstream>

namespace testsupport {

namespace {

std::string text(wchar_t const* value) {
    return value == nullptr ? std::string("(none)") : kolt::StringUtils::toUTF8(value);
}

template <typename T> void list(std::ostream& out, T const* values, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        out << (i ? ", " : "") << values[i];
}

} // namespace

std::string describeAttributes(kolt::AttributeMap const& map) {
    std::ostringstream out;
    out << std::setprecision(9) << std::boolalpha;
    std::size_t count = 0;
    wchar_t const* const* keys = map.getKeys(&count);
    for (std::size_t k = 0; k < count; ++k) {
        wchar_t const* key = keys[k];
        std::size_t n = 0;
        out << text(key) << ": ";
        switch (map.getType(key)) {
        case kolt::PT_STRING:
            out << "string \"" << text(map.getString(key)) << '"';
            break;
        case kolt::PT_FLOAT:
            out << "float " << map.getFloat(key);
            break;
        case kolt::PT_BOOL:
            out << "bool " << map.getBool(key);
            break;
        case kolt::PT_INT:
            out << "int " << map.getInt(key);
            break;
        case kolt::PT_STRING_ARRAY: {
            auto const* values = map.getStringArray(key, &n);
            out << "strings";
            for (std::size_t i = 0; i < n; ++i)
                out << " \"" << text(values[i]) << '"';
            break;
        }
        case kolt::PT_FLOAT_ARRAY: {
            auto const* values = map.getFloatArray(key, &n);
            out << "floats ";
            list(out, values, n);
            break;
        }
        case kolt::PT_BOOL_ARRAY: {
            auto const* values = map.getBoolArray(key, &n);
            out << "bools ";
            list(out, values, n);
            break;
        }
        case kolt::PT_INT_ARRAY: {
            auto const* values = map.getIntArray(key, &n);
            out << "ints ";
            list(out, values, n);
            break;
        }
        case kolt::PT_BLIND_DATA:
            out << "blind data";
            break;
        default:
            out << "type " << map.getType(key);
        }
        out << "\n";
    }
    return out.str();
}

std::string describeEncoderInfo(kolt::EncoderInfo const& info) {
    std::ostringstream out;
    out << std::boolalpha << text(info.getID()) << " \"" << text(info.getName())
        << "\": " << text(info.getDescription()) << "\ntype " << info.getType() << ", files "
        << text(info.getExtensions()) << ", icon of "
        << (info.getIcon() ? std::string(info.getIcon()).size() : 0) << " bytes\ndefaults:\n";
    if (info.getDefaultOptions() != nullptr)
        out << describeAttributes(*info.getDefaultOptions());
    for (std::size_t i = 0; i < info.getAnnotationCount(); ++i) {
        auto const* a = info.getAnnotation(i);
        out << "annotation " << text(a->key) << ": label " << text(a->label) << "; group "
            << text(a->group) << " " << a->groupOrder << "; order "
            << (a->hasOrder ? std::to_string(a->order) : "none") << "; hidden " << a->hidden
            << "; range "
            << (a->hasRange ? std::to_string(a->rangeMin) + " to " + std::to_string(a->rangeMax)
                            : "none")
            << "\n  " << text(a->description) << "\n";
    }
    return out.str();
}

} // namespace testsupport
