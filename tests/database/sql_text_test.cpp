#include <paramdb/database/sql_text.h>
#include <paramdb/platform/core/utf8.h>

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace paramdb::database;

TEST(SqlText, KnownOnes) {
    struct Case {
        std::wstring text;
        std::string bytes;
    };
    Case const cases[] = {
        {L"", ""},
        {L"a'\"\\b", "a'\"\\b"},
        {L"\x7F\x80\xFF", "\x7F\xC2\x80\xC3\xBF"},
        {L"\x7FF\x800\xFFFF", "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
        {L"\xD83D\xDE00", "\xF0\x9F\x98\x80"},                 // a pair
        {L"\xD800", "\xF4\x8E\x80\x80"},                       // a lone one: U+10E000
        {L"\xDFFF\xD800", "\xF4\x8E\x9F\xBF\xF4\x8E\x80\x80"}, // the wrong way round
        {L"\xDBF8\xDC00", "\xF4\x8E\x8F\xB8\xF4\x8E\x90\x80"}, // U+10E000 itself
        {L"\xDBF9\xDFFF", "\xF4\x8E\x8F\xB9\xF4\x8E\x9F\xBF"}, // U+10E7FF
        {L"\xDBFA\xDC00", "\xF4\x8E\xA0\x80"},                 // U+10E800
        {L"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.bytes);
        std::string bytes = "old";
        ASSERT_TRUE(EncodeSqlText(test.text, bytes));
        EXPECT_EQ(bytes, test.bytes);
        std::wstring text = L"old";
        ASSERT_TRUE(DecodeSqlText(test.bytes, text));
        EXPECT_EQ(text, test.text);
    }
}

TEST(SqlText, EveryUnitAndRandomTexts) {
    std::mt19937 random(20);
    for (std::uint32_t number = 1; number < 0x20000; ++number) {
        std::wstring text(1, static_cast<wchar_t>(number & 0xFFFF));
        if (number > 0xFFFF) { // many surrogates beside others
            text.clear();
            for (std::uint32_t left = random() % 8; left > 0; --left)
                text += static_cast<wchar_t>(random() % 2 == 0 ? 0xD800 + random() % 0x800
                                                               : 1 + random() % 0xFFFF);
        }
        if (text == std::wstring(1, L'\0'))
            continue;
        std::string bytes;
        ASSERT_TRUE(EncodeSqlText(text, bytes)) << number;
        // Well-formed: the strict reader of UTF-8 finds no byte that stands for itself.
        for (wchar_t const unit : paramdb::FromUtf8(bytes))
            ASSERT_FALSE(number < 0x10000 && unit >= 0xDC80 && unit <= 0xDCFF && bytes.size() == 1) << number;
        ASSERT_EQ(paramdb::ToUtf8(paramdb::FromUtf8(bytes)), bytes) << number;
        std::wstring back;
        ASSERT_TRUE(DecodeSqlText(bytes, back)) << number;
        ASSERT_EQ(back, text) << number;
    }
}

TEST(SqlText, WhatCannotBeKept) {
    std::string bytes;
    EXPECT_FALSE(EncodeSqlText(std::wstring(L"a\0b", 3), bytes));
    if constexpr (sizeof(wchar_t) > 2) {
        std::wstring text(1, static_cast<wchar_t>(0x1F600));
        EXPECT_FALSE(EncodeSqlText(text, bytes));
    }
}

TEST(SqlText, BytesThatAreNoUtf8) {
    for (std::string const bytes :
         {"\x80", "\xC1\x81", "\xC3", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
          "\xF5\x80\x80\x80", "\xFF", "a\xC3(", "\xE2\x82"}) {
        std::wstring text;
        EXPECT_FALSE(DecodeSqlText(bytes, text));
    }
}

} // namespace
