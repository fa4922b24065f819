#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace koltx {

// The reports of a shape: named values in three sequences, in the order they were reported.
// A key may occur more than once in a sequence.
struct Reports {
    using StringPtr = std::shared_ptr<std::wstring>;

    std::vector<std::pair<StringPtr, bool>> bools;
    std::vector<std::pair<StringPtr, double>> floats;
    std::vector<std::pair<StringPtr, StringPtr>> strings;

    void addBool(std::wstring const& key, bool value) {
        bools.emplace_back(std::make_shared<std::wstring>(key), value);
    }
    void addFloat(std::wstring const& key, double value) {
        floats.emplace_back(std::make_shared<std::wstring>(key), value);
    }
    void addString(std::wstring const& key, std::wstring const& value) {
        strings.emplace_back(std::make_shared<std::wstring>(key),
                             std::make_shared<std::wstring>(value));
    }
    bool empty() const { return bools.empty() && floats.empty() && strings.empty(); }
};

using ReportsPtr = std::shared_ptr<Reports>;

} // namespace koltx
