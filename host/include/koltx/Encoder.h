#pragma once

#include "kolt/AttributeMap.h"
#include "koltx/Content.h"
#include "koltx/Extension.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace kolt {
class Callbacks;
}

namespace koltx {

class GenerateContext;

// Base of encoders. The options and callbacks are borrowed: the caller keeps them alive for as
// long as the encoder lives.
class Encoder : public Extension {
public:
    Encoder(std::wstring const& id, kolt::AttributeMap const* options, kolt::Callbacks* callbacks);
    ~Encoder() override;

    ExtensionType getExtensionType() const override { return ET_ENCODER; }

    // Called once before the first initial shape; does nothing by default.
    virtual void init(GenerateContext& context);
    // Called before encode for each initial shape; accepts every shape by default.
    virtual void validate(GenerateContext& context, size_t initialShapeIndex);
    // Encodes finished contents (e.g. a texture). Throws koltx::StatusException with
    // STATUS_NOT_SUPPORTED unless overridden.
    virtual void encode(std::vector<std::shared_ptr<Content>> const& contents);
    // Encodes one initial shape of a generation. Throws koltx::StatusException with
    // STATUS_NOT_SUPPORTED unless overridden.
    virtual void encode(GenerateContext& context, size_t initialShapeIndex);
    // Called once after the last initial shape; does nothing by default.
    virtual void finish(GenerateContext& context);

    std::wstring const& getID() const { return id; }
    kolt::AttributeMap const* getOptions() const { return options; }
    kolt::Callbacks* getCallbacks() const { return callbacks; }

private:
    std::wstring id;
    kolt::AttributeMap const* options;
    kolt::Callbacks* callbacks;
};

} // namespace koltx
