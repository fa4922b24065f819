#pragma once

#include <citygml/Object.h>

#include <memory>
#include <string_view>

namespace citygml {

class ObjectArena;

// Ties an appearance to one target (polygon or geometry) by the target's id. Lives in the
// model's storage, like its target.
template <class T> class AppearanceTargetDefinition : public Object {
public:
    AppearanceTargetDefinition(std::string_view targetId, std::shared_ptr<T> appearance,
                               std::string_view id, ObjectArena* arena)
        : Object(id), m_targetId(targetId), m_appearance(std::move(appearance)), m_arena(arena) {}

    std::shared_ptr<T> getAppearance() const { return m_appearance; }
    std::string_view getTargetID() const { return m_targetId; }

protected:
    std::string_view m_targetId;
    std::shared_ptr<T> m_appearance;
    ObjectArena* m_arena;
};

} // namespace citygml
