#pragma once

#include <MeshFixtures.h>

#include "gml/XmlWriter.h"

#include <koltx/Mesh.h>
#include <koltx/Texture.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

namespace gmltest {

// The identifier of the reference outputs.
inline std::wstring const referenceId = L"c3f1a0be-5d2e-4c11-9a77-0e4b2c9f6d10";

// The reference quad: host vertices in the x-z plane, UVs over the unit square.
inline std::shared_ptr<koltx::Mesh> referenceQuad() {
    return fixtures::meshOf({{0, 0, 0}, {10, 0, 0}, {10, 0, -10}, {0, 0, -10}}, {{0, 1, 2, 3}},
                            {{0, 0, 1, 0, 1, 1, 0, 1}});
}

inline std::shared_ptr<koltx::Mesh> triangle() {
    return fixtures::meshOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}});
}

inline std::shared_ptr<koltx::Texture> makeTexture(std::uint8_t shade) {
    return std::make_shared<koltx::Texture>(nullptr, 1, 1, koltx::Texture::FORMAT_RGB8,
                                            std::vector<std::uint8_t>{shade, shade, shade});
}

// What `node` writes at `depth`; the writer must come back to that depth with no open tag.
template <typename Node>
std::string writeAt(Node& node, std::uint32_t depth, int version = 3, int precision = 3) {
    std::ostringstream out;
    gml::XmlWriter writer(out, version, precision);
    writer.depth = depth;
    node.write(writer);
    EXPECT_EQ(writer.depth, depth);
    EXPECT_TRUE(writer.openTags.empty());
    return out.str();
}

} // namespace gmltest
