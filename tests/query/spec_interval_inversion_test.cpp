#include <paramdb/query/spec_interval.h>

#include "spec_interval_support.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace spec_interval_support;

// Intervals of whole lines, each line 10 wide.
Interval LinesOf(unsigned int first, unsigned int last) {
    return {static_cast<float>(first) * 10, static_cast<float>(last) * 10, first, last};
}

TEST(SpecIntervalInversion, Cuts) {
    using Intervals = std::vector<Interval>;
    struct {
        char const* name;
        Intervals intervals, pieces;
    } const cases[] = {
        {"one stays", {LinesOf(5, 9)}, {LinesOf(5, 9)}},
        {"two holes",
         {LinesOf(0, 100), LinesOf(10, 20), LinesOf(30, 40)},
         {{0, 100, 0, 9}, {200, 300, 21, 29}, {400, 1000, 41, 100}}},
        {"end", {LinesOf(0, 100), LinesOf(90, 100)}, {{0, 900, 0, 89}}},
        {"beyond the end", {LinesOf(0, 100), LinesOf(90, 200)}, {{0, 900, 0, 89}}},
        {"start", {LinesOf(50, 100), LinesOf(40, 60)}, {{600, 1000, 61, 100}}},
        {"from the first line on",
         {LinesOf(50, 100), LinesOf(50, 60)},
         {{500, 500, 50, 49}, {600, 1000, 61, 100}}},
        {"all, from the first line on", {LinesOf(50, 100), LinesOf(50, 100)}, {{500, 500, 50, 49}}},
        {"swallowed", {LinesOf(50, 100), LinesOf(40, 110)}, {LinesOf(50, 100)}},
        {"swallowed to the last line", {LinesOf(50, 100), LinesOf(40, 100)}, {LinesOf(50, 100)}},
        {"start, then swallowed",
         {LinesOf(50, 100), LinesOf(0, 60), LinesOf(0, 200)},
         {{600, 1000, 61, 100}}},
        {"from line 0 on", {LinesOf(0, 100), LinesOf(0, 20)}, {{0, 0, 0, HighestLine}, {200, 1000, 21, 100}}},
        {"all from line 0 on", {LinesOf(0, 100), LinesOf(0, 100)}, {{0, 0, 0, HighestLine}}},
        {"a wrapped end is a far one",
         {LinesOf(0, 100), LinesOf(0, 100), LinesOf(200, 300)},
         {{0, 2000, 0, 199}, {3000, 0, 301, HighestLine}}},
        {"to the highest line", {LinesOf(5, 9), {0, 7, 0, HighestLine}}, {LinesOf(5, 9)}},
        {"behind", {LinesOf(5, 9), LinesOf(20, 30)}, {{50, 200, 5, 19}}},
        {"before", {LinesOf(50, 90), LinesOf(20, 30)}, {{300, 900, 31, 90}}},
        {"only the last piece is cut",
         {LinesOf(0, 100), LinesOf(50, 60), LinesOf(10, 20)},
         {{0, 500, 0, 49}, {200, 1000, 21, 100}}},
        {"every cut a piece",
         {LinesOf(0, 100), LinesOf(10, 10), LinesOf(12, 12), LinesOf(14, 14), LinesOf(16, 16)},
         {{0, 100, 0, 9}, {100, 120, 11, 11}, {120, 140, 13, 13}, {140, 160, 15, 15}, {160, 1000, 17, 100}}},
    };
    for (auto const& [name, intervals, pieces] : cases) {
        SCOPED_TRACE(name);
        Intervals result = intervals;
        std::uint64_t const count = CQtSpecInterval::InvertIndexIntervalCollection(result);
        EXPECT_EQ(count, pieces.size());
        ASSERT_EQ(result, pieces);
    }
}

TEST(SpecIntervalInversion, FrequenciesAreTakenNotComputed) {
    std::vector<Interval> intervals{{1.5f, 99.5f, 0, 100}, {9.75f, 20.25f, 10, 20}};
    EXPECT_EQ(CQtSpecInterval::InvertIndexIntervalCollection(intervals), 2u);
    EXPECT_EQ(intervals, (std::vector<Interval>{{1.5f, 9.75f, 0, 9}, {20.25f, 99.5f, 21, 100}}));
}

// The pieces as a list of their own, the last of them being cut.
std::vector<Interval> Inverted(std::vector<Interval> const& intervals) {
    std::vector<Interval> pieces{intervals.front()};
    for (std::size_t i = 1; i < intervals.size(); ++i) {
        auto const& c = intervals[i];
        Interval const whole = pieces.back();
        Interval const left{whole.start, c.start, whole.first, c.first - 1};
        Interval const right{c.stop, whole.stop, c.last + 1, whole.last};
        bool const starts_later = whole.first > c.first;
        bool const ends_later = whole.last > c.last;
        if (starts_later && !ends_later)
            continue;
        pieces.pop_back();
        if (!starts_later)
            pieces.push_back(left);
        if (ends_later)
            pieces.push_back(right);
    }
    return pieces;
}

TEST(SpecIntervalInversion, SameAsTheModel) {
    constexpr std::uint32_t seed = 5602;
    RandomNumbers random(seed);
    for (int round = 0; round < 50000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
        std::vector<Interval> intervals(1 + random.Below(6));
        for (Interval& interval : intervals) {
            unsigned int const first =
                random.Below(20) == 0 ? HighestLine - random.Below(3) : random.Below(40);
            unsigned int const last = random.Below(20) == 0 ? HighestLine : first + random.Below(15);
            interval = {static_cast<float>(random.Below(500)), static_cast<float>(random.Below(500)), first,
                        last};
        }
        std::vector<Interval> const expected = Inverted(intervals);
        ASSERT_EQ(CQtSpecInterval::InvertIndexIntervalCollection(intervals), expected.size());
        ASSERT_EQ(intervals, expected);
    }
}

// With cuts as they should be, ascending, apart and inside, the pieces are the lines that are left.
TEST(SpecIntervalInversion, PiecesAreTheLinesLeft) {
    constexpr std::uint32_t seed = 5603;
    RandomNumbers random(seed);
    for (int round = 0; round < 20000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
        std::vector<bool> wanted(64, true);
        std::vector<Interval> intervals{LinesOf(0, 63)};
        for (unsigned int line = 1 + random.Below(9); line < 60; line += 2 + random.Below(12)) {
            unsigned int const last = line + random.Below(4);
            intervals.push_back(LinesOf(line, last));
            for (; line <= last; ++line)
                wanted[line] = false;
        }
        CQtSpecInterval::InvertIndexIntervalCollection(intervals);
        std::vector<bool> found(64, false);
        for (Interval const& piece : intervals)
            for (unsigned int line = piece.first; line <= piece.last; ++line)
                found.at(line) = true;
        ASSERT_EQ(found, wanted);
    }
}

} // namespace
