#include "koltx/URI.h"

#include "kolt/StringUtils.h"
#include "koltx/URIUtils.h"

namespace koltx {

URI::URI(std::wstring scheme, std::wstring authority, std::wstring path, std::wstring query,
         std::wstring fragment)
    : scheme(kolt::StringUtils::toLowerASCII(std::move(scheme))), authority(std::move(authority)),
      path(std::move(path)), query(std::move(query)), fragment(std::move(fragment)) {
    std::wstring const base = getBaseName();
    size_t const dot = base.rfind(L'.');
    if (dot != std::wstring::npos && dot > 0)
        extension = base.substr(dot);
    if (!this->scheme.empty())
        text = this->scheme + L":";
    if (!this->scheme.empty() && (this->scheme == L"file" || !this->authority.empty()))
        text += L"//" + this->authority;
    text += URIUtils::percentEncode(this->path, L"/!$&'()*+,;=:@");
    if (!this->query.empty())
        text += L"?" + this->query;
    if (!this->fragment.empty())
        text += L"#" + this->fragment;
}

std::shared_ptr<URI> URI::create(std::wstring const& text) {
    if (text.empty())
        return nullptr;
    std::wstring rest = text;
    std::wstring scheme;
    if (URIUtils::hasScheme(rest)) {
        size_t const colon = rest.find(L':');
        scheme = rest.substr(0, colon);
        rest.erase(0, colon + 1);
    }
    std::wstring fragment;
    size_t const hash = rest.find(L'#');
    if (hash != std::wstring::npos) {
        fragment = rest.substr(hash + 1);
        rest.erase(hash);
    }
    std::wstring query;
    size_t const question = rest.find(L'?');
    if (question != std::wstring::npos) {
        query = rest.substr(question + 1);
        rest.erase(question);
    }
    std::wstring authority;
    if (rest.compare(0, 2, L"//") == 0) {
        size_t const slash = rest.find(L'/', 2);
        authority = rest.substr(2, slash == std::wstring::npos ? std::wstring::npos : slash - 2);
        rest.erase(0, slash == std::wstring::npos ? rest.size() : slash);
    }
    if (!scheme.empty() && rest.empty() && !authority.empty())
        rest = L"/";
    return std::shared_ptr<URI>(
        new URI(scheme, authority, URIUtils::percentDecode(rest), query, fragment));
}

std::wstring URI::getBaseName() const {
    size_t const slash = path.rfind(L'/');
    return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

std::string URI::getNativePath() const {
    if (!isFile())
        return std::string();
    return kolt::StringUtils::toUTF8(path);
}

} // namespace koltx
