#include <paramdb/query/trigger_store.h>

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <tests/query/trigger_support.h>

namespace {

using CInterval = CTriggerStore::CInterval;
using CIntervals = CTriggerStore::CIntervals;
using CDimensions = CTriggerStore::CDimensions;
using Bits = std::bitset<4>;

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

TEST(TriggerInterval, Construction) {
    EXPECT_TRUE(Is(CInterval(), {0, 0, 1, 0, true}));
    EXPECT_TRUE(Is(CInterval(5, 2, 10, true), {5, 20, 2, 10, true})) << "the start is left out";
    EXPECT_TRUE(Is(CInterval(5, 2, 10, false), {5, 20, 2, 10, false}));
    EXPECT_TRUE(Is(CInterval(0, 1, 0xFFFFFFFFu, true), {0, 4294967296.0f, 1, 0xFFFFFFFFu, true}));
    CInterval interval = TriggerRow(3, 100, 0, 10);
    EXPECT_TRUE(Is(interval, {0, 100, 10, 10, false}));
    interval.clear();
    EXPECT_TRUE(Is(interval, {0, 0, 1, 0, false})) << "raising stays";
    interval = TriggerRow(1, 0, 95, 10);
    EXPECT_TRUE(Is(interval, {0, 95, 10, 9, true})) << "the kind is not looked at";
    interval.clear();
    EXPECT_TRUE(Is(interval, {0, 0, 1, 0, true}));
    interval = TriggerRow(2, 7, 7, 1);
    EXPECT_TRUE(Is(interval, {7, 7, 1, 0, true}));
}

TEST(TriggerInterval, LengthsOfRowsAndOfSet) {
    struct Case {
        float start, step, stop;
        unsigned int row_length, set_length;
    };
    auto const minus = [](unsigned int value) { return 0u - value; };
    Case const cases[] = {
        {0, 1, 10, 10, 10},
        {10, 1, 0, 10, minus(10)},
        {10, -1, 0, minus(10), 10},
        {0, 4, 10, 2, 2},
        {10, 4, 0, 2, minus(2)},
        {0, 0, 10, 0, 0},
        {0, 0, 0, 0, 0},
        {NaN, 1, 10, 0, 0},
        {0, 1, NaN, 0, 0},
        {0, NaN, 10, 0, 0},
        {0, 1, Infinity, 0, 0},
        {0, Infinity, 10, 0, 0},
        {0, 1, 4294967296.0f, 0, 0},
        {0, 1, 6442450944.0f, 0x80000000u, 0x80000000u},
        {0, 1, 9223372036854775808.0f, 0, 0},
        {0, 0.25f, 3e9f, 0xCB417800u, 0xCB417800u},
    };
    for (auto const& [start, step, stop, row_length, set_length] : cases) {
        SCOPED_TRACE(testing::Message() << start << ' ' << step << ' ' << stop);
        bool const raising = stop >= start;
        CInterval const of_row = TriggerRow(2, start, stop, step);
        CInterval set(1, 2, 3, !raising);
        set.set(start, step, stop);
        float const lower = raising ? start : stop;
        float const upper = raising ? stop : start;
        EXPECT_TRUE(Is(of_row, {lower, upper, step, row_length, raising}));
        EXPECT_TRUE(Is(set, {lower, upper, step, set_length, raising}));
    }
}

TEST(TriggerCell, OneDimension) {
    CInterval const raising = TriggerRow(2, 0, 100, 10);
    CInterval const falling = TriggerRow(3, 100, 0, 10);
    struct Case {
        CInterval const& interval;
        float position;
        int cell; // -1: outside
        int clamped;
    };
    Case const cases[] = {
        {raising, 10, 0, 0},
        {raising, 10.5f, 1, 1},
        {raising, 0, -1, 0},
        {raising, 0.5f, 0, 0},
        {raising, 100, 9, 9},
        {raising, 105, 10, 10}, // the length is not looked at
        {raising, -5, 0, 0},    // cut towards 0
        {raising, -10, -1, 0},
        {raising, -15, -1, 0},
        {raising, 655360, 65535, 65535},
        {raising, 655365, -1, 65535},
        {raising, 1000000, -1, 65535},
        {raising, 1e30f, -1, 65535},
        {raising, -1e30f, -1, 0},
        {raising, Infinity, -1, 65535},
        {raising, -Infinity, -1, 0},
        {raising, NaN, -1, 0},
        {falling, 10, 1, 1},
        {falling, 9.5f, 0, 0},
        {falling, 0, 0, 0},
        {falling, -5, 0, 0},
        {falling, -10, -1, 0},
        {falling, 655350, 65535, 65535},
        {falling, 655360, -1, 65535},
        {falling, Infinity, -1, 65535},
        {falling, NaN, -1, 0},
    };
    for (auto const& [interval, position, cell, clamped] : cases) {
        SCOPED_TRACE(testing::Message() << position << (interval.raising() ? " raising" : " falling"));
        std::int64_t number = 0;
        EXPECT_EQ(CTriggerStore::cell(interval, 0, position, number, false), cell >= 0);
        EXPECT_EQ(number, cell >= 0 ? cell : 0);
        number = 0;
        EXPECT_TRUE(CTriggerStore::cell(interval, 0, position, number, true));
        EXPECT_EQ(number, clamped);
    }
}

TEST(TriggerCell, StepsWithoutWidth) {
    for (float const step : {0.0f, -0.0f, NaN, Infinity}) {
        for (float const position : {0.0f, 5.0f, -5.0f, NaN, Infinity}) {
            for (bool const raising : {false, true}) {
                SCOPED_TRACE(testing::Message() << step << ' ' << position << ' ' << raising);
                CInterval const interval(0, step, 1, raising);
                auto const expected = trigger_model::Cell({0, 0, step, 1, raising}, 0, position, true);
                std::int64_t number = 0;
                EXPECT_TRUE(CTriggerStore::cell(interval, 0, position, number, true));
                EXPECT_EQ(number, expected);
            }
        }
    }
    std::int64_t number = 0;
    // The distance is no number of steps: the lowest cell, which has none below it.
    EXPECT_TRUE(CTriggerStore::cell(CInterval(0, 0, 1, true), 0, 0, number, true));
    EXPECT_EQ(number, 0);
    // Likewise a position on the boundary of the lowest cell that there is.
    EXPECT_TRUE(CTriggerStore::cell(CInterval(0, 1, 1, true), 0, -2147483648.0f, number, true));
    EXPECT_EQ(number, 0);
    EXPECT_FALSE(CTriggerStore::cell(CInterval(0, 1, 1, true), 0, -2147483648.0f, number, false));
}

TEST(TriggerCell, BitsOfEachDimension) {
    CInterval const interval(0, 1, 100, false);
    struct Case {
        unsigned int dim;
        int cell;
        std::int64_t number;
    };
    Case const cases[] = {
        {0, 1, 1},
        {0, 0xFFFF, 0xFFFF},
        {0, 0x8000, 0x8000},
        {1, 1, 0x10000},
        {1, 0x7FFF, 0x7FFF0000},
        {1, 0x8000, -0x80000000LL},
        {1, 0xFFFF, -0x10000LL},
        {2, 1, 1},
        {2, 0x8000, 0x8000},
        {3, 1, 0x10000},
        {3, 0x8000, -0x80000000LL},
        {4, 1, 1},
        {5, 1, 0x10000},
        {0x10000000u, 1, 1},
        {0xFFFFFFFFu, 1, 0x10000},
    };
    for (auto const& [dim, cell, expected] : cases) {
        SCOPED_TRACE(testing::Message() << dim << ' ' << cell);
        std::int64_t number = 0;
        EXPECT_TRUE(CTriggerStore::cell(interval, dim, static_cast<float>(cell), number, false));
        EXPECT_EQ(number, expected);
        number = 0x500000006LL;
        EXPECT_TRUE(CTriggerStore::cell(interval, dim, static_cast<float>(cell), number, true));
        EXPECT_EQ(number, expected | 0x500000006LL);
        EXPECT_FALSE(CTriggerStore::cell(interval, dim, 70000, number, false));
        EXPECT_EQ(number, expected | 0x500000006LL);
    }
}

TEST(TriggerCell, AllDimensions) {
    CIntervals intervals;
    for (auto& interval : intervals.intervals)
        interval = CInterval(0, 1, 100, false);
    CDimensions position{{3, 4, 8, 16}, {}};
    struct Case {
        Bits intervals, positions;
        std::int64_t number;
    };
    Case const cases[] = {{0b0000, 0b1111, 0}, {0b1111, 0b0000, 0},        {0b0101, 0b1010, 0},
                          {0b0001, 0b1111, 3}, {0b1111, 0b0010, 0x40000},  {0b0011, 0b0011, 0x40003},
                          {0b0100, 0b0110, 8}, {0b1000, 0b1000, 0x100000}, {0b1111, 0b1111, 0x14000B}};
    for (auto const& test : cases) {
        SCOPED_TRACE(test.intervals.to_string() + ' ' + test.positions.to_string());
        intervals.dimensions = test.intervals;
        position.dimensions = test.positions;
        std::int64_t number = -1; // is replaced
        EXPECT_TRUE(CTriggerStore::cell(intervals, position, number, false));
        EXPECT_EQ(number, test.number);
    }
    for (unsigned int outside = 0; outside < 4; ++outside) {
        CDimensions far = position;
        far.positions[outside] = -1;
        std::int64_t number = 4711;
        EXPECT_FALSE(CTriggerStore::cell(intervals, far, number, false)) << outside;
        EXPECT_EQ(number, 4711);
        far.dimensions.reset(outside);
        EXPECT_TRUE(CTriggerStore::cell(intervals, far, number, false)) << outside;
        far.dimensions.set(outside);
        EXPECT_TRUE(CTriggerStore::cell(intervals, far, number, true)) << outside;
    }
}

TEST(TriggerPosition, OneDimension) {
    CInterval const raising = TriggerRow(2, 0, 100, 10);
    CInterval const falling = TriggerRow(3, 100, 0, 10);
    struct Case {
        CInterval interval;
        std::int64_t number;
        unsigned int dim;
        float position;
    };
    Case const cases[] = {
        {raising, 3, 0, 40},
        {falling, 1, 0, 10},
        {raising, 0x7FFF, 0, 327680},
        {raising, 0x8000, 0, -327670},
        {raising, 0xFFFF, 0, 0},
        {falling, 0xFFFF, 0, -10},
        {falling, 0x0004000300020001, 0, 10},
        {falling, 0x0004000300020001, 1, 20},
        {falling, 0x0004000300020001, 2, 30},
        {falling, 0x0004000300020001, 3, 40},
        {falling, 0x0004000300020001, 4, 10},
        {falling, 0x0004000300020001, 0xFFFFFFFFu, 40},
        {falling, -1, 3, -10},
        {falling, std::numeric_limits<std::int64_t>::min(), 3, -327680},
        {CInterval(50, 2, 10, true), 0, 0, 22}, // the stop of 20 is the smaller end
        {CInterval(0, Infinity, 1, true), 0, 0, Infinity},
    };
    for (auto const& [interval, number, dim, expected] : cases) {
        SCOPED_TRACE(testing::Message() << number << ' ' << dim);
        float position = -4711;
        EXPECT_TRUE(CTriggerStore::position(interval, number, dim, position));
        EXPECT_EQ(position, expected);
    }
}

TEST(TriggerPosition, MiddleOrFarEdgeOfAllDimensions) {
    CIntervals intervals;
    for (unsigned int dim = 0; dim < 4; ++dim)
        intervals.intervals[dim] = TriggerRow(2, 0, 100, 10);
    intervals.intervals[3] = TriggerRow(3, 100, -100, 1);
    CDimensions position{{1, 2, 3, 4}, Bits(0)};
    EXPECT_TRUE(CTriggerStore::position(intervals, 0x0001'FFFF'0002'0003, 0, position));
    EXPECT_EQ(position.positions, (std::array<float, 4>{35, 25, -5, -98.5f}));
    EXPECT_EQ(position.dimensions, Bits(0b1111)) << "also without intervals";
    EXPECT_TRUE(CTriggerStore::position(intervals, 0x0001'FFFF'0002'0003, 0x7FFF'0001'0000'0002, position));
    EXPECT_EQ(position.positions, (std::array<float, 4>{50, 25, 0, -32868}));
}

} // namespace
