#include <paramdb/distillery/param_distillery.h>
#include <paramdb/distillery/row_counts.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <tests/distillery/derivation_support.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <utility>
#include <vector>

namespace {

using Channels = CDbUniqueMap<QIdx1, QVChannelProperty>;
using Parameters = CDbUniqueMap<QIdx1, QVInstrumentParam>;

std::pair<QIdx1, QVChannelProperty> Channel(int channel, unsigned int flags) {
    return {channel, QVChannelProperty(flags, 0)};
}

TEST(RowCounts, OfAnEmptyTable) {
    Channels const table;
    CRowCounts<Channels, "flags"> const counts(table);
    for (unsigned int const flags : {0u, 1u, 0xFFFFFFFFu})
        EXPECT_EQ(counts.Count(flags), 0u);
    counts.Update();
    EXPECT_EQ(counts.Count(0u), 0u);
}

TEST(RowCounts, FollowEveryChangeOfTheTable) {
    Channels table;
    CRowCounts<Channels, "flags"> const counts(table);
    auto const all = [&] {
        return std::vector<std::size_t>{counts.Count(0u), counts.Count(1u), counts.Count(2u),
                                        counts.Count(0xFFFFFFFFu)};
    };
    using Expected = std::vector<std::size_t>;
    table.insert(Channel(1, 2));
    table.insert(Channel(2, 2));
    table.insert(Channel(3, 0xFFFFFFFF));
    EXPECT_EQ(all(), (Expected{0, 0, 2, 1}));
    EXPECT_FALSE(table.insert(Channel(2, 1)).second); // the key is taken
    EXPECT_EQ(all(), (Expected{0, 0, 2, 1}));
    table.insert(Channel(0, 0)); // ahead of the others
    EXPECT_EQ(all(), (Expected{1, 0, 2, 1}));
    table.erase(table.find(2));
    EXPECT_EQ(all(), (Expected{1, 0, 1, 1}));
    table.insert(Channel(2, 1));
    EXPECT_EQ(all(), (Expected{1, 1, 1, 1}));
    table.erase(table.begin(), std::next(table.begin(), 2));
    EXPECT_EQ(all(), (Expected{0, 1, 0, 1}));
    table.clear();
    EXPECT_EQ(all(), (Expected{0, 0, 0, 0}));
    {
        Channels::Filler filler(table);
        filler.Add(5, QVChannelProperty(1u, 0));
        filler.Add(4, QVChannelProperty(1u, 0));
        filler.Add(5, QVChannelProperty(2u, 0)); // the first one stays
        filler.Finish();
    }
    EXPECT_EQ(all(), (Expected{0, 2, 0, 0}));
    {
        Channels::Filler filler(table);
        filler.Add(1, QVChannelProperty(1u, 0)); // out of order and never finished
    }
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(all(), (Expected{0, 0, 0, 0}));
}

TEST(RowCounts, SignedValues) {
    constexpr int lowest = std::numeric_limits<int>::min();
    Parameters table;
    CRowCounts<Parameters, "instrument"> const counts(table);
    int parameter = 0;
    for (int const instrument : {-1, 2500, -1, lowest, 0, -1})
        table.insert({++parameter, QVInstrumentParam(instrument, L"p", 77, 77u, 77u)});
    EXPECT_EQ(counts.Count(-1), 3u);
    EXPECT_EQ(counts.Count(2500), 1u);
    EXPECT_EQ(counts.Count(lowest), 1u);
    EXPECT_EQ(counts.Count(0), 1u);
    EXPECT_EQ(counts.Count(77), 0u);
    EXPECT_EQ(counts.Count(std::numeric_limits<int>::max()), 0u);
}

TEST(RowCounts, RandomChangesAgainstAScan) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        Channels table;
        CRowCounts<Channels, "flags"> const counts(table);
        std::map<int, unsigned int> model;
        for (int step = 0; step < 40; ++step) {
            int const channel = random.Between(0, 15);
            auto const flags = static_cast<unsigned int>(random.Between(0, 3));
            switch (random.Between(0, 9)) {
            case 0:
                table.clear();
                model.clear();
                break;
            case 1:
            case 2:
                if (auto const row = table.find(channel); row != table.end())
                    table.erase(row);
                model.erase(channel);
                break;
            case 3: // several at once, without a question between
                for (int more = 20; more < 23; ++more) {
                    table.insert(Channel(more, flags));
                    model.try_emplace(more, flags);
                }
                break;
            default:
                table.insert(Channel(channel, flags));
                model.try_emplace(channel, flags);
            }
            for (unsigned int sought = 0; sought < 5; ++sought) {
                std::size_t expected = 0;
                for (auto const& [id, value] : model)
                    expected += value == sought ? 1 : 0;
                EXPECT_EQ(counts.Count(sought), expected);
            }
        }
    }
}

// Few values and many, close together and with bits of any kind.
TEST(RowCounts, ManyValuesAgainstAMap) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        Parameters table;
        CRowCounts<Parameters, "instrument"> const counts(table);
        int const factor = random.Pick(std::vector<int>{1, 100, 65536, 4'294'967});
        int const highest = random.Between(0, 400);
        auto const any = [&] { return random.Between(-highest, highest) * factor; };
        std::map<int, std::size_t> model;
        for (int parameter = random.Between(0, 500); parameter > 0; --parameter) {
            int const instrument = any();
            table.insert({parameter, QVInstrumentParam(instrument, L"", 0, 0u, 0u)});
            ++model[instrument];
        }
        for (int sought = 0; sought < 200; ++sought) {
            int const instrument = any();
            ASSERT_EQ(counts.Count(instrument), model.contains(instrument) ? model[instrument] : 0u)
                << instrument;
        }
        for (auto const& [instrument, count] : model)
            ASSERT_EQ(counts.Count(instrument), count) << instrument;
    }
}

class RowCountsOfALoad : public LoadTest {
protected:
    ~RowCountsOfALoad() override { EXPECT_EQ(messages.Take(), std::vector<Message>()); }

    void Load(std::string const& rows) {
        CParameterLake::Lake().clear();
        FillLake(VersionLines + rows);
        ASSERT_TRUE(distillery.ReadTablesFromCandidateLake());
    }
    // The parameters of the instruments 1 and 2, the channels of the types 0 and 4.
    std::vector<std::size_t> Counts() const {
        CQtDerivedInfo const& derived = std::as_const(distillery).DerivedInfo();
        return {derived.InstrumentCounts().Count(1), derived.InstrumentCounts().Count(2),
                derived.ChannelTypeCounts().Count(0u), derived.ChannelTypeCounts().Count(4u)};
    }

    MessageLog messages;
    CQtParamDistillery distillery;
};

using Expected = std::vector<std::size_t>;

TEST_F(RowCountsOfALoad, AreThoseOfTheLastLoad) {
    EXPECT_EQ(Counts(), (Expected{0, 0, 0, 0}));
    // The rows come out of order, and one key comes twice.
    Load("<TInstrumentParam>: {\n9 1 a 0 0 0\n5 2 b 0 0 0\n7 1 c 0 0 0\n5 1 d 0 0 0\n}\n"
         "<TChannelProperty>: {\n1 4 0\n2 0 0\n}\n");
    EXPECT_EQ(Counts(), (Expected{2, 1, 1, 1}));
    // As many rows with other values.
    Load("<TInstrumentParam>: {\n9 2 a 0 0 0\n5 2 b 0 0 0\n7 1 c 0 0 0\n}\n"
         "<TChannelProperty>: {\n1 4 0\n2 4 0\n}\n");
    EXPECT_EQ(Counts(), (Expected{1, 2, 0, 2}));
    Load("<TChannelProperty>: {\n1 4 0\n}\n");
    EXPECT_EQ(Counts(), (Expected{0, 0, 0, 1}));
    Load("");
    EXPECT_EQ(Counts(), (Expected{0, 0, 0, 0}));
}

TEST_F(RowCountsOfALoad, AreGoneWithTheRows) {
    std::string const rows =
        "<TInstrumentParam>: {\n9 1 a 0 0 0\n}\n<TChannelProperty>: {\n1 4 0\n2 4 0\n}\n";
    Load(rows);
    EXPECT_EQ(Counts(), (Expected{1, 0, 0, 2}));
    distillery.PurgeTables();
    EXPECT_EQ(Counts(), (Expected{0, 0, 0, 0}));
    Load(rows);
    EXPECT_EQ(Counts(), (Expected{1, 0, 0, 2}));
    distillery.Clear();
    EXPECT_EQ(Counts(), (Expected{0, 0, 0, 0}));
    Load(rows);
    EXPECT_EQ(Counts(), (Expected{1, 0, 0, 2}));
    distillery.Tables().ChannelProperty.PurgeTable();
    EXPECT_EQ(Counts(), (Expected{1, 0, 0, 0}));
}

TEST_F(RowCountsOfALoad, FollowTheRowsOfAHost) {
    Load("<TInstrumentParam>: {\n9 1 a 0 0 0\n}\n<TChannelProperty>: {\n1 4 0\n2 4 0\n}\n");
    auto& parameters = distillery.Tables().InstrumentParam;
    auto& channels = distillery.Tables().ChannelProperty;
    parameters.insert({3, QVInstrumentParam(1, L"new", 0, 0u, 0u)});
    EXPECT_EQ(Counts(), (Expected{2, 0, 0, 2}));
    parameters.insert({4, QVInstrumentParam(2, L"new", 0, 0u, 0u)});
    channels.insert(Channel(3, 0));
    EXPECT_EQ(Counts(), (Expected{2, 1, 1, 2}));
    parameters.erase(parameters.find(9));
    channels.erase(channels.begin(), channels.find(3));
    EXPECT_EQ(Counts(), (Expected{1, 1, 1, 0}));
    Load("<TInstrumentParam>: {\n9 2 a 0 0 0\n}\n");
    EXPECT_EQ(Counts(), (Expected{0, 1, 0, 0}));
}

// A refused source changes nothing; a failed load keeps its tables, and the counts are theirs.
TEST_F(RowCountsOfALoad, AfterALoadThatFails) {
    Load("<TChannelProperty>: {\n1 4 0\n}\n");
    CParameterLake::Lake().clear();
    FillLake("<DbDesign.CacheVersion>: 1\n<TChannelProperty>: {\n1 0 0\n2 0 0\n}\n");
    EXPECT_FALSE(distillery.ReadTablesFromCandidateLake());
    EXPECT_EQ(messages.Take().size(), 1u);
    EXPECT_EQ(Counts(), (Expected{0, 0, 0, 1}));
    CParameterLake::Lake().clear();
    FillLake(std::string(VersionLines) +
             "<TApplicationSignal>: {\n1 s\n}\n<TChannelProperty>: {\n1 0 0\n2 0 0\n}\n");
    EXPECT_FALSE(distillery.ReadTablesFromCandidateLake());
    EXPECT_EQ(messages.Take().size(), 1u);
    EXPECT_EQ(Counts(), (Expected{0, 0, 2, 0}));
}

} // namespace
