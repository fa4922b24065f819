#pragma once

#include "koltx/ReportsAccumulator.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace koltx {

// Floats are summed per key; for bools and strings the first value of a key wins. Keys stay in
// the order of their first appearance.
class SumReportsAccumulator : public ReportsAccumulator {
public:
    static std::shared_ptr<ReportsAccumulator> create();

    void add(Reports const& reports) override;
    ReportsPtr const& getResult() const override { return result; }
    void reset() override;

private:
    SumReportsAccumulator() = default;

    ReportsPtr result;
    std::unordered_map<std::wstring, size_t> floatIndex;
    std::unordered_map<std::wstring, size_t> boolIndex;
    std::unordered_map<std::wstring, size_t> stringIndex;
};

} // namespace koltx
