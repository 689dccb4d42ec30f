#include <paramdb/distillery/channel_info.h>

#include "channel_model.h"
#include "derivation_support.h"

#include <limits>

using derivation::Random;
using derivation::Rows;

namespace {

class ChannelInfo : public derivation::DerivationTest {
protected:
    void Property(int channel, unsigned int flags) {
        tables.ChannelProperty.insert({channel, QVChannelProperty(flags, 0)});
    }
    void Inherit(int channel, int mode, int parent) {
        tables.ChannelInheritance.insert({{channel, mode}, QVRefIdx(parent)});
    }
    std::vector<std::wstring> Build() {
        channels.Build();
        return Rows(channels.BaseChannels());
    }
    static Message Cycle(int mode, std::wstring const& line) {
        return {8, 3,
                L"CQtChannelInfo::Build(): cyclic channel inheritance in mode " + std::to_wstring(mode) +
                    L": " + line + L"\n"};
    }

    CQtChannelInfo channels{distillery};
};

using Lines = std::vector<std::wstring>;
using Messages = std::vector<Message>;

TEST_F(ChannelInfo, EmptyTablesGiveNoEntries) {
    EXPECT_EQ(Build(), Lines());
    AddNames(tables.Mode, {1});
    EXPECT_EQ(Build(), Lines());
    AddNames(tables.Channel, {4});
    tables.Mode.Clear();
    EXPECT_EQ(Build(), Lines());
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(ChannelInfo, AChannelWithoutRowsIsItsOwnBase) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {4});
    EXPECT_EQ(Build(), (Lines{L"1 4 | 4 0 "}));
    EXPECT_EQ(channels.BaseChannel(1, 4), 4);
    EXPECT_EQ(channels.Flags(1, 4), 0);
    EXPECT_EQ(channels.Parent(1, 4), -1);
}

TEST_F(ChannelInfo, ModesThenChannelsInAscendingOrder) {
    AddNames(tables.Mode, {3, -2, 1});
    AddNames(tables.Channel, {7, 0, -5});
    EXPECT_EQ(Build(), (Lines{L"-2 -5 | -5 0 ", L"-2 0 | 0 0 ", L"-2 7 | 7 0 ", L"1 -5 | -5 0 ",
                              L"1 0 | 0 0 ", L"1 7 | 7 0 ", L"3 -5 | -5 0 ", L"3 0 | 0 0 ", L"3 7 | 7 0 "}));
}

TEST_F(ChannelInfo, FlagsOfTheWholeLineAreGathered) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {10, 11, 12, 13});
    Inherit(10, -1, 11);
    Inherit(11, -1, 12);
    Inherit(12, -1, 13);
    Property(10, 1);
    Property(12, 4);
    Property(13, 2);
    Property(99, 8); // no channel of the line
    EXPECT_EQ(Build(), (Lines{L"1 10 | 13 7 ", L"1 11 | 13 6 ", L"1 12 | 13 6 ", L"1 13 | 13 2 "}));
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(ChannelInfo, AllBitsOfTheFlagsAreKept) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {1, 2});
    Inherit(1, -1, 2);
    Property(1, 0x80000000u);
    Property(2, 0x7FFFFFFFu);
    EXPECT_EQ(Build(), (Lines{L"1 1 | 2 -1 ", L"1 2 | 2 2147483647 "}));
    EXPECT_EQ(channels.Flags(1, 1), -1);
}

TEST_F(ChannelInfo, TheRowOfAModeWinsOverTheRowOfAnyMode) {
    AddNames(tables.Mode, {1, 2, 3});
    AddNames(tables.Channel, {5, 6, 7});
    Inherit(5, -1, 6);
    Inherit(5, 2, 7);
    Inherit(5, 3, -1); // no parent in this mode
    EXPECT_EQ(channels.Parent(1, 5), 6);
    EXPECT_EQ(channels.Parent(2, 5), 7);
    EXPECT_EQ(channels.Parent(3, 5), -1);
    EXPECT_EQ(channels.Parent(-1, 5), 6);
    EXPECT_EQ(channels.Parent(77, 5), 6); // a mode without name
    EXPECT_EQ(channels.Parent(2, 6), -1);
    EXPECT_EQ(Build(), (Lines{L"1 5 | 6 0 ", L"1 6 | 6 0 ", L"1 7 | 7 0 ", L"2 5 | 7 0 ", L"2 6 | 6 0 ",
                              L"2 7 | 7 0 ", L"3 5 | 5 0 ", L"3 6 | 6 0 ", L"3 7 | 7 0 "}));
}

TEST_F(ChannelInfo, EachStepOfALineLooksForTheModeAnew) {
    AddNames(tables.Mode, {1, 2});
    AddNames(tables.Channel, {1});
    Inherit(1, -1, 2);
    Inherit(2, 1, 3);
    Inherit(2, 2, 4);
    Inherit(3, -1, 5);
    Inherit(4, 1, 6);
    EXPECT_EQ(Build(), (Lines{L"1 1 | 5 0 ", L"2 1 | 4 0 "}));
}

TEST_F(ChannelInfo, ParentsNeedNoName) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {1});
    Inherit(1, -1, 800);
    Inherit(800, 1, 900);
    Property(800, 2);
    Property(900, 4);
    EXPECT_EQ(Build(), (Lines{L"1 1 | 900 6 "}));
    EXPECT_EQ(channels.BaseChannel(1, 800), 0);
}

TEST_F(ChannelInfo, ChannelAndModeOfMinusOne) {
    AddNames(tables.Mode, {-1, 1});
    AddNames(tables.Channel, {-1, 2});
    Inherit(-1, -1, 2);
    Inherit(2, 1, 3);
    Property(-1, 1);
    EXPECT_EQ(Build(), (Lines{L"-1 -1 | 2 1 ", L"-1 2 | 2 0 ", L"1 -1 | 3 1 ", L"1 2 | 3 0 "}));
}

TEST_F(ChannelInfo, MissesAnswerZero) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {4});
    Property(4, 6);
    Build();
    EXPECT_EQ(channels.BaseChannel(1, 4), 4);
    EXPECT_EQ(channels.Flags(1, 4), 6);
    for (auto const& [mode, channel] : {std::pair(1, 5), {2, 4}, {-1, 4}, {1, -1}, {4, 1}}) {
        EXPECT_EQ(channels.BaseChannel(mode, channel), 0) << mode << ' ' << channel;
        EXPECT_EQ(channels.Flags(mode, channel), 0) << mode << ' ' << channel;
    }
}

TEST_F(ChannelInfo, BuildingAgainStartsFromEmpty) {
    AddNames(tables.Mode, {1, 2});
    AddNames(tables.Channel, {4, 5});
    Inherit(4, -1, 5);
    Build();
    EXPECT_EQ(Build(), (Lines{L"1 4 | 5 0 ", L"1 5 | 5 0 ", L"2 4 | 5 0 ", L"2 5 | 5 0 "}));
    tables.Mode.Clear();
    AddNames(tables.Mode, {3});
    EXPECT_EQ(Build(), (Lines{L"3 4 | 5 0 ", L"3 5 | 5 0 "}));
    tables.Channel.Clear();
    EXPECT_EQ(Build(), Lines());
}

TEST_F(ChannelInfo, TheDumpShowsModeAndChannelThenBaseAndFlags) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {10, 20});
    Inherit(20, 1, 10);
    Property(10, 5);
    Build();
    channels.BaseChannels().DumpTable(0);
    EXPECT_EQ(messages.Take(), (Messages{{8, 1, L"<-\t<PiBaseChannelId>\n"},
                                         {8, 1, L"   1:\t1 10 | 10 5\n"},
                                         {8, 1, L"   2:\t1 20 | 10 5\n"},
                                         {8, 1, L"->\t<PiBaseChannelId>\n"}}));
}

// Cycles. A line ends before the first channel that it has already.

TEST_F(ChannelInfo, AChannelThatIsItsOwnParent) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {4, 5});
    Inherit(4, -1, 4);
    Inherit(5, -1, 4);
    Property(4, 2);
    Property(5, 1);
    EXPECT_EQ(Build(), (Lines{L"1 4 | 4 2 ", L"1 5 | 4 3 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, L"4 -> 4")}));
}

TEST_F(ChannelInfo, ACycleForAnyModeIsReportedOnce) {
    AddNames(tables.Mode, {1, 2, 3});
    AddNames(tables.Channel, {5, 6, 7});
    Inherit(5, -1, 6);
    Inherit(6, -1, 7);
    Inherit(7, -1, 5);
    Property(6, 4);
    EXPECT_EQ(Build(), (Lines{L"1 5 | 7 4 ", L"1 6 | 5 4 ", L"1 7 | 6 4 ", L"2 5 | 7 4 ", L"2 6 | 5 4 ",
                              L"2 7 | 6 4 ", L"3 5 | 7 4 ", L"3 6 | 5 4 ", L"3 7 | 6 4 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, L"5 -> 6 -> 7 -> 5")}));
    Build(); // the next load tells it again
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, L"5 -> 6 -> 7 -> 5")}));
}

TEST_F(ChannelInfo, ACycleInOneModeAlone) {
    AddNames(tables.Mode, {1, 2, 3});
    AddNames(tables.Channel, {5, 6});
    Inherit(5, 2, 6);
    Inherit(6, 2, 5);
    EXPECT_EQ(Build(), (Lines{L"1 5 | 5 0 ", L"1 6 | 6 0 ", L"2 5 | 6 0 ", L"2 6 | 5 0 ", L"3 5 | 5 0 ",
                              L"3 6 | 6 0 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(2, L"5 -> 6 -> 5")}));
}

TEST_F(ChannelInfo, ACycleThatOnlyTheRowOfAnyModeCloses) {
    AddNames(tables.Mode, {1, 2, 3});
    AddNames(tables.Channel, {5, 6});
    Inherit(5, -1, 6);
    Inherit(6, 2, 5);
    EXPECT_EQ(Build(), (Lines{L"1 5 | 6 0 ", L"1 6 | 6 0 ", L"2 5 | 6 0 ", L"2 6 | 5 0 ", L"3 5 | 6 0 ",
                              L"3 6 | 6 0 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(2, L"5 -> 6 -> 5")}));
}

TEST_F(ChannelInfo, TheRowOfAModeOpensACycle) {
    AddNames(tables.Mode, {1, 2});
    AddNames(tables.Channel, {5, 6});
    Inherit(5, -1, 6);
    Inherit(6, -1, 5);
    Inherit(6, 1, -1);
    EXPECT_EQ(Build(), (Lines{L"1 5 | 6 0 ", L"1 6 | 6 0 ", L"2 5 | 6 0 ", L"2 6 | 5 0 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(2, L"5 -> 6 -> 5")}));
}

TEST_F(ChannelInfo, TailsIntoACycleTellWhereTheyComeIn) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {1, 2, 8, 9});
    Inherit(1, -1, 9);
    Inherit(2, -1, 8);
    Inherit(8, -1, 9);
    Inherit(9, -1, 8);
    Property(1, 1);
    Property(2, 2);
    Property(8, 4);
    EXPECT_EQ(Build(), (Lines{L"1 1 | 8 5 ", L"1 2 | 9 6 ", L"1 8 | 9 4 ", L"1 9 | 8 4 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, L"9 -> 8 -> 9")}));
}

TEST_F(ChannelInfo, SeveralCyclesAreReportedInTheOrderOfTheWalk) {
    AddNames(tables.Mode, {1, 2});
    AddNames(tables.Channel, {1, 2, 3, 4, 5});
    Inherit(4, -1, 5);
    Inherit(5, -1, 4);
    Inherit(2, -1, 2);
    Inherit(1, 2, 3);
    Inherit(3, 2, 1);
    Inherit(2, 2, 4);
    Build();
    EXPECT_EQ(messages.Take(),
              (Messages{Cycle(1, L"2 -> 2"), Cycle(1, L"4 -> 5 -> 4"), Cycle(2, L"1 -> 3 -> 1")}));
}

TEST_F(ChannelInfo, TheSameChannelsTheOtherWayRoundAreAnotherCycle) {
    AddNames(tables.Mode, {1, 2, 3});
    AddNames(tables.Channel, {1, 2, 3});
    for (int const mode : {1, 3}) {
        Inherit(1, mode, 2);
        Inherit(2, mode, 3);
        Inherit(3, mode, 1);
    }
    Inherit(1, 2, 3);
    Inherit(3, 2, 2);
    Inherit(2, 2, 1);
    Build();
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, L"1 -> 2 -> 3 -> 1"), Cycle(2, L"1 -> 3 -> 2 -> 1")}));
}

TEST_F(ChannelInfo, ACycleThatNoChannelComesToIsNoMatter) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {5});
    Inherit(1, -1, 2);
    Inherit(2, -1, 1);
    Inherit(5, 9, 5); // no mode of that id
    EXPECT_EQ(Build(), (Lines{L"1 5 | 5 0 "}));
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(ChannelInfo, ACycleOfParentsWithoutNameBeginsWhereTheChannelComesIn) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {5});
    Inherit(5, -1, 4);
    Inherit(4, -1, 3);
    Inherit(3, -1, 4);
    EXPECT_EQ(Build(), (Lines{L"1 5 | 3 0 "}));
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, L"4 -> 3 -> 4")}));
}

TEST_F(ChannelInfo, ALongCycle) {
    constexpr int count = 3000;
    AddNames(tables.Mode, {1});
    std::wstring line;
    for (int channel = 0; channel < count; ++channel) {
        AddNames(tables.Channel, {channel});
        Inherit(channel, -1, (channel + 1) % count);
        line += std::to_wstring(channel) + L" -> ";
    }
    Property(1234, 2);
    channels.Build();
    ASSERT_EQ(channels.BaseChannels().size(), static_cast<std::size_t>(count));
    for (int channel = 0; channel < count; ++channel) {
        ASSERT_EQ(channels.BaseChannel(1, channel), (channel + count - 1) % count);
        ASSERT_EQ(channels.Flags(1, channel), 2);
    }
    EXPECT_EQ(messages.Take(), (Messages{Cycle(1, line + L"0")}));
}

// Random tables against a walk of each channel in each mode. Every channel of an inheritance row has a name.
TEST_F(ChannelInfo, RandomTablesAgainstAPlainWalk) {
    std::size_t cycles = 0;
    std::size_t without = 0;
    for (unsigned seed = 0; seed < 4000; ++seed) {
        derivation::FillChannelTables(tables, seed, derivation::ParentNames::All);
        auto const expected = derivation::WalkChannels(tables);
        EXPECT_EQ(Build(), expected.rows) << "seed " << seed;
        EXPECT_EQ(messages.Take(), expected.messages) << "seed " << seed;
        if (HasFailure())
            return;
        cycles += expected.messages.size();
        without += expected.messages.empty() ? 1 : 0;
    }
    EXPECT_GT(cycles, 2000u);
    EXPECT_GT(without, 500u);
}

// The same where inheritance also knows channels that have no name.
TEST_F(ChannelInfo, RandomTablesWithParentsWithoutName) {
    for (unsigned seed = 0; seed < 4000; ++seed) {
        derivation::FillChannelTables(tables, seed, derivation::ParentNames::Some);
        auto const expected = derivation::WalkChannels(tables);
        EXPECT_EQ(Build(), expected.rows) << "seed " << seed;
        EXPECT_EQ(messages.Take(), expected.messages) << "seed " << seed;
        if (HasFailure())
            return;
    }
}

TEST_F(ChannelInfo, RandomTablesWithoutCycle) {
    std::size_t deep = 0;
    for (unsigned seed = 0; seed < 4000; ++seed) {
        derivation::FillChannelTables(tables, seed, derivation::ParentNames::HigherOnly);
        auto const expected = derivation::WalkChannels(tables);
        ASSERT_EQ(expected.messages, Messages());
        EXPECT_EQ(Build(), expected.rows) << "seed " << seed;
        EXPECT_EQ(messages.Take(), Messages()) << "seed " << seed;
        if (HasFailure())
            return;
        deep += expected.longest_line > 3 ? 1 : 0;
    }
    EXPECT_GT(deep, 1000u);
}

} // namespace
