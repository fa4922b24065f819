#include "EncoderTestSupport.h"

#include <Golden.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <thread>

namespace {

// A generation with paths, pathless meshes, a texture and a material, in three shapes.
std::vector<std::shared_ptr<koltx::InitialShape const>> sampleShapes() {
    auto const texture = enctest::makeTexture(L"file:///t/facade.png", 3);
    auto const textured = enctest::makeMaterial(L"facade", {1, 1, 1}, {texture});
    auto const red = enctest::makeMaterial(L"red", {1, 0, 0});
    std::vector<std::shared_ptr<koltx::InitialShape const>> shapes;
    for (int s = 0; s < 3; ++s) {
        std::vector<enctest::Square> faces;
        for (int f = 0; f < 20; ++f)
            faces.push_back({f * 1.5 + s, 0.25 * f, -2.0 * s, 1.0, static_cast<uint32_t>(f % 2)});
        auto const wall = enctest::makeMesh(
            L"bldg:Building[b" + std::to_wstring(s) +
                L"]\\bldg:boundedBy[]\\bldg:WallSurface[w]\\bldg:lod2MultiSurface[]\\gml:"
                L"MultiSurface[m]\\",
            faces, {textured, red}, true);
        for (auto& face : faces)
            face.material = 0;
        auto const plain = enctest::makeMesh(L"generated", faces, {red});
        shapes.push_back(
            enctest::makeInitialShape({enctest::makeLeaf(enctest::makeGeometry({wall, plain}))}));
    }
    return shapes;
}

struct Result {
    std::string document;
    std::vector<std::wstring> names;
};

// Material members list their polygons ordered by identifier, which is random: those lines are
// compared as a sorted set, everything else line by line.
std::string normalize(std::string const& document) {
    std::istringstream lines(document);
    std::string line, rest;
    std::vector<std::string> targets;
    while (std::getline(lines, line)) {
        if (line.find("<app:target>") != std::string::npos)
            targets.push_back(line);
        else
            rest += line + "\n";
    }
    std::sort(targets.begin(), targets.end());
    for (auto const& target : targets)
        rest += target + "\n";
    return rest;
}

Result encodeOnce(std::vector<std::shared_ptr<koltx::InitialShape const>> const& shapes) {
    koltx::MemoryOutputCallbacks outputs;
    Result result;
    result.document =
        normalize(testsupport::maskIdentifiers(enctest::encodeToText(shapes, nullptr, &outputs)));
    result.names = outputs.getNames();
    return result;
}

} // namespace

TEST(EncoderThreads, ParallelEncodersWriteWhatOneAfterTheOtherWrites) {
    auto const shapes = sampleShapes();
    Result const reference = encodeOnce(shapes);
    ASSERT_NE(std::string::npos, reference.document.find("app:ParameterizedTexture"));
    ASSERT_NE(std::string::npos, reference.document.find("app:X3DMaterial"));

    constexpr int threadCount = 6;
    std::vector<Result> results(threadCount);
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t)
        threads.emplace_back([&, t] {
            for (int round = 0; round < 5; ++round)
                results[t] = encodeOnce(shapes);
        });
    for (auto& thread : threads)
        thread.join();
    for (auto const& result : results) {
        EXPECT_EQ(reference.document, result.document);
        EXPECT_EQ(reference.names, result.names);
    }
}
