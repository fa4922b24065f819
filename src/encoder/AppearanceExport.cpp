#include "encoder/AppearanceExport.h"

#include <gml/BasicMaterialAppearanceMemberNode.h>
#include <gml/TextureAppearanceMemberNode.h>

#include <kolt/AttributeMapBuilder.h>
#include <kolt/Callbacks.h>
#include <kolt/EncoderInfo.h>
#include <koltx/DefaultNamePreparator.h>
#include <koltx/ExtensionManager.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Material.h>
#include <koltx/MaterialBuilder.h>
#include <koltx/StatusException.h>
#include <koltx/Texture.h>
#include <koltx/URI.h>
#include <koltx/URIUtils.h>

#include <vector>

namespace {

std::wstring const pngEncoderId = L"com.morvane.kolt.codecs.PNGEncoder";
std::wstring const jpgEncoderId = L"com.morvane.kolt.codecs.JPGEncoder";

// A material as the host makes it when nothing is set; such a material gets no appearance.
std::shared_ptr<koltx::Material> const& defaultMaterial() {
    static std::shared_ptr<koltx::Material> const material = [] {
        koltx::MaterialBuilder builder;
        return builder.createSharedAndReset(nullptr);
    }();
    return material;
}

std::shared_ptr<koltx::Texture> firstValidTexture(koltx::Material const& material) {
    for (auto const& texture : material.getDiffuseMap())
        if (texture && texture->isValid())
            return texture;
    return nullptr;
}

bool usable(std::shared_ptr<koltx::Texture> const& texture) {
    return texture && texture->isValid();
}

std::wstring const& extensionOf(koltx::Texture const& texture) {
    static std::wstring const none;
    auto const uri = texture.getURI();
    return uri ? uri->getExtension() : none;
}

koltx::KOLTUtils::AttributeMapPtr makeImageOptions(std::wstring const& encoderId,
                                                   std::wstring const& name) {
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create(nullptr));
    builder->setString(L"textureName", name.c_str());
    builder->setBool(L"textureFlipH", true);
    builder->setString(L"existingFiles", L"OVERWRITE");

    koltx::KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(
        koltx::ExtensionManager::instance()->createEncoderInfo(encoderId));
    if (!info)
        throw koltx::StatusException(kolt::STATUS_EXTENSION_NOT_FOUND);
    koltx::KOLTUtils::AttributeMapPtr const options(builder->createAttributeMap(nullptr));
    kolt::AttributeMap const* validated = nullptr;
    kolt::Status status = kolt::STATUS_OK;
    info->createValidatedOptions(options.get(), &validated, &status);
    if (validated == nullptr)
        throw koltx::StatusException(status != kolt::STATUS_OK ? status
                                                               : kolt::STATUS_UNSPECIFIED_ERROR);
    return koltx::KOLTUtils::AttributeMapPtr(validated);
}

std::wstring runImageEncoder(std::shared_ptr<koltx::Texture> const& texture,
                             std::wstring const& encoderId, kolt::SimpleOutputCallbacks* callbacks,
                             std::wstring const& name) {
    if (!usable(texture))
        throw koltx::StatusException(kolt::STATUS_TEXTURE_INVALID);
    auto const options = makeImageOptions(encoderId, name);
    {
        auto encoder =
            koltx::ExtensionManager::instance()->createEncoder(encoderId, options.get(), callbacks);
        encoder->encode(std::vector<std::shared_ptr<koltx::Content>>{texture});
    }
    kolt::Status status = kolt::STATUS_UNSPECIFIED_ERROR;
    wchar_t const* written = options->getString(L"textureName", &status);
    if (status != kolt::STATUS_OK)
        throw koltx::StatusException(status);
    if (written == nullptr)
        throw koltx::StatusException(kolt::STATUS_TEXTURE_NAME_MISSING);
    return written;
}

} // namespace

std::wstring chooseImageExtension(std::wstring const& encoderId, std::wstring const& extension) {
    std::wstring list;
    {
        koltx::KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(
            koltx::ExtensionManager::instance()->createEncoderInfo(encoderId));
        if (!info)
            throw koltx::StatusException(kolt::STATUS_EXTENSION_NOT_FOUND);
        wchar_t const* extensions = info->getExtensions();
        list = extensions != nullptr ? extensions : L"";
    }
    if (list.find(extension + L";") != std::wstring::npos)
        return extension;
    return list.substr(0, list.find(L';'));
}

std::wstring makeImageFileName(std::wstring const& baseName, std::wstring const& extension) {
    auto const encoded = koltx::URIUtils::percentEncode(L"/" + baseName);
    auto const uri = koltx::URIUtils::createFileURI(encoded);
    auto const renamed = koltx::URIUtils::replaceExtension(uri, extension);
    return renamed ? renamed->getPath() : std::wstring();
}

std::wstring exportTexture(std::shared_ptr<koltx::Texture> const& texture,
                           kolt::SimpleOutputCallbacks* callbacks,
                           koltx::NamePreparator& namePreparator,
                           koltx::NamePreparator::NamespacePtr const& nameSpace) {
    if (!usable(texture))
        throw koltx::StatusException(kolt::STATUS_TEXTURE_INVALID);

    std::wstring const& sourceExtension = extensionOf(*texture);
    std::wstring const* encoderId = &pngEncoderId;
    if (sourceExtension == L".png")
        encoderId = &pngEncoderId;
    else if (texture->getFormat() == koltx::Texture::FORMAT_GREY8 ||
             texture->getFormat() == koltx::Texture::FORMAT_RGB8)
        encoderId = &jpgEncoderId;

    std::wstring const extension = chooseImageExtension(*encoderId, sourceExtension);
    auto const uri = texture->getURI();
    std::wstring const path = makeImageFileName(uri ? uri->getBaseName() : L"", extension);
    std::wstring const name = path.substr(1); // throws std::out_of_range for an empty path

    std::wstring unique;
    namePreparator.uniqueName(unique, name, koltx::NamePreparator::KIND_FILE, nameSpace);
    return runImageEncoder(texture, *encoderId, callbacks, unique);
}

std::shared_ptr<gml::AppearanceMemberNode>
getAppearanceMember(CityModelDocument& document, std::shared_ptr<koltx::Material> const& material) {
    for (auto const& member : document.appearanceMembers)
        if (member->matches(material))
            return member;
    // A face without a material has no appearance to refer to.
    if (!material)
        return nullptr;

    if (auto texture = firstValidTexture(*material)) {
        std::wstring const image = exportTexture(
            texture, document.callbacks, document.namePreparator, document.textureNamespace);
        auto member =
            std::make_shared<gml::TextureAppearanceMemberNode>(material->getName(), texture, image);
        document.appearanceMembers.push_back(member);
        document.usedPrefixes.emplace(L"app");
        return member;
    }
    if (defaultMaterial()->equals(*material))
        return nullptr;

    auto member = std::make_shared<gml::BasicMaterialAppearanceMemberNode>(material);
    document.appearanceMembers.push_back(member);
    document.usedPrefixes.emplace(L"app");
    return member;
}
