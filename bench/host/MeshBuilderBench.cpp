// The host's mesh construction as a decode drives it: many small meshes with long names, each
// sized up front, one face per polygon.
#include <koltx/MeshBuilder.h>

#include <benchmark/benchmark.h>

#include <string>

namespace {

void BM_BuildSmallMeshes(benchmark::State& state) {
    std::wstring const name(250, L'x');
    double const corners[4][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    for (auto _ : state) {
        for (int m = 0; m < 1000; ++m) {
            koltx::MeshBuilder builder;
            builder.setName(name);
            builder.reserve(8, 2, 8);
            for (int f = 0; f < 2; ++f) {
                uint32_t const face = builder.addFace();
                for (auto const* xyz : corners)
                    builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
            }
            auto mesh = builder.createSharedAndReset(nullptr);
            benchmark::DoNotOptimize(mesh);
        }
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * 1000));
}
BENCHMARK(BM_BuildSmallMeshes)->Unit(benchmark::kMicrosecond);

} // namespace
