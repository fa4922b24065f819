#pragma once

#include <citygml/Envelope.h>
#include <citygml/Object.h>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

class FeatureObject : public Object {
public:
    explicit FeatureObject(std::string_view id);

    // An envelope without corners when the document gives none.
    Envelope const& getEnvelope() const;

protected:
    friend class detail::Access;
    // Made in the model's storage when the document says something about it.
    Envelope* m_envelope = nullptr;
};

} // namespace citygml
