#pragma once

#include "kolt/ContentType.h"
#include "kolt/Object.h"
#include "kolt/Status.h"

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace koltx {
class Content;
}

namespace kolt {

// Thread-safe store of loaded content by type and key, shared by everything that runs in one
// generation. Made by create(), released with destroy().
class Cache : public Object {
public:
    static Cache* create(Status* status = nullptr);

    // Null when nothing is stored under the key.
    std::shared_ptr<koltx::Content> get(ContentType type, std::wstring const& key) const;
    // Stores `content` unless the key is taken, and returns what stands under the key afterwards,
    // so that two threads that loaded the same thing end up sharing one object.
    std::shared_ptr<koltx::Content> insert(ContentType type, std::wstring const& key,
                                           std::shared_ptr<koltx::Content> content);
    size_t size() const;
    void flushAll();

protected:
    ~Cache() override;

private:
    Cache();

    mutable std::mutex mutex;
    std::map<std::pair<ContentType, std::wstring>, std::shared_ptr<koltx::Content>> entries;
};

} // namespace kolt
