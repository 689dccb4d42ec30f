#include "mode_world.h"

#include <cmath>
#include <gtest/gtest.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>

namespace {

Message const CannotCombine = {
    16, 1, L"CQtModeInfo: Failed to combine the Auto Mode Param Table from the Application Sea.\n"};
Message const NoRoom = {16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n"};

class ModeInfoTest : public testing::Test {
protected:
    CQtModeInfo const& modes() { return own.derived().ModeInfo(); }
    CParamTables& tables() { return own.tables(); }

    // Three parameters of 4, 2 and 3 bits, the first and the last with a state: 13 bits.
    void AddThreeParameters() {
        own.AddParameter(1, 10, 0, 1000, 100, 1);
        own.AddParameter(2, 20, 0, 3, 1, 0);
        own.AddParameter(3, 30, 0, 5, 1, -7);
    }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(ModeInfoTest, NothingIsVirtualBeforeTheFirstBuild) {
    EXPECT_EQ(modes().ExtensionBits(), 0);
    EXPECT_EQ(modes().StateBits(), 0);
    EXPECT_EQ(modes().ExtensionMask(), 0u);
    EXPECT_TRUE(modes().Params().empty());
    EXPECT_FALSE(modes().IsVirtual(12345));
}

TEST_F(ModeInfoTest, WithoutParametersNothingIsVirtual) {
    own.AddMode(Highest, L"last", 1);
    EXPECT_TRUE(own.Build());
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    EXPECT_EQ(modes().ExtensionBits(), 0);
    EXPECT_EQ(modes().StateBits(), 0);
    EXPECT_EQ(modes().ExtensionMask(), 0u);
    for (int const id : {-1, 0, 1, 77, Highest, Lowest, -2}) {
        EXPECT_EQ(modes().BaseMode(id), id);
        EXPECT_FALSE(modes().IsVirtual(id)) << id;
        EXPECT_FALSE(modes().IsValidVirtual(id)) << id;
    }
    EXPECT_EQ(modes().Extension(77), 0);
    EXPECT_EQ(modes().Extension(-1), -1);
    EXPECT_EQ(modes().Extension(-2), -1);
    EXPECT_EQ(modes().Extension(nullptr, nullptr), 0);
}

TEST_F(ModeInfoTest, BitsOfIntervals) {
    struct Case {
        float start, stop, step;
        int bits;
    };
    Case const cases[] = {
        {0, 1000, 100, 4},
        {0, 10, 1, 4},
        {0, 7.99f, 1, 3},
        {0, 3, 1, 2},
        {-5, 0, 1, 3},
        {10, 0, -1, 4},
        {0, 1000, 1, 10},
        {0, 1023, 1, 10},
        {0, 8191, 1, 13},
        {0, 8193, 1, 14},
        {0, 1, 1, 0},
        {0, 0.5f, 1, 0},
        {5, 5, 1, 0},
        {10, 0, 1, 0},
        {0, 1000, -100, 0},
        {0, 1000, 0, 0},
        {0, 0, 0, 0},
        {1000, 0, 0, 0},
        {0, 1000, -0.0f, 0},
        {NotANumber, 1000, 100, 0},
        {0, NotANumber, 100, 0},
        {0, 10, NotANumber, 0},
        {0, Infinite, 1, 0},
        {-Infinite, 0, 1, 0},
        {Infinite, Infinite, 1, 0},
        {0, 10, Infinite, 0},
        {-Largest, Largest, 1, 0},
        {0, 1, 1e-45f, 0},
        {0, 1e9f, 1, 30},
        {0, 2e9f, 1, 31},
        {0, 4e9f, 1, 32},
        {0, 1e30f, 1, 100},
        {0, Largest, 1, 129},
    };
    for (auto const& [start, stop, step, bits] : cases) {
        own.Clear();
        own.AddParameter(0, 10, start, stop, step, 0);
        own.Build();
        ASSERT_EQ(modes().Params().size(), 1u);
        EXPECT_EQ(modes().Params().at(0).IntervalBits, bits) << start << " " << stop << " " << step;
        EXPECT_EQ(modes().ExtensionBits(), bits);
    }
}

// The logarithm of single precision lies beside the true one, so that some powers of two take a bit more. Ids
// of hosts rely on the widths as they are.
TEST_F(ModeInfoTest, BitsOfPowersOfTwo) {
    constexpr int bits[] = {0,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 13, 15, 15,
                            17, 17, 19, 19, 21, 21, 23, 23, 25, 26, 26, 27, 29, 30, 30, 31};
    for (int power = 0; power < 32; ++power) {
        own.Clear();
        own.AddParameter(0, 10, 0, std::ldexp(1.0f, power), 1, 0);
        own.Build();
        EXPECT_EQ(modes().Params().at(0).IntervalBits, bits[power]) << power;
    }
}

TEST_F(ModeInfoTest, LayoutOfSeveralParameters) {
    AddThreeParameters();
    own.AddMode(262143, L"widest", 1); // 18 bits
    EXPECT_TRUE(own.Build());
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    EXPECT_EQ(modes().ExtensionBits(), 13);
    EXPECT_EQ(modes().StateBits(), 4);
    EXPECT_EQ(modes().ExtensionMask(), 0x7FFC0000u);
    EXPECT_EQ(modes().BaseMode((1757 << 18) + 7), 7);
    EXPECT_EQ(modes().Extension((1757 << 18) + 7), 1757);
    EXPECT_EQ(modes().BaseMode(Highest), 262143);
    EXPECT_EQ(modes().Extension(Highest), 8191);
    EXPECT_EQ(modes().BaseMode(-1), -1);
    EXPECT_EQ(modes().Extension(-1), -1);
    // The sign comes in from the left, and belongs to the base mode.
    EXPECT_EQ(modes().Extension(Lowest), -8192);
    EXPECT_EQ(modes().BaseMode(Lowest), Lowest);
    EXPECT_FALSE(modes().IsVirtual(Lowest));
    EXPECT_EQ(modes().Extension(-2), -1);
    EXPECT_EQ(modes().BaseMode(-2), static_cast<int>(0x8003FFFEu));
    EXPECT_TRUE(modes().IsVirtual(-2));
    EXPECT_FALSE(modes().IsVirtual(-1));
    EXPECT_FALSE(modes().IsVirtual(262143));
    EXPECT_TRUE(modes().IsVirtual(262144));
}

TEST_F(ModeInfoTest, PackingAnExtension) {
    AddThreeParameters();
    ASSERT_TRUE(own.Build());
    int const intervals[] = {2, 0, 4};
    int const states[] = {3, 9, 1}; // the second is passed over
    EXPECT_EQ(modes().Extension(intervals, states), ((3 << 5 | 1 << 3 | 5) << 4) | 13);
    EXPECT_EQ(modes().Extension(intervals, nullptr), (3 << 5 | 1 << 3 | 5) << 4);
    int const none[] = {-1, -1, -1};
    int const still[] = {0, 0, 0};
    EXPECT_EQ(modes().Extension(none, still), 0);
    // Too large numbers run into the fields to the left.
    int const large[] = {0, 7, 0};
    int const large_states[] = {1, 0, 6};
    EXPECT_EQ(modes().Extension(large, large_states), ((1 << 5 | 8 << 3 | 1) << 4) | 6);
    int const limits[] = {0, 0, Highest};
    EXPECT_EQ(modes().Extension(limits, nullptr), static_cast<int>((1u << 5 | 1u << 3 | 0x80000000u) << 4));
}

TEST_F(ModeInfoTest, GeneratingIds) {
    AddThreeParameters();
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(modes().GenerateId(7, 1757), (1757 << 18) + 7);
    EXPECT_EQ(modes().GenerateId(7, 0), 7);
    EXPECT_EQ(modes().GenerateId(-1, 3), -1);
    EXPECT_EQ(modes().GenerateId(5, -1), 5);
    EXPECT_EQ(modes().GenerateId(-1, -1), -1);
    // The base mode is added: one that is too large changes the extension.
    EXPECT_EQ(modes().GenerateId(262144, 1), 2 << 18);
    EXPECT_EQ(modes().GenerateId(Highest, 8191), static_cast<int>(0xFFFBFFFFu));
    EXPECT_EQ(modes().GenerateId(0, 8192), Lowest);
}

TEST_F(ModeInfoTest, Validity) {
    own.AddParameter(0, 10, 0, 5, 1, 1);
    own.AddParameter(1, 20, 0, 3, 1, 0);
    ASSERT_TRUE(own.Build());
    auto const id = [&](int first, int second, int state) {
        int const intervals[] = {first, second};
        int const states[] = {state, 0};
        return modes().GenerateId(4, modes().Extension(intervals, states));
    };
    EXPECT_TRUE(modes().IsValidVirtual(id(0, 0, 0)));
    EXPECT_TRUE(modes().IsValidVirtual(id(6, 2, 3)));
    EXPECT_FALSE(modes().IsValidVirtual(id(-1, 0, 0)));
    EXPECT_FALSE(modes().IsValidVirtual(id(0, -1, 0)));
    EXPECT_FALSE(modes().IsValidVirtual(id(-1, -1, 3)));
    EXPECT_TRUE(modes().IsVirtual(id(-1, -1, 3)));
    EXPECT_FALSE(modes().IsValidVirtual(id(-1, -1, 0)));
    EXPECT_FALSE(modes().IsValidVirtual(4));
    EXPECT_FALSE(modes().IsValidVirtual(-1));
    tables().AutoModeParamOrder.PurgeTable();
    EXPECT_FALSE(modes().IsValidVirtual(id(0, 0, 0))) << "no order";
}

// An order key counts as a position among the parameters.
TEST_F(ModeInfoTest, ValidityWithGapsInTheOrder) {
    for (int const order : {-1, 1, 2, Highest, Lowest}) {
        own.Clear();
        own.AddParameter(order, 10, 0, 5, 1, 0);
        ASSERT_TRUE(own.Build());
        int const interval = 2;
        int const id = modes().GenerateId(4, modes().Extension(&interval, nullptr));
        EXPECT_TRUE(modes().IsVirtual(id));
        EXPECT_FALSE(modes().IsValidVirtual(id)) << order;
    }
    own.Clear();
    own.AddParameter(0, 10, 0, 5, 1, 0);
    own.AddParameter(-4, 20, 0, 5, 1, 0);
    ASSERT_TRUE(own.Build());
    int const intervals[] = {1, 1};
    EXPECT_FALSE(modes().IsValidVirtual(modes().GenerateId(4, modes().Extension(intervals, nullptr))));
}

TEST_F(ModeInfoTest, RoomBesideTheBaseMode) {
    struct Case {
        std::vector<int> modes;
        float stop;
        int extension_bits;
        bool has_room;
    };
    Case const cases[] = {
        {{}, 2e9f, 31, true},        {{0}, 2e9f, 31, true},         {{1}, 2e9f, 31, true},
        {{2}, 2e9f, 31, false},      {{-5, -4}, 2e9f, 31, true},    {{Lowest}, 2e9f, 31, true},
        {{1, 2}, 1e9f, 30, true},    {{3}, 1e9f, 30, false},        {{}, 4e9f, 32, false},
        {{8}, 2e8f, 28, true},       {{9}, 2e8f, 28, false},        {{9}, 1e8f, 27, true},
        {{Highest}, 1, 0, true},     {{Highest}, 3, 2, false},      {{0, 7}, 1e30f, 100, false},
        {{Highest - 1}, 1, 0, true}, {{1 << 28}, 7, 3, true},       {{1 << 29}, 1, 0, true},
        {{1 << 29}, 3, 2, false},    {{(1 << 29) - 1}, 3, 2, true}, {{-1}, Largest, 129, false},
    };
    for (auto const& one : cases) {
        own.Clear();
        for (int const mode : one.modes)
            tables().Mode.Add(mode, L"m");
        own.AddParameter(0, 10, 0, one.stop, 1, 0);
        EXPECT_EQ(own.Build(), one.has_room) << one.stop;
        EXPECT_EQ(modes().ExtensionBits(), one.extension_bits);
        EXPECT_EQ(messages.Take(), one.has_room ? std::vector<Message>() : std::vector{NoRoom}) << one.stop;
    }
}

TEST_F(ModeInfoTest, TooManyBitsShiftModulo32) {
    own.AddParameter(0, 10, 0, 1e30f, 1, 0);
    EXPECT_FALSE(own.Build());
    EXPECT_EQ(modes().ExtensionBits(), 100);
    EXPECT_EQ(modes().ExtensionMask(), 0x78000000u);
    EXPECT_EQ(modes().BaseMode(0x7FFFFFFF), 0x07FFFFFF);
    EXPECT_EQ(modes().Extension(0x7FFFFFFF), 15);
    EXPECT_EQ(modes().GenerateId(1, 3), 0x18000001);
    own.Clear();
    own.AddParameter(0, 10, 0, 4e9f, 1, 0);
    EXPECT_FALSE(own.Build());
    EXPECT_EQ(modes().ExtensionMask(), 0u);
    EXPECT_FALSE(modes().IsVirtual(Highest));
    EXPECT_EQ(messages.Take(), (std::vector{NoRoom, NoRoom}));
}

TEST_F(ModeInfoTest, TablesThatDoNotFitTogether) {
    own.AddMode(1, L"one", 1);
    auto const fails = [&] {
        EXPECT_TRUE(own.Build()) << "the build goes on";
        EXPECT_EQ(messages.Take(), std::vector{CannotCombine});
        EXPECT_TRUE(modes().Params().empty());
        EXPECT_EQ(modes().ExtensionBits(), 0);
        EXPECT_EQ(modes().ExtensionMask(), 0u);
        own.Clear();
    };
    AddThreeParameters();
    own.AddParameterRow(40, 0, 5, 1, 0); // one row more
    fails();
    AddThreeParameters();
    tables().AutoModeParamOrder.try_emplace(4, 10); // one order more
    fails();
    AddThreeParameters();
    own.AddParameterRow(40, 0, 5, 1, 0);
    tables().AutoModeParamOrder.try_emplace(4, 41); // no row of that signal
    fails();
    AddThreeParameters();
    own.AddParameter(4, -1, 0, 5, 1, 0); // a row, but no signal
    fails();
    // Old parameters do not survive.
    AddThreeParameters();
    EXPECT_TRUE(own.Build());
    EXPECT_EQ(modes().Params().size(), 3u);
    tables().AutoModeParam.PurgeTable();
    fails();
}

// Both count the same rows, yet one parameter stands in two places.
TEST_F(ModeInfoTest, OneParameterInTwoPlaces) {
    own.AddParameter(0, 10, 0, 5, 1, 1);
    own.AddParameterRow(20, 0, 7, 1, 0);
    tables().AutoModeParamOrder.try_emplace(1, 10);
    EXPECT_TRUE(own.Build());
    ASSERT_EQ(modes().Params().size(), 2u);
    EXPECT_EQ(modes().Params().at(1).SignalId, 10);
    EXPECT_EQ(modes().ExtensionBits(), 10);
}

TEST_F(ModeInfoTest, ManyStatesLeaveTheWord) {
    for (int place = 0; place < 20; ++place)
        own.AddParameter(place, place, 0, 1, 1, 1);
    EXPECT_FALSE(own.Build());
    EXPECT_EQ(messages.Take(), std::vector{NoRoom});
    EXPECT_EQ(modes().StateBits(), 40);
    EXPECT_EQ(modes().ExtensionBits(), 40);
    EXPECT_EQ(modes().ExtensionMask(), 0x7F800000u);
}

TEST_F(ModeInfoTest, SameAsTheModelOnRandomData) {
    constexpr std::uint32_t seed = 5301;
    ModeWorld world(seed);
    for (int round = 0; round < 5000; ++round) {
        world.Renew();
        bool combines = false;
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round << " " << world.Describe());
        ASSERT_TRUE(world.Build(combines));
        std::vector<Message> expected;
        if (!combines)
            expected.push_back(CannotCombine);
        if (!world.model.HasRoom())
            expected.push_back(NoRoom);
        ASSERT_EQ(messages.Take(), expected);

        auto const& model = world.model;
        auto const& info = world.own.derived().ModeInfo();
        ASSERT_EQ(info.ExtensionBits(), model.ExtensionBits());
        ASSERT_EQ(info.StateBits(), model.StateBits());
        ASSERT_EQ(info.ExtensionMask(), model.Mask());
        for (int query = 0; query < 40; ++query) {
            int const id = world.AnyId();
            int const extension = world.Below(2) > 0 ? world.AnyInt() : world.Below(64) - 1;
            auto const intervals = world.Intervals(world.Below(3) == 0);
            auto const states = world.States(world.Below(3) == 0);
            ASSERT_EQ(info.BaseMode(id), model.Base(id)) << id;
            ASSERT_EQ(info.Extension(id), model.Extension(id)) << id;
            ASSERT_EQ(info.IsVirtual(id), model.IsVirtual(id)) << id;
            ASSERT_EQ(info.IsValidVirtual(id), model.IsValid(id)) << id;
            ASSERT_EQ(info.PhysicalMode(id), model.PhysicalMode(id)) << id;
            ASSERT_EQ(info.GenerateId(id, extension), model.Generate(id, extension))
                << id << " " << extension;
            ASSERT_EQ(info.Extension(intervals.data(), nullptr), model.Pack(intervals, nullptr));
            ASSERT_EQ(info.Extension(intervals.data(), states.data()), model.Pack(intervals, &states));
        }
    }
}

} // namespace
