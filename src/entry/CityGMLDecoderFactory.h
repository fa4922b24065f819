#pragma once

#include <koltx/DecoderFactory.h>
#include <koltx/Singleton.h>

// Makes CityGMLDecoder instances for ".gml" files. One instance per process, never freed.
class CityGMLDecoderFactory : public koltx::DecoderFactory,
                              public koltx::Singleton<CityGMLDecoderFactory> {
public:
    static CityGMLDecoderFactory* createInstance();
    ~CityGMLDecoderFactory() override;

    koltx::Extension* create() const override;
    std::wstring const& getID() const override;
    std::wstring const& getName() const override;
    std::wstring const& getDescription() const override;
    kolt::ContentType getContentType() const override;

private:
    explicit CityGMLDecoderFactory(koltx::FileExtensions const& extensions);
};
