// The per-face work of the document tree: a polygon node made and later written for every face
// of a mesh, and a texture target kept and written for every textured face.
#include "gml/GeometryNode.h"
#include "gml/PolygonNode.h"
#include "gml/TextureAppearanceMemberNode.h"
#include "gml/XmlWriter.h"

#include <koltx/MeshBuilder.h>

#include "CountingBuffer.h"

#include <benchmark/benchmark.h>

#include <ostream>
#include <streambuf>

namespace {

constexpr std::uint32_t faces = 10000;

// A strip of textured quads, as a grid row of an OBJ file gives.
std::shared_ptr<koltx::Mesh> const& strip() {
    static const std::shared_ptr<koltx::Mesh> mesh = [] {
        koltx::MeshBuilder builder;
        for (std::uint32_t i = 0; i <= faces; ++i) {
            double const low[3] = {i * 1.5, 0.25, 0.0};
            double const high[3] = {i * 1.5, 0.5, 1.5};
            builder.addVertexCoords(low);
            builder.addVertexCoords(high);
        }
        double const uv[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        for (auto const& coordinate : uv)
            builder.addUVCoords(0, coordinate);
        for (std::uint32_t f = 0; f < faces; ++f) {
            std::uint32_t const face = builder.addFace();
            std::uint32_t const corners[4] = {2 * f, 2 * f + 2, 2 * f + 3, 2 * f + 1};
            for (std::uint32_t c = 0; c < 4; ++c) {
                builder.addFaceVertexIndex(face, corners[c]);
                builder.addFaceUVIndex(face, 0, c);
            }
        }
        return builder.createSharedAndReset(nullptr);
    }();
    return mesh;
}

void BM_TreePolygonsMadeAndWritten(benchmark::State& state) {
    CountingBuffer sink;
    std::ostream stream(&sink);
    for (auto _ : state) {
        gml::GeometryNode node(L"g", false, L"gml:MultiSurface", strip());
        for (std::uint32_t f = 0; f < faces; ++f)
            node.addChild(std::make_shared<gml::PolygonNode>(strip(), gml::newUuid(), f,
                                                             L"gml:MultiSurface"));
        gml::XmlWriter writer(stream, 3, 3);
        node.write(writer);
    }
    benchmark::DoNotOptimize(sink.count);
    state.SetItemsProcessed(state.iterations() * faces);
}
BENCHMARK(BM_TreePolygonsMadeAndWritten)->Unit(benchmark::kMillisecond);

void BM_TreeTextureTargets(benchmark::State& state) {
    CountingBuffer sink;
    std::ostream stream(&sink);
    std::vector<std::shared_ptr<gml::PolygonNode>> polygons;
    for (std::uint32_t f = 0; f < faces; ++f)
        polygons.push_back(
            std::make_shared<gml::PolygonNode>(strip(), gml::newUuid(), f, L"gml:MultiSurface"));
    for (auto _ : state) {
        gml::TextureAppearanceMemberNode member(L"grid", nullptr, L"grid.png");
        for (auto const& polygon : polygons)
            member.addTarget(polygon);
        for (int version : {2, 3}) {
            gml::XmlWriter writer(stream, version, 3);
            member.write(writer);
        }
    }
    benchmark::DoNotOptimize(sink.count);
    state.SetItemsProcessed(state.iterations() * faces);
}
BENCHMARK(BM_TreeTextureTargets)->Unit(benchmark::kMillisecond);

} // namespace
