#include "koltx/Log.h"
#include "koltx/LogFormatter.h"
#include "koltx/LogFwd.h"
#include "koltx/MemoryLogSink.h"
#include "koltx/StatusException.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace {

class LogTest : public ::testing::Test {
protected:
    std::shared_ptr<koltx::MemoryLogSink> sink = std::make_shared<koltx::MemoryLogSink>();
    koltx::Log::Scope scope{sink, kolt::LOG_INFO};

    std::string onlyLine() {
        auto const entries = sink->getEntries();
        EXPECT_EQ(entries.size(), 1u);
        return entries.empty() ? std::string() : entries.front().second;
    }
};

} // namespace

TEST_F(LogTest, FormatterWritesOneLineWhenDestroyedAtOrAboveTheThreshold) {
    { koltx::LogFormatter(kolt::LOG_DEBUG, "hidden", nullptr); }
    EXPECT_TRUE(sink->getEntries().empty());
    { koltx::LogFormatter(kolt::LOG_WARNING, "file ", "a.gml"); }
    EXPECT_EQ(onlyLine(), "file a.gml");
    EXPECT_EQ(sink->getEntries().front().first, kolt::LOG_WARNING);
}

TEST_F(LogTest, PrintfFormWithWideAndNarrowArguments) {
    {
        koltx::LogFwd<1, 4, koltx::LogFormatter>("Encoder '%s': %s",
                                                 std::wstring(L"com.x.Enc\u00E9"), "boom");
    }
    EXPECT_EQ(onlyLine(), "Encoder 'com.x.Enc\xC3\xA9': boom");
    sink->clear();

    // Chained values, numbers, a literal percent sign and a missing value.
    { koltx::LogFormatter(kolt::LOG_ERROR, "%d%% of %s, %s") % 50 % L"all"; }
    EXPECT_EQ(onlyLine(), "50% of all, %s");
    sink->clear();

    { koltx::LogFwd<1, 4, koltx::LogFormatter>("no placeholder") % "extra"; }
    EXPECT_EQ(onlyLine(), "no placeholder extra");
}

TEST(StatusException, TextsOfStatuses) {
    EXPECT_STREQ(koltx::StatusException(0).what(), "success");
    EXPECT_STREQ(koltx::StatusException(1).what(), "unspecified error");
    EXPECT_STREQ(koltx::StatusException(27).what(), "callbacks object unusable");
    EXPECT_STREQ(koltx::StatusException(30).what(), "texture null or invalid");
    EXPECT_STREQ(koltx::StatusException(43).what(), "texture name missing");
    EXPECT_STREQ(koltx::StatusException(9999).what(), "unknown status 9999");
    koltx::StatusException const named(kolt::STATUS_FILE_NOT_FOUND, "no file 'a.png'");
    EXPECT_EQ(named.getStatus(), kolt::STATUS_FILE_NOT_FOUND);
    EXPECT_STREQ(named.what(), "no file 'a.png'");
    // Catchable as the standard type the codec's guards use.
    try {
        throw koltx::StatusException(30);
    } catch (std::exception const& exception) {
        EXPECT_NE(dynamic_cast<koltx::StatusException const*>(&exception), nullptr);
    }
}
