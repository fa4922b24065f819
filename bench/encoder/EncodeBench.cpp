// One generation through the encoder: one shape holding a whole city of N buildings, each a mesh
// with its own mesh path, written into memory. Time per building should stay flat as N grows;
// finding a mesh's top-level node by a scan would make it grow with N.
#include "EncoderTestSupport.h"

#include <benchmark/benchmark.h>

namespace {

std::shared_ptr<koltx::InitialShape const> city(int buildings) {
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    for (int b = 0; b < buildings; ++b) {
        std::wstring const id = L"BLDG_" + std::to_wstring(b);
        double const x = 10.0 * (b % 300), z = 10.0 * (b / 300);
        meshes.push_back(enctest::makeMesh(
            L"bldg:Building[" + id + L"]\\bldg:boundedBy[]\\" + L"bldg:RoofSurface[" + id +
                L"_roof]\\" + L"bldg:lod2MultiSurface[]\\gml:MultiSurface[" + id + L"_ms]\\",
            {{x, 8, z, 4}, {x + 4, 8, z, 4}}));
    }
    return enctest::makeInitialShape({enctest::makeLeaf(enctest::makeGeometry(meshes))});
}

void BM_EncodeCity(benchmark::State& state) {
    auto const shape = city(static_cast<int>(state.range(0)));
    auto const options = enctest::validatedOptions(nullptr);
    std::size_t bytes = 0;
    for (auto _ : state) {
        koltx::MemoryOutputCallbacks outputs;
        enctest::runEncoder({shape}, options.get(), &outputs);
        bytes = outputs.getText(std::wstring(options->getString(L"baseName")) + L".gml").size();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_EncodeCity)->Arg(1000)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);

} // namespace
