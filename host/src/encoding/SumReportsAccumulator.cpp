#include "koltx/SumReportsAccumulator.h"

namespace koltx {

std::shared_ptr<ReportsAccumulator> SumReportsAccumulator::create() {
    return std::shared_ptr<ReportsAccumulator>(new SumReportsAccumulator());
}

void SumReportsAccumulator::add(Reports const& reports) {
    if (!result)
        result = std::make_shared<Reports>();
    for (auto const& entry : reports.floats) {
        if (!entry.first)
            continue;
        auto const found = floatIndex.emplace(*entry.first, result->floats.size());
        if (found.second)
            result->floats.emplace_back(std::make_shared<std::wstring>(*entry.first), entry.second);
        else
            result->floats[found.first->second].second += entry.second;
    }
    for (auto const& entry : reports.bools) {
        if (entry.first && boolIndex.emplace(*entry.first, result->bools.size()).second)
            result->bools.emplace_back(std::make_shared<std::wstring>(*entry.first), entry.second);
    }
    for (auto const& entry : reports.strings) {
        if (entry.first && stringIndex.emplace(*entry.first, result->strings.size()).second)
            result->strings.emplace_back(
                std::make_shared<std::wstring>(*entry.first),
                std::make_shared<std::wstring>(entry.second ? *entry.second : std::wstring()));
    }
}

void SumReportsAccumulator::reset() {
    result.reset();
    floatIndex.clear();
    boolIndex.clear();
    stringIndex.clear();
}

} // namespace koltx
