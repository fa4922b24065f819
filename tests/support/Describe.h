#pragma once

#include <kolt/AttributeMap.h>
#include <kolt/EncoderInfo.h>

#include <string>

namespace testsupport {

// One line per key, in the map's order: key, type and value(s).
std::string describeAttributes(kolt::AttributeMap const& map);

// Identity, file extensions, default options and every option annotation of an encoder.
std::string describeEncoderInfo(kolt::EncoderInfo const& info);

} // namespace testsupport
