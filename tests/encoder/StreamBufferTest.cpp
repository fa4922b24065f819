#include <encoder/SimpleOutputCallbackOStream.h>

#include <koltx/MemoryOutputCallbacks.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

// The host's memory outputs, with every call noted so that the order of calls can be checked.
class RecordingCallbacks : public koltx::MemoryOutputCallbacks {
public:
    kolt::Status write(uint64_t handle, void const* data, size_t size) override {
        calls.push_back("write " + std::to_string(size));
        // The terminating 0 stands right behind the data.
        terminated = terminated && static_cast<char const*>(data)[size] == 0;
        if (failWrites)
            return kolt::STATUS_UNSPECIFIED_ERROR;
        return koltx::MemoryOutputCallbacks::write(handle, data, size);
    }
    kolt::Status seek(uint64_t handle, int64_t offset, int32_t direction) override {
        calls.push_back("seek " + std::to_string(offset) + " " + std::to_string(direction));
        return koltx::MemoryOutputCallbacks::seek(handle, offset, direction);
    }
    uint64_t tell(uint64_t handle, kolt::Status* status) override {
        calls.push_back("tell");
        return koltx::MemoryOutputCallbacks::tell(handle, status);
    }

    std::vector<std::string> calls;
    bool failWrites = false;
    bool terminated = true;
};

uint64_t openOutput(RecordingCallbacks& callbacks) {
    kolt::Status status = 1;
    uint64_t const handle = callbacks.open(L"test", 1, L"out.gml", 0, 0, &status);
    EXPECT_EQ(0, status);
    return handle;
}

using OStream = common::SimpleOutputCallbackOStream<char, 1>;

} // namespace

TEST(StreamBuffer, WritesInBlocksOf1023BytesAfterAPositionQuery) {
    RecordingCallbacks callbacks;
    uint64_t const handle = openOutput(callbacks);
    {
        OStream stream(&callbacks, handle);
        stream << std::string(1023, 'a');
        // A full block stays until the next byte or the end.
        EXPECT_EQ((std::vector<std::string>{"seek 0 1", "tell"}), callbacks.calls);
        stream << 'b';
        EXPECT_EQ((std::vector<std::string>{"seek 0 1", "tell", "write 1023"}), callbacks.calls);
        stream << std::string(2000, 'c');
    }
    EXPECT_EQ(
        (std::vector<std::string>{"seek 0 1", "tell", "write 1023", "write 1023", "write 978"}),
        callbacks.calls);
    EXPECT_TRUE(callbacks.terminated);
    callbacks.close(handle, false, nullptr);
    EXPECT_EQ(std::string(1023, 'a') + "b" + std::string(2000, 'c'), callbacks.getText(L"out.gml"));
}

TEST(StreamBuffer, ExactlyOneBlockIsWrittenOnceAtTheEnd) {
    RecordingCallbacks callbacks;
    uint64_t const handle = openOutput(callbacks);
    {
        OStream stream(&callbacks, handle);
        stream << std::string(1023, 'x');
    }
    EXPECT_EQ((std::vector<std::string>{"seek 0 1", "tell", "write 1023"}), callbacks.calls);
}

TEST(StreamBuffer, SeeksFlushFirstAndRefuseUnknownDirections) {
    RecordingCallbacks callbacks;
    uint64_t const handle = openOutput(callbacks);
    OStream stream(&callbacks, handle);
    stream << "abcdef";
    stream.seekp(2, std::ios_base::beg);
    stream << "XY";
    stream.flush();
    EXPECT_EQ(
        (std::vector<std::string>{"seek 0 1", "tell", "write 6", "seek 2 0", "tell", "write 2"}),
        callbacks.calls);
    EXPECT_EQ(4, static_cast<long>(stream.tellp()));

    stream << "z";
    try {
        stream.rdbuf()->pubseekoff(0, static_cast<std::ios_base::seekdir>(3));
        FAIL() << "no exception";
    } catch (std::runtime_error const& e) {
        EXPECT_STREQ("illegal seek direction", e.what());
    }
    // The pending byte went out before the refusal.
    EXPECT_EQ("write 1", callbacks.calls.back());
}

TEST(StreamBuffer, AFailingWriteMakesTheStreamBadAndDropsTheRest) {
    RecordingCallbacks callbacks;
    uint64_t const handle = openOutput(callbacks);
    callbacks.failWrites = true;
    {
        OStream stream(&callbacks, handle);
        stream << std::string(1500, 'q');
        EXPECT_TRUE(stream.bad());
        stream << "more";
        EXPECT_TRUE(stream.bad());
    }
    EXPECT_EQ("write 1023", callbacks.calls.back());
    int writes = 0;
    for (auto const& call : callbacks.calls)
        writes += call.rfind("write", 0) == 0 ? 1 : 0;
    EXPECT_EQ(1, writes);
}
