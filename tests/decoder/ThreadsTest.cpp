#include "DecoderTestSupport.h"

#include <filesystem>
#include <thread>

namespace fs = std::filesystem;
using namespace decodertest;

namespace {

// Everything a decode gives, as one comparable text.
std::string fingerprint(fs::path const& file) {
    CityGMLDecoder decoder;
    return summarize(decodeFile(decoder, file));
}

TEST(DecoderThreads, ConcurrentDecodersMatchSequentialOnes) {
    REQUIRE_TESTDATA();
    fs::path const root = testsupport::testDataDir();
    std::vector<fs::path> const files = {
        root / "citygml2_lod2_buildings" / "berlin_lod2_buildings_test_area.gml",
        root / "citygml3" / "FZK-Haus-LoD3-KIT-IAI-KHH-B36-V1__v3.gml",
        root / "citygml2_textures" / "lyon_small_house" / "LYON_1ER_BATI_2015_small_house.gml",
        root / "bridges" / "BridgeAndBuilding.gml",
        root / "lod3_lod4_openings" / "Building_LOD3-EPSG25832.gml",
        root / "citygml1" / "LOD2_Building_v100.gml",
    };
    std::vector<std::string> sequential;
    for (auto const& f : files) {
        ASSERT_TRUE(fs::exists(f)) << f;
        sequential.push_back(fingerprint(f));
    }
    // Each thread decodes every file, starting at a different one, three times over.
    std::vector<std::vector<std::string>> parallel(4);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < parallel.size(); ++t) {
        threads.emplace_back([&, t] {
            parallel[t].resize(files.size());
            for (int round = 0; round < 3; ++round) {
                for (std::size_t i = 0; i < files.size(); ++i) {
                    std::size_t const k = (i + t) % files.size();
                    parallel[t][k] = fingerprint(files[k]);
                }
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (std::size_t t = 0; t < parallel.size(); ++t)
        EXPECT_EQ(parallel[t], sequential) << "thread " << t;
}

} // namespace
