#include "ModelBuilder.h"
#include "SaxParser.h"

#include <citygml/citygml.h>

namespace citygml {

std::shared_ptr<CityModel const> load(std::istream& stream, ParserParams const& params,
                                      std::shared_ptr<TesselatorBase> tesselator,
                                      std::shared_ptr<CityGMLLogger> logger) {
    ModelBuilder builder(params, std::move(tesselator), std::move(logger));
    SaxParser::parse(stream, builder);
    return builder.finish();
}

} // namespace citygml
