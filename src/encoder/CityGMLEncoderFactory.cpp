#include "encoder/CityGMLEncoderFactory.h"

#include "encoder/CityGMLEncoder.h"
#include "encoder/EncoderIcon.h"

#include <kolt/AttributeMapBuilder.h>
#include <kolt/EncoderInfo.h>
#include <koltx/DefaultNamePreparator.h>
#include <koltx/EncodeOptionsAnnotator.h>
#include <koltx/EncodeOptionsValidator.h>
#include <koltx/EncoderInfoBuilder.h>
#include <koltx/KOLTUtils.h>

#include <memory>
#include <string>

namespace encoder_ids {
std::wstring const cityGMLEncoderId = L"com.morvane.kolt.codecs.CityGMLEncoder";
}

namespace {

std::wstring const encoderName = L"CityGML";
std::wstring const encoderDescription = L"Encodes geometry into the CityGML format";
std::wstring const encoderExtension = L".gml";

constexpr double minVertexPrecision = 0.0000000001;
constexpr double maxVertexPrecision = 1.0;

// Corrects what the host cannot check by type alone: a file name that the file system accepts,
// an offset of exactly three values and a usable precision.
class CityGMLEncoderOptionsValidator : public koltx::EncodeOptionsValidator {
public:
    ~CityGMLEncoderOptionsValidator() override = default;

    void validate(koltx::KOLTUtils::ObjectPtr<kolt::AttributeMap const> const& options,
                  koltx::KOLTUtils::ObjectPtr<kolt::AttributeMapBuilder> const& builder) override {
        koltx::DefaultNamePreparator namePreparator(L"_", L"_");

        wchar_t const* baseName = options->getString(L"baseName");
        std::wstring name = baseName != nullptr ? baseName : L"";
        namePreparator.legalizeName(name, koltx::NamePreparator::KIND_FILE);
        builder->setString(L"baseName", name.c_str());

        size_t count = 0;
        double const* offset = options->getFloatArray(L"globalOffset", &count);
        if (count != 3) {
            double padded[3] = {0.0, 0.0, 0.0};
            for (size_t i = 0; i < 3 && i < count; ++i)
                padded[i] = offset[i];
            builder->setFloatArray(L"globalOffset", padded, 3);
        }

        double precision = options->getFloat(L"vertexPrecision");
        if (precision < minVertexPrecision)
            precision = minVertexPrecision;
        else if (precision > maxVertexPrecision)
            precision = maxVertexPrecision;
        builder->setFloat(L"vertexPrecision", precision);
    }
};

kolt::AttributeMap const* createDefaultOptions() {
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create(nullptr));
    builder->setString(L"baseName", L"gml_default_name");
    builder->setInt(L"LOD", 4);
    builder->setBool(L"errorFallback", true);
    double const offset[3] = {0.0, 0.0, 0.0};
    builder->setFloatArray(L"globalOffset", offset, 3);
    builder->setBool(L"mergeVertices", true);
    builder->setFloat(L"vertexPrecision", 0.001);
    builder->setString(L"srsName", L"");
    return builder->createAttributeMap(nullptr);
}

void annotateOptions(koltx::EncoderInfoBuilder& infoBuilder) {
    koltx::EncodeOptionsAnnotator annotator(infoBuilder);
    double const general = 0;
    double const geometry = 1;
    annotator.option(L"baseName")
        .setLabel(L"Base Name")
        .setOrder(0)
        .setGroup(L"General Settings", general)
        .setDescription(L"Sets the base name of the written CityGML file.");
    annotator.option(L"LOD")
        .setLabel(L"Level of Detail")
        .setOrder(1)
        .setGroup(L"General Settings", general)
        .setDescription(
            L"Sets the level of detail of exported geometry in the written CityGML file.");
    annotator.option(L"errorFallback").flagAsHidden();
    annotator.option(L"srsName")
        .setLabel(L"Spatial Reference System Name")
        .setOrder(2)
        .setGroup(L"General Settings", general)
        .setDescription(L"Sets the name of the Spatial Reference System referenced in Envelope "
                        L"tags. This string must be correctly escaped for XML.")
        .flagAsHidden();
    annotator.option(L"mergeVertices")
        .setLabel(L"Merge Vertices Within Precision")
        .setOrder(9040)
        .setGroup(L"Geometry", geometry)
        .setDescription(
            L"Finds co-incidental vertices (using the precision distance) and shares their index.");
    annotator.option(L"vertexPrecision")
        .setLabel(L"Vertex Precision")
        .setOrder(9010)
        .setGroup(L"Geometry", geometry)
        .setDescription(L"Specifies the minimal distance between vertices.")
        .setRange(minVertexPrecision, maxVertexPrecision);
}

} // namespace

CityGMLEncoderFactory::CityGMLEncoderFactory(kolt::EncoderInfo const* info)
    : koltx::EncoderFactory(info) {}

CityGMLEncoderFactory::~CityGMLEncoderFactory() = default;

koltx::Encoder* CityGMLEncoderFactory::create(kolt::AttributeMap const* options,
                                              kolt::Callbacks* callbacks) const {
    return new CityGMLEncoder(getID(), options, callbacks);
}

CityGMLEncoderFactory* createEncoderFactory() {
    koltx::EncoderInfoBuilder infoBuilder;
    infoBuilder.setID(encoder_ids::cityGMLEncoderId.c_str());
    infoBuilder.setName(encoderName.c_str());
    infoBuilder.setDescription(encoderDescription.c_str());
    infoBuilder.setExtension(encoderExtension.c_str());
    infoBuilder.setType(kolt::CT_GEOMETRY);
    infoBuilder.setIcon(encoder_icon::cityGMLEncoderIcon);

    koltx::KOLTUtils::AttributeMapPtr defaults(createDefaultOptions());
    infoBuilder.setDefaultOptions(defaults.get());
    infoBuilder.setValidator(std::make_shared<CityGMLEncoderOptionsValidator>());
    annotateOptions(infoBuilder);

    return new CityGMLEncoderFactory(infoBuilder.create(nullptr));
}
