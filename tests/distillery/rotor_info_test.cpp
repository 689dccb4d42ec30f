#include "rotor_world.h"

#include <gtest/gtest.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>

namespace {

using Entry = RotorModel::Entry;
using Entries = std::vector<Entry>;

template <class Iterator>
Entries Listed(Iterator first, Iterator last) {
    Entries entries;
    for (; first != last; ++first) {
        auto const& [key, row] = *first;
        entries.emplace_back(key[0], key[1], key[2], key[3], row.template get<"referred_id">());
    }
    return entries;
}
Entries Listed(CQtRotorInfo::Table const& table) {
    return Listed(table.begin(), table.end());
}
Entries Listed(CQtRotorInfo::Range const& range) {
    return Listed(range.first, range.second);
}

Message Skipped(int rotor, int physical_mode) {
    return {8, 1,
            L"CQtRotorInfo::BuildRotor2OrderSourcesLookup(): Parameter database: No base order for RotorId " +
                std::to_wstring(rotor) + L" in PhysMode " + std::to_wstring(physical_mode) +
                L", skipping entry into m_rotor2OrderSources\n"};
}

class RotorInfoTest : public testing::Test {
protected:
    CQtRotorInfo const& info() { return own.derived().RotorInfo(); }
    CParamTables& tables() { return own.tables(); }
    void AddSource(int source, int physical_mode, int rotor, bool has_order = true) {
        tables().OrderSource2Rotor.insert({{source, physical_mode}, QVRefIdx(rotor)});
        if (has_order)
            tables().BaseOrder.insert({source, QVBaseOrder(1)});
    }
    // A channel with these flags in mode 4 of physical mode 1.
    void AddChannels() {
        own.AddMode(4, L"mode", 1);
        for (int flags = 0; flags < 8; ++flags) {
            tables().Channel.Add(flags, L"channel");
            tables().ChannelProperty.insert({flags, QVChannelProperty(static_cast<unsigned int>(flags), 0)});
        }
    }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(RotorInfoTest, TagsOfTheDerivedTables) {
    EXPECT_STREQ(info().Rotor2OrderSources().tag(), L"<PiRotor2OrderSources>");
    EXPECT_STREQ(info().Rotor2OrderReferences().tag(), L"<PiRotor2OrderReferences>");
    EXPECT_TRUE(info().Rotor2OrderSources().empty());
    EXPECT_TRUE(info().Rotor2OrderReferences().empty());
}

TEST_F(RotorInfoTest, SourcesAndReferencesShareTheSerialNumbers) {
    AddSource(10, 1, 100);
    AddSource(11, 1, 101);
    AddSource(12, 1, 100);
    AddSource(12, 2, 100); // no speed source at all
    tables().RotorSpeedSource.insert({{1, 100}, QVRefIdx(70)});
    tables().RotorSpeedReference.insert({{1, 100}, QVRefIdx(79)});
    tables().RotorSpeedReference.insert({{1, 101}, QVRefIdx(80)});
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(Listed(info().Rotor2OrderSources()),
              (Entries{{1, 70, 100, 0, 10}, {1, 70, 100, 2, 12}, {2, -1, 100, 3, 12}}));
    EXPECT_EQ(Listed(info().Rotor2OrderReferences()), (Entries{{1, 80, 101, 1, 11}}));
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(info().Rotor2OrderSources().size(), 3u) << "built anew, from 0";
    EXPECT_EQ(std::get<3>(Listed(info().Rotor2OrderSources())[0]), 0);
}

// A source row that says -1 ends the search: the row is no reference row.
TEST_F(RotorInfoTest, ASourceOfNoneHidesTheReference) {
    AddSource(10, 1, 100);
    tables().RotorSpeedSource.insert({{1, 100}, QVRefIdx(-1)});
    tables().RotorSpeedReference.insert({{1, 100}, QVRefIdx(80)});
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(Listed(info().Rotor2OrderSources()), (Entries{{1, -1, 100, 0, 10}}));
    EXPECT_TRUE(info().Rotor2OrderReferences().empty());
}

TEST_F(RotorInfoTest, AReferenceOfNoneIsNone) {
    AddSource(10, 1, 100);
    tables().RotorSpeedReference.insert({{1, 100}, QVRefIdx(-1)});
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(Listed(info().Rotor2OrderSources()), (Entries{{1, -1, 100, 0, 10}}));
    EXPECT_TRUE(info().Rotor2OrderReferences().empty());
}

TEST_F(RotorInfoTest, RowsWithoutBaseOrderAreReportedAndLeaveNoGap) {
    AddSource(10, 1, 100, false);
    AddSource(11, 1, 101);
    AddSource(12, 3, 102, false);
    AddSource(13, 1, 103);
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(messages.Take(), (std::vector{Skipped(100, 1), Skipped(102, 3)}));
    EXPECT_EQ(Listed(info().Rotor2OrderSources()), (Entries{{1, -1, 101, 0, 11}, {1, -1, 103, 1, 13}}));
}

TEST_F(RotorInfoTest, TheBaseOrderIsThatOfThePhysicalGear) {
    AddSource(10, 1, 100); // its own base order does not count
    AddSource(11, 1, 101, false);
    tables().Virtual2PhysGear.insert({{1, 10}, QVRefIdx(20)});
    tables().Virtual2PhysGear.insert({{1, 11}, QVRefIdx(21)});
    tables().BaseOrder.insert({21, QVBaseOrder(0)});
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(messages.Take(), std::vector{Skipped(100, 1)});
    EXPECT_EQ(Listed(info().Rotor2OrderSources()), (Entries{{1, -1, 101, 0, 11}}));
}

TEST_F(RotorInfoTest, RangesByChannelFlags) {
    AddChannels();
    AddSource(10, 1, 100);
    AddSource(11, 1, 101);
    AddSource(12, 1, 100);
    AddSource(13, 1, 102);
    tables().RotorSpeedSource.insert({{1, 100}, QVRefIdx(70)});
    tables().RotorSpeedSource.insert({{1, 101}, QVRefIdx(70)});
    tables().RotorSpeedSource.insert({{1, 102}, QVRefIdx(71)});
    ASSERT_TRUE(own.Build());
    Entries const of_rotor = {{1, 70, 100, 0, 10}, {1, 70, 100, 2, 12}};
    Entries const of_source = {{1, 70, 100, 0, 10}, {1, 70, 100, 2, 12}, {1, 70, 101, 1, 11}};
    auto const range = [&](int mode, int channel, int rotor) {
        return own.instance().OrderSourceRange(mode, channel, rotor, false);
    };
    Entries const expected[] = {{}, of_rotor, of_source, of_source, {}, of_rotor, of_source, of_source};
    for (int flags = 0; flags < 8; ++flags)
        EXPECT_EQ(Listed(range(4, flags, 100)), expected[flags]) << flags;
    for (int const channel : {0, 4, 99, -1}) {
        EXPECT_EQ(range(4, channel, 100).first, info().Rotor2OrderSources().end());
        EXPECT_EQ(range(4, channel, 100).second, info().Rotor2OrderSources().end());
    }
    EXPECT_EQ(Listed(range(4, 1, 101)), (Entries{{1, 70, 101, 1, 11}}));
    EXPECT_EQ(Listed(range(4, 1, 102)), (Entries{{1, 71, 102, 3, 13}}));
    EXPECT_EQ(Listed(range(4, 2, 102)), (Entries{{1, 71, 102, 3, 13}}));
    EXPECT_EQ(Listed(range(4, 1, 10)), Entries()) << "an order source is no rotor here";
    EXPECT_EQ(Listed(range(5, 1, 100)), Entries()) << "no such mode";
    EXPECT_EQ(Listed(range(-1, 1, 100)), Entries());
    auto const references = own.instance().OrderSourceRange(4, 0, 100, true);
    EXPECT_EQ(references.first, info().Rotor2OrderReferences().end());
    EXPECT_EQ(references.second, info().Rotor2OrderReferences().end());
}

// With `reference` the other table is asked, with the speed source that the rotor has: where that comes from
// a source row nothing stands there.
TEST_F(RotorInfoTest, RangesOfReferences) {
    AddChannels();
    AddSource(10, 1, 100);
    AddSource(11, 1, 101);
    tables().RotorSpeedSource.insert({{1, 100}, QVRefIdx(70)});
    tables().RotorSpeedReference.insert({{1, 101}, QVRefIdx(70)});
    ASSERT_TRUE(own.Build());
    auto const range = [&](int channel, int rotor, bool reference) {
        return Listed(own.instance().OrderSourceRange(4, channel, rotor, reference));
    };
    EXPECT_EQ(range(1, 100, false), (Entries{{1, 70, 100, 0, 10}}));
    EXPECT_EQ(range(1, 100, true), Entries());
    EXPECT_EQ(range(2, 100, true), (Entries{{1, 70, 101, 1, 11}}));
    EXPECT_EQ(range(1, 101, true), (Entries{{1, 70, 101, 1, 11}}));
    EXPECT_EQ(range(1, 101, false), Entries());
}

TEST_F(RotorInfoTest, RangesWithoutASpeedSource) {
    AddChannels();
    AddSource(10, 1, 100);
    AddSource(11, 1, -5);
    AddSource(12, 1, 101);
    tables().RotorSpeedSource.insert({{1, 101}, QVRefIdx(0)});
    tables().RotorSpeedSource.insert({{1, -5}, QVRefIdx(0)});
    ASSERT_TRUE(own.Build());
    auto const range = [&](int channel, int rotor) {
        return Listed(own.instance().OrderSourceRange(4, channel, rotor, false));
    };
    EXPECT_EQ(range(1, 100), (Entries{{1, -1, 100, 0, 10}}));
    // A speed source begins with rotor 0, so that a negative one counts with the source before.
    EXPECT_EQ(range(2, 100), (Entries{{1, -1, 100, 0, 10}, {1, 0, -5, 1, 11}}));
    EXPECT_EQ(range(2, 101), (Entries{{1, 0, 101, 2, 12}}));
    EXPECT_EQ(range(1, -5), (Entries{{1, 0, -5, 1, 11}}));
}

TEST_F(RotorInfoTest, RangesAtTheLimitsOfAnId) {
    AddChannels();
    AddSource(10, 1, Highest);
    AddSource(11, 1, Lowest);
    AddSource(12, 1, 0);
    AddSource(13, 2, Lowest);
    tables().RotorSpeedSource.insert({{1, Highest}, QVRefIdx(Highest)});
    tables().RotorSpeedSource.insert({{1, Lowest}, QVRefIdx(Highest)});
    tables().RotorSpeedSource.insert({{1, 0}, QVRefIdx(Lowest)});
    tables().RotorSpeedSource.insert({{2, Lowest}, QVRefIdx(Lowest)});
    ASSERT_TRUE(own.Build());
    auto const range = [&](int channel, int rotor) {
        return Listed(own.instance().OrderSourceRange(4, channel, rotor, false));
    };
    EXPECT_EQ(range(1, Highest), (Entries{{1, Highest, Highest, 0, 10}}));
    EXPECT_EQ(range(1, Lowest), (Entries{{1, Highest, Lowest, 1, 11}}));
    EXPECT_EQ(range(2, Highest), (Entries{{1, Highest, Highest, 0, 10}}));
    EXPECT_EQ(range(2, Lowest), (Entries{{1, Highest, Highest, 0, 10}}));
    EXPECT_EQ(range(2, 0), (Entries{{1, Lowest, 0, 2, 12}}));
    own.tables().ModeProperty.PurgeTable();
    own.tables().ModeProperty.insert({4, QVModeProps(2, 0, 0, 0)});
    EXPECT_EQ(range(1, Lowest), (Entries{{2, Lowest, Lowest, 3, 13}}));
}

TEST_F(RotorInfoTest, SameAsTheModelOnRandomData) {
    constexpr std::uint32_t seed = 5401;
    RotorWorld world(seed);
    for (int round = 0; round < 4000; ++round) {
        world.Renew();
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round << " " << world.Describe());
        auto const derived = world.model.Derive();
        std::vector<Message> expected;
        for (auto const& [rotor, physical_mode] : derived.skipped)
            expected.push_back(Skipped(rotor, physical_mode));
        ASSERT_EQ(messages.Take(), expected);
        auto const& tables = world.own.derived().RotorInfo();
        ASSERT_EQ(Listed(tables.Rotor2OrderSources()),
                  Entries(derived.sources.begin(), derived.sources.end()));
        ASSERT_EQ(Listed(tables.Rotor2OrderReferences()),
                  Entries(derived.references.begin(), derived.references.end()));
        for (int query = 0; query < 20; ++query) {
            int const mode = world.AnyMode();
            int const channel = world.Below(5);
            int const rotor = world.AnyId();
            bool const reference = world.Chance();
            ASSERT_EQ(Listed(world.own.instance().OrderSourceRange(mode, channel, rotor, reference)),
                      world.model.OrderSources(derived, mode, channel, rotor, reference))
                << mode << " " << channel << " " << rotor << " " << reference;
        }
    }
}

} // namespace
