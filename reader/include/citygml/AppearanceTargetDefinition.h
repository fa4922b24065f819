#pragma once

#include <citygml/Object.h>

#include <memory>
#include <string>

namespace citygml {

// Ties an appearance to one target (polygon or geometry) by the target's id.
template <class T> class AppearanceTargetDefinition : private OwnedId, public Object {
public:
    AppearanceTargetDefinition(std::string targetId, std::shared_ptr<T> appearance, std::string id)
        : OwnedId(std::move(id)), Object(m_ownedId), m_targetId(std::move(targetId)),
          m_appearance(std::move(appearance)) {}

    std::shared_ptr<T> getAppearance() const { return m_appearance; }
    std::string const& getTargetID() const { return m_targetId; }

protected:
    std::string m_targetId;
    std::shared_ptr<T> m_appearance;
};

} // namespace citygml
