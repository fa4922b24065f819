#pragma once

#include <citygml/AppearanceTarget.h>
#include <citygml/AttributeValue.h>
#include <citygml/CityGMLLogger.h>
#include <citygml/CityModel.h>
#include <citygml/CityObject.h>
#include <citygml/Envelope.h>
#include <citygml/Geometry.h>
#include <citygml/HierarchyTracker.h>
#include <citygml/LinearRing.h>
#include <citygml/Material.h>
#include <citygml/ParserParams.h>
#include <citygml/Polygon.h>
#include <citygml/TVec2.h>
#include <citygml/TVec3.h>
#include <citygml/TesselatorBase.h>
#include <citygml/Texture.h>
#include <citygml/TextureCoordinates.h>
#include <citygml/TextureTargetDefinition.h>

#include <istream>
#include <memory>

namespace citygml {

// Reads a CityGML 1.0, 2.0 or 3.0 document from `stream`. Throws std::runtime_error (with line,
// column and the XML parser's message) when the document is not well-formed XML.
std::shared_ptr<CityModel const> load(std::istream& stream, ParserParams const& params,
                                      std::shared_ptr<TesselatorBase> tesselator = nullptr,
                                      std::shared_ptr<CityGMLLogger> logger = nullptr);

} // namespace citygml
