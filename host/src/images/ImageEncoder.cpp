#include "ImageEncoder.h"

#include "ImageOptionsValidator.h"
#include "kolt/AttributeMapBuilder.h"
#include "kolt/Callbacks.h"
#include "koltx/EncodeOptionsAnnotator.h"
#include "koltx/EncoderInfoBuilder.h"
#include "koltx/KOLTUtils.h"
#include "koltx/StatusException.h"

#include <cwchar>
#include <memory>

namespace koltx {

ImageEncoder::ImageEncoder(std::wstring const& id, kolt::AttributeMap const* options,
                           kolt::Callbacks* callbacks)
    : Encoder(id, options, callbacks) {}

ImageEncoder::~ImageEncoder() = default;

void ImageEncoder::encode(std::vector<std::shared_ptr<Content>> const& contents) {
    auto* output = dynamic_cast<kolt::SimpleOutputCallbacks*>(getCallbacks());
    if (output == nullptr)
        throw StatusException(kolt::STATUS_CALLBACKS_UNUSABLE);
    kolt::AttributeMap const* options = getOptions();

    wchar_t const* name = options != nullptr ? options->getString(L"textureName") : nullptr;
    bool topFirst = true;
    bool skipExisting = false;
    if (options != nullptr) {
        kolt::Status status = kolt::STATUS_OK;
        bool const flip = options->getBool(L"textureFlipH", &status);
        if (status == kolt::STATUS_OK)
            topFirst = flip;
        wchar_t const* existing = options->getString(L"existingFiles");
        skipExisting = existing != nullptr && std::wcscmp(existing, L"SKIP") == 0;
    }

    for (auto const& content : contents) {
        auto const* texture = dynamic_cast<Texture const*>(content.get());
        if (texture == nullptr || !texture->isValid())
            throw StatusException(kolt::STATUS_TEXTURE_INVALID);
        if (name == nullptr || *name == 0)
            throw StatusException(kolt::STATUS_TEXTURE_NAME_MISSING);

        kolt::Status status = kolt::STATUS_UNSPECIFIED_ERROR;
        int32_t const mode = skipExisting ? kolt::SimpleOutputCallbacks::OPEN_KEEP
                                          : kolt::SimpleOutputCallbacks::OPEN_REPLACE;
        // Encoded before opening, so a failing encoder leaves no output behind.
        std::vector<uint8_t> const bytes = encodeImage(*texture, topFirst);
        uint64_t const handle =
            output->open(getID().c_str(), kolt::CT_TEXTURE, name, mode, bytes.size(), &status);
        if (skipExisting && status == kolt::SimpleOutputCallbacks::STATUS_EXISTS)
            continue;
        if (status != kolt::STATUS_OK)
            throw StatusException(status);
        status = output->write(handle, bytes.data(), bytes.size());
        if (status != kolt::STATUS_OK) {
            output->close(handle, true, nullptr);
            throw StatusException(status);
        }
        status = output->close(handle, false, nullptr);
        if (status != kolt::STATUS_OK)
            throw StatusException(status);
    }
}

kolt::EncoderInfo const* ImageEncoder::makeInfo(wchar_t const* id, wchar_t const* name,
                                                wchar_t const* description,
                                                wchar_t const* extensions) {
    EncoderInfoBuilder builder;
    builder.setID(id).setName(name).setDescription(description).setExtension(extensions);
    builder.setType(kolt::CT_TEXTURE).setIcon("");

    KOLTUtils::AttributeMapBuilderPtr defaults(kolt::AttributeMapBuilder::create());
    defaults->setString(L"textureName", L"");
    defaults->setBool(L"textureFlipH", true);
    defaults->setString(L"existingFiles", L"OVERWRITE");
    KOLTUtils::AttributeMapPtr const map(defaults->createAttributeMap());
    builder.setDefaultOptions(map.get());

    // The validator needs the list as the information will give it.
    kolt::EncoderInfo const* probe =
        EncoderInfoBuilder().setID(id).setExtension(extensions).create(nullptr);
    std::wstring const list = probe->getExtensions();
    probe->destroy();
    builder.setValidator(std::make_shared<ImageOptionsValidator>(list));

    EncodeOptionsAnnotator annotator(builder);
    annotator.option(L"textureName")
        .setLabel(L"Texture Name")
        .setOrder(0.0)
        .setDescription(L"File name of the written image; made a legal file name with the "
                        L"encoder's extension.");
    annotator.option(L"textureFlipH")
        .setLabel(L"Flip Rows")
        .setOrder(1.0)
        .setDescription(L"Writes the top row first; off writes rows as stored, bottom first.");
    annotator.option(L"existingFiles")
        .setLabel(L"Existing Files")
        .setOrder(2.0)
        .setDescription(L"OVERWRITE replaces an existing file, SKIP leaves it alone.");
    return builder.create(nullptr);
}

} // namespace koltx
