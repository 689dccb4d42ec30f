#include <paramdb/distillery/derived_info.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/tables/load_progress.h>

#include "derivation_support.h"
#include "trigger_tables.h"

#include <chrono>
#include <cmath>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

using derivation::AddTriggerRow;
using derivation::Rows;

namespace {

using Messages = std::vector<Message>;
using Lines = std::vector<std::wstring>;

class DerivedInfo : public derivation::DerivationTest {
protected:
    void Definition(int instrument, int parameter, wchar_t const* text) {
        tables.IpSvOfSpec.at(instrument).insert({parameter, QVIpSvOfSpec(1, 2, 0, text, 3, 4)});
    }
    // A parameter of virtual modes whose ids need that many bits.
    void Grid(int bits) {
        QVAutoModeParams row;
        row.get<"start">() = 0.0f;
        row.get<"stop">() = std::ldexp(0.9f, bits);
        row.get<"step">() = 1.0f;
        row.get<"state">() = 0;
        tables.AutoModeParam.try_emplace(7, row);
        tables.AutoModeParamOrder.try_emplace(1, 7);
    }
    // Something for each structure.
    void FillAll() {
        AddNames(tables.Mode, {1});
        AddNames(tables.Channel, {4, 5});
        tables.ChannelInheritance.insert({{4, -1}, QVRefIdx(5)});
        AddNames(tables.Instrument, {2500, 13202});
        tables.InstrumentParam.insert({20, QVInstrumentParam(2500, L"a", 0, 0, 0)});
        tables.InstrumentParam.insert({21, QVInstrumentParam(13202, L"b", 0, 0, 0)});
        AddTriggerRow(tables, 2500, 20, 6);
        tables.IpCurveTrackTrend.insert({21, QVIpTrend(20, 0, 0, 0, 0.0f, 0.0f)});
        tables.IpPolygonValue.insert({{3, 0.5f}, QVIpY(1.5f)});
        tables.IpParamAndStore.insert({{1, 2, 3, 4, 5, 6}, QVIpParamAndStore()});
        tables.IpTrackPolygon.insert(
            {{-1, -1, -1, -1, -1, -1}, QVIpTrackPolygon(3, 0, 8, 9, 0.0f, 0, 0.0f, 0.0f, 0.0f, 0.0f)});
        Definition(1001, 30, L"O1;O2");
        tables.OrderSource2Rotor.insert({{70, 71}, QVRefIdx(72)});
        tables.BaseOrder.insert({70, QVBaseOrder(9.0f)});
        tables.RotorSpeedSource.insert({{71, 72}, QVRefIdx(73)});
        Grid(4);
    }
    void FillWithAFaultForEachStep() {
        FillAll();
        tables.IpTrackPolygon.insert({{1, -1, -1, -1, -1, -1}, QVIpTrackPolygon()});
        tables.ChannelInheritance.insert({{5, -1}, QVRefIdx(4)});
        Definition(1001, 31, L"OO");
        Definition(2001, 31, L"O1;O2;O3");
        Definition(2007, 31, L"residual tracks take no part");
        tables.OrderSource2Rotor.insert({{75, 71}, QVRefIdx(72)});
        tables.AutoModeParam.Clear();
        tables.AutoModeParamOrder.Clear();
        Grid(100);
    }
    void ExpectAll() const {
        EXPECT_EQ(derived.TriggerIdMap(), (CTriggerIdMap{{20, 6}, {21, 6}}));
        EXPECT_EQ(Rows(derived.ChannelInfo().BaseChannels()), (Lines{L"1 4 | 5 0 ", L"1 5 | 5 0 "}));
        EXPECT_EQ(derived.GroupInfo().Groups().size(), 1u);
        EXPECT_EQ(derived.GroupInfo().Group(3), (std::vector<CGrexInfo::group_element>{{0.5f, 1.5f}}));
        EXPECT_EQ(derived.GroupInfo().Entries().size(), 1u);
        ASSERT_NE(derived.GroupInfo().Entry({1, 2, 3, 4, 5, 6}), nullptr);
        EXPECT_EQ(*derived.GroupInfo().Entry({1, 2, 3, 4, 5, 6}), (CGrexInfo::entry{8, 9, 3}));
        EXPECT_EQ(derived.SpecIntervals().Intervals().size(), 1u);
        EXPECT_EQ(Rows(derived.RotorInfo().Rotor2OrderSources()), (Lines{L"71 73 72 0 | 70 "}));
        EXPECT_EQ(derived.ModeInfo().Params().size(), 1u);
    }
    void ExpectNothing() const {
        EXPECT_EQ(derived.TriggerIdMap(), CTriggerIdMap());
        EXPECT_EQ(Rows(derived.ChannelInfo().BaseChannels()), Lines());
        EXPECT_TRUE(derived.GroupInfo().Groups().empty());
        EXPECT_TRUE(derived.GroupInfo().Entries().empty());
        EXPECT_EQ(derived.SpecIntervals().Intervals().size(), 0u);
        EXPECT_EQ(Rows(derived.RotorInfo().Rotor2OrderSources()), Lines());
        EXPECT_EQ(derived.ModeInfo().Params().size(), 0u);
        EXPECT_EQ(derived.ModeInfo().ExtensionBits(), 0);
    }

    CQtDerivedInfo& derived = distillery.DerivedInfo();
};

TEST_F(DerivedInfo, IsEmptyAtFirst) {
    ExpectNothing();
}

TEST_F(DerivedInfo, EmptyTablesGiveEmptyStructures) {
    EXPECT_TRUE(derived.BuildDerivedInfo());
    ExpectNothing();
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(DerivedInfo, EachStructureIsBuilt) {
    FillAll();
    EXPECT_TRUE(derived.BuildDerivedInfo());
    ExpectAll();
    EXPECT_EQ(derived.ModeInfo().ExtensionBits(), 4);
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(DerivedInfo, EachStructureStartsFromEmpty) {
    FillAll();
    EXPECT_TRUE(derived.BuildDerivedInfo());
    EXPECT_TRUE(derived.BuildDerivedInfo());
    ExpectAll();
    distillery.PurgeTables();
    ExpectAll(); // until the next load
    EXPECT_TRUE(derived.BuildDerivedInfo());
    ExpectNothing();
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(DerivedInfo, ModesThatDoNotFitEndNothing) {
    FillAll();
    tables.AutoModeParam.Clear();
    tables.AutoModeParamOrder.Clear();
    Grid(32);
    EXPECT_FALSE(derived.BuildDerivedInfo());
    ExpectAll();
    EXPECT_EQ(messages.Take(),
              (Messages{{16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n"}}));
}

TEST_F(DerivedInfo, WithoutParametersTheResultIsStillThatOfTheModes) {
    EXPECT_TRUE(derived.BuildDerivedInfo());
    Grid(32);
    EXPECT_FALSE(derived.BuildDerivedInfo());
    EXPECT_EQ(derived.TriggerIdMap(), CTriggerIdMap());
    tables.AutoModeParam.Clear();
    tables.AutoModeParamOrder.Clear();
    Grid(31);
    EXPECT_TRUE(derived.BuildDerivedInfo());
    AddNames(tables.Mode, {2}); // needs one bit
    EXPECT_FALSE(derived.BuildDerivedInfo());
}

TEST_F(DerivedInfo, AutoModeTablesThatDoNotCombineAreOnlyReported) {
    FillAll();
    tables.AutoModeParamOrder.Clear();
    EXPECT_TRUE(derived.BuildDerivedInfo());
    EXPECT_EQ(derived.ModeInfo().Params().size(), 0u);
    EXPECT_EQ(derived.TriggerIdMap(), (CTriggerIdMap{{20, 6}, {21, 6}}));
    EXPECT_EQ(
        messages.Take(),
        (Messages{
            {16, 1,
             L"CQtModeInfo: Failed to combine the Auto Mode Param Table from the Application Sea.\n"}}));
}

TEST_F(DerivedInfo, TheStepsReportInTheirOrder) {
    FillWithAFaultForEachStep();
    EXPECT_FALSE(derived.BuildDerivedInfo());
    EXPECT_EQ(
        messages.Take(),
        (Messages{
            {8, 1, L"CGrexInfo::Init(): ambiguous keys while trying to expand wildcards\n"},
            {8, 3, L"CQtChannelInfo::Build(): cyclic channel inheritance in mode 1: 4 -> 5 -> 4\n"},
            {8, 3,
             L"OrderInterpreter::GetSpecPositions(): Syntax error in order definition 'OO', treating it as "
             L"empty.\n"},
            {8, 3,
             L"CQtSpecIntervalStore::ProcessTables():\nIpSvOfSpec contains entry with 3 terms. Number of "
             L"terms has to be one ore even. Entrys id is 31. Definition ignored\n"},
            {8, 1,
             L"CQtRotorInfo::BuildRotor2OrderSourcesLookup(): Parameter database: No base order for RotorId "
             L"72 in PhysMode 71, skipping entry into m_rotor2OrderSources\n"},
            {16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n"}}));
    EXPECT_EQ(derived.TriggerIdMap(), (CTriggerIdMap{{20, 6}, {21, 6}}));
}

// A message that takes its time lets the end of its step be told.
TEST_F(DerivedInfo, EachStepIsOneOfSixOfTheProgress) {
    using Call = std::tuple<std::wstring, std::size_t, std::size_t>;
    auto const wait_for_the_next_call = [] { std::this_thread::sleep_for(std::chrono::milliseconds(160)); };
    std::vector<Call> calls;
    paramdb::LoadProgress const note = [&](wchar_t const* step, std::size_t done, std::size_t total) {
        calls.emplace_back(step, done, total);
    };
    FillWithAFaultForEachStep();
    PrWin::Sink const log = PrWin::SetSink([&](int, int, std::wstring const& text) {
        for (wchar_t const* source : {L"CQtChannelInfo", L"CQtRotorInfo", L"CQtModeInfo"})
            if (text.starts_with(source))
                wait_for_the_next_call();
    });
    {
        paramdb::ProgressScope const scope(note);
        EXPECT_FALSE(derived.BuildDerivedInfo());
        wait_for_the_next_call();
        paramdb::AdvanceProgress(0);
    }
    PrWin::SetSink(log);
    EXPECT_EQ(calls, (std::vector<Call>{
                         {L"derive", 2, 6}, {L"derive", 4, 6}, {L"derive", 5, 6}, {L"derive", 6, 6}}));
}

TEST_F(DerivedInfo, DefinitionsHave32PositionsAtMost) {
    Definition(1001, 5, L"HX");
    Definition(2001, 6, L"HX-O1;HX+O1");
    EXPECT_TRUE(derived.BuildDerivedInfo());
    auto const& intervals = derived.SpecIntervals().Intervals();
    ASSERT_EQ(intervals.size(), 32u);
    for (int parameter : {5, 6})
        for (int lower = 0; lower < 32; lower += 2)
            EXPECT_EQ(intervals.count({parameter, lower}), 1u) << parameter << ' ' << lower;
}

TEST_F(DerivedInfo, DumpsBaseChannelsThenIntervals) {
    AddNames(tables.Mode, {1});
    AddNames(tables.Channel, {4, 5, 6});
    Definition(1001, 30, L"O1;O2");
    Definition(2001, 31, L"F100-L2");
    Definition(2001, 32, L"O3;H2-M1");
    EXPECT_TRUE(derived.BuildDerivedInfo());
    derived.DumpTables(0);
    EXPECT_EQ(messages.Take(), (Messages{{8, 1, L"<-\t<PiBaseChannelId>\n"},
                                         {8, 1, L"   1:\t1 4 | 4 0\n"},
                                         {8, 1, L"   2:\t1 5 | 5 0\n"},
                                         {8, 1, L"   3:\t1 6 | 6 0\n"},
                                         {8, 1, L"->\t<PiBaseChannelId>\n"},
                                         {8, 1, L"<-\t<PiSpecIntervalStore>\n"},
                                         {8, 1, L"   1:\t30 0 | 0 1 0 0 0 2 0 2 0 0 0 2\n"},
                                         {8, 1, L"   2:\t31 0 | 100 0 0 0 -2 1 100 0 0 0 -2 1\n"},
                                         {8, 1, L"   3:\t32 0 | 0 3 0 0 0 2 0 0 2 -1 0 2\n"},
                                         {8, 1, L"->\t<PiSpecIntervalStore>\n"}}));
    derived.DumpTables(1);
    EXPECT_EQ(messages.Take(), (Messages{{8, 1, L"<-\t<PiBaseChannelId>\n"},
                                         {8, 1, L"   1:\t1 4 | 4 0\n"},
                                         {8, 1, L"   2:\t1 5 | 5 0\n"},
                                         {8, 1, L"... more ...\n"},
                                         {8, 1, L"->\t<PiBaseChannelId>\n"},
                                         {8, 1, L"<-\t<PiSpecIntervalStore>\n"},
                                         {8, 1, L"   1:\t30 0 | 0 1 0 0 0 2 0 2 0 0 0 2\n"},
                                         {8, 1, L"   2:\t31 0 | 100 0 0 0 -2 1 100 0 0 0 -2 1\n"},
                                         {8, 1, L"... more ...\n"},
                                         {8, 1, L"->\t<PiSpecIntervalStore>\n"}}));
}

} // namespace
