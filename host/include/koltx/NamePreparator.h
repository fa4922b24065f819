#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace koltx {

// Makes names legal and unique for the things an encoder writes. Uniqueness holds within one
// name space; a name space is an opaque record handed out by newNamespace().
class NamePreparator {
public:
    // Kinds of names.
    static constexpr int32_t KIND_GENERIC = 0;
    static constexpr int32_t KIND_MESH = 1;
    static constexpr int32_t KIND_MATERIAL = 2;
    static constexpr int32_t KIND_TEXTURE = 3;
    static constexpr int32_t KIND_SHAPE = 4;
    static constexpr int32_t KIND_FILE = 5;

    class Namespace {
    public:
        virtual ~Namespace() = default;
    };
    using NamespacePtr = std::shared_ptr<Namespace>;

    virtual ~NamePreparator() = default;

    virtual NamespacePtr newNamespace() = 0;

    // Rewrites `name` in place into a legal name of `kind`.
    virtual void legalizeName(std::wstring& name, int32_t kind) const = 0;

    virtual bool isLegalName(std::wstring const& name, int32_t kind) const = 0;

    // legalizeName followed by uniqueName, in place.
    virtual void legalizeAndUniqueName(std::wstring& name, int32_t kind,
                                       NamespacePtr const& nameSpace) = 0;

    // `result` receives a name derived from `name` that no earlier call gave within `nameSpace`
    // for the same kind; the result is reserved there.
    virtual void uniqueName(std::wstring& result, std::wstring const& name, int32_t kind,
                            NamespacePtr const& nameSpace) = 0;

protected:
    NamePreparator() = default;
};

} // namespace koltx
