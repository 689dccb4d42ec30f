#include <paramdb/distillery/spec_interval_store.h>

#include "order_model.h"
#include "own_distillery.h"

#include <array>
#include <gtest/gtest.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>

namespace {

// Parameter, index, lower and upper position.
using Stored = std::tuple<int, int, OrderPosition, OrderPosition>;
using AllStored = std::vector<Stored>;

template <class Iterator>
AllStored StoredIn(Iterator first, Iterator last) {
    AllStored entries;
    for (; first != last; ++first)
        entries.emplace_back(first->first[0], first->first[1], OrderPosition(first->second.lower()),
                             OrderPosition(first->second.upper()));
    return entries;
}

OrderPosition Order(float order) {
    return {0, order, 0, 0, 0, 2};
}

Message DefinitionError(std::wstring const& text) {
    return {8, 3,
            L"OrderInterpreter::GetSpecPositions(): Syntax error in order definition '" + text +
                L"', treating it as empty.\n"};
}
Message OddNumber(unsigned int count, int parameter) {
    return {8, 3,
            L"CQtSpecIntervalStore::ProcessTables():\nIpSvOfSpec contains entry with " +
                std::to_wstring(count) + L" terms. Number of terms has to be one ore even. Entrys id is " +
                std::to_wstring(parameter) + L". Definition ignored\n"};
}
Message Deprecated(std::wstring const& text) {
    return {8, 1,
            L"check_obsolete_interpretation(): order definition '" + text +
                L"' has deprecated interpretation\n"};
}

class SpecIntervalStoreTest : public testing::Test {
protected:
    static constexpr int Value = 1001;
    static constexpr int Track = 2001;
    static constexpr int Residual = 2007;

    void Add(int instrument, int parameter, wchar_t const* definition, int interpretation = 0) {
        QVIpSvOfSpec row;
        row.get<"definition">() = CFixedText(definition);
        row.get<"interpretation">() = interpretation;
        own.tables().IpSvOfSpec.at(instrument).insert({parameter, row});
    }
    AllStored All() {
        auto const& table = own.derived().SpecIntervals().Intervals();
        return StoredIn(table.begin(), table.end());
    }
    AllStored Of(unsigned int parameter) {
        auto const range = own.instance().SpecIntervalRange(parameter);
        return StoredIn(range.first, range.second);
    }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(SpecIntervalStoreTest, TagAndLimit) {
    EXPECT_STREQ(own.derived().SpecIntervals().Intervals().tag(), L"<PiSpecIntervalStore>");
    EXPECT_EQ(CQtSpecIntervalStore::max_orders, 32u);
    EXPECT_TRUE(All().empty());
}

TEST_F(SpecIntervalStoreTest, OnePositionAndPairs) {
    Add(Value, 5, L"O1;O2");
    Add(Value, 3, L"O1");
    Add(Track, 4, L"O1;O2;O3;O4");
    Add(Value, 6, L"");
    Add(Residual, 7, L"O1;O2");
    Add(Residual, 8, L"O1*");
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(All(), (AllStored{{3, 0, Order(1), Order(1)},
                                {4, 0, Order(1), Order(2)},
                                {4, 2, Order(3), Order(4)},
                                {5, 0, Order(1), Order(2)}}));
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    own.tables().IpSvOfSpec.at(Value).PurgeTable();
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(All().size(), 2u) << "built anew";
}

TEST_F(SpecIntervalStoreTest, BadAndOddDefinitions) {
    Add(Value, 1, L"O1;O2;O3");
    Add(Value, 2, L"F100+M1");
    Add(Value, 9, L"O1");
    Add(Track, -1, L"HX;HX;HX;HX;HX"); // 30 positions
    Add(Track, 2, L"O1;HX;HX");        // 31
    Add(Track, 3, L"F100+H2");
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(messages.Take(), (std::vector{OddNumber(3, 1), DefinitionError(L"F100+M1"), OddNumber(31, 2),
                                            DefinitionError(L"F100+H2")}));
    EXPECT_EQ(All().size(), 16u);
    EXPECT_EQ(Of(9), (AllStored{{9, 0, Order(1), Order(1)}}));
}

TEST_F(SpecIntervalStoreTest, ASeriesOfBands) {
    Add(Track, 5, L"HX-M1;HX+M1");
    ASSERT_TRUE(own.Build());
    auto const entries = All();
    ASSERT_EQ(entries.size(), 16u);
    for (int band = 0; band < 16; ++band) {
        auto const harmonic = static_cast<float>(band + 1);
        EXPECT_EQ(entries[static_cast<std::size_t>(band)],
                  Stored(5, 2 * band, {0, 0, harmonic, -1, 0, 2}, {0, 0, harmonic, 1, 0, 2}));
    }
}

TEST_F(SpecIntervalStoreTest, MoreThan32PositionsAreCut) {
    std::wstring text;
    for (int term = 0; term < 40; ++term)
        text += L"O1;";
    Add(Value, 5, text.c_str());
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(All().size(), 16u);
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

// Values come before tracks, and an entry that is there stays; what a track has beyond it comes along.
TEST_F(SpecIntervalStoreTest, AValueAndATrackOfOneParameter) {
    Add(Value, 5, L"O1;O2");
    Add(Track, 5, L"O3;O4;O5;O6");
    Add(Value, 6, L"O1;O2;O3;O4");
    Add(Track, 6, L"O9");
    Add(Value, 7, L"O1*");
    Add(Track, 7, L"O9");
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(All(), (AllStored{{5, 0, Order(1), Order(2)},
                                {5, 2, Order(5), Order(6)},
                                {6, 0, Order(1), Order(2)},
                                {6, 2, Order(3), Order(4)},
                                {7, 0, Order(9), Order(9)}}));
    EXPECT_STREQ(own.instance().SpecIntervalDefinition(5), L"O1;O2");
}

TEST_F(SpecIntervalStoreTest, DeprecatedInterpretations) {
    int const interpretations[] = {0, 1, 4, 5, -1, Lowest, Highest, 2, 3};
    for (int place = 0; place < 9; ++place)
        Add(Value, place, (L"O" + std::to_wstring(place)).c_str(), interpretations[place]);
    Add(Track, 20, L"%s*O1", 2);
    Add(Track, 21, L"", 1);
    Add(Residual, 22, L"O1", 1);
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(messages.Take(),
              (std::vector{Deprecated(L"O1"), Deprecated(L"O2"), Deprecated(L"O7"), Deprecated(L"O8"),
                           Deprecated(L"%s*O1"), DefinitionError(L"%s*O1"), Deprecated(L"")}));
    EXPECT_EQ(All().size(), 9u) << "they are taken all the same";
}

TEST_F(SpecIntervalStoreTest, ARequestAboveTheLimit) {
    Add(Value, 5, L"O1;O2");
    CQtParamStore store;
    QVIpSvOfSpec row;
    row.get<"definition">() = CFixedText(L"O1;O2");
    store.Tables().IpSvOfSpec.at(Value).insert({5, row});
    CQtSpecIntervalStore intervals(store);
    intervals.Build(32);
    EXPECT_EQ(intervals.Intervals().size(), 1u);
    intervals.Build(33);
    EXPECT_TRUE(intervals.Intervals().empty());
    EXPECT_EQ(messages.Take(),
              (std::vector<Message>{{8, 3, L"QtSpecIntervalStore: nr_orders 33 > max_orders 32.\n"}}));
    intervals.Build(0);
    EXPECT_EQ(intervals.Intervals().size(), 1u) << "a smaller request changes nothing";
}

TEST_F(SpecIntervalStoreTest, RangesOfParameters) {
    for (int const parameter : {Lowest, -2, -1, 0, 5, Highest - 1, Highest})
        Add(Value, parameter, L"O1;O2;O3;O4");
    ASSERT_TRUE(own.Build());
    for (int const parameter : {Lowest, -2, -1, 0, 5, Highest - 1, Highest}) {
        EXPECT_EQ(Of(static_cast<unsigned int>(parameter)),
                  (AllStored{{parameter, 0, Order(1), Order(2)}, {parameter, 2, Order(3), Order(4)}}));
        EXPECT_STREQ(own.instance().SpecIntervalDefinition(static_cast<unsigned int>(parameter)),
                     L"O1;O2;O3;O4");
    }
    EXPECT_EQ(Of(4), AllStored());
    EXPECT_EQ(Of(6), AllStored());
    EXPECT_EQ(Of(0x80000001u), AllStored());
}

TEST_F(SpecIntervalStoreTest, Definitions) {
    Add(Value, 5, L"O1;O2");
    Add(Track, 6, L"bad*O");
    Add(Track, 5, L"hidden by the value");
    Add(Value, 7, L"");
    Add(Residual, 8, L"O1");
    EXPECT_STREQ(own.instance().SpecIntervalDefinition(5), L"O1;O2");
    EXPECT_STREQ(own.instance().SpecIntervalDefinition(6), L"bad*O") << "the text as it is";
    EXPECT_STREQ(own.instance().SpecIntervalDefinition(7), L"");
    EXPECT_EQ(own.instance().SpecIntervalDefinition(8), nullptr);
    EXPECT_EQ(own.instance().SpecIntervalDefinition(99), nullptr);
}

// A place that no pair has been written to.
QVSpecIntervalEntry Untouched() {
    QVSpecIntervalEntry entry;
    entry.lower().lines() = 77;
    entry.upper().order() = -77;
    return entry;
}

TEST_F(SpecIntervalStoreTest, RangePutsAPairAtItsUpperPosition) {
    struct Case {
        wchar_t const* text;
        unsigned int room;
        unsigned int count;
    };
    Case const cases[] = {{L"O1;O2", 32, 1},       {L"O1;O2", 2, 1},        {L"O1;O2", 1, 0},
                          {L"O1;O2", 0, 0},        {L"O1", 32, 0},          {L"", 32, 0},
                          {L"O1;O2;O3", 32, 1},    {L"O1;O2;O3;O4", 32, 2}, {L"O1;O2;O3;O4", 3, 1},
                          {L"HX", 32, 16},         {L"HX", 1000, 16},       {L"HX", 7, 3},
                          {L"HX", 4294967295u, 16}};
    for (auto const& [text, room, count] : cases) {
        std::array<QVSpecIntervalEntry, 34> out;
        out.fill(Untouched());
        EXPECT_EQ(CQtSpecIntervalStore::Range(text, out.data(), room), count) << text << " in " << room;
        for (std::size_t place = 0; place < out.size(); ++place) {
            bool const is_pair = place % 2 == 1 && place / 2 < count;
            EXPECT_EQ(out[place].tuple() == Untouched().tuple(), !is_pair) << text << " at " << place;
        }
    }
    QVSpecIntervalEntry out[4];
    EXPECT_EQ(CQtSpecIntervalStore::Range(L"O1;O2;O3;O4", out, 4), 2u);
    EXPECT_EQ(OrderPosition(out[1].lower()), Order(1));
    EXPECT_EQ(OrderPosition(out[1].upper()), Order(2));
    EXPECT_EQ(OrderPosition(out[3].lower()), Order(3));
    EXPECT_EQ(OrderPosition(out[3].upper()), Order(4));
    EXPECT_EQ(CQtSpecIntervalStore::Range(nullptr, nullptr, 32), 0u);
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    EXPECT_EQ(CQtSpecIntervalStore::Range(L"O1*", nullptr, 32), 0u);
    EXPECT_EQ(messages.Take(), std::vector{DefinitionError(L"O1*")});
}

TEST_F(SpecIntervalStoreTest, RangeSameAsTheModelOnMadeUpTexts) {
    constexpr std::uint32_t seed = 5502;
    OrderTexts texts(seed);
    for (int round = 0; round < 20000; ++round) {
        std::wstring const text = texts.Any();
        auto const room = texts.Below(3) > 0 ? 32u : static_cast<unsigned int>(texts.Below(50));
        SCOPED_TRACE(testing::Message()
                     << "seed " << seed << " round " << round << " room " << room << " '" << text << "'");
        auto const expected = ModelOfOrders(text, std::min(room, 32u));
        std::array<QVSpecIntervalEntry, 33> out;
        out.fill(Untouched());
        ASSERT_EQ(CQtSpecIntervalStore::Range(text.c_str(), out.data(), room), expected.positions.size() / 2);
        for (std::size_t place = 0; place < out.size(); ++place) {
            bool const is_pair = place % 2 == 1 && place < expected.positions.size();
            OrderPosition const lower =
                is_pair ? expected.positions[place - 1] : OrderPosition(Untouched().lower());
            OrderPosition const upper =
                is_pair ? expected.positions[place] : OrderPosition(Untouched().upper());
            ASSERT_EQ(OrderPosition(out[place].lower()), lower) << place;
            ASSERT_EQ(OrderPosition(out[place].upper()), upper) << place;
        }
        ASSERT_EQ(messages.Take().size(), expected.is_bad ? 1u : 0u);
    }
}

TEST_F(SpecIntervalStoreTest, BuildSameAsTheModelOnMadeUpTexts) {
    constexpr std::uint32_t seed = 5503;
    OrderTexts texts(seed);
    for (int round = 0; round < 2000; ++round) {
        own.Clear();
        std::map<std::pair<int, int>, std::tuple<std::wstring, int>> rows; // by instrument and parameter
        for (int row = 0; row < 30; ++row) {
            auto const key = std::pair(texts.Below(2) > 0 ? Value : Track, texts.Below(40) - 2);
            std::wstring const text = texts.Any().substr(0, 199);
            int const interpretation = texts.Below(5) == 0 ? texts.Below(8) - 1 : 0;
            if (rows.try_emplace(key, text, interpretation).second)
                Add(key.first, key.second, text.c_str(), interpretation);
        }
        std::map<std::pair<int, int>, std::pair<OrderPosition, OrderPosition>> expected;
        std::vector<Message> reports;
        for (auto const& [key, row] : rows) {
            auto const& [text, interpretation] = row;
            int const parameter = key.second;
            if (interpretation >= 1 && interpretation <= 4)
                reports.push_back(Deprecated(text));
            auto const list = ModelOfOrders(text, 32);
            auto const& positions = list.positions;
            if (list.is_bad)
                reports.push_back(DefinitionError(text));
            if (positions.size() == 1)
                expected.try_emplace({parameter, 0}, positions[0], positions[0]);
            else if (positions.size() % 2 == 1)
                reports.push_back(OddNumber(static_cast<unsigned int>(positions.size()), parameter));
            else
                for (std::size_t place = 0; place < positions.size(); place += 2)
                    expected.try_emplace({parameter, static_cast<int>(place)}, positions[place],
                                         positions[place + 1]);
        }
        AllStored entries;
        for (auto const& [key, bounds] : expected)
            entries.emplace_back(key.first, key.second, bounds.first, bounds.second);
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
        ASSERT_TRUE(own.Build());
        ASSERT_EQ(All(), entries);
        ASSERT_EQ(messages.Take(), reports);
    }
}

using SpecIntervalLoadTest = LoadTest;

TEST_F(SpecIntervalLoadTest, FromALake) {
    MessageLog messages;
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
             "<TIpSpectralValue>: {\n 5 1 2 0 \"H1 - M2; H1 + M2\" 1001 6\n 6 1 2 3 \"O1*2\" 1001 6\n}\n"
             "<TIpSpectralTrack>: {\n 7 1 2 0 \"O 1,5\" 1001 6\n}\n");
    CQtParamInstance instance;
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(messages.Take(), (std::vector{Deprecated(L"O1*2"), DefinitionError(L"O1*2")}));
    auto const five = instance.SpecIntervalRange(5);
    EXPECT_EQ(StoredIn(five.first, five.second),
              (AllStored{{5, 0, {0, 0, 1, -2, 0, 2}, {0, 0, 1, 2, 0, 2}}}));
    auto const seven = instance.SpecIntervalRange(7);
    EXPECT_EQ(StoredIn(seven.first, seven.second), (AllStored{{7, 0, Order(1.5f), Order(1.5f)}}));
    EXPECT_STREQ(instance.SpecIntervalDefinition(5), L"H1 - M2; H1 + M2");
}

} // namespace
