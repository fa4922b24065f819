#include "gml/Identifiers.h"

#include <boost/uuid/random_generator.hpp>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
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
        for (std::size_t i = 0; i < count; ++i) {
            if (page->remaining == 0) {
                provider.get_random_bytes(page->bytes, sizeof page->bytes);
                page->remaining = sizeof page->bytes;
            }
            out[i] = page->bytes[sizeof page->bytes - page->remaining--];
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

std::wstring newUuidString() {
    std::lock_guard<std::mutex> lock(randomSource.mutex);
    std::wstring result;
    unsigned char bytes[16];
    while (result.empty() || !(result[0] >= L'a' && result[0] <= L'f')) {
        randomSource.draw(bytes, sizeof bytes);
        bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
        bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
        result.clear();
        result.reserve(36);
        for (std::size_t i = 0; i < sizeof bytes; ++i) {
            result += static_cast<wchar_t>(hexDigits[bytes[i] >> 4]);
            result += static_cast<wchar_t>(hexDigits[bytes[i] & 0x0F]);
            if (i == 3 || i == 5 || i == 7 || i == 9)
                result += L'-';
        }
    }
    return result;
}

} // namespace gml
