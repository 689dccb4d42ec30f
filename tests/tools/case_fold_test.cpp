#include "tools/case_fold.h"

#include <gtest/gtest.h>

using paramdb::tools::FoldCase;

TEST(CaseFold, Letters) {
    struct Case {
        wchar_t letter;
        wchar_t folded;
    };
    Case const cases[] = {
        {L'A', L'a'},           {L'Z', L'z'},           {L'a', L'a'},           {L'@', L'@'},
        {L'[', L'['},           {L'\0', L'\0'},         {L'\u00C4', L'\u00E4'}, {L'\u00DE', L'\u00FE'},
        {L'\u00D7', L'\u00D7'}, {L'\u00DF', L'\u00DF'}, {L'\u00FF', L'\u00FF'}, {L'\u0178', L'\u00FF'},
        {L'\u00B5', L'\u03BC'}, {L'\u039C', L'\u03BC'}, {L'\u010C', L'\u010D'}, {L'\u010D', L'\u010D'},
        {L'\u0130', L'\u0130'}, {L'\u0131', L'\u0131'}, {L'\u0150', L'\u0151'}, {L'\u0170', L'\u0171'},
        {L'\u017D', L'\u017E'}, {L'\u017E', L'\u017E'}, {L'\u017F', L's'},      {L'\u018F', L'\u0259'},
        {L'\u01CE', L'\u01CE'}, {L'\u0386', L'\u03AC'}, {L'\u038A', L'\u03AF'}, {L'\u038F', L'\u03CE'},
        {L'\u03A3', L'\u03C3'}, {L'\u03C2', L'\u03C3'}, {L'\u03A2', L'\u03A2'}, {L'\u0401', L'\u0451'},
        {L'\u0416', L'\u0436'}, {L'\u0430', L'\u0430'}, {L'\u04C0', L'\u04CF'}, {L'\u0531', L'\u0561'},
        {L'\u1E9E', L'\u00DF'}, {L'\u1EF8', L'\u1EF9'}, {L'\u2126', L'\u03C9'}, {L'\u212A', L'k'},
        {L'\u212B', L'\u00E5'}, {L'\u2160', L'\u2170'}, {L'\u24B6', L'\u24D0'}, {L'\u4E2D', L'\u4E2D'},
        {L'\uFF21', L'\uFF41'}, {L'\xD83D', L'\xD83D'}, {L'\xDC80', L'\xDC80'}, {L'\xFFFF', L'\xFFFF'},
    };
    for (Case const& test : cases)
        EXPECT_EQ(FoldCase(test.letter), test.folded) << static_cast<unsigned>(test.letter);
}

// What is folded stays as it is, and as many letters are folded as there are in the scripts.
TEST(CaseFold, AllUnits) {
    int folded = 0;
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        auto const letter = static_cast<wchar_t>(unit);
        wchar_t const result = FoldCase(letter);
        folded += result != letter ? 1 : 0;
        EXPECT_EQ(FoldCase(result), result) << unit;
    }
    EXPECT_EQ(folded, 584);
}

TEST(CaseFold, Texts) {
    EXPECT_EQ(FoldCase(L"Pr\u00DCFen 12 \u00B5m"), L"pr\u00FCfen 12 \u03BCm");
    EXPECT_EQ(FoldCase(L""), L"");
    std::wstring text = L"what was there before";
    FoldCase(L"AB", text);
    EXPECT_EQ(text, L"ab");
}
