#pragma once

#include <memory>
#include <string>

namespace koltx {

// A parsed URI (RFC 3986 shape). Parsing is lenient: characters that should have been
// percent-encoded (blanks, non-ASCII, a "%" not followed by two hex digits) are taken literally
// and encoded in the text form. The path is kept decoded; wstring() gives the encoded form.
class URI {
public:
    // Null when `text` is empty.
    static std::shared_ptr<URI> create(std::wstring const& text);

    bool isValid() const { return !scheme.empty() || !path.empty(); }
    bool isFile() const { return scheme == L"file"; }
    bool isAbsolute() const { return !scheme.empty(); }

    std::wstring const& getScheme() const { return scheme; }
    std::wstring const& getAuthority() const { return authority; }
    // Decoded path, beginning with "/" for absolute URIs; e.g. "/data/my wall.png".
    std::wstring getPath() const { return path; }
    std::wstring const& getQuery() const { return query; }
    std::wstring const& getFragment() const { return fragment; }
    // Last path element, decoded, with its extension.
    std::wstring getBaseName() const;
    // Extension of the last path element with its dot, e.g. ".png"; empty if there is none.
    std::wstring const& getExtension() const { return extension; }
    // The path as a file system path, UTF-8; empty unless this is a file URI.
    std::string getNativePath() const;

    // The encoded text form.
    std::wstring const& wstring() const { return text; }

    bool operator==(URI const& other) const { return text == other.text; }
    bool operator!=(URI const& other) const { return text != other.text; }

private:
    friend class URIUtils;
    URI(std::wstring scheme, std::wstring authority, std::wstring path, std::wstring query,
        std::wstring fragment);

    std::wstring scheme;
    std::wstring authority;
    std::wstring path;
    std::wstring query;
    std::wstring fragment;
    std::wstring extension;
    std::wstring text;
};

using URIPtr = std::shared_ptr<URI>;

} // namespace koltx
