#pragma once

#include "koltx/URI.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace koltx {

// Maps the keys under which content is asked for to the URIs where it is.
class ResolveMap {
public:
    ResolveMap();
    ResolveMap(ResolveMap const&) = default;
    ResolveMap& operator=(ResolveMap const&) = default;
    virtual ~ResolveMap();

    void addEntry(std::wstring const& key, std::shared_ptr<URI> const& uri);
    // Null when the key is not in the map.
    std::shared_ptr<URI> resolveKey(std::wstring const& key) const;
    bool hasKey(std::wstring const& key) const;
    std::vector<std::wstring> getKeys() const;

    // The mapped URI of `key`, or else `key` read as a URI (if it has a scheme) or as a file path.
    // `resolveMap` may be null. Null only for an empty key.
    static std::shared_ptr<URI> resolveKeyWithURIFallback(ResolveMap const* resolveMap,
                                                          std::wstring const& key);
    // The key of a file named `key` relative to the file of key `anchor`: `key` is joined to the
    // folder of `anchor` and "." and ".." are resolved. If that key is not in the map but
    // `anchor` is, the folder of the anchor's URI is used instead, so the result still resolves.
    // A `key` that is absolute (a URI or a path beginning with "/") is only normalised.
    static std::wstring anchorRelativeKey(ResolveMap const* resolveMap, std::wstring const& anchor,
                                          std::wstring const& key);

private:
    std::map<std::wstring, std::shared_ptr<URI>> entries;
};

} // namespace koltx
