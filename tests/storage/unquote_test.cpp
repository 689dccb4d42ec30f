#include <paramdb/storage/unquote.h>

#include <gtest/gtest.h>

namespace {

TEST(Unquote, Cases) {
    struct {
        wchar_t const* text;
        wchar_t const* expected;
    } const cases[] = {
        {L"", L""},
        {L"   ", L"   "},
        {L"word", L"word"},
        {L"word rest", L"word"},
        {L"  word rest", L"  word"},
        {L"a\"b c", L"a\"b"},
        {L"\"two words\" rest", L"two words"},
        {L" \t\"two words\"", L"two words"},
        {L"\"open end", L"open end"},
        {L"\"", L""},
        {L"\"\"", L""},
        {L"a\u00A0b", L"a"},
    };
    for (auto const& [text, expected] : cases)
        EXPECT_EQ(paramdb::Unquote(text), expected);
}

} // namespace
