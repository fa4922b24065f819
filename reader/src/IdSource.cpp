#include "IdSource.h"

#include <atomic>

namespace citygml {

std::string IdSource::next() {
    static std::atomic<unsigned long long> counter{0};
    return "__kolt_ " + std::to_string(counter.fetch_add(1, std::memory_order_relaxed));
}

} // namespace citygml
