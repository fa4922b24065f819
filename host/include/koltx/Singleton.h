#pragma once

namespace koltx {

// A process-wide instance pointer for a class. It starts null; the owner of the class creates
// the object and stores it once. The object is never destroyed through this class.
template <typename T> class Singleton {
public:
    static T* getInstance() { return instance; }
    static void setInstance(T* object) { instance = object; }

protected:
    Singleton() = default;
    ~Singleton() = default;

private:
    static inline T* instance = nullptr;
};

} // namespace koltx
