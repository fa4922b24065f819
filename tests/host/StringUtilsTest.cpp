#include "kolt/StringUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using kolt::StringUtils;

namespace {

// The two-call protocol a caller uses: try with a guess, grow to the reported size, try again.
std::wstring widen(std::string const& text, size_t firstGuess) {
    std::vector<wchar_t> buffer(firstGuess, L'\0');
    size_t size = buffer.size();
    StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    if (size > buffer.size()) {
        buffer.assign(size, L'\0');
        StringUtils::toUTF16FromUTF8(text.c_str(), buffer.data(), &size, nullptr);
    }
    return std::wstring(buffer.data());
}

std::string narrow(std::wstring const& text, size_t firstGuess) {
    std::vector<char> buffer(firstGuess, '\0');
    size_t size = buffer.size();
    StringUtils::toUTF8FromUTF16(text.c_str(), buffer.data(), &size, nullptr);
    if (size > buffer.size()) {
        buffer.assign(size, '\0');
        StringUtils::toUTF8FromUTF16(text.c_str(), buffer.data(), &size, nullptr);
    }
    return std::string(buffer.data());
}

} // namespace

TEST(StringUtils, SizeProtocolReportsNeededUnitsWithTerminator) {
    // "aé😀": 1 + 1 + 2 UTF-16 units, plus the terminator.
    std::string const text = "a\xC3\xA9\xF0\x9F\x98\x80";
    size_t size = 0;
    kolt::Status status = kolt::STATUS_OK;
    StringUtils::toUTF16FromUTF8(text.c_str(), nullptr, &size, &status);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(status, kolt::STATUS_BUFFER_TOO_SMALL);

    // Too small: filled as far as whole characters go, never half a surrogate pair.
    wchar_t small[3] = {L'x', L'x', L'x'};
    size = 3;
    StringUtils::toUTF16FromUTF8(text.c_str(), small, &size, &status);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(status, kolt::STATUS_BUFFER_TOO_SMALL);
    EXPECT_EQ(std::wstring(small), L"a\u00E9");

    wchar_t exact[5];
    size = 5;
    StringUtils::toUTF16FromUTF8(text.c_str(), exact, &size, &status);
    EXPECT_EQ(status, kolt::STATUS_OK);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(std::wstring(exact), std::wstring({L'a', 0xE9, 0xD83D, 0xDE00}));

    // The UTF-8 direction counts bytes: 1 + 2 + 4 + terminator.
    size = 0;
    StringUtils::toUTF8FromUTF16(exact, nullptr, &size, nullptr);
    EXPECT_EQ(size, 8u);
    char bytes[4];
    size = sizeof(bytes);
    StringUtils::toUTF8FromUTF16(exact, bytes, &size, &status);
    EXPECT_EQ(status, kolt::STATUS_BUFFER_TOO_SMALL);
    EXPECT_EQ(std::string(bytes), "a\xC3\xA9"); // the 4-byte emoji is not cut

    // Growing protocol from a size guess of the byte or unit count, as the codec does.
    EXPECT_EQ(widen(text, text.size()), std::wstring({L'a', 0xE9, 0xD83D, 0xDE00}));
    EXPECT_EQ(narrow(exact, 4), text);
    EXPECT_EQ(widen("", 0), L"");
    EXPECT_EQ(narrow(L"", 0), "");

    // Null text or size are refused without a crash.
    size = 4;
    StringUtils::toUTF16FromUTF8(nullptr, exact, &size, &status);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
    StringUtils::toUTF8FromUTF16(L"x", bytes, nullptr, &status);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
}

TEST(StringUtils, SurrogatePairsRoundTrip) {
    std::string const utf8 =
        "\xF0\x90\x80\x80|\xF4\x8F\xBF\xBF|\xEF\xBF\xBF"; // U+10000, U+10FFFF, U+FFFF
    std::wstring const utf16 = StringUtils::toUTF16(utf8);
    EXPECT_EQ(utf16, std::wstring({0xD800, 0xDC00, L'|', 0xDBFF, 0xDFFF, L'|', 0xFFFF}));
    EXPECT_EQ(StringUtils::toUTF8(utf16), utf8);
    EXPECT_EQ(narrow(utf16, 1), utf8);
}

TEST(StringUtils, InvalidInputBecomesReplacementCharacterAndRestSurvives) {
    std::wstring const fffd(1, wchar_t(0xFFFD));
    // Lone continuation byte, truncated sequence, overlong "/", encoded surrogate, above U+10FFFF.
    EXPECT_EQ(StringUtils::toUTF16("a\x80z"), L"a" + fffd + L"z");
    EXPECT_EQ(StringUtils::toUTF16("a\xE2\x82z"), L"a" + fffd + L"z");
    EXPECT_EQ(StringUtils::toUTF16("\xC0\xAF"), fffd + fffd);
    EXPECT_EQ(StringUtils::toUTF16("\xED\xA0\x80!"), fffd + fffd + fffd + L"!");
    EXPECT_EQ(StringUtils::toUTF16("\xF4\x90\x80\x80"), fffd + fffd + fffd + fffd);
    EXPECT_EQ(StringUtils::toUTF16("end\xF0\x9F"), L"end" + fffd);
    EXPECT_EQ(widen("a\xFFz", 1), L"a" + fffd + L"z");

    // Unpaired surrogates on the way to UTF-8.
    EXPECT_EQ(StringUtils::toUTF8(std::wstring({L'a', 0xD800, L'b'})), "a\xEF\xBF\xBD"
                                                                       "b");
    EXPECT_EQ(StringUtils::toUTF8(std::wstring({0xDC00, 0xD83D})), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(narrow(std::wstring({L'x', 0xDFFF}), 1), "x\xEF\xBF\xBD");
}
