#include "ModelBuilder.h"
#include "SaxParser.h"

#include <citygml/citygml.h>

namespace citygml {

namespace {
thread_local std::shared_ptr<CityGMLLogger> t_fallbackLogger;
} // namespace

std::shared_ptr<CityGMLLogger> setThreadFallbackLogger(std::shared_ptr<CityGMLLogger> logger) {
    t_fallbackLogger.swap(logger);
    return logger;
}

std::shared_ptr<CityGMLLogger> threadFallbackLogger() {
    return t_fallbackLogger;
}

std::shared_ptr<CityModel const> load(std::istream& stream, ParserParams const& params,
                                      std::shared_ptr<TesselatorBase> tesselator,
                                      std::shared_ptr<CityGMLLogger> logger) {
    if (!logger)
        logger = t_fallbackLogger;
    ModelBuilder builder(params, std::move(tesselator), std::move(logger));
    SaxParser::parse(stream, builder);
    return builder.finish();
}

} // namespace citygml
