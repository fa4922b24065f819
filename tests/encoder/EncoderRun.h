#pragma once

#include "EncoderTestSupport.h"

#include <encoder/CityGMLEncoder.h>
#include <encoder/CityGMLEncoderFactory.h>

#include <kolt/EncoderInfo.h>
#include <koltx/Encoder.h>

#include <stdexcept>

namespace enctest {

inline CityGMLEncoderFactory& factory() {
    static CityGMLEncoderFactory* const instance = createEncoderFactory();
    return *instance;
}

// The encoder's options: the defaults with the caller's values, corrected by the validator.
inline koltx::KOLTUtils::AttributeMapPtr
validatedOptions(std::function<void(kolt::AttributeMapBuilder&)> const& fill) {
    auto const given = makeAttributes(fill);
    kolt::AttributeMap const* validated = nullptr;
    kolt::Status status = kolt::STATUS_OK;
    factory().getEncoderInfo()->createValidatedOptions(given.get(), &validated, &status);
    if (validated == nullptr)
        throw std::runtime_error("options refused");
    return koltx::KOLTUtils::AttributeMapPtr(validated);
}

// Runs one generation through a fresh encoder, as the host does: init, encode per shape, finish.
inline void runEncoder(std::vector<std::shared_ptr<koltx::InitialShape const>> const& shapes,
                       kolt::AttributeMap const* options, kolt::Callbacks* callbacks,
                       CityGMLEncoder** keep = nullptr) {
    std::unique_ptr<koltx::Encoder> encoder(factory().create(options, callbacks));
    koltx::GenerateContext context(shapes, nullptr, callbacks);
    encoder->init(context);
    for (std::size_t i = 0; i < shapes.size(); ++i)
        encoder->encode(context, i);
    encoder->finish(context);
    if (keep != nullptr)
        *keep = static_cast<CityGMLEncoder*>(encoder.release());
}

// The document text of one generation with default options unless `fill` sets some.
inline std::string
encodeToText(std::vector<std::shared_ptr<koltx::InitialShape const>> const& shapes,
             std::function<void(kolt::AttributeMapBuilder&)> const& fill = nullptr,
             koltx::MemoryOutputCallbacks* outputs = nullptr) {
    koltx::MemoryOutputCallbacks local;
    koltx::MemoryOutputCallbacks& callbacks = outputs != nullptr ? *outputs : local;
    auto const options = validatedOptions(fill);
    runEncoder(shapes, options.get(), &callbacks);
    wchar_t const* baseName = options->getString(L"baseName");
    return callbacks.getText(std::wstring(baseName) + L".gml");
}

} // namespace enctest
