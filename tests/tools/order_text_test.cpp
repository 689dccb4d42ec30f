#include <paramdb/distillery/order_interpreter.h>

#include "tests/distillery/order_model.h"
#include "tests/support/messages.h"
#include "tools/order_text.h"

#include <array>
#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

std::wstring TermsOf(WrittenPosition const& position) {
    std::wstring text;
    for (OrderTerm const& term : position.terms)
        text.append(text.empty() ? L"" : L" ").append(term.text);
    return text;
}

struct Readable {
    wchar_t const* text;
    std::vector<std::wstring> positions;
    std::wstring ignored; // of the first
};

struct Bad {
    wchar_t const* text;
    wchar_t const* mark; // blanks up to a caret
    char const* reason;
};

} // namespace

TEST(OrderTextTest, FindsTheTerms) {
    for (Readable const& good : std::vector<Readable>{
             {L"", {}, L""},
             {L"   ", {}, L""},
             {L"O1", {L"O1"}, L""},
             {L"O 1,5", {L"O1.5"}, L""},
             {L"H1-O0.5;H1+O0.5;", {L"H1 -O0.5", L"H1 +O0.5"}, L""},
             {L"+L3-H2+M-1", {L"+L3 -H2 +M-1"}, L""},
             {L"O+M2", {L"O +M2"}, L""},
             {L";;", {L"", L""}, L""},
             {L"O1+O2", {L"O1"}, L"+O2"},
             {L"abc", {L""}, L"abc"},
             {L"O1e2+", {L"O1e2"}, L"+"},
             {L"HX-MX", {L"HX -MX"}, L""},
         }) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(good.text)));
        OrderText const text = ReadOrderText(good.text);
        EXPECT_FALSE(text.fault);
        EXPECT_FALSE(text.is_cut);
        ASSERT_EQ(text.positions.size(), good.positions.size());
        for (std::size_t place = 0; place < good.positions.size(); ++place)
            EXPECT_EQ(TermsOf(text.positions[place]), good.positions[place]);
        EXPECT_EQ(text.positions.empty() ? L"" : text.positions[0].ignored, good.ignored);
    }
}

TEST(OrderTextTest, TellsTermsWithoutNumber) {
    OrderText const text = ReadOrderText(L"O+M2-L+HX");
    ASSERT_EQ(text.positions.size(), 1U);
    ASSERT_EQ(text.positions[0].terms.size(), 4U);
    EXPECT_FALSE(text.positions[0].terms[0].has_number);
    EXPECT_TRUE(text.positions[0].terms[1].has_number);
    EXPECT_FALSE(text.positions[0].terms[2].has_number);
    EXPECT_TRUE(text.positions[0].terms[3].has_number);
    EXPECT_TRUE(text.positions[0].is_series);
    EXPECT_FALSE(ReadOrderText(L"OX").positions[0].is_series);
}

TEST(OrderTextTest, MarksTheFault) {
    for (Bad const& bad : std::vector<Bad>{
             {L"O1*2", L"  ^", "'*' cannot follow the number of 'O'"},
             {L"O 1 * 2", L"    ^", "'*' cannot follow the number of 'O'"},
             {L"Oa", L" ^", "'a' cannot be the number of 'O'"},
             {L"H1O2", L"  ^", "'O' needs a + or - before it"},
             {L"H1;2O2", L"    ^", "'O' needs a + or - before it"},
             {L"F100+M1", L"     ^", "'F' and 'M' cannot stand in one position"},
             {L"H2+F100", L"   ^", "'F' and 'H' cannot stand in one position"},
             {L"HX;O1", L"   ^", "behind a position with HX every position needs an HX"},
             {L"HX; ;HX", L"    ^", "behind a position with HX every position needs an HX"},
             {L"O1;O2;L1.5", L"        ^", "'.' cannot follow the number of 'L'"},
             {L"OXX", L"  ^", "'X' cannot follow the number of 'O'"},
         }) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(bad.text)));
        OrderText const text = ReadOrderText(bad.text);
        ASSERT_TRUE(text.fault);
        EXPECT_EQ(std::wstring(text.fault->place, L' ') + L'^', bad.mark);
        EXPECT_EQ(text.fault->reason, bad.reason);
    }
}

TEST(OrderTextTest, StopsBehindTheLastPositionThatCounts) {
    std::wstring text;
    for (int count = 0; count < 32; ++count)
        text += L"O1;";
    EXPECT_FALSE(ReadOrderText(text).is_cut);
    text += L"bad O";
    OrderText const longer = ReadOrderText(text);
    EXPECT_TRUE(longer.is_cut);
    EXPECT_FALSE(longer.fault);
    EXPECT_EQ(longer.positions.size(), 32U);
}

TEST(OrderTextTest, AgreesWithTheInterpreter) {
    MessageLog messages;
    OrderTexts texts(20240611);
    int bad_ones = 0;
    for (int round = 0; round < 10000; ++round) {
        std::wstring const text = texts.Any();
        SCOPED_TRACE(testing::PrintToString(text));
        std::array<QVSpecIntervalEntry::Definition, 32> positions;
        unsigned int const count = OrderInterpreter::GetSpecPositions(text.c_str(), positions.data(), 32);
        bool const is_bad = !messages.Take().empty();
        OrderText const read = ReadOrderText(text);
        ASSERT_EQ(read.fault.has_value(), is_bad);
        bad_ones += is_bad ? 1 : 0;
        if (is_bad) {
            ASSERT_LE(read.fault->place, text.size());
            continue;
        }
        ASSERT_LE(read.positions.size(), count);
        bool const has_series = !read.positions.empty() && read.positions.back().is_series;
        if (!has_series) {
            ASSERT_EQ(read.positions.size(), count);
        }
        for (std::size_t place = 0; place < read.positions.size(); ++place) {
            int domain = 0;
            for (OrderTerm const& term : read.positions[place].terms)
                domain |= term.letter == L'F' ? 1 : term.letter == L'L' ? 0 : 2;
            ASSERT_EQ(domain, positions[place].domain());
        }
    }
    EXPECT_GT(bad_ones, 1000);
    EXPECT_LT(bad_ones, 9000);
}
