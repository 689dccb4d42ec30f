// The trigger store as it reads its table.
#include <paramdb/query/trigger_store.h>

#include <array>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <tests/distillery/own_distillery.h>
#include <tests/query/trigger_support.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <utility>
#include <vector>

namespace {

using CInterval = CTriggerStore::CInterval;
using CIntervals = CTriggerStore::CIntervals;
using CDimensions = CTriggerStore::CDimensions;
using Bits = std::bitset<4>;

// What the call throws as an out-of-range error; empty if nothing.
template <class Call>
std::string Error(Call call) {
    try {
        call();
    } catch (std::out_of_range const& error) {
        return error.what();
    }
    return {};
}

class TriggerTable : public testing::Test {
protected:
    void Add(int mode, int trigger, int dimension, QVTriggerParams const& row) {
        own.tables().TriggerParam.insert({{mode, trigger, dimension}, row});
    }

    OwnDistillery own;
    CTriggerStore store{own.instance()};
};

TEST_F(TriggerTable, WithoutRows) {
    Add(1, 2, 1, TriggerRow(2, 0, 100, 10));
    for (auto const& [mode, trigger] : {std::pair(1, 1), std::pair(1, 3), std::pair(0, 2), std::pair(2, 2),
                                        std::pair(-1, 2), std::pair(1, Highest), std::pair(1, Lowest),
                                        std::pair(Highest, Highest), std::pair(Lowest, Lowest)}) {
        SCOPED_TRACE(testing::Message() << mode << ' ' << trigger);
        unsigned int mask = 99;
        EXPECT_EQ(store.dimension(mode, trigger), -1);
        EXPECT_FALSE(store.dimensions(mode, trigger, mask));
        EXPECT_EQ(mask, 0u);
        CIntervals intervals;
        intervals.dimensions.set();
        intervals.intervals[0] = CInterval(5, 2, 10, true);
        EXPECT_FALSE(store.field(mode, trigger, intervals));
        EXPECT_EQ(intervals.dimensions, Bits(0));
        EXPECT_FALSE(store.field(mode, trigger, 0, intervals.intervals[0]));
        EXPECT_TRUE(Is(intervals.intervals[0], {5, 20, 2, 10, true}));
        CDimensions position{{1, 2, 3, 4}, Bits(0b1111)};
        EXPECT_FALSE(store.position(mode, trigger, 0, 0, position));
        EXPECT_EQ(position.dimensions, Bits(0));
        EXPECT_EQ(position.positions, (std::array<float, 4>{1, 2, 3, 4}));
        EXPECT_FALSE(store.position(mode, trigger, 0, 0u, position.positions[0]));
        EXPECT_EQ(position.positions[0], 1);
    }
    EXPECT_EQ(store.max_dims(), 4u);
    EXPECT_EQ(CTriggerStore::dimensions_d, 4u);
}

TEST_F(TriggerTable, TheOneDimensionThatVaries) {
    struct Case {
        std::vector<int> kinds; // from dimension 0; 0 stands for no row
        int dimension;
        unsigned int mask;
    };
    Case const cases[] = {
        {{2}, 0, 1},        {{1}, -1, 1},           {{1, 3}, 1, 3},
        {{0, 1, 2}, 2, 6},  {{1, 1, 1, 5}, 3, 15},  {{2, 0, 0, 2}, -1, 9},
        {{2, 3, 2}, -1, 7}, {{-1, 1, 1, 1}, 0, 15}, {{1, 1}, -1, 3},
    };
    int trigger = 0;
    for (auto const& [kinds, dimension, mask] : cases) {
        SCOPED_TRACE(testing::PrintToString(kinds));
        ++trigger;
        for (std::size_t dim = 0; dim < kinds.size(); ++dim)
            if (kinds[dim] != 0)
                Add(1, trigger, static_cast<int>(dim) + 1, TriggerRow(kinds[dim], 0, 100, 10));
        unsigned int found = 99;
        EXPECT_EQ(store.dimension(1, trigger), dimension);
        EXPECT_TRUE(store.dimensions(1, trigger, found));
        EXPECT_EQ(found, mask);
    }
}

TEST_F(TriggerTable, FieldsAndPositions) {
    Add(1, 5, 1, TriggerRow(2, 0, 100, 10));
    Add(1, 5, 2, TriggerRow(3, 100, 0, 10));
    Add(1, 5, 4, TriggerRow(1, 10, -10, 1));
    CIntervals intervals;
    intervals.dimensions.set(2);
    ASSERT_TRUE(store.field(1, 5, intervals));
    EXPECT_EQ(intervals.dimensions, Bits(0b1011));
    EXPECT_TRUE(Is(intervals.intervals[0], {0, 100, 10, 10, true}));
    EXPECT_TRUE(Is(intervals.intervals[1], {0, 100, 10, 10, false}));
    EXPECT_TRUE(Is(intervals.intervals[2], {0, 0, 1, 0, true}));
    EXPECT_TRUE(Is(intervals.intervals[3], {-10, 10, 1, 20, false}));
    CInterval one;
    ASSERT_TRUE(store.field(1, 5, 3, one));
    EXPECT_TRUE(Is(one, {-10, 10, 1, 20, false}));
    EXPECT_FALSE(store.field(1, 5, 2, one));
    EXPECT_FALSE(store.field(1, 5, 0xFFFFFFFFu, one));
    EXPECT_FALSE(store.field(1, 5, 0x7FFFFFFFu, one));

    constexpr std::int64_t number = 0x0004'0003'0002'0001;
    float position = -4711;
    ASSERT_TRUE(store.position(1, 5, number, 0u, position));
    EXPECT_EQ(position, 20);
    ASSERT_TRUE(store.position(1, 5, number, 1u, position));
    EXPECT_EQ(position, 20);
    EXPECT_FALSE(store.position(1, 5, number, 2u, position)) << "no row";
    EXPECT_FALSE(store.position(1, 5, number, 3u, position)) << "a kind that has no position";
    EXPECT_EQ(position, 20);
    CDimensions all{{0, 0, 7, 0}, Bits(0b0100)};
    ASSERT_TRUE(store.position(1, 5, number, std::int64_t{0x0002'0000'0000'0003}, all));
    EXPECT_EQ(all.dimensions, Bits(0b1011));
    EXPECT_EQ(all.positions, (std::array<float, 4>{40, 25, 7, -4}));
}

TEST_F(TriggerTable, TheKindDecidesWhichBoundaryTheTableAnswers) {
    for (int const kind : {0, 1, 2, 3, 4, -1}) {
        Add(1, kind, 1, TriggerRow(kind, 100, 0, 10)); // falls, whatever its kind
        float position = -1;
        EXPECT_EQ(store.position(1, kind, 3, 0u, position), kind == 2 || kind == 3) << kind;
        EXPECT_EQ(position, kind == 2 ? 40.0f : kind == 3 ? 30.0f : -1.0f) << kind;
    }
}

TEST_F(TriggerTable, DimensionsOutsideOfTheFour) {
    constexpr char message[] = "invalid bitset position";
    for (int const dimension : {0, 5, 6, Highest}) {
        SCOPED_TRACE(dimension);
        own.tables().TriggerParam.clear();
        Add(1, 7, 2, TriggerRow(1, 0, 100, 10));
        Add(1, 7, dimension, TriggerRow(1, 0, 50, 10));
        unsigned int mask = 0;
        CIntervals intervals;
        CDimensions position;
        EXPECT_EQ(Error([&] { (void)store.dimension(1, 7); }), message);
        EXPECT_EQ(Error([&] { (void)store.dimensions(1, 7, mask); }), message);
        EXPECT_EQ(Error([&] { (void)store.field(1, 7, intervals); }), message);
        EXPECT_EQ(Error([&] { (void)store.position(1, 7, 0, std::int64_t{0}, position); }), message);
        Bits const before = dimension == 0 ? Bits(0) : Bits(0b0010);
        EXPECT_EQ(mask, before.to_ulong());
        EXPECT_EQ(intervals.dimensions, before);
        EXPECT_EQ(position.dimensions, before);
        CInterval one;
        EXPECT_TRUE(store.field(1, 7, static_cast<unsigned int>(dimension) - 1, one))
            << "a row of its own is found by its key";
        EXPECT_EQ(one.stop(), 50);
    }
    // Below 0 a row stands in front of those of its trigger, behind those of the one before.
    own.tables().TriggerParam.clear();
    Add(1, 7, -1, TriggerRow(2, 0, 100, 10));
    EXPECT_EQ(store.dimension(1, 7), -1);
    EXPECT_EQ(Error([&] { (void)store.dimension(1, 6); }), message);
}

TEST_F(TriggerTable, TheSearchEndsAtTheSecondDimensionThatVaries) {
    Add(1, 7, 1, TriggerRow(2, 0, 100, 10));
    Add(1, 7, 5, TriggerRow(2, 0, 100, 10));
    EXPECT_EQ(Error([&] { (void)store.dimension(1, 7); }), "invalid bitset position");
    Add(1, 7, 2, TriggerRow(2, 0, 100, 10));
    EXPECT_EQ(store.dimension(1, 7), -1);
}

TEST_F(TriggerTable, TheHighestTrigger) {
    Add(1, Highest, 1, TriggerRow(1, 0, 100, 10));
    Add(1, Highest, 3, TriggerRow(2, 0, 100, 10));
    Add(2, Lowest, 2, TriggerRow(2, 0, 100, 10));
    Add(Highest, Highest, 4, TriggerRow(2, 0, 100, 10));
    unsigned int mask = 0;
    EXPECT_EQ(store.dimension(1, Highest), 2);
    EXPECT_TRUE(store.dimensions(1, Highest, mask));
    EXPECT_EQ(mask, 0b0101u);
    EXPECT_EQ(store.dimension(2, Lowest), 1);
    EXPECT_EQ(store.dimension(Highest, Highest), 3);
}

TEST(TriggerStore, VirtualModesAreReduced) {
    MessageLog messages;
    OwnDistillery own;
    own.AddMode(4, L"mode", 1);
    own.AddParameter(0, 1000, 0, 1000, 100, 0);
    own.tables().TriggerParam.insert({{4, 5, 2}, TriggerRow(2, 0, 100, 10)});
    ASSERT_TRUE(own.Build());
    CTriggerStore const store(own.instance());
    int const mode = own.instance().VirtModeGenerateId(4, 3);
    ASSERT_NE(mode, 4);
    unsigned int mask = 0;
    EXPECT_EQ(store.dimension(mode, 5), 1);
    EXPECT_TRUE(store.dimensions(mode, 5, mask));
    EXPECT_EQ(mask, 2u);
    CIntervals intervals;
    EXPECT_TRUE(store.field(mode, 5, intervals));
    EXPECT_TRUE(Is(intervals.intervals[1], {0, 100, 10, 10, true}));
    EXPECT_TRUE(store.field(mode, 5, 1, intervals.intervals[0]));
    float position = 0;
    EXPECT_TRUE(store.position(mode, 5, 0x30000, 1u, position));
    EXPECT_EQ(position, 40);
    CDimensions all;
    EXPECT_TRUE(store.position(mode, 5, 0x30000, std::int64_t{0}, all));
    EXPECT_EQ(all.positions[1], 35);
}

} // namespace
