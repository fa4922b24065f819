#pragma once

#include <encoder/CityGMLEncoder.h>
#include <encoder/CityGMLEncoderFactory.h>
#include <gml/BuildingTypeNode.h>
#include <gml/GeometryNode.h>
#include <gml/PolygonNode.h>
#include <gml/TransportationTypeNode.h>

#include <kolt/AttributeMap.h>
#include <kolt/AttributeMapBuilder.h>
#include <kolt/EncoderInfo.h>
#include <kolt/StringUtils.h>
#include <koltx/Encoder.h>
#include <koltx/GenerateContext.h>
#include <koltx/Geometry.h>
#include <koltx/GeometryBuilder.h>
#include <koltx/InitialShape.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Material.h>
#include <koltx/MaterialBuilder.h>
#include <koltx/MemoryOutputCallbacks.h>
#include <koltx/MeshBuilder.h>
#include <koltx/Shape.h>
#include <koltx/Texture.h>
#include <koltx/URI.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace enctest {

// A square face in the host's x/z plane at height y, corners (x0, z0) to (x0 + size, z0 + size).
struct Square {
    double x0 = 0, y = 0, z0 = 0, size = 1;
    std::uint32_t material = 0;
};

inline std::shared_ptr<koltx::Mesh>
makeMesh(std::wstring const& name, std::vector<Square> const& faces,
         std::vector<std::shared_ptr<koltx::Material>> const& materials = {},
         bool withUVs = false) {
    koltx::MeshBuilder builder;
    builder.setName(name);
    for (auto const& material : materials)
        builder.addMaterial(material);
    for (auto const& square : faces) {
        std::uint32_t const face = builder.addFace();
        double const corners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        for (auto const& corner : corners) {
            double const xyz[3] = {square.x0 + corner[0] * square.size, square.y,
                                   square.z0 + corner[1] * square.size};
            builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
            if (withUVs)
                builder.addFaceUVIndex(face, 0, builder.addUVCoords(0, corner));
        }
        if (!materials.empty())
            builder.setFaceMaterialIndex(face, square.material);
    }
    return builder.createSharedAndReset(nullptr);
}

inline std::shared_ptr<koltx::Geometry>
makeGeometry(std::vector<std::shared_ptr<koltx::Mesh>> const& meshes) {
    koltx::GeometryBuilder builder;
    for (auto const& mesh : meshes)
        builder.addMesh(mesh);
    return builder.createSharedAndReset(nullptr);
}

inline std::shared_ptr<koltx::Shape> makeLeaf(std::shared_ptr<koltx::Geometry> geometry,
                                              koltx::ReportsPtr reports = {}) {
    return std::make_shared<koltx::Shape>(std::move(geometry), koltx::Shape::identity(),
                                          std::move(reports));
}

inline std::shared_ptr<kolt::AttributeMap const>
makeAttributes(std::function<void(kolt::AttributeMapBuilder&)> const& fill) {
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    if (fill)
        fill(*builder);
    return koltx::KOLTUtils::share(builder->createAttributeMap());
}

inline std::shared_ptr<koltx::InitialShape const>
makeInitialShape(std::vector<std::shared_ptr<koltx::Shape>> leaves,
                 std::shared_ptr<kolt::AttributeMap const> attributes = {},
                 std::shared_ptr<koltx::Geometry> fallback = {}) {
    if (!attributes)
        attributes = makeAttributes(nullptr);
    return std::make_shared<koltx::InitialShape>(L"shape", std::move(attributes), std::move(leaves),
                                                 std::move(fallback));
}

// A small RGB texture whose pixels depend on `seed`, so that different seeds differ by content.
inline std::shared_ptr<koltx::Texture>
makeTexture(std::wstring const& uri, std::uint8_t seed,
            std::int32_t format = koltx::Texture::FORMAT_RGB8) {
    std::uint32_t const channels = koltx::Texture::getChannelCount(format);
    std::vector<std::uint8_t> pixels(4 * 4 * channels);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint8_t>(seed * 31 + i * 7);
    return std::make_shared<koltx::Texture>(koltx::URI::create(uri), 4, 4, format,
                                            std::move(pixels));
}

inline std::shared_ptr<koltx::Material>
makeMaterial(std::wstring const& name, std::vector<double> const& diffuse,
             std::vector<std::shared_ptr<koltx::Texture>> const& textures = {}) {
    koltx::MaterialBuilder builder;
    builder.name(name).diffuseColor(diffuse);
    if (!textures.empty())
        builder.diffuseMap(textures, std::vector<std::wstring>(textures.size()));
    return builder.createSharedAndReset(nullptr);
}

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

// The tree below `node`, one line per node: tag, id (with "*" when written), kind; polygons
// with their face and surface tag.
inline std::string describe(std::shared_ptr<gml::CityElementNode> const& node, int depth = 0) {
    std::string line = std::string(2 * depth, ' ') + kolt::StringUtils::toUTF8(node->tag) + "[" +
                       kolt::StringUtils::toUTF8(node->identifier()) + "]" +
                       (node->writeId ? "*" : "");
    if (auto polygon = std::dynamic_pointer_cast<gml::PolygonNode>(node))
        line += " polygon " + std::to_string(polygon->faceIndex) + " " +
                kolt::StringUtils::toUTF8(std::wstring(polygon->surfaceTag()));
    else if (std::dynamic_pointer_cast<gml::GeometryNode>(node))
        line += " geometry";
    else if (std::dynamic_pointer_cast<gml::BuildingTypeNode>(node))
        line += " building";
    else if (std::dynamic_pointer_cast<gml::TransportationTypeNode>(node))
        line += " transportation";
    else if (std::dynamic_pointer_cast<gml::RootNode>(node))
        line += " feature";
    line += "\n";
    for (auto const& child : node->children)
        line += describe(child, depth + 1);
    return line;
}

} // namespace enctest
