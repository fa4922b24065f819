// The encode preparation on a city-sized input: one million quads in 10,000 buildings, every
// polygon with its own corners, as a decoder delivers them. Each building is one initial shape
// that is added and fetched as an encoder does. Baselines in the same run: the same preparation
// without vertex merging, and a plain copy of the input coordinates.
#include "koltx/DefaultNamePreparator.h"
#include "koltx/EncodePreparator.h"
#include "koltx/GeometryBuilder.h"
#include "koltx/MeshBuilder.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr int BUILDINGS = 10000;
constexpr int QUADS_PER_SIDE = 10; // 10 x 10 quads per building: 1,000,000 faces in all

using namespace koltx;

// A building's facade grid, each quad with its own four corners and UVs.
std::shared_ptr<Geometry> building(int seed) {
    MeshBuilder mesh;
    mesh.setName(L"bldg:Building[b" + std::to_wstring(seed) + L"]\\gml:MultiSurface[]\\");
    double const step = 3.0 + (seed % 7) * 0.1;
    for (int i = 0; i < QUADS_PER_SIDE; ++i)
        for (int j = 0; j < QUADS_PER_SIDE; ++j) {
            uint32_t const face = mesh.addFace();
            static int const corner[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
            for (auto const& c : corner) {
                double const xyz[3] = {(i + c[0]) * step, (j + c[1]) * step, 0.0};
                double const uv[2] = {double(c[0]), double(c[1])};
                mesh.addFaceVertexIndex(face, mesh.addVertexCoords(xyz));
                mesh.addFaceUVIndex(face, 0, mesh.addUVCoords(0, uv));
            }
        }
    GeometryBuilder geometry;
    geometry.addMesh(mesh.createSharedAndReset(nullptr));
    return geometry.createSharedAndReset(nullptr);
}

struct City {
    std::vector<std::shared_ptr<Shape>> leaves;
    size_t vertices = 0;
    City() {
        for (int b = 0; b < BUILDINGS; ++b) {
            auto geometry = building(b);
            vertices += geometry->getVertexCount();
            leaves.push_back(std::make_shared<Shape>(
                geometry, Shape::translation((b % 100) * 50.0, 0.0, (b / 100) * 50.0)));
        }
    }
};

City const& city() {
    static City const instance;
    return instance;
}

double peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

void prepare(benchmark::State& state, bool merge) {
    City const& input = city();
    auto flags = EncodePreparator::PreparationFlags()
                     .instancing(false)
                     .meshMerging(MeshMerging::KEEP)
                     .mergeVertices(merge)
                     .mergeToleranceVertices(0.001f)
                     .processHoles(HoleProcessor::TRIANGULATE);
    size_t outputVertices = 0;
    for (auto _ : state) {
        DefaultNamePreparator names(L"_", L"_");
        auto preparator = EncodePreparator::create(true, names, names.newNamespace(),
                                                   names.newNamespace(), nullptr);
        outputVertices = 0;
        std::vector<EncodePreparator::FinalizedInstance> instances;
        for (auto const& leaf : input.leaves) {
            preparator->addLeafShape(nullptr, leaf, nullptr, ReportsPtr());
            instances.clear();
            preparator->fetchInstances(instances, flags, nullptr);
            outputVertices += instances[0].getGeometry()->getVertexCount();
        }
        benchmark::DoNotOptimize(outputVertices);
    }
    state.counters["vertices/s"] = benchmark::Counter(
        double(input.vertices) * double(state.iterations()), benchmark::Counter::kIsRate);
    state.counters["out_vertices"] = double(outputVertices);
    state.counters["peak_MB"] = peakMegabytes();
}

void BM_PrepareCityMergingVertices(benchmark::State& state) {
    prepare(state, true);
}
void BM_PrepareCityWithoutMerging(benchmark::State& state) {
    prepare(state, false);
}

void BM_CopyCityCoordinates(benchmark::State& state) {
    City const& input = city();
    std::vector<double> target;
    for (auto _ : state) {
        target.clear();
        for (auto const& leaf : input.leaves) {
            auto const& coords = leaf->getGeometry()->getMeshes()[0]->getVertexCoords();
            target.insert(target.end(), coords.begin(), coords.end());
        }
        benchmark::DoNotOptimize(target.data());
    }
    state.counters["vertices/s"] = benchmark::Counter(
        double(input.vertices) * double(state.iterations()), benchmark::Counter::kIsRate);
    state.counters["peak_MB"] = peakMegabytes();
}

// The prepared geometry of one leaf, added and fetched as an encoder does.
std::shared_ptr<Geometry const> prepareOne(std::shared_ptr<Shape> const& leaf,
                                           EncodePreparator::PreparationFlags const& flags) {
    DefaultNamePreparator names(L"_", L"_");
    auto preparator =
        EncodePreparator::create(true, names, names.newNamespace(), names.newNamespace(), nullptr);
    preparator->addLeafShape(nullptr, leaf, nullptr, ReportsPtr());
    std::vector<EncodePreparator::FinalizedInstance> instances;
    preparator->fetchInstances(instances, flags, nullptr);
    return instances[0].getGeometry();
}

// One mesh of a million quads (four million corners) in a single initial shape.
void BM_PrepareOneMillionQuadMesh(benchmark::State& state) {
    static std::shared_ptr<Shape> const leaf = [] {
        MeshBuilder mesh;
        int const side = 1000;
        mesh.reserve(size_t(side) * side * 4, size_t(side) * side, size_t(side) * side * 4);
        for (int i = 0; i < side; ++i)
            for (int j = 0; j < side; ++j) {
                uint32_t const face = mesh.addFace();
                static int const corner[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
                for (auto const& c : corner) {
                    double const xyz[3] = {double(i + c[0]), 0.0, double(j + c[1])};
                    mesh.addFaceVertexIndex(face, mesh.addVertexCoords(xyz));
                }
            }
        GeometryBuilder geometry;
        geometry.addMesh(mesh.createSharedAndReset(nullptr));
        return std::make_shared<Shape>(geometry.createSharedAndReset(nullptr));
    }();
    auto flags = EncodePreparator::PreparationFlags()
                     .mergeVertices(state.range(0) != 0)
                     .mergeToleranceVertices(0.001f);
    size_t vertices = 0;
    for (auto _ : state) {
        vertices = prepareOne(leaf, flags)->getVertexCount();
        benchmark::DoNotOptimize(vertices);
    }
    state.counters["vertices/s"] =
        benchmark::Counter(4.0e6 * double(state.iterations()), benchmark::Counter::kIsRate);
    state.counters["out_vertices"] = double(vertices);
    state.counters["peak_MB"] = peakMegabytes();
}

// A decoded city as one initial shape: 100,000 meshes of two quads each, one per surface, so
// that the work per mesh counts as much as the work per vertex.
void BM_PrepareManySmallMeshes(benchmark::State& state) {
    static std::shared_ptr<Shape> const leaf = [] {
        GeometryBuilder geometry;
        for (int m = 0; m < 100000; ++m) {
            MeshBuilder mesh;
            mesh.setName(L"bldg:Building[b]\\bldg:boundedBy[s" + std::to_wstring(m) +
                         L"]\\gml:MultiSurface[]\\");
            double const x = (m % 300) * 20.0, y = (m / 300) * 20.0;
            for (int q = 0; q < 2; ++q) {
                uint32_t const face = mesh.addFace();
                static int const corner[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
                for (auto const& c : corner) {
                    double const xyz[3] = {x + (q + c[0]) * 5.0, y, c[1] * 3.0};
                    mesh.addFaceVertexIndex(face, mesh.addVertexCoords(xyz));
                }
            }
            geometry.addMesh(mesh.createSharedAndReset(nullptr));
        }
        return std::make_shared<Shape>(geometry.createSharedAndReset(nullptr));
    }();
    auto flags = EncodePreparator::PreparationFlags()
                     .instancing(false)
                     .meshMerging(MeshMerging::KEEP)
                     .mergeVertices(true)
                     .mergeToleranceVertices(0.001f);
    size_t meshes = 0;
    for (auto _ : state) {
        meshes = prepareOne(leaf, flags)->getMeshes().size();
        benchmark::DoNotOptimize(meshes);
    }
    state.counters["meshes/s"] =
        benchmark::Counter(1.0e5 * double(state.iterations()), benchmark::Counter::kIsRate);
    state.counters["out_meshes"] = double(meshes);
}

} // namespace

BENCHMARK(BM_PrepareManySmallMeshes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CopyCityCoordinates)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PrepareCityWithoutMerging)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_PrepareCityMergingVertices)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_PrepareOneMillionQuadMesh)
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);
