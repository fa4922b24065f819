#include "entry/CityGMLDecoderFactory.h"

#include "decoder/CityGMLDecoder.h"
#include "decoder/DecoderConstants.h"

CityGMLDecoderFactory* CityGMLDecoderFactory::createInstance() {
    return new CityGMLDecoderFactory(koltx::FileExtensions(DecoderFileExtension));
}

CityGMLDecoderFactory::CityGMLDecoderFactory(koltx::FileExtensions const& extensions)
    : koltx::DecoderFactory(kolt::CT_GEOMETRY, DecoderID, DecoderName, DecoderDescription,
                            extensions, nullptr, koltx::DecoderFactory::ER_NONE) {}

CityGMLDecoderFactory::~CityGMLDecoderFactory() = default;

koltx::Extension* CityGMLDecoderFactory::create() const {
    return new CityGMLDecoder();
}

std::wstring const& CityGMLDecoderFactory::getID() const {
    return DecoderID;
}

std::wstring const& CityGMLDecoderFactory::getName() const {
    return DecoderName;
}

std::wstring const& CityGMLDecoderFactory::getDescription() const {
    return DecoderDescription;
}

kolt::ContentType CityGMLDecoderFactory::getContentType() const {
    return kolt::CT_GEOMETRY;
}
