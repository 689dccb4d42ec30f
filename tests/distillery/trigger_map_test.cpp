#include <paramdb/distillery/trigger_map.h>

#include "derivation_support.h"
#include "trigger_tables.h"

#include <limits>

using derivation::AddTriggerRow;
using derivation::Random;
using derivation::TriggerClasses;

namespace {

constexpr int Trend = 13202;

class TriggerMap : public derivation::DerivationTest {
protected:
    ~TriggerMap() override { EXPECT_EQ(messages.Take(), std::vector<Message>()); }

    void Parameter(int id, int instrument) {
        tables.InstrumentParam.insert({id, QVInstrumentParam(instrument, L"p", 0, 0, 0)});
    }
    void TrendOf(int parameter, int source) {
        tables.IpCurveTrackTrend.insert({parameter, QVIpTrend(source, 11, 12, 13, 0.0f, 0.0f)});
    }
};

TEST_F(TriggerMap, EmptyTables) {
    EXPECT_EQ(BuildTriggerIdMap(tables), CTriggerIdMap());
    AddNames(tables.Instrument, {2500, Trend});
    AddTriggerRow(tables, 2500, 5, 50);
    TrendOf(5, 5);
    EXPECT_EQ(BuildTriggerIdMap(tables), CTriggerIdMap()); // rows alone make no parameter
}

TEST_F(TriggerMap, EachClassLooksIntoItsOwnTable) {
    CTriggerIdMap expected;
    int parameter = 10;
    for (auto const& trigger_class : TriggerClasses()) {
        AddNames(tables.Instrument, {trigger_class.instrument});
        Parameter(++parameter, trigger_class.instrument);
    }
    EXPECT_EQ(BuildTriggerIdMap(tables).size(), TriggerClasses().size());
    // Each table has a row for every parameter, with a trigger that tells table and parameter.
    int number = 0;
    for (auto const& trigger_class : TriggerClasses()) {
        ++number;
        for (int row = 11; row <= parameter; ++row)
            AddTriggerRow(tables, trigger_class.instrument, row, 1000 * number + row);
        expected[10 + number] = 1000 * number + 10 + number;
    }
    EXPECT_EQ(BuildTriggerIdMap(tables), expected);
}

TEST_F(TriggerMap, OtherClassesAddNothing) {
    int parameter = 0;
    for (int const instrument : {10201, 1006, 2009, 2501, 11001, 13201, 0, -1, 1000}) {
        AddNames(tables.Instrument, {instrument});
        Parameter(++parameter, instrument);
        tables.IpSvBinOp.at(10201).insert({parameter, QVIpBinOp(1, 2, 3, 4, 5, 6)});
    }
    EXPECT_EQ(BuildTriggerIdMap(tables), CTriggerIdMap());
}

TEST_F(TriggerMap, AnInstrumentWithoutNameIsPassedOver) {
    Parameter(1, 2500);
    Parameter(2, 2700);
    Parameter(3, Trend);
    AddTriggerRow(tables, 2500, 1, 50);
    AddTriggerRow(tables, 2700, 2, 60);
    TrendOf(3, 2);
    AddNames(tables.Instrument, {2700});
    EXPECT_EQ(BuildTriggerIdMap(tables), (CTriggerIdMap{{2, 60}}));
    AddNames(tables.Instrument, {Trend});
    EXPECT_EQ(BuildTriggerIdMap(tables), (CTriggerIdMap{{2, 60}, {3, 60}}));
    tables.Instrument.Add(2500, L""); // an empty name is one
    EXPECT_EQ(BuildTriggerIdMap(tables), (CTriggerIdMap{{1, 50}, {2, 60}, {3, 60}}));
}

TEST_F(TriggerMap, AParameterWithoutRowTakesTheNextHigherOne) {
    for (auto const& trigger_class : TriggerClasses()) {
        int const instrument = trigger_class.instrument;
        SCOPED_TRACE(instrument);
        distillery.PurgeTables();
        AddNames(tables.Instrument, {instrument});
        for (int const parameter : {-5, 9, 10, 11, 12, 20, 21, 30})
            Parameter(parameter, instrument);
        EXPECT_EQ(
            BuildTriggerIdMap(tables),
            (CTriggerIdMap{{-5, -1}, {9, -1}, {10, -1}, {11, -1}, {12, -1}, {20, -1}, {21, -1}, {30, -1}}));
        AddTriggerRow(tables, instrument, 10, 100);
        AddTriggerRow(tables, instrument, 12, 120);
        AddTriggerRow(tables, instrument, 20, -1); // a row may say that there is none
        AddTriggerRow(tables, instrument, 25, 250);
        EXPECT_EQ(BuildTriggerIdMap(tables),
                  (CTriggerIdMap{
                      {-5, 100}, {9, 100}, {10, 100}, {11, 120}, {12, 120}, {20, -1}, {21, 250}, {30, -1}}));
    }
}

TEST_F(TriggerMap, TheNextHigherRowMayBelongToAnotherParameterOfTheClass) {
    AddNames(tables.Instrument, {2500, 2700});
    Parameter(1, 2500);
    Parameter(2, 2700);
    Parameter(3, 2500);
    AddTriggerRow(tables, 2500, 3, 33);
    EXPECT_EQ(BuildTriggerIdMap(tables), (CTriggerIdMap{{1, 33}, {2, -1}, {3, 33}}));
}

TEST_F(TriggerMap, ParametersAtTheLimits) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    AddNames(tables.Instrument, {20000});
    Parameter(lowest, 20000);
    Parameter(highest, 20000);
    AddTriggerRow(tables, 20000, highest, highest);
    EXPECT_EQ(BuildTriggerIdMap(tables), (CTriggerIdMap{{lowest, highest}, {highest, highest}}));
}

TEST_F(TriggerMap, ATrendTakesTheTriggerOfItsSource) {
    AddNames(tables.Instrument, {2500, 10201, Trend});
    Parameter(1, 2500);
    Parameter(2, 10201);
    for (int const trend : {10, 11, 12, 13, 14})
        Parameter(trend, Trend);
    AddTriggerRow(tables, 2500, 1, 77);
    TrendOf(10, 1);
    TrendOf(11, 2);  // a parameter without trigger
    TrendOf(12, 99); // no parameter
    TrendOf(13, -1);
    TrendOf(15, 1); // 14 has no row, and the next higher one does not serve
    EXPECT_EQ(BuildTriggerIdMap(tables),
              (CTriggerIdMap{{1, 77}, {10, 77}, {11, -1}, {12, -1}, {13, -1}, {14, -1}}));
}

TEST_F(TriggerMap, ATrendOfATrendCountsIfItsSourceIsLower) {
    AddNames(tables.Instrument, {2500, Trend});
    Parameter(50, 2500);
    AddTriggerRow(tables, 2500, 50, 77);
    for (int const trend : {10, 20, 30, 40, 60})
        Parameter(trend, Trend);
    TrendOf(10, 20); // comes too early
    TrendOf(20, 50); // the source may be higher if it is no trend
    TrendOf(30, 20);
    TrendOf(40, 40); // itself
    TrendOf(60, 30);
    EXPECT_EQ(BuildTriggerIdMap(tables),
              (CTriggerIdMap{{10, -1}, {20, 77}, {30, 77}, {40, -1}, {50, 77}, {60, 77}}));
}

TEST_F(TriggerMap, TheRowOfAParameterOfAnotherClassIsNoTrend) {
    AddNames(tables.Instrument, {2500, Trend});
    Parameter(1, 2500);
    Parameter(2, 2500);
    AddTriggerRow(tables, 2500, 1, 7);
    AddTriggerRow(tables, 2500, 2, 8);
    TrendOf(2, 1);
    EXPECT_EQ(BuildTriggerIdMap(tables), (CTriggerIdMap{{1, 7}, {2, 8}}));
}

// Random tables against plain loops over lists that were kept beside the tables.
TEST_F(TriggerMap, RandomTablesAgainstPlainLoops) {
    struct TriggerRow {
        int instrument;
        int parameter;
        int trigger;
    };
    std::size_t next_higher = 0;
    std::size_t trends = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Random random(seed);
        distillery.PurgeTables();
        std::vector<int> instruments{Trend, Trend, 10201, 1};
        while (instruments.size() < 8)
            instruments.push_back(random.Pick(TriggerClasses()).instrument);
        for (int const instrument : instruments)
            if (!random.OneIn(6))
                tables.Instrument.Add(instrument, L"");

        std::vector<TriggerRow> rows;
        std::vector<std::pair<int, int>> sources; // trend, source
        for (int count = random.Between(0, 25); count > 0; --count) {
            TriggerRow const row{random.Pick(instruments), random.Between(0, 15), random.Between(-1, 99)};
            bool const is_new = std::ranges::none_of(rows, [&row](TriggerRow const& other) {
                return other.instrument == row.instrument && other.parameter == row.parameter;
            });
            if (!is_new || row.instrument == Trend || row.instrument == 10201 || row.instrument == 1)
                continue;
            rows.push_back(row);
            AddTriggerRow(tables, row.instrument, row.parameter, row.trigger);
        }
        for (int trend = 0; trend <= 15; ++trend)
            if (random.OneIn(2)) {
                sources.emplace_back(trend, random.Between(-1, 16));
                TrendOf(trend, sources.back().second);
            }
        std::vector<std::pair<int, int>> parameters; // parameter, instrument
        for (int parameter = 0; parameter <= 15; ++parameter)
            if (!random.OneIn(4)) {
                parameters.emplace_back(parameter, random.Pick(instruments));
                Parameter(parameter, parameters.back().second);
            }

        CTriggerIdMap expected;
        for (auto const& [parameter, instrument] : parameters) {
            bool const has_table = instrument != Trend && instrument != 10201 && instrument != 1;
            if (!has_table || !tables.Instrument.IsValidId(instrument))
                continue;
            TriggerRow const* best = nullptr;
            for (TriggerRow const& row : rows)
                if (row.instrument == instrument && row.parameter >= parameter &&
                    (best == nullptr || row.parameter < best->parameter))
                    best = &row;
            expected[parameter] = best != nullptr ? best->trigger : -1;
            next_higher += best != nullptr && best->parameter > parameter ? 1 : 0;
        }
        for (auto const& [parameter, instrument] : parameters) {
            if (instrument != Trend || !tables.Instrument.IsValidId(Trend))
                continue;
            int trigger = -1;
            for (auto const& [trend, source] : sources)
                if (trend == parameter && expected.count(source) > 0)
                    trigger = expected[source];
            expected[parameter] = trigger;
            trends += trigger != -1 ? 1 : 0;
        }
        ASSERT_EQ(BuildTriggerIdMap(tables), expected) << "seed " << seed;
    }
    EXPECT_GT(next_higher, 3000u);
    EXPECT_GT(trends, 300u);
}

} // namespace
