#include <paramdb/platform/core/utf8.h>

#include <gtest/gtest.h>
#include <random>

namespace {

using paramdb::FromUtf8;
using paramdb::ToUtf8;
using namespace std::string_literals;

std::wstring Units(std::initializer_list<unsigned> units) {
    std::wstring text;
    for (unsigned const unit : units)
        text += static_cast<wchar_t>(unit);
    return text;
}

struct Case {
    std::string bytes;
    std::wstring text;
};

TEST(Utf8, WellFormedTextBothWays) {
    Case const cases[] = {
        {"", L""},
        {"abc", L"abc"},
        {"a\0b"s, Units({'a', 0, 'b'})},
        {"\x7F", Units({0x7F})},
        {"\xC2\x80", Units({0x80})},
        {"\xC3\xA4", Units({0xE4})},
        {"\xDF\xBF", Units({0x7FF})},
        {"\xE0\xA0\x80", Units({0x800})},
        {"\xE2\x82\xAC", Units({0x20AC})},
        {"\xED\x9F\xBF", Units({0xD7FF})},
        {"\xEE\x80\x80", Units({0xE000})},
        {"\xEF\xBB\xBF", Units({0xFEFF})},
        {"\xEF\xBF\xBF", Units({0xFFFF})},
        {"\xF0\x90\x80\x80", Units({0xD800, 0xDC00})},
        {"\xF0\x9F\x98\x80", Units({0xD83D, 0xDE00})},
        {"\xF4\x8F\xBF\xBF", Units({0xDBFF, 0xDFFF})},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(FromUtf8(c.bytes), c.text) << testing::PrintToString(c.bytes);
        EXPECT_EQ(ToUtf8(c.text), c.bytes) << testing::PrintToString(c.bytes);
    }
}

TEST(Utf8, EveryBadByteBecomesAUnitOfItsOwn) {
    Case const cases[] = {
        {"\x80", Units({0xDC80})},
        {"\xFF", Units({0xDCFF})},
        {"a\xE4z", Units({'a', 0xDCE4, 'z'})},
        {"\xC3", Units({0xDCC3})},                                     // cut off
        {"\xE2\x82", Units({0xDCE2, 0xDC82})},                         // cut off
        {"\xE2\x82z", Units({0xDCE2, 0xDC82, 'z'})},                   // broken off
        {"\xC0\x80", Units({0xDCC0, 0xDC80})},                         // overlong
        {"\xC1\xBF", Units({0xDCC1, 0xDCBF})},                         // overlong
        {"\xE0\x9F\xBF", Units({0xDCE0, 0xDC9F, 0xDCBF})},             // overlong
        {"\xF0\x8F\xBF\xBF", Units({0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF})}, // overlong
        {"\xED\xA0\x80", Units({0xDCED, 0xDCA0, 0xDC80})},             // surrogate
        {"\xED\xBF\xBF", Units({0xDCED, 0xDCBF, 0xDCBF})},             // surrogate
        {"\xF4\x90\x80\x80", Units({0xDCF4, 0xDC90, 0xDC80, 0xDC80})}, // above the last character
        {"\xF5\x80\x80\x80", Units({0xDCF5, 0xDC80, 0xDC80, 0xDC80})}, // above the last character
        {"\xF0\x9F\x98\x80\x80", Units({0xD83D, 0xDE00, 0xDC80})},     // one too many behind a pair
    };
    for (Case const& c : cases) {
        EXPECT_EQ(FromUtf8(c.bytes), c.text) << testing::PrintToString(c.bytes);
        EXPECT_EQ(ToUtf8(c.text), c.bytes) << testing::PrintToString(c.bytes);
    }
}

TEST(Utf8, LoneSurrogatesGoOutAsReplacementCharacter) {
    EXPECT_EQ(ToUtf8(Units({0xD800})), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(Units({0xDBFF, 'a'})), "\xEF\xBF\xBD"s + "a");
    EXPECT_EQ(ToUtf8(Units({0xDC7F})), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(Units({0xDD00})), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(Units({0xD83D, 0xD83D, 0xDE00})), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(Utf8, WideUnitsAboveSixteenBits) {
    if constexpr (sizeof(wchar_t) > 2) {
        EXPECT_EQ(ToUtf8(Units({0x1F600})), "\xF0\x9F\x98\x80");
        EXPECT_EQ(ToUtf8(Units({0x10FFFF})), "\xF4\x8F\xBF\xBF");
        EXPECT_EQ(ToUtf8(Units({0x110000})), "\xEF\xBF\xBD");
        EXPECT_EQ(ToUtf8(Units({0xFFFFFFFF})), "\xEF\xBF\xBD");
    }
}

TEST(Utf8, EveryShortByteStringComesBack) {
    for (int first = 0; first < 256; ++first) {
        std::string const one(1, static_cast<char>(first));
        ASSERT_EQ(ToUtf8(FromUtf8(one)), one);
        for (int second = 0; second < 256; ++second) {
            std::string const two = one + static_cast<char>(second);
            ASSERT_EQ(ToUtf8(FromUtf8(two)), two) << first << ' ' << second;
        }
    }
}

TEST(Utf8, RandomByteStringsComeBackAndUnitsHaveSixteenBits) {
    std::mt19937 random(1);
    // Lead and trail bytes more often than chance would have them, so that many sequences are nearly right.
    unsigned char const often[] = {0x41, 0x80, 0xBF, 0xC3, 0xE2, 0xED, 0xA0, 0xF0, 0x9F, 0xF4, 0x8F, 0x90};
    for (int round = 0; round < 20000; ++round) {
        std::string bytes(random() % 24, '\0');
        for (char& c : bytes)
            c = static_cast<char>(random() % 2 ? often[random() % std::size(often)] : random() % 256);
        std::wstring const text = FromUtf8(bytes);
        for (wchar_t const unit : text)
            ASSERT_LE(static_cast<std::uint32_t>(unit), 0xFFFFu);
        ASSERT_EQ(ToUtf8(text), bytes) << testing::PrintToString(bytes);
    }
}

TEST(Utf8, EveryCharacterComesBack) {
    for (std::uint32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue;
        std::wstring const text =
            c < 0x10000 ? Units({c})
                        : Units({0xD800 + ((c - 0x10000) >> 10), 0xDC00 + ((c - 0x10000) & 0x3FF)});
        ASSERT_EQ(FromUtf8(ToUtf8(text)), text) << c;
    }
}

} // namespace
