#include "gml/Identifiers.h"

#include <boost/uuid/random_generator.hpp>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <new>

namespace gml {

namespace {

// Random bytes are fetched from the system in blocks, so that most identifiers cost no
// system call; the block is refilled under the same lock that guards its use.
//
// The block lives on a page that the kernel wipes in a forked child, so that parent and child
// never hand out the same bytes. Where the kernel can't do that, the process id is compared.
class RandomBlockSource {
public:
    RandomBlockSource() {
        void* memory =
            mmap(nullptr, sizeof(Page), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) {
            page = &fallbackPage;
        } else {
            page = new (memory) Page();
            mapped = true;
#ifdef MADV_WIPEONFORK
            wipedOnFork = madvise(memory, sizeof(Page), MADV_WIPEONFORK) == 0;
#endif
        }
        owner = getpid();
    }

    ~RandomBlockSource() {
        if (mapped)
            munmap(page, sizeof(Page));
    }

    RandomBlockSource(RandomBlockSource const&) = delete;
    RandomBlockSource& operator=(RandomBlockSource const&) = delete;

    void draw(unsigned char* out, std::size_t count) {
        if (!wipedOnFork && getpid() != owner) {
            page->remaining = 0;
            owner = getpid();
        }
        while (count > 0) {
            if (page->remaining == 0) {
                provider.get_random_bytes(page->bytes, sizeof page->bytes);
                page->remaining = sizeof page->bytes;
            }
            std::size_t const take = std::min(count, page->remaining);
            std::memcpy(out, page->bytes + sizeof page->bytes - page->remaining, take);
            page->remaining -= take;
            out += take;
            count -= take;
        }
    }

    std::mutex mutex;

private:
    // A wiped page reads as zero: no bytes left.
    struct Page {
        std::size_t remaining = 0;
        unsigned char bytes[4096 - sizeof(std::size_t)];
    };

    boost::uuids::detail::random_provider provider;
    Page fallbackPage;
    Page* page = nullptr;
    bool mapped = false;
    bool wipedOnFork = false;
    pid_t owner = 0;
};

RandomBlockSource randomSource;

constexpr char hexDigits[] = "0123456789abcdef";

} // namespace

UuidBytes newUuid() {
    std::lock_guard<std::mutex> lock(randomSource.mutex);
    UuidBytes bytes;
    randomSource.draw(bytes.data(), bytes.size());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    // The text must start with a letter to serve as a gml:id. A digit is folded onto a-f
    // rather than drawn again, which would cost nearly three draws per id.
    unsigned const lead = bytes[0] >> 4;
    if (lead < 10)
        bytes[0] = static_cast<unsigned char>((bytes[0] & 0x0F) | ((10 + lead % 6) << 4));
    return bytes;
}

void appendUuid(std::wstring& out, UuidBytes const& bytes) {
    std::size_t at = out.size();
    out.resize(at + uuidTextLength);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        out[at++] = static_cast<wchar_t>(hexDigits[bytes[i] >> 4]);
        out[at++] = static_cast<wchar_t>(hexDigits[bytes[i] & 0x0F]);
        if (i == 3 || i == 5 || i == 7 || i == 9)
            out[at++] = L'-';
    }
}

bool parseUuid(std::wstring_view text, UuidBytes& bytes) {
    if (text.size() != uuidTextLength)
        return false;
    auto const digit = [](wchar_t c) {
        if (c >= L'0' && c <= L'9')
            return c - L'0';
        if (c >= L'a' && c <= L'f')
            return c - L'a' + 10;
        return -1;
    };
    std::size_t at = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        int const high = digit(text[at++]);
        int const low = digit(text[at++]);
        if (high < 0 || low < 0)
            return false;
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
        if ((i == 3 || i == 5 || i == 7 || i == 9) && text[at++] != L'-')
            return false;
    }
    return true;
}

std::wstring newUuidString() {
    std::wstring result;
    result.reserve(uuidTextLength);
    appendUuid(result, newUuid());
    return result;
}

} // namespace gml
