#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Options of the runs over many files: `tiles` and `convert DIR OUTDIR`.
class TilesOptions {
public:
    // If arguments[i] is one of these options, takes it (and its value) and returns true.
    // Throws UsageError for a missing or malformed value.
    bool consume(std::vector<std::string> const& arguments, std::size_t& i);

    static std::string usage();

    unsigned jobs = 0;  // 0: one per core
    bool part = false;  // tiles --part IN OUTDIR
    bool merge = false; // tiles --merge OUTDIR
    std::size_t tileFeatures = 400;
    uint64_t tileBytes = 8ull << 20;
    std::string to; // convert DIR OUTDIR --to obj|glb|gltf|gml

    // The number of threads to run: `jobs`, or the cores when it is 0.
    unsigned threads() const;
};
