#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Numbers strings in the order they are first met. The keys are kept back to back in one buffer
// and found through an open-addressing table: no allocation per key, which matters at one key per
// mesh of a large file.
class KeyIndex {
public:
    // The number of `key`; `added` says whether it was new.
    uint32_t insert(std::string_view key, bool& added);
    std::string_view key(uint32_t number) const;
    std::size_t size() const { return hashes.size(); }

private:
    void grow();

    std::string keys;
    std::vector<std::size_t> starts{0}; // key i is keys[starts[i], starts[i + 1])
    std::vector<std::size_t> hashes;
    std::vector<uint32_t> slots; // key numbers; Empty where free
    static constexpr uint32_t Empty = UINT32_MAX;
};
