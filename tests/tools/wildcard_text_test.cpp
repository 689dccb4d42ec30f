#include "tools/case_fold.h"
#include "tools/wildcard_text.h"

#include <gtest/gtest.h>
#include <random>

using paramdb::tools::WildcardText;

TEST(WildcardText, IsIn) {
    struct Case {
        std::wstring text;
        std::wstring name;
        bool is_in;
    };
    Case const cases[] = {
        {L"gear", L"1. Gear drive", true},
        {L"GEAR D", L"1. gear drive", true},
        {L"gear  d", L"1. gear drive", false},
        {L"1*drive", L"1. gear drive", true},
        {L"drive*1", L"1. gear drive", false},
        {L"g??r", L"1. gear drive", true},
        {L"?1.", L"1. gear drive", false},
        {L"drive?", L"1. gear drive", false},
        {L"", L"", true},
        {L"*", L"", true},
        {L"?", L"", false},
        {L"**?**", L"x", true},
        {L"a*b*c", L"xaxbxbxcx", true},
        {L"a*b*c", L"xaxcxbx", false},
        {L"aab", L"aaab", true},
        {L"\u00C4", L"Tr\u00E4ger", true},
        {L"\u00B5", L"5 \u03BCm", true},
        {L"a?b",
         L"a\xD83D\xDE00"
         L"b",
         true}, // one character of two units
        {L"a??b",
         L"a\xD83D\xDE00"
         L"b",
         false},
        {L"??", L"\xD83D\xDE00", false},
        {L"a?b",
         L"a\xD83D"
         L"b",
         true}, // half a character
        {L"\xDE00", L"\xD83D\xDE00", false},
        {L"[a]", L"x[a]", true},
        {L"a.c", L"abc", false},
    };
    for (Case const& test : cases) {
        WildcardText text(test.text);
        EXPECT_EQ(text.IsIn(test.name), test.is_in)
            << testing::PrintToString(test.text) << " in " << testing::PrintToString(test.name);
        EXPECT_EQ(text.IsIn(test.name), test.is_in); // asked again
    }
}

namespace {

bool MatchesFrom(std::wstring_view text, std::wstring_view name) {
    if (text.empty())
        return true; // whatever follows
    if (text[0] == L'*') {
        for (std::size_t skipped = 0; skipped <= name.size(); ++skipped) {
            if (MatchesFrom(text.substr(1), name.substr(skipped)))
                return true;
        }
        return false;
    }
    return !name.empty() && (text[0] == L'?' || text[0] == name[0]) &&
           MatchesFrom(text.substr(1), name.substr(1));
}

bool IsInPlainly(std::wstring_view text, std::wstring_view name) {
    return MatchesFrom(L"*" + std::wstring(text), name);
}

} // namespace

TEST(WildcardText, AgreesWithAPlainModel) {
    constexpr unsigned seed = 20;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int hits = 0;
    for (int round = 0; round < 20000; ++round) {
        std::wstring text;
        std::wstring name;
        for (auto length = random() % 6; length > 0; --length)
            text += L"abB*?"[random() % 5];
        for (auto length = random() % 9; length > 0; --length)
            name += L"aAbB"[random() % 4];
        bool const expected = IsInPlainly(paramdb::tools::FoldCase(text), paramdb::tools::FoldCase(name));
        hits += expected ? 1 : 0;
        ASSERT_EQ(WildcardText(text).IsIn(name), expected)
            << testing::PrintToString(text) << " in " << testing::PrintToString(name);
    }
    EXPECT_GT(hits, 5000);
    EXPECT_LT(hits, 19000);
}
