#include "Process.h"
#include "ScratchDir.h"
#include "TestData.h"

#include <gtest/gtest.h>
#include <tiny_obj_loader.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

// An independent OBJ reader takes the converted example as we mean it.
TEST(ObjOutput, AnOrdinaryObjReaderSeesTheExample) {
    testsupport::ScratchDir dir("objout");
    fs::path const tool = fs::read_symlink("/proc/self/exe").parent_path() / "gmlcodec";
    fs::path const example = testsupport::sourceDir() / "examples" / "small_house.gml";
    ASSERT_EQ(testsupport::runCommand(testsupport::quote(tool.string()) + " convert " +
                                      testsupport::quote(example.string()) + " " +
                                      testsupport::quote((dir / "house.obj").string()))
                  .status,
              0);

    tinyobj::ObjReaderConfig config;
    config.triangulate = false;
    tinyobj::ObjReader reader;
    ASSERT_TRUE(reader.ParseFromFile((dir / "house.obj").string(), config)) << reader.Error();
    EXPECT_EQ(reader.Warning(), "");
    auto const& shapes = reader.GetShapes();
    ASSERT_EQ(shapes.size(), 5u);
    EXPECT_EQ(shapes[3].name, "bldg:Building[house]\\bldg:boundedBy[]\\bldg:RoofSurface[roof]\\"
                              "bldg:lod2MultiSurface[]\\gml:MultiSurface[]\\4");
    // The wall with the window is triangulated: 8 triangles, all textured.
    auto const& wall = shapes[1].mesh;
    EXPECT_EQ(wall.num_face_vertices, std::vector<unsigned char>(8, 3));
    for (auto const& index : wall.indices)
        EXPECT_GE(index.texcoord_index, 0);
    std::size_t faces = 0;
    for (auto const& shape : shapes)
        faces += shape.mesh.num_face_vertices.size();
    EXPECT_EQ(faces, 1u + 8u + 3u + 2u + 6u);
    EXPECT_EQ(reader.GetAttrib().vertices.size(), 58u * 3u);

    auto const& materials = reader.GetMaterials();
    ASSERT_EQ(materials.size(), 3u);
    EXPECT_EQ(materials[1].diffuse_texname, "facade.png");
    EXPECT_FLOAT_EQ(materials[2].diffuse[0], 0.6f);
    EXPECT_FLOAT_EQ(materials[2].shininess, 25.6f);
    EXPECT_EQ(shapes[3].mesh.material_ids, (std::vector<int>{2, 2}));
}

} // namespace
