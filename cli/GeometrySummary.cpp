#include "GeometrySummary.h"

#include "FileNames.h"
#include "Json.h"

#include <kolt/AttributeMap.h>
#include <kolt/StringUtils.h>
#include <koltx/Geometry.h>

#include <set>
#include <sstream>

namespace {

std::wstring const FieldsPrefix = L"/fields/";
std::wstring const SpatialReferenceKey = L"/georef/spatialReference";

std::string utf8(wchar_t const* text) {
    return kolt::StringUtils::toUTF8(text == nullptr ? std::wstring() : std::wstring(text));
}

// An attribute's value as JSON, whatever its host type.
std::string jsonValue(kolt::AttributeMap const& map, wchar_t const* key) {
    std::size_t count = 0;
    std::string out;
    auto list = [&](auto const* values, auto&& one) {
        out = "[";
        for (std::size_t i = 0; i < count; ++i)
            out += (i ? ", " : "") + one(values[i]);
        out += "]";
    };
    switch (map.getType(key)) {
    case kolt::PT_STRING:
        return Json::quote(utf8(map.getString(key)));
    case kolt::PT_FLOAT:
        return Json::number(map.getFloat(key));
    case kolt::PT_INT:
        return std::to_string(map.getInt(key));
    case kolt::PT_BOOL:
        return map.getBool(key) ? "true" : "false";
    case kolt::PT_STRING_ARRAY:
        list(map.getStringArray(key, &count),
             [](wchar_t const* v) { return Json::quote(utf8(v)); });
        return out;
    case kolt::PT_FLOAT_ARRAY:
        list(map.getFloatArray(key, &count), [](double v) { return Json::number(v); });
        return out;
    case kolt::PT_INT_ARRAY:
        list(map.getIntArray(key, &count), [](int32_t v) { return std::to_string(v); });
        return out;
    case kolt::PT_BOOL_ARRAY:
        list(map.getBoolArray(key, &count),
             [](bool v) { return std::string(v ? "true" : "false"); });
        return out;
    default:
        return "null";
    }
}

void appendArray(std::string& out, std::vector<std::string> const& items) {
    out += "[";
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0)
            out += ", ";
        Json::appendQuoted(out, items[i]);
    }
    out += "]";
}

} // namespace

GeometrySummary::GeometrySummary(std::shared_ptr<koltx::Geometry> const& geometry,
                                 std::wstring const& warningText, bool withMeshes, bool allNames) {
    warnings = FileNames::lines(warningText);
    if (!geometry)
        return;

    if (withMeshes)
        countMeshes(geometry->getMeshes(), allNames);

    kolt::AttributeMap const& map = *geometry->getAttributeMap();
    std::size_t count = 0;
    wchar_t const* const* keys = map.getKeys(&count);
    for (std::size_t i = 0; i < count; ++i) {
        std::wstring const key = keys[i];
        if (key == SpatialReferenceKey && map.getType(keys[i]) == kolt::PT_STRING)
            spatialReference = utf8(map.getString(keys[i]));
        else if (key.rfind(FieldsPrefix, 0) == 0)
            attributes.emplace_back(kolt::StringUtils::toUTF8(key.substr(FieldsPrefix.size())),
                                    jsonValue(map, keys[i]));
    }
}

void GeometrySummary::countMeshes(std::vector<std::shared_ptr<koltx::Mesh>> const& list,
                                  bool allNames) {
    std::set<void const*> materialSet;
    std::set<void const*> textureSet;
    meshes = list.size();
    faces = holes = vertices = 0;
    meshNames.clear();
    koltx::Material const* lastMaterial = nullptr;
    for (std::size_t m = 0; m < list.size(); ++m) {
        koltx::Mesh const* mesh = list[m].get();
        if (allNames || m == 0 || m + 1 == list.size())
            meshNames.push_back(kolt::StringUtils::toUTF8(mesh->getName()));
        vertices += mesh->getVertexCount();
        for (uint32_t face = 0; face < mesh->getFaceCount(); ++face) {
            if (mesh->isHoleFace(face))
                ++holes;
            else
                ++faces;
        }
        for (auto const& material : mesh->getMaterials()) {
            // Meshes mostly share the material of the one before.
            if (material.get() == lastMaterial)
                continue;
            lastMaterial = material.get();
            materialSet.insert(material.get());
            for (auto const& texture : material->getDiffuseMap()) {
                if (texture)
                    textureSet.insert(texture.get());
            }
        }
    }
    materials = materialSet.size();
    textures = textureSet.size();
}

std::string GeometrySummary::toJson() const {
    std::size_t size = 400;
    for (auto const& name : meshNames)
        size += name.size() + name.size() / 4 + 4;
    std::string out;
    out.reserve(size);
    out += "{\"meshes\": " + std::to_string(meshes) + ", \"faces\": " + std::to_string(faces) +
           ", \"holes\": " + std::to_string(holes) + ", \"vertices\": " + std::to_string(vertices) +
           ", \"materials\": " + std::to_string(materials) +
           ", \"textures\": " + std::to_string(textures) + ", \"spatialReference\": ";
    out += spatialReference ? Json::quote(*spatialReference) : "null";
    out += ", \"attributes\": {";
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        if (i > 0)
            out += ", ";
        Json::appendQuoted(out, attributes[i].first);
        out += ": " + attributes[i].second;
    }
    out += "}, \"warnings\": ";
    appendArray(out, warnings);
    out += ", \"meshNames\": ";
    appendArray(out, meshNames);
    out += "}\n";
    return out;
}

std::string GeometrySummary::toText() const {
    std::ostringstream out;
    out << "meshes:            " << meshes << "\n"
        << "faces:             " << faces << "\n"
        << "holes:             " << holes << "\n"
        << "vertices:          " << vertices << "\n"
        << "materials:         " << materials << "\n"
        << "textures:          " << textures << "\n"
        << "spatial reference: " << (spatialReference ? *spatialReference : "(none)") << "\n"
        << "attributes:        " << attributes.size() << "\n";
    for (auto const& [name, value] : attributes)
        out << "  " << name << " = " << value << "\n";
    out << "warnings:          " << warnings.size() << "\n";
    if (!meshNames.empty()) {
        out << "first mesh:        " << meshNames.front() << "\n";
        out << "last mesh:         " << meshNames.back() << "\n";
    }
    return out.str();
}
