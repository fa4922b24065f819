#pragma once

#include <gml/AppearanceMemberNode.h>
#include <gml/CityModelDocument.h>

#include <koltx/NamePreparator.h>

#include <memory>
#include <string>

namespace kolt {
class SimpleOutputCallbacks;
}
namespace koltx {
class Material;
class Texture;
} // namespace koltx

// The appearance member that stands for `material` in the document, made on first need: a
// texture member for a material with a valid texture (its image is written at once), a material
// member otherwise, and none (null) for a material in the host's default state.
std::shared_ptr<gml::AppearanceMemberNode>
getAppearanceMember(CityModelDocument& document, std::shared_ptr<koltx::Material> const& material);

// Writes the texture through one of the host's image encoders, under a name unique within
// `nameSpace`, and returns the name the image encoder used.
std::wstring exportTexture(std::shared_ptr<koltx::Texture> const& texture,
                           kolt::SimpleOutputCallbacks* callbacks,
                           koltx::NamePreparator& namePreparator,
                           koltx::NamePreparator::NamespacePtr const& nameSpace);

// `extension` if the image encoder lists it, else the encoder's first extension.
std::wstring chooseImageExtension(std::wstring const& encoderId, std::wstring const& extension);

// "/" + base name, percent-encoded, as a file URI with `extension`, back to its path.
std::wstring makeImageFileName(std::wstring const& baseName, std::wstring const& extension);
