// Identifiers per second: one call of Boost's random generator per identifier (one system
// call each), against the block-wise draw of newUuidString.
#include "gml/Identifiers.h"

#include <benchmark/benchmark.h>

#include <boost/uuid/random_generator.hpp>

#include <mutex>
#include <string>

namespace {

std::wstring oneCallPerIdentifier() {
    static boost::uuids::random_generator generator;
    static std::mutex mutex;
    static constexpr char digits[] = "0123456789abcdef";
    std::lock_guard<std::mutex> lock(mutex);
    std::wstring result;
    while (result.empty() || !(result[0] >= L'a' && result[0] <= L'f')) {
        const boost::uuids::uuid id = generator();
        result.clear();
        for (std::size_t i = 0; i < id.size(); ++i) {
            result += static_cast<wchar_t>(digits[id.data[i] >> 4]);
            result += static_cast<wchar_t>(digits[id.data[i] & 0x0F]);
            if (i == 3 || i == 5 || i == 7 || i == 9)
                result += L'-';
        }
    }
    return result;
}

void BM_IdentifierPerCall(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(oneCallPerIdentifier());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IdentifierPerCall);

void BM_IdentifierBlocks(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(gml::newUuidString());
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IdentifierBlocks);

} // namespace
