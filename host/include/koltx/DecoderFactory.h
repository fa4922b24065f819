#pragma once

#include "koltx/ExtensionFactory.h"
#include "koltx/FileExtensions.h"

#include <cstdint>
#include <string>

namespace koltx {

class DecoderFactory : public ExtensionFactory {
public:
    // Whether the decoder reads textures that are embedded in its files.
    enum EmbeddedResources : int32_t {
        ER_NONE = 0,
        ER_TEXTURES = 1,
    };

    // `icon` is base64 image text or null.
    DecoderFactory(kolt::ContentType contentType, std::wstring const& id, std::wstring const& name,
                   std::wstring const& description, FileExtensions const& extensions,
                   char const* icon, EmbeddedResources embeddedResources);
    ~DecoderFactory() override;

    Extension::ExtensionType getExtensionType() const override { return Extension::ET_DECODER; }
    bool canHandleURI(std::wstring const& uri) const override;

    FileExtensions const& getFileExtensions() const { return extensions; }
    std::string const& getIcon() const { return icon; }
    EmbeddedResources getEmbeddedResources() const { return embeddedResources; }

private:
    FileExtensions extensions;
    std::string icon;
    EmbeddedResources embeddedResources;
};

} // namespace koltx
