#include "kolt/Cache.h"

#include "koltx/Content.h"

#include <new>

namespace kolt {

Cache::Cache() = default;

Cache::~Cache() = default;

Cache* Cache::create(Status* status) {
    auto* cache = new (std::nothrow) Cache();
    if (status != nullptr)
        *status = cache != nullptr ? STATUS_OK : STATUS_UNSPECIFIED_ERROR;
    return cache;
}

std::shared_ptr<koltx::Content> Cache::get(ContentType type, std::wstring const& key) const {
    std::lock_guard<std::mutex> lock(mutex);
    auto const it = entries.find({type, key});
    return it != entries.end() ? it->second : nullptr;
}

std::shared_ptr<koltx::Content> Cache::insert(ContentType type, std::wstring const& key,
                                              std::shared_ptr<koltx::Content> content) {
    std::lock_guard<std::mutex> lock(mutex);
    auto& slot = entries[{type, key}];
    if (!slot)
        slot = std::move(content);
    return slot;
}

size_t Cache::size() const {
    std::lock_guard<std::mutex> lock(mutex);
    return entries.size();
}

void Cache::flushAll() {
    std::lock_guard<std::mutex> lock(mutex);
    entries.clear();
}

} // namespace kolt
