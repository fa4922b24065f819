#include "gml/Identifiers.h"

#include <boost/uuid/random_generator.hpp>

#include <cstddef>
#include <mutex>

namespace gml {

namespace {

// Random bytes are fetched from the system in blocks, so that most identifiers cost no
// system call; the block is refilled under the same lock that guards its use.
class RandomBlockSource {
public:
    void draw(unsigned char* out, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            if (position == sizeof block) {
                provider.get_random_bytes(block, sizeof block);
                position = 0;
            }
            out[i] = block[position++];
        }
    }

    std::mutex mutex;

private:
    boost::uuids::detail::random_provider provider;
    unsigned char block[4096];
    std::size_t position = sizeof block;
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
