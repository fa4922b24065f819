#pragma once

#include <citygml/Envelope.h>
#include <citygml/Object.h>

namespace citygml {

class FeatureObject : public Object {
public:
    explicit FeatureObject(std::string_view id);

    Envelope const& getEnvelope() const { return m_envelope; }

protected:
    friend class ModelBuilder;
    Envelope m_envelope;
};

} // namespace citygml
