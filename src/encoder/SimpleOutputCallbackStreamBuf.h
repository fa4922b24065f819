#pragma once

#include <kolt/Callbacks.h>

#include <cstdint>
#include <ios>
#include <memory>
#include <stdexcept>
#include <streambuf>

namespace common {

// Stream buffer that hands its bytes to a host output in blocks of up to Size-1 bytes. The last
// place of the block is kept free for the terminating 0 that each flush stores behind the data.
template <typename CharT, int Unused, std::size_t Size = 1024>
class SimpleOutputCallbackStreamBuf : public std::basic_streambuf<CharT> {
    using Base = std::basic_streambuf<CharT>;

public:
    using int_type = typename Base::int_type;
    using traits_type = typename Base::traits_type;
    using off_type = typename Base::off_type;
    using pos_type = typename Base::pos_type;

    SimpleOutputCallbackStreamBuf(kolt::SimpleOutputCallbacks* callbacks, std::uint64_t handle)
        : callbacks(callbacks), handle(handle), buffer(new CharT[Size]()) {
        this->setp(buffer.get(), buffer.get() + Size - 1);
    }

    ~SimpleOutputCallbackStreamBuf() override { flushBuffer(); }

    SimpleOutputCallbackStreamBuf(SimpleOutputCallbackStreamBuf const&) = delete;
    SimpleOutputCallbackStreamBuf& operator=(SimpleOutputCallbackStreamBuf const&) = delete;

protected:
    int_type overflow(int_type c) override {
        if (!flushBuffer())
            return traits_type::eof();
        // A 0 that meets a full buffer is dropped; the writer never produces one.
        if (!traits_type::eq_int_type(c, traits_type::eof()) && c != 0) {
            *this->pptr() = traits_type::to_char_type(c);
            this->pbump(1);
        }
        return c;
    }

    int sync() override { return flushBuffer() ? 0 : -1; }

    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode) override {
        flushBuffer();
        int const dir = static_cast<int>(direction);
        if (dir != 0 && dir != 1 && dir != 2)
            throw std::runtime_error("illegal seek direction");
        callbacks->seek(handle, static_cast<std::int64_t>(offset), dir);
        return pos_type(static_cast<off_type>(callbacks->tell(handle, nullptr)));
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode) override {
        flushBuffer();
        callbacks->seek(handle, static_cast<std::int64_t>(static_cast<off_type>(position)), 0);
        return pos_type(static_cast<off_type>(callbacks->tell(handle, nullptr)));
    }

private:
    // Hands the pending bytes on. They are gone afterwards, also when the write failed.
    bool flushBuffer() {
        auto const count = this->pptr() - this->pbase();
        if (count == 0)
            return true;
        *this->pptr() = CharT(0);
        std::int32_t const result = callbacks->write(
            handle, this->pbase(), static_cast<std::size_t>(count) * sizeof(CharT));
        this->setp(buffer.get(), buffer.get() + Size - 1);
        return result == 0;
    }

    kolt::SimpleOutputCallbacks* callbacks;
    std::uint64_t handle;
    std::unique_ptr<CharT[]> buffer;
};

} // namespace common
