#include "decoder/AttributeConversion.h"

#include "decoder/WideText.h"

#include <citygml/Object.h>
#include <koltx/GeometryBuilder.h>

#include <exception>

void convertAttributes(koltx::GeometryBuilder& builder, citygml::Object const& object,
                       std::wstring& warnings) {
    for (auto const& [name, value] : object.getAttributes()) {
        try {
            std::wstring const key = L"/fields/" + toWide(name);
            // The reader's type codes: 1 double, 2 integer; the rest travel as text.
            switch (static_cast<int>(value.getType())) {
            case 1:
                builder.setFloat(key, value.asDouble(0));
                break;
            case 2:
                builder.setInt(key, value.asInteger(0));
                break;
            default:
                builder.setString(key, toWide(value.asString()));
                break;
            }
        } catch (std::exception const&) {
            warnings += L"Attribute conversion failed - could not set attribute on the geometry\n";
        }
    }
}
