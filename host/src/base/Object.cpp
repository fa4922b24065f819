#include "kolt/Object.h"

namespace kolt {

Object::~Object() = default;

void Object::destroy() const {
    delete this;
}

} // namespace kolt
