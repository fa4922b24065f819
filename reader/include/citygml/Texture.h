#pragma once

#include <citygml/Appearance.h>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// app:ParameterizedTexture or app:GeoreferencedTexture.
class Texture : public Appearance {
public:
    Texture(std::string id, std::string typeName);

    // app:imageURI as written, relative to the document.
    std::string const& getUrl() const { return m_url; }
    std::string const& getMimeType() const { return m_mimeType; }
    // app:wrapMode text ("none", "wrap", "mirror", "clamp", "border"); empty when absent.
    std::string const& getWrapMode() const { return m_wrapMode; }

private:
    friend class detail::Access;
    std::string m_url;
    std::string m_mimeType;
    std::string m_wrapMode;
};

} // namespace citygml
