#pragma once

#include "kolt/EncoderInfo.h"
#include "kolt/Status.h"

#include <cstdint>
#include <memory>

namespace kolt {
class AttributeMap;
}

namespace koltx {

class EncodeOptionsAnnotator;
class EncodeOptionsValidator;
struct EncoderInfoData;

// Gathers the fields of a kolt::EncoderInfo.
class EncoderInfoBuilder {
public:
    EncoderInfoBuilder();
    EncoderInfoBuilder(EncoderInfoBuilder const&) = delete;
    EncoderInfoBuilder& operator=(EncoderInfoBuilder const&) = delete;
    ~EncoderInfoBuilder();

    EncoderInfoBuilder& setID(wchar_t const* id);
    EncoderInfoBuilder& setName(wchar_t const* name);
    EncoderInfoBuilder& setDescription(wchar_t const* description);
    // One extension (".gml") or several separated by ";" (".jpg;.jpeg"); a ";" is put behind each.
    EncoderInfoBuilder& setExtension(wchar_t const* extension);
    EncoderInfoBuilder& setType(int32_t contentType);
    EncoderInfoBuilder& setIcon(char const* icon);
    // Copies the map; the caller keeps its own. Null removes the defaults.
    EncoderInfoBuilder& setDefaultOptions(kolt::AttributeMap const* options);
    EncoderInfoBuilder& setValidator(std::shared_ptr<EncodeOptionsValidator> validator);

    // A new information object with the fields set so far, released with destroy(). Fails with
    // STATUS_ILLEGAL_VALUE (and null) when no ID was set.
    kolt::EncoderInfo const* create(kolt::Status* status) const;

private:
    friend class EncodeOptionsAnnotator;
    std::unique_ptr<EncoderInfoData> data;
};

} // namespace koltx
