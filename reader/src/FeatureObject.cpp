#include <citygml/FeatureObject.h>

namespace citygml {

FeatureObject::FeatureObject(std::string_view id) : Object(id) {}

Envelope const& FeatureObject::getEnvelope() const {
    static Envelope const none;
    return m_envelope ? *m_envelope : none;
}

} // namespace citygml
