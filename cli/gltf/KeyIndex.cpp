#include "KeyIndex.h"

#include <functional>

std::string_view KeyIndex::key(uint32_t number) const {
    return std::string_view(keys).substr(starts[number], starts[number + 1] - starts[number]);
}

uint32_t KeyIndex::insert(std::string_view text, bool& added) {
    // At most half full, so probing ends quickly.
    if (2 * (hashes.size() + 1) > slots.size())
        grow();
    std::size_t const hash = std::hash<std::string_view>()(text);
    std::size_t const mask = slots.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        uint32_t const number = slots[i];
        if (number == Empty) {
            slots[i] = static_cast<uint32_t>(hashes.size());
            hashes.push_back(hash);
            keys.append(text);
            starts.push_back(keys.size());
            added = true;
            return slots[i];
        }
        if (hashes[number] == hash && key(number) == text) {
            added = false;
            return number;
        }
    }
}

void KeyIndex::grow() {
    slots.assign(slots.empty() ? 64 : slots.size() * 2, Empty);
    std::size_t const mask = slots.size() - 1;
    for (uint32_t number = 0; number < hashes.size(); ++number) {
        std::size_t i = hashes[number] & mask;
        while (slots[i] != Empty)
            i = (i + 1) & mask;
        slots[i] = number;
    }
}
