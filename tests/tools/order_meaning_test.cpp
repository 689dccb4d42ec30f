#include "tools/order_meaning.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

struct Meaning {
    wchar_t const* text;
    OrderVerdict verdict;
    std::vector<std::string> sums;
    std::size_t intervals;
};

} // namespace

TEST(OrderMeaningTest, SaysItInWords) {
    for (Meaning const& sample : std::vector<Meaning>{
             {L"", OrderVerdict::Empty, {}, 0},
             {L"O1*2", OrderVerdict::Bad, {}, 0},
             {L"O1", OrderVerdict::Good, {"order 1"}, 1},
             {L"O1;O2;O3", OrderVerdict::Odd, {"order 1", "order 2", "order 3"}, 0},
             {L"H1-L2;H1+L1", OrderVerdict::Good, {"1 x base order - 2 lines", "1 x base order + 1 line"}, 1},
             {L"-O0,5+F100;L", OrderVerdict::Good, {"100 Hz - order 0.5", "0"}, 1},
             {L"-L2147483648;M-2-O1",
              OrderVerdict::Good,
              {"- 2147483647 lines", "- order 1 - 2 x modulation"},
              1},
         }) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(sample.text)));
        OrderMeaning const meaning = MeaningOf(sample.text);
        EXPECT_EQ(meaning.verdict, sample.verdict);
        std::vector<std::string> sums;
        for (auto const& position : meaning.positions)
            sums.push_back(SumText(position));
        EXPECT_EQ(sums, sample.sums);
        EXPECT_EQ(meaning.intervals.size(), sample.intervals);
        EXPECT_FALSE(meaning.HasSeries());
        EXPECT_EQ(meaning.Harmonics(), 0U);
    }
}

TEST(OrderMeaningTest, ExpandsASeries) {
    OrderMeaning const meaning = MeaningOf(L"HX-M1;HX+M1");
    EXPECT_EQ(meaning.positions.size(), 32U);
    ASSERT_EQ(meaning.intervals.size(), 16U);
    EXPECT_EQ(meaning.intervals[15], (std::pair<std::size_t, std::size_t>(30, 31)));
    EXPECT_EQ(SumText(meaning.positions[31]), "16 x base order + 1 x modulation");
    EXPECT_TRUE(meaning.HasSeries());
    EXPECT_EQ(meaning.FirstOfSeries(), 0U);
    EXPECT_EQ(meaning.Harmonics(), 16U);

    OrderMeaning const behind = MeaningOf(L"O1;HX;HX+O1");
    EXPECT_EQ(behind.FirstOfSeries(), 1U);
    EXPECT_EQ(behind.positions.size(), 31U);
    EXPECT_EQ(behind.Harmonics(), 15U);
    EXPECT_EQ(behind.verdict, OrderVerdict::Odd);
}

TEST(OrderMeaningTest, NamesDomains) {
    EXPECT_STREQ(DomainWord(MeaningOf(L"L3").positions[0].domain()), "lines");
    EXPECT_STREQ(DomainWord(MeaningOf(L"F3").positions[0].domain()), "frequency");
    EXPECT_STREQ(DomainWord(MeaningOf(L"M3").positions[0].domain()), "order");
    EXPECT_STREQ(DomainWord(MeaningOf(L"F3+O1").positions[0].domain()), "mixed");
}

TEST(OrderMeaningTest, GivesTheValueOfALetter) {
    auto const order = MeaningOf(L"H1-M2+O3.5-L4").positions[0];
    EXPECT_EQ(ValueText(order, L'H'), "1");
    EXPECT_EQ(ValueText(order, L'M'), "-2");
    EXPECT_EQ(ValueText(order, L'O'), "3.5");
    EXPECT_EQ(ValueText(order, L'L'), "-4");
    EXPECT_EQ(ValueText(MeaningOf(L"F100").positions[0], L'F'), "100");
}
