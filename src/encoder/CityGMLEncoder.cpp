#include "encoder/CityGMLEncoder.h"

#include "encoder/CityGMLEncoderFactory.h"
#include "encoder/ShapeMapping.h"
#include "encoder/SimpleOutputCallbackOStream.h"

#include <gml/Envelope.h>
#include <gml/NumberFormat.h>

#include <kolt/Callbacks.h>
#include <koltx/AllShapesReportingStrategy.h>
#include <koltx/BoundingBox.h>
#include <koltx/EncodePreparator.h>
#include <koltx/GenerateContext.h>
#include <koltx/InitialShape.h>
#include <koltx/LeafIterator.h>
#include <koltx/LogFormatter.h>
#include <koltx/LogFwd.h>
#include <koltx/StatusException.h>
#include <koltx/SumReportsAccumulator.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

namespace {

std::wstring const metaDataPrefix = L"/enc/metaData/";

std::wstring formatFloat(double value) {
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%f", value);
    return std::wstring(buffer, buffer + std::char_traits<char>::length(buffer));
}

std::wstring boolText(bool value) {
    return value ? L"true" : L"false";
}

} // namespace

std::wstring attributeAsText(wchar_t const* key, kolt::AttributeMap const& map) {
    switch (map.getType(key)) {
    case kolt::PT_STRING: {
        wchar_t const* text = map.getString(key);
        return text != nullptr ? text : L"";
    }
    case kolt::PT_FLOAT:
        return formatFloat(map.getFloat(key));
    case kolt::PT_BOOL:
        return boolText(map.getBool(key));
    case kolt::PT_INT:
        return std::to_wstring(map.getInt(key));
    default:
        return L"";
    }
}

CityGMLEncoder::CityGMLEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                               kolt::Callbacks* callbacks)
    : koltx::GeometryEncoder(id, options, callbacks), namePreparator(L"_", L"_") {}

CityGMLEncoder::~CityGMLEncoder() {
    document.reset();
    preparator.reset();
}

void CityGMLEncoder::init(koltx::GenerateContext& context) {
    // The host hands validated options to every encoder it runs; without them there is nothing
    // to read the file name or the precision from.
    if (getOptions() == nullptr)
        throw std::invalid_argument("encoder created without options");
    auto const namespaceA = namePreparator.newNamespace();
    auto const namespaceB = namePreparator.newNamespace();
    preparator = koltx::EncodePreparator::create(true, namePreparator, namespaceB, namespaceA, 0);

    std::int32_t levelOfDetail = 4;
    kolt::AttributeMap const* options = getOptions();
    if (options != nullptr && options->hasKey(L"LOD")) {
        levelOfDetail = options->getInt(L"LOD");
        if (levelOfDetail <= 0)
            levelOfDetail = 0;
    }
    auto* callbacks = dynamic_cast<kolt::SimpleOutputCallbacks*>(context.callbacks);
    document = std::make_unique<CityModelDocument>(levelOfDetail, preparator, namePreparator,
                                                   namePreparator.newNamespace(), callbacks);
}

void CityGMLEncoder::encode(koltx::GenerateContext& context, size_t initialShapeIndex) {
    if (!document)
        throw std::logic_error("encode called before init");
    koltx::InitialShape const* initialShape = context.getInitialShape(initialShapeIndex);
    kolt::AttributeMap const* options = getOptions();

    bool failed = false;
    try {
        auto leaves = koltx::LeafIterator::create(context, initialShapeIndex);
        for (auto leaf = leaves->getNext(); leaf; leaf = leaves->getNext())
            preparator->addLeafShape(context.cache, leaf, initialShape->getAttributeMap(),
                                     koltx::ReportsPtr());
    } catch (...) {
        failed = true;
    }
    // The leaves added before the failure stay; the fallback geometry joins them.
    if (failed && options->getBool(L"errorFallback"))
        preparator->addFallbackShape(context.cache, initialShape, initialShapeIndex);

    auto const attributes = collectAttributes(context, initialShape, initialShapeIndex);

    koltx::BoundingBox box;
    preparator->getBoundingBox(box);
    wchar_t const* srsName = options->getString(L"srsName");
    auto envelope =
        std::make_shared<gml::Envelope>(gml::Envelope{box, srsName != nullptr ? srsName : L""});

    addInitialShape(*document, attributes, envelope, initialShapeIndex, options);
}

std::map<std::wstring, std::wstring>
CityGMLEncoder::collectAttributes(koltx::GenerateContext& context,
                                  koltx::InitialShape const* initialShape,
                                  size_t initialShapeIndex) const {
    std::map<std::wstring, std::wstring> result;

    kolt::AttributeMap const* map = initialShape->getAttributeMap();
    if (map != nullptr) {
        size_t count = 0;
        wchar_t const* const* keys = map->getKeys(&count);
        for (size_t i = 0; i < count; ++i) {
            std::wstring_view const key(keys[i]);
            if (key.compare(0, metaDataPrefix.size(), metaDataPrefix) != 0)
                continue;
            std::wstring value = attributeAsText(keys[i], *map);
            if (!value.empty())
                result.emplace(std::wstring(key.substr(metaDataPrefix.size())), std::move(value));
        }
    }

    auto accumulator = koltx::SumReportsAccumulator::create();
    auto strategy =
        koltx::AllShapesReportingStrategy::create(context, initialShapeIndex, accumulator);
    koltx::ReportsPtr const& reports = strategy->getReports();
    if (!reports)
        return result;
    for (auto const& entry : reports->strings)
        if (entry.first && entry.second)
            result.emplace(*entry.first, *entry.second);
    for (auto const& entry : reports->bools)
        if (entry.first)
            result.emplace(*entry.first, boolText(entry.second));
    for (auto const& entry : reports->floats)
        if (entry.first)
            result.emplace(*entry.first, formatFloat(entry.second));
    return result;
}

void CityGMLEncoder::writeDocument() {
    if (!document)
        throw std::logic_error("finish called before init");
    auto* callbacks = dynamic_cast<kolt::SimpleOutputCallbacks*>(getCallbacks());
    if (callbacks == nullptr)
        throw koltx::StatusException(kolt::STATUS_CALLBACKS_UNUSABLE);

    kolt::AttributeMap const* options = getOptions();
    wchar_t const* baseName = options->getString(L"baseName");
    std::wstring const name = std::wstring(baseName != nullptr ? baseName : L"") + L".gml";

    kolt::Status status = kolt::STATUS_UNSPECIFIED_ERROR;
    std::uint64_t const handle = callbacks->open(encoder_ids::cityGMLEncoderId.c_str(),
                                                 kolt::CT_GEOMETRY, name.c_str(), 0, 0, &status);
    if (status != kolt::STATUS_OK)
        throw koltx::StatusException(status);

    int const coordinatePrecision =
        gml::coordinatePrecisionFor(options->getFloat(L"vertexPrecision"));
    {
        common::SimpleOutputCallbackOStream<char, 1> stream(callbacks, handle);
        writeCityModel(*document, stream, coordinatePrecision);
    }
    status = callbacks->close(handle, false, nullptr);
    if (status != kolt::STATUS_OK)
        throw koltx::StatusException(status);
}

void CityGMLEncoder::finish(koltx::GenerateContext&) {
    try {
        writeDocument();
    } catch (koltx::StatusException const& e) {
        throw koltx::StatusException(e);
    } catch (std::exception const& e) {
        koltx::LogFwd<1, kolt::LOG_ERROR, koltx::LogFormatter>(
            "Encoder '%s': %s", encoder_ids::cityGMLEncoderId, e.what());
        throw std::exception(e);
    }
}
