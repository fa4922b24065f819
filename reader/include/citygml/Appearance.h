#pragma once

#include <citygml/Object.h>

#include <string>
#include <vector>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// Surface data of an app:Appearance: a material or a texture, in one or more themes.
class Appearance : private OwnedId, public Object {
public:
    Appearance(std::string id, std::string typeName);

    // "X3DMaterial", "ParameterizedTexture" or "GeoreferencedTexture".
    std::string const& getType() const { return m_type; }
    std::vector<std::string> const& getThemes() const { return m_themes; }
    // app:isFront; true when absent.
    bool isFront() const { return m_isFront; }

protected:
    friend class detail::Access;
    std::string m_type;
    std::vector<std::string> m_themes;
    bool m_isFront = true;
};

} // namespace citygml
