// Mesh name repair and renaming on the paths a decoded city gives: 20,000 buildings with ids as
// long as real ones, each with a solid and six boundary surfaces below a property element without
// id, half of them in a building part, so that most names are repaired.
#include "MeshNameRepair.h"

#include <koltx/MeshBuilder.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int BUILDINGS = 20000;

std::wstring uuid(int n, wchar_t const* kind) {
    std::wstring digits = std::to_wstring(n);
    return L"UUID_" + std::wstring(kind) + L"-4d1e-b76c-" + std::wstring(12 - digits.size(), L'0') +
           digits + L"_t1";
}

std::vector<std::wstring> const& cityPaths() {
    static std::vector<std::wstring> const paths = [] {
        std::vector<std::wstring> list;
        int n = 0;
        for (int b = 0; b < BUILDINGS; ++b) {
            std::wstring feature = L"bldg:Building[DEBE" + std::to_wstring(b) + L"_t1]\\";
            if (b % 2 == 1)
                feature += L"bldg:consistsOfBuildingPart[]\\bldg:BuildingPart[" +
                           uuid(++n, L"part") + L"]\\";
            std::wstring const solid = uuid(++n, L"solid");
            list.push_back(feature + L"bldg:lod2Solid[]\\gml:Solid[" + solid +
                           L"]\\gml:CompositeSurface[" + uuid(++n, L"comp") + L"]\\");
            for (wchar_t const* surface : {L"WallSurface", L"WallSurface", L"WallSurface",
                                           L"WallSurface", L"RoofSurface", L"GroundSurface"}) {
                std::wstring const id = uuid(++n, L"surf");
                list.push_back(feature + L"bldg:boundedBy[]\\bldg:" + surface + L"[" + id +
                               L"]\\bldg:lod2MultiSurface[]\\gml:MultiSurface[" + uuid(++n, L"ms") +
                               L"]\\");
            }
        }
        return list;
    }();
    return paths;
}

void BM_RepairNames(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<std::wstring> names = cityPaths();
        state.ResumeTiming();
        benchmark::DoNotOptimize(MeshNameRepair::repair(names));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(cityPaths().size()));
}
BENCHMARK(BM_RepairNames)->Unit(benchmark::kMillisecond);

std::shared_ptr<koltx::Mesh> wall(int quads) {
    koltx::MeshBuilder builder;
    builder.setName(L"bldg:Building[b]\\gml:MultiSurface[]\\");
    for (int q = 0; q < quads; ++q) {
        std::uint32_t const face = builder.addFace();
        for (int c = 0; c < 4; ++c) {
            double const xyz[3] = {double(q + (c == 1 || c == 2)), double(c >= 2), 0.0};
            builder.addFaceVertexIndex(face, builder.addVertexCoords(xyz));
        }
    }
    return builder.createSharedAndReset(nullptr);
}

// Renaming meshes that nobody else holds (as the tool does after a decode) must copy nothing;
// the argument says whether a second owner forces a copy.
void BM_RenameMeshes(benchmark::State& state) {
    bool const shared = state.range(0) != 0;
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    for (int m = 0; m < 1000; ++m)
        meshes.push_back(wall(100));
    std::vector<std::shared_ptr<koltx::Mesh>> others = shared ? meshes : decltype(meshes)();
    std::wstring const name = L"bldg:Building[b]\\bldg:boundedBy[gmlcodec_1]\\gml:MultiSurface[]\\";
    for (auto _ : state)
        for (std::size_t m = 0; m < meshes.size(); ++m) {
            meshes[m] = koltx::MeshBuilder::renamed(std::move(meshes[m]), name);
            if (shared)
                others[m] = meshes[m];
        }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(meshes.size()));
}
BENCHMARK(BM_RenameMeshes)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
