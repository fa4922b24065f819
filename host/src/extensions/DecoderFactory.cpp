#include "koltx/DecoderFactory.h"

namespace koltx {

DecoderFactory::DecoderFactory(kolt::ContentType contentType, std::wstring const& id,
                               std::wstring const& name, std::wstring const& description,
                               FileExtensions const& extensions, char const* icon,
                               EmbeddedResources embeddedResources)
    : ExtensionFactory(contentType, id, name, description), extensions(extensions),
      icon(icon != nullptr ? icon : ""), embeddedResources(embeddedResources) {}

DecoderFactory::~DecoderFactory() = default;

bool DecoderFactory::canHandleURI(std::wstring const& uri) const {
    return extensions.matches(uri);
}

} // namespace koltx
