// Fuzz entry for CityGML to CityGML in memory: the bytes are decoded through the codec, then the
// decoded geometry is encoded again as one initial shape into memory outputs, as the tool does
// with files. Encoding may refuse with an exception; when it succeeds, every output is closed
// and the document is there.
#include "FuzzCheck.h"
#include "FuzzCodec.h"

#include <kolt/AttributeMap.h>
#include <kolt/AttributeMapBuilder.h>
#include <kolt/Cache.h>
#include <kolt/EncoderInfo.h>
#include <koltx/Encoder.h>
#include <koltx/ExtensionManager.h>
#include <koltx/GenerateContext.h>
#include <koltx/Geometry.h>
#include <koltx/InitialShape.h>
#include <koltx/KOLTUtils.h>
#include <koltx/MemoryOutputCallbacks.h>
#include <koltx/Shape.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

wchar_t const* const encoderId = L"com.morvane.kolt.codecs.CityGMLEncoder";

// The decoded fields become the shape's metadata and the spatial reference its srsName, the way
// the tool hands them on.
void copyFields(kolt::AttributeMap const* fields, kolt::AttributeMapBuilder& shape,
                kolt::AttributeMapBuilder& options) {
    std::wstring const prefix = L"/fields/";
    size_t count = 0;
    wchar_t const* const* keys = fields != nullptr ? fields->getKeys(&count) : nullptr;
    for (size_t i = 0; i < count; ++i) {
        std::wstring const key = keys[i];
        auto const type = fields->getType(keys[i]);
        if (key == L"/georef/spatialReference" && type == kolt::PT_STRING)
            options.setString(L"srsName", fields->getString(keys[i]));
        if (key.compare(0, prefix.size(), prefix) != 0)
            continue;
        std::wstring const name = L"/enc/metaData/" + key.substr(prefix.size());
        if (type == kolt::PT_STRING)
            shape.setString(name.c_str(), fields->getString(keys[i]));
        else if (type == kolt::PT_FLOAT)
            shape.setFloat(name.c_str(), fields->getFloat(keys[i]));
        else if (type == kolt::PT_INT)
            shape.setInt(name.c_str(), fields->getInt(keys[i]));
        else if (type == kolt::PT_BOOL)
            shape.setBool(name.c_str(), fields->getBool(keys[i]));
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    FuzzCodec::manager();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    using koltx::KOLTUtils;
    auto const cache = KOLTUtils::share(kolt::Cache::create());
    std::wstring warnings;
    auto const geometry = FuzzCodec::decode(std::string(reinterpret_cast<char const*>(data), size),
                                            cache.get(), warnings);
    if (!geometry)
        return 0;

    KOLTUtils::AttributeMapBuilderPtr shapeAttributes(kolt::AttributeMapBuilder::create());
    KOLTUtils::AttributeMapBuilderPtr given(kolt::AttributeMapBuilder::create());
    given->setString(L"baseName", L"fuzz");
    copyFields(geometry->getAttributeMap(), *shapeAttributes, *given);
    KOLTUtils::AttributeMapPtr const givenOptions(given->createAttributeMap());
    auto& manager = FuzzCodec::manager();
    KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(manager.createEncoderInfo(encoderId));
    kolt::AttributeMap const* validated = nullptr;
    kolt::Status status = kolt::STATUS_OK;
    info->createValidatedOptions(givenOptions.get(), &validated, &status);
    KOLTUtils::AttributeMapPtr const options(validated);
    fuzzCheck(options != nullptr);

    auto const shape = std::make_shared<koltx::InitialShape>(
        L"fuzz", KOLTUtils::share(shapeAttributes->createAttributeMap()),
        std::vector<std::shared_ptr<koltx::Shape>>{std::make_shared<koltx::Shape>(geometry)},
        geometry);
    koltx::MemoryOutputCallbacks outputs;
    try {
        koltx::GenerateContext context({shape}, cache.get(), &outputs);
        auto const encoder = manager.createEncoder(encoderId, options.get(), &outputs);
        encoder->init(context);
        encoder->encode(context, 0);
        encoder->finish(context);
    } catch (std::runtime_error const&) {
        // A refusal is reported this way; anything else escapes and fails the run.
        return 0;
    }
    fuzzCheck(outputs.getOpenCount() == 0);
    auto const* document = outputs.find(L"fuzz.gml");
    fuzzCheck(document != nullptr && !document->bytes.empty());
    return 0;
}
