#pragma once

#include <koltx/EncoderFactory.h>
#include <koltx/Singleton.h>

#include <string>

// Describes the CityGML encoder to the host (identity, icon, options with their presentation and
// validator) and makes one CityGMLEncoder per generation.
class CityGMLEncoderFactory : public koltx::EncoderFactory,
                              public koltx::Singleton<CityGMLEncoderFactory> {
public:
    explicit CityGMLEncoderFactory(kolt::EncoderInfo const* info);
    ~CityGMLEncoderFactory() override;

    using koltx::EncoderFactory::create;
    koltx::Encoder* create(kolt::AttributeMap const* options,
                           kolt::Callbacks* callbacks) const override;
};

// A new factory with its encoder information; the caller (the registration) keeps it for good.
CityGMLEncoderFactory* createEncoderFactory();

namespace encoder_ids {
extern std::wstring const cityGMLEncoderId; // "com.morvane.kolt.codecs.CityGMLEncoder"
}
