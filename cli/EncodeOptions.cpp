#include "EncodeOptions.h"

#include "OptionValue.h"
#include "UsageError.h"
#include "XmlSafe.h"

#include <kolt/AttributeMapBuilder.h>
#include <kolt/StringUtils.h>

#include <charconv>
#include <cmath>

namespace {

int parseLod(std::string const& text) {
    int value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0)
        throw UsageError("option --lod needs a whole number of 0 or more, not '" + text + "'");
    return value;
}

double parsePrecision(std::string const& text) {
    double value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) ||
        value <= 0 || value > 1)
        throw UsageError("option --vertex-precision needs a distance above 0 and at most 1, not '" +
                         text + "'");
    return value;
}

} // namespace

bool EncodeOptions::consume(std::vector<std::string> const& arguments, std::size_t& i) {
    std::string const& arg = arguments[i];
    std::string value;
    if (takeOptionValue(arguments, i, "--lod", value)) {
        lod = parseLod(value);
    } else if (takeOptionValue(arguments, i, "--base-name", value)) {
        if (value.empty())
            throw UsageError("option --base-name needs a name");
        baseName = value;
    } else if (takeOptionValue(arguments, i, "--srs-name", value)) {
        srsName = value;
    } else if (takeOptionValue(arguments, i, "--vertex-precision", value)) {
        vertexPrecision = parsePrecision(value);
    } else if (arg == "--merge-vertices") {
        mergeVertices = true;
    } else if (arg == "--no-merge-vertices") {
        mergeVertices = false;
    } else if (arg == "--error-fallback") {
        errorFallback = true;
    } else if (arg == "--no-error-fallback") {
        errorFallback = false;
    } else {
        return false;
    }
    return true;
}

void EncodeOptions::apply(kolt::AttributeMapBuilder& builder) const {
    if (lod)
        builder.setInt(L"LOD", *lod);
    if (baseName)
        builder.setString(L"baseName", kolt::StringUtils::toUTF16(*baseName).c_str());
    if (srsName) // written into the document as it stands, so made safe for XML here
        builder.setString(L"srsName", XmlSafe::text(kolt::StringUtils::toUTF16(*srsName)).c_str());
    if (vertexPrecision)
        builder.setFloat(L"vertexPrecision", *vertexPrecision);
    if (mergeVertices)
        builder.setBool(L"mergeVertices", *mergeVertices);
    if (errorFallback)
        builder.setBool(L"errorFallback", *errorFallback);
}

bool EncodeOptions::empty() const {
    return !lod && !baseName && !srsName && !vertexPrecision && !mergeVertices && !errorFallback;
}

std::string EncodeOptions::usage() {
    return "Encoding options (convert to .gml):\n"
           "  --lod N                   highest level of detail written (default 4)\n"
           "  --base-name NAME          write NAME.gml in OUT's folder instead of OUT\n"
           "  --srs-name NAME           spatial reference system of the envelopes (default: the\n"
           "                            input's own, for CityGML input)\n"
           "  --vertex-precision D      coordinate resolution, 1e-10 to 1 (default: the\n"
           "                            resolution the input's coordinates need, at least 0.001)\n"
           "  --merge-vertices, --no-merge-vertices\n"
           "                            share vertices closer than the precision (default on)\n"
           "  --error-fallback, --no-error-fallback\n"
           "                            write a shape's own geometry when its leaves fail\n";
}
