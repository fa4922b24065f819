#pragma once

#include <gml/CityModelDocument.h>

#include <koltx/DefaultNamePreparator.h>
#include <koltx/GeometryEncoder.h>

#include <map>
#include <memory>
#include <string>

namespace koltx {
class EncodePreparator;
class GenerateContext;
class InitialShape;
} // namespace koltx

// Writes the shapes of one generation into one CityGML document. The host calls init once,
// encode once per initial shape and finish once; only finish opens an output.
class CityGMLEncoder : public koltx::GeometryEncoder {
public:
    CityGMLEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                   kolt::Callbacks* callbacks);
    ~CityGMLEncoder() override;

    void init(koltx::GenerateContext& context) override;
    using koltx::GeometryEncoder::encode;
    void encode(koltx::GenerateContext& context, size_t initialShapeIndex) override;
    void finish(koltx::GenerateContext& context) override;

    // The document gathered so far; null before init.
    CityModelDocument const* getDocument() const { return document.get(); }

private:
    std::map<std::wstring, std::wstring> collectAttributes(koltx::GenerateContext& context,
                                                           koltx::InitialShape const* initialShape,
                                                           size_t initialShapeIndex) const;
    void writeDocument();

    koltx::DefaultNamePreparator namePreparator;
    std::shared_ptr<koltx::EncodePreparator> preparator;
    std::unique_ptr<CityModelDocument> document;
};

// The value of one entry of `map` as text: strings as they are, floats as "%f", bools as
// "true"/"false", ints in decimal. Arrays and blind data give the empty string.
std::wstring attributeAsText(wchar_t const* key, kolt::AttributeMap const& map);
