#pragma once

#include "kolt/AttributeMapBuilder.h"
#include "koltx/AttributeSetter.h"
#include "koltx/Geometry.h"
#include "koltx/KOLTUtils.h"

#include <memory>
#include <string>
#include <vector>

namespace koltx {

class GeometryBuilder : public AttributeSetter {
public:
    GeometryBuilder();
    GeometryBuilder(GeometryBuilder const&) = delete;
    GeometryBuilder& operator=(GeometryBuilder const&) = delete;
    ~GeometryBuilder() override;

    void setBool(std::wstring const& key, bool value) override;
    void setInt(std::wstring const& key, int32_t value) override;
    void setFloat(std::wstring const& key, double value) override;
    void setString(std::wstring const& key, std::wstring const& value) override;
    void setBoolArray(std::wstring const& key, std::vector<bool> const& values) override;
    void setIntArray(std::wstring const& key, std::vector<int32_t> const& values) override;
    void setFloatArray(std::wstring const& key, std::vector<double> const& values) override;
    void setStringArray(std::wstring const& key, std::vector<std::wstring> const& values) override;

    void setURI(std::shared_ptr<URI> const& uri);
    // A null mesh is ignored.
    void addMesh(std::shared_ptr<Mesh> const& mesh);
    size_t getMeshCount() const { return meshes.size(); }

    // Makes the geometry and empties the builder. `warnings` (may be null) is not written to.
    std::shared_ptr<Geometry> createSharedAndReset(std::wstring* warnings);

private:
    std::shared_ptr<URI> uri;
    std::vector<std::shared_ptr<Mesh>> meshes;
    KOLTUtils::AttributeMapBuilderPtr attributes;
};

} // namespace koltx
