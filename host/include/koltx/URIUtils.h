#pragma once

#include "koltx/URI.h"

#include <memory>
#include <string>

namespace koltx {

class URIUtils {
public:
    // Percent-encodes the UTF-8 bytes of every character except unreserved ones and "/".
    static std::wstring percentEncode(std::wstring const& text);
    // The same, keeping the ASCII delimiters listed in `keep` as they are.
    static std::wstring percentEncode(std::wstring const& text, wchar_t const* keep);
    // Decodes "%XX" sequences as UTF-8; a "%" without two hex digits stays as it is.
    static std::wstring percentDecode(std::wstring const& text);
    // A file URI from an already percent-encoded path, e.g. "/a/my%20wall.png" gives
    // "file:///a/my%20wall.png".
    static std::shared_ptr<URI> createFileURI(std::wstring const& encodedPath);
    // A file URI from a plain file system path; a relative path is taken from the current folder.
    static std::shared_ptr<URI> createFileURIFromPath(std::wstring const& path);
    // A new URI whose last path element has `extension` (with its dot) instead of its own one.
    static std::shared_ptr<URI> replaceExtension(std::shared_ptr<URI> const& uri,
                                                 std::wstring const& extension);
    // Resolves "." and ".." segments of a "/"-separated path. Leading ".." of a relative path
    // stay; those of an absolute path are dropped.
    static std::wstring normalizePath(std::wstring const& path);
    // True if `text` starts with a URI scheme such as "file:" or "http:".
    static bool hasScheme(std::wstring const& text);
};

} // namespace koltx
