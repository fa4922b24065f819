#pragma once

#include <citygml/Appearance.h>
#include <citygml/TVec3.h>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// app:X3DMaterial with the X3D defaults for values the document leaves out.
class Material : public Appearance {
public:
    explicit Material(std::string id);

    TVec3f getDiffuse() const { return m_diffuse; }
    TVec3f getEmissive() const { return m_emissive; }
    TVec3f getSpecular() const { return m_specular; }
    float getAmbientIntensity() const { return m_ambientIntensity; }
    float getShininess() const { return m_shininess; }
    float getTransparency() const { return m_transparency; }
    bool isSmooth() const { return m_isSmooth; }

private:
    friend class detail::Access;
    TVec3f m_diffuse{0.8f, 0.8f, 0.8f};
    TVec3f m_emissive{0.f, 0.f, 0.f};
    TVec3f m_specular{1.f, 1.f, 1.f};
    float m_ambientIntensity = 0.2f;
    float m_shininess = 0.2f;
    float m_transparency = 0.f;
    bool m_isSmooth = false;
};

} // namespace citygml
