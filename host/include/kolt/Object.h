#pragma once

namespace kolt {

// Base of every object that the host hands across a library boundary. Such objects are released
// through destroy(), so that they are freed by the library that allocated them.
class Object {
public:
    Object(Object const&) = delete;
    Object& operator=(Object const&) = delete;

    virtual void destroy() const;

protected:
    Object() = default;
    virtual ~Object();
};

} // namespace kolt
