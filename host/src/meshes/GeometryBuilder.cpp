#include "koltx/GeometryBuilder.h"

#include "kolt/StringUtils.h"

#include <memory>
#include <stdexcept>

namespace koltx {

namespace {

void check(kolt::Status status, std::wstring const& key) {
    if (status != kolt::STATUS_OK)
        throw std::invalid_argument(std::string("attribute cannot be set: ") +
                                    kolt::getStatusDescription(status) + " for key '" +
                                    kolt::StringUtils::toUTF8(key) + "'");
}

} // namespace

GeometryBuilder::GeometryBuilder() : attributes(kolt::AttributeMapBuilder::create()) {}

GeometryBuilder::~GeometryBuilder() = default;

void GeometryBuilder::setBool(std::wstring const& key, bool value) {
    kolt::Status status = kolt::STATUS_OK;
    attributes->setBool(key.c_str(), value, &status);
    check(status, key);
}

void GeometryBuilder::setInt(std::wstring const& key, int32_t value) {
    kolt::Status status = kolt::STATUS_OK;
    attributes->setInt(key.c_str(), value, &status);
    check(status, key);
}

void GeometryBuilder::setFloat(std::wstring const& key, double value) {
    kolt::Status status = kolt::STATUS_OK;
    attributes->setFloat(key.c_str(), value, &status);
    check(status, key);
}

void GeometryBuilder::setString(std::wstring const& key, std::wstring const& value) {
    kolt::Status status = kolt::STATUS_OK;
    attributes->setString(key.c_str(), value.c_str(), &status);
    check(status, key);
}

void GeometryBuilder::setBoolArray(std::wstring const& key, std::vector<bool> const& values) {
    std::unique_ptr<bool[]> copy(new bool[values.size() + 1]);
    for (size_t i = 0; i < values.size(); ++i)
        copy[i] = values[i];
    kolt::Status status = kolt::STATUS_OK;
    attributes->setBoolArray(key.c_str(), copy.get(), values.size(), &status);
    check(status, key);
}

void GeometryBuilder::setIntArray(std::wstring const& key, std::vector<int32_t> const& values) {
    kolt::Status status = kolt::STATUS_OK;
    attributes->setIntArray(key.c_str(), values.data(), values.size(), &status);
    check(status, key);
}

void GeometryBuilder::setFloatArray(std::wstring const& key, std::vector<double> const& values) {
    kolt::Status status = kolt::STATUS_OK;
    attributes->setFloatArray(key.c_str(), values.data(), values.size(), &status);
    check(status, key);
}

void GeometryBuilder::setStringArray(std::wstring const& key,
                                     std::vector<std::wstring> const& values) {
    std::vector<wchar_t const*> pointers;
    for (auto const& value : values)
        pointers.push_back(value.c_str());
    kolt::Status status = kolt::STATUS_OK;
    attributes->setStringArray(key.c_str(), pointers.data(), pointers.size(), &status);
    check(status, key);
}

void GeometryBuilder::setURI(std::shared_ptr<URI> const& value) {
    uri = value;
}

void GeometryBuilder::addMesh(std::shared_ptr<Mesh> const& mesh) {
    if (mesh)
        meshes.push_back(mesh);
}

std::shared_ptr<Geometry> GeometryBuilder::createSharedAndReset(std::wstring* /*warnings*/) {
    KOLTUtils::AttributeMapPtr map(attributes->createAttributeMapAndReset());
    std::shared_ptr<Geometry> geometry(
        new Geometry(std::move(uri), std::move(meshes), std::move(map)));
    uri.reset();
    meshes.clear();
    return geometry;
}

} // namespace koltx
