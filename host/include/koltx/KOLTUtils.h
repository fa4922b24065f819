#pragma once

#include "kolt/Object.h"

#include <memory>

namespace kolt {
class AttributeMap;
class AttributeMapBuilder;
} // namespace kolt

namespace koltx {

class KOLTUtils {
public:
    // Releases a host object through destroy(); a null pointer is ignored.
    struct ObjectDestroyer {
        void operator()(kolt::Object const* object) const {
            if (object != nullptr)
                object->destroy();
        }
    };

    // Sole owner of a host object, for example ObjectPtr<kolt::AttributeMap const>.
    template <typename T> using ObjectPtr = std::unique_ptr<T, ObjectDestroyer>;

    using AttributeMapPtr = ObjectPtr<kolt::AttributeMap const>;
    using AttributeMapBuilderPtr = ObjectPtr<kolt::AttributeMapBuilder>;

    // Takes ownership of `object`.
    template <typename T> static ObjectPtr<T> adopt(T* object) { return ObjectPtr<T>(object); }

    // Shared ownership of a host object; the last owner destroys it.
    template <typename T> static std::shared_ptr<T> share(T* object) {
        return std::shared_ptr<T>(object, ObjectDestroyer());
    }
};

} // namespace koltx
