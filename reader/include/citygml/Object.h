#pragma once

#include <citygml/AttributeValue.h>

#include <string>
#include <string_view>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

// Anything with an identifier and attributes. Objects without gml:id carry a generated id that
// starts with "__kolt_" plus a character no XML name can hold, so it never collides.
class Object {
public:
    virtual ~Object() = default;
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;

    // Valid as long as the object.
    std::string_view getId() const { return m_id; }
    AttributesMap const& getAttributes() const;
    // Null when the attribute is absent.
    AttributeValue const* getAttribute(std::string const& name) const;
    bool hasGeneratedId() const;

protected:
    friend class detail::Access;
    // The text of `id` must outlive the object: it lives in the model's storage, or in the
    // object itself (see OwnedId).
    explicit Object(std::string_view id) : m_id(id) {}

    std::string_view m_id;
    // Made in the model's storage with the first attribute; most objects never have one.
    AttributesMap* m_attributes = nullptr;
};

// Keeps the id text inside objects that may outlive the model they came from (appearances and
// their target definitions). A base listed before Object, so the text exists first.
class OwnedId {
protected:
    explicit OwnedId(std::string id) : m_ownedId(std::move(id)) {}
    std::string m_ownedId;
};

} // namespace citygml
