// The decoder against its baseline, the reader's bare load of the same bytes, in one run: the
// difference is the decoder's own work (walk, paths, meshes, materials).
#include "GeometrySummary.h"
#include "decoder/CityGMLDecoder.h"
#include "info/ModelFacts.h"
#include "vocabulary/PathNormalizer.h"

#include <benchmark/benchmark.h>
#include <citygml/citygml.h>
#include <koltx/Geometry.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string const& document() {
    static std::string const text = [] {
        std::ifstream in(std::string(KOLT_TESTDATA_DIR) +
                             "/citygml2_lod2_buildings/berlin_lod2_buildings_test_area.gml",
                         std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }();
    return text;
}

void BM_ReaderLoad(benchmark::State& state) {
    if (document().empty()) {
        state.SkipWithError("test data not found");
        return;
    }
    for (auto _ : state) {
        std::istringstream stream(document());
        citygml::ParserParams params;
        params.tesselate = false;
        auto model = citygml::load(stream, params);
        benchmark::DoNotOptimize(model);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * document().size()));
}
BENCHMARK(BM_ReaderLoad)->Unit(benchmark::kMillisecond);

void BM_Decode(benchmark::State& state) {
    if (document().empty()) {
        state.SkipWithError("test data not found");
        return;
    }
    for (auto _ : state) {
        std::istringstream stream(document());
        CityGMLDecoder decoder;
        std::vector<std::shared_ptr<koltx::Content>> results;
        std::wstring warnings;
        decoder.decode(results, stream, nullptr, L"/bench/berlin.gml", nullptr, warnings);
        benchmark::DoNotOptimize(results);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * document().size()));
}
BENCHMARK(BM_Decode)->Unit(benchmark::kMillisecond);

// What `info` does with decoded meshes: counts, names, features by class, levels, box.
void BM_InfoSummary(benchmark::State& state) {
    if (document().empty()) {
        state.SkipWithError("test data not found");
        return;
    }
    std::istringstream stream(document());
    CityGMLDecoder decoder;
    std::vector<std::shared_ptr<koltx::Content>> results;
    std::wstring warnings;
    decoder.decode(results, stream, nullptr, L"/bench/berlin.gml", nullptr, warnings);
    auto const geometry = std::dynamic_pointer_cast<koltx::Geometry>(results.at(0));
    for (auto _ : state) {
        GeometrySummary summary(geometry, warnings, true, false);
        ModelFacts facts("", geometry->getMeshes(), summary.spatialReference);
        benchmark::DoNotOptimize(facts);
    }
    state.SetItemsProcessed(
        static_cast<int64_t>(state.iterations() * geometry->getMeshes().size()));
}
BENCHMARK(BM_InfoSummary)->Unit(benchmark::kMillisecond);

// A copy of the path is the floor of any normalisation.
void BM_PathCopy(benchmark::State& state) {
    std::wstring const path = L"bldg:boundedby\\bldg:wallsurface[ID_ecf28536-51af]\\"
                              L"bldg:lod2multisurface\\gml:multisurface[ID_3c430a9a-9b40]\\";
    for (auto _ : state) {
        std::wstring copy = path;
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_PathCopy);

void BM_NormalizeNodePath(benchmark::State& state) {
    std::wstring const path = L"bldg:boundedby\\bldg:wallsurface[ID_ecf28536-51af]\\"
                              L"bldg:lod2multisurface\\gml:multisurface[ID_3c430a9a-9b40]\\";
    for (auto _ : state) {
        std::wstring normal = normalizeNodePath(path);
        benchmark::DoNotOptimize(normal);
    }
}
BENCHMARK(BM_NormalizeNodePath);

} // namespace
