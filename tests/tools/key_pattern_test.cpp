#include "tests/tools/fake_rows.h"
#include "tools/key_pattern.h"

#include <gtest/gtest.h>
#include <limits>
#include <locale>

using namespace paramdb::tools;
using paramdb::ColumnDescription;
using paramdb::FieldType;

namespace {

using Columns = std::vector<ColumnDescription>;

Columns const One{{"mode", FieldType::Int}};
Columns const Three{{"mode", FieldType::Int}, {"trigger", FieldType::Int}, {"dimension", FieldType::Int}};
Columns const Position{{"polygon", FieldType::Int}, {"x", FieldType::Float}};
Columns const Name{{"name", FieldType::Text}};

template <class Key>
bool Matches(std::wstring const& pattern, Columns const& columns, Key const& key) {
    auto const parsed = KeyPattern::Parse(pattern, columns);
    if (auto const* const fault = std::get_if<KeyFault>(&parsed)) {
        ADD_FAILURE() << fault->reason << " at " << fault->place;
        return false;
    }
    return std::get<KeyPattern>(parsed).Matches(paramdb::ConstFields(key));
}

// The values from -2 to 12 that match.
std::vector<int> Chosen(std::wstring const& pattern) {
    std::vector<int> values;
    for (int value = -2; value <= 12; ++value) {
        if (Matches(pattern, One, QIdx1(value)))
            values.push_back(value);
    }
    return values;
}

std::string Text(std::wstring const& text) {
    return {text.begin(), text.end()};
}

} // namespace

TEST(KeyPattern, NumbersListsAndRanges) {
    std::vector<int> const all{-2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    struct Case {
        std::wstring pattern;
        std::vector<int> values;
    };
    Case const cases[] = {
        {L"", all},
        {L"*", all},
        {L"  ", all},
        {L" * ", all},
        {L"..", all},
        {L"3", {3}},
        {L" +3 ", {3}},
        {L"-1", {-1}},
        {L"7,3,11", {3, 7, 11}},
        {L" 3 , 7 ", {3, 7}},
        {L"3,3", {3}},
        {L"3..5", {3, 4, 5}},
        {L" 3 .. 5 ", {3, 4, 5}},
        {L"-2..0", {-2, -1, 0}},
        {L"4..4", {4}},
        {L"10..", {10, 11, 12}},
        {L"..0", {-2, -1, 0}},
        {L"..-1,5,11..", {-2, -1, 5, 11, 12}},
        {L"1..6,4..8", {1, 2, 3, 4, 5, 6, 7, 8}},
        {L"2147483647", {}},
        {L"-2147483648..0", {-2, -1, 0}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Chosen(test.pattern), test.values) << Text(test.pattern);
}

TEST(KeyPattern, SeveralElements) {
    struct Case {
        std::wstring pattern;
        bool matches;
    };
    Case const cases[] = {{L"", true},         {L"11", true},          {L"11/", true},
                          {L"11/2", true},     {L"11/2/", true},       {L"11/2/3", true},
                          {L"/2", true},       {L"//3", true},         {L"*/*/3", true},
                          {L"11//3", true},    {L" 11 / 2 / 3", true}, {L"10..20/1,2/..3", true},
                          {L"12", false},      {L"11/3", false},       {L"//2", false},
                          {L"*/*/4..", false}, {L"2/11", false},       {L"11/2/1,2,4", false}};
    for (Case const& test : cases)
        EXPECT_EQ(Matches(test.pattern, Three, QIdx3(11, 2, 3)), test.matches) << Text(test.pattern);
}

TEST(KeyPattern, FloatingElements) {
    struct Case {
        std::wstring pattern;
        float value;
        bool matches;
    };
    float const infinity = std::numeric_limits<float>::infinity();
    float const nan = std::numeric_limits<float>::quiet_NaN();
    Case const cases[] = {
        {L"1/0.1", 0.1F, true},
        {L"1/0.1", 0.100001F, false},
        {L"1/.1...2", 0.15F, true},
        {L"1/0.5..1.5", 0.5F, true},
        {L"1/0.5..1.5", 1.5F, true},
        {L"1/0.5..1.5", 1.6F, false},
        {L"1/1e3", 1000, true},
        {L"1/500,1000", 1000, true},
        {L"1/1000..", infinity, true},
        {L"1/inf", infinity, true},
        {L"1/-inf..0", -infinity, true},
        {L"1/nan", nan, true},
        {L"1/nan", 1, false},
        {L"1/1", nan, false},
        {L"1/..", nan, false},
        {L"1/*", nan, true},
        {L"1", nan, true},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(Matches(test.pattern, Position, QIdxIF(1, test.value)), test.matches)
            << Text(test.pattern) << " on " << test.value;
    }
}

TEST(KeyPattern, WideIntegersAndDoubles) {
    struct Key {
        std::uint32_t flags = 0;
        std::int64_t count = 0;
        double ratio = 0;
        auto tuple() const { return std::tie(flags, count, ratio); }
    };
    Columns const columns{
        {"flags", FieldType::Unsigned}, {"count", FieldType::Int64}, {"ratio", FieldType::Double}};
    Key const key{4294967295U, -5000000000, 0.1};
    EXPECT_TRUE(Matches(L"4294967295/-5000000000/0.1", columns, key));
    EXPECT_TRUE(Matches(L"4000000000../..-4999999999/0.09..0.11", columns, key));
    EXPECT_FALSE(Matches(L"4294967294", columns, key));
    EXPECT_FALSE(Matches(L"/5000000000", columns, key));
    EXPECT_FALSE(Matches(L"//0.1000001", columns, key));
}

TEST(KeyPattern, TextsWithWildcards) {
    struct Case {
        std::wstring pattern;
        std::wstring text;
        bool matches;
    };
    Case const cases[] = {
        {L"", L"", true},
        {L"", L"any", true},
        {L"*", L"", true},
        {L"*", L"any", true},
        {L"?", L"", false},
        {L"?", L"a", true},
        {L"?", L"ab", false},
        {L"abc", L"abc", true},
        {L"abc", L"ABC", false},
        {L"abc", L"ab", false},
        {L"abc", L"abcd", false},
        {L"a*", L"abc", true},
        {L"*c", L"abc", true},
        {L"*b", L"abc", false},
        {L"a*c", L"ac", true},
        {L"a**c", L"abbc", true},
        {L"a?c", L"abc", true},
        {L"*aab*", L"aaaabaa", true},
        {L"*a?b", L"aaxab", false},
        {L"*a?b", L"ab aab", true},
        {L"G?_*", L"G1_DRIVE", true},
        {L"a/b,c..d", L"a/b,c..d", true},
        {L"a/*", L"a/b", true},
        {L" a", L"a", false},
        {L" a ", L" a ", true},
        {L"Pr\u00FC?stand", L"Pr\u00FCfstand", true},
        {std::wstring(50, L'*') + L"b", std::wstring(199, L'a'), false},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Matches(test.pattern, Name, QIdxName(test.text.c_str())), test.matches)
            << Text(test.pattern) << " on " << Text(test.text);
}

TEST(KeyPattern, ATextBeforeOtherElementsEndsAtTheSlash) {
    struct Key {
        CFixedText name = L"gear";
        std::int32_t number = 4;
        auto tuple() const { return std::tie(name, number); }
    };
    Columns const columns{{"name", FieldType::Text}, {"number", FieldType::Int}};
    EXPECT_TRUE(Matches(L"gear", columns, Key()));
    EXPECT_TRUE(Matches(L"g*/4", columns, Key()));
    EXPECT_TRUE(Matches(L"/4", columns, Key()));
    EXPECT_FALSE(Matches(L"g*/5", columns, Key()));
    EXPECT_FALSE(Matches(L"gear,4", columns, Key()));
}

TEST(KeyPattern, NoneMatchesEveryKey) {
    EXPECT_TRUE(KeyPattern().Matches(paramdb::ConstFields(QIdx3(1, 2, 3))));
    EXPECT_TRUE(KeyPattern().Matches(paramdb::ConstFields(QIdxName(L"x"))));
}

TEST(KeyPattern, FaultsAndTheirPlaces) {
    std::string const expected = "a number, a range or * is expected";
    std::string const too_large = "the number is too large for its column";
    std::string const behind = "not expected behind a number";
    std::string const backwards = "the range ends before it begins";
    std::string const too_many = "the key has no more elements";
    struct Case {
        Columns const& columns;
        std::wstring pattern;
        std::size_t place;
        std::string reason;
    };
    Case const cases[] = {
        {One, L"x", 0, expected},
        {One, L" x", 1, expected},
        {One, L"1,", 2, expected},
        {One, L",1", 0, expected},
        {One, L"1,,2", 2, expected},
        {One, L"1, x", 3, expected},
        {One, L"1,*", 2, expected},
        {One, L"**", 0, expected},
        {One, L"?", 0, expected},
        {One, L"-", 0, expected},
        {One, L"1..x", 3, expected},
        {One, L"x..1", 0, expected},
        {One, L"*..1", 0, expected},
        {One, L"1x", 1, behind},
        {One, L"1 2", 2, behind},
        {One, L"1.5", 1, behind},
        {One, L"1...5", 3, expected},
        {One, L"1..2..3", 4, behind},
        {One, L"1-2", 1, behind},
        {One, L"0x10", 1, behind},
        {One, L"2147483648", 0, too_large},
        {One, L"5, ..-2147483649", 5, too_large},
        {Position, L"/1e39", 1, too_large},
        {One, L"5..4", 0, backwards},
        {One, L"1, 5 .. 4", 3, backwards},
        {Position, L"1/2..1.5", 2, backwards},
        {Position, L"1/1...2", 2, backwards}, // to .2
        {Position, L"1/nan..", 2, backwards},
        {One, L"1/", 1, too_many},
        {One, L"1/2", 1, too_many},
        {One, L"/", 0, too_many},
        {Three, L"1/2/3/4", 5, too_many},
        {Three, L"1/y/3", 2, expected},
        {Three, L"1/2/3z", 5, behind},
        {Three, L"x/y/z", 0, expected}, // the first fault counts
    };
    for (Case const& test : cases) {
        auto const parsed = KeyPattern::Parse(test.pattern, test.columns);
        auto const* const fault = std::get_if<KeyFault>(&parsed);
        ASSERT_NE(fault, nullptr) << Text(test.pattern);
        EXPECT_EQ(fault->place, test.place) << Text(test.pattern);
        EXPECT_EQ(fault->reason, test.reason) << Text(test.pattern);
    }
}

TEST(KeyPattern, TheMarkStandsUnderTheFault) {
    auto const table = FakeTable(Three, {});
    EXPECT_EQ(KeyFaultText(table, L"11/x", {3, "a reason"}), "key of <TFake>: a reason\n"
                                                             "  11/x\n"
                                                             "     ^\n"
                                                             "The key is mode/trigger/dimension\n");
    EXPECT_EQ(KeyFaultText(FakeTable(One, {}), L"1,", {2, "a reason"}), "key of <TFake>: a reason\n"
                                                                        "  1,\n"
                                                                        "    ^\n"
                                                                        "The key is mode\n");
    // It is counted in characters, and nothing reaches the terminal that could move it.
    EXPECT_EQ(KeyFaultText(table, L"\u00FC\xD83D\xDE00\t\x1Bx", {5, "a reason"}),
              "key of <TFake>: a reason\n"
              "  \xC3\xBC\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBDx\n"
              "      ^\n"
              "The key is mode/trigger/dimension\n");
}

TEST(KeyPattern, IsTheSameUnderEveryLocale) {
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Commas));
    EXPECT_TRUE(Matches(L"1/0.5,0.75", Position, QIdxIF(1, 0.75F)));
    std::locale::global(before);
}
