#include <paramdb/query/param_instance.h>

#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <string>
#include <tests/distillery/trigger_tables.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <vector>

namespace {

class DerivedQueries : public LoadTest {
protected:
    void Load(std::string const& text) {
        FillLake(VersionLines + text);
        ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
        ASSERT_EQ(messages.Take(), std::vector<Message>());
    }

    MessageLog messages;
    CQtParamInstance instance;
};

TEST_F(DerivedQueries, BeforeALoadEverythingIsMissing) {
    CQtParamDistillery distillery;
    CQtParamInstance const empty(&distillery);
    EXPECT_EQ(empty.TriggerId(1), -1);
    EXPECT_EQ(empty.BaseChannel(1, 1), 0);
    EXPECT_EQ(empty.ChannelFlags(1, 1), 0);
    EXPECT_EQ(empty.ParentChannel(1, 1), -1);
    EXPECT_EQ(empty.SpecIntervalDefinition(1), nullptr);
    auto const [begin, end] = empty.SpecIntervalRange(1);
    EXPECT_EQ(begin, end);
    EXPECT_TRUE(empty.GroupInfo().Groups().empty());
}

// Modes 1 and 2 and a grid of virtual modes with 4 bits.
constexpr char Channels[] = "<TMode>: {\n1 first\n2 second\n}\n"
                            "<TChannel>: {\n10 a\n11 b\n12 c\n}\n"
                            "<TChannelProperty>: {\n10 1 0\n11 4 0\n12 2 0\n}\n"
                            "<TChannelInheritance>: {\n10 -1 11\n10 2 12\n11 1 12\n}\n"
                            "<TAutoModeParam>: {\n3 0 1000 100 1 0 1 0 1 1\n}\n"
                            "<TAutoModeParamOrder>: {\n1 3\n}\n";

TEST_F(DerivedQueries, Channels) {
    Load(Channels);
    struct {
        int mode, channel, base, flags, parent;
    } const cases[] = {
        {1, 10, 12, 7, 11}, {1, 11, 12, 6, 12}, {1, 12, 12, 2, -1}, {2, 10, 12, 3, 12},
        {2, 11, 11, 4, -1}, {2, 12, 12, 2, -1}, {3, 10, 0, 0, 11}, // the row for any mode needs no mode
        {-1, 10, 0, 0, 11}, {1, 13, 0, 0, -1},  {10, 1, 0, 0, -1},  {1, -1, 0, 0, -1},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::Message() << test.mode << ' ' << test.channel);
        EXPECT_EQ(instance.BaseChannel(test.mode, test.channel), test.base);
        EXPECT_EQ(instance.ChannelFlags(test.mode, test.channel), test.flags);
        EXPECT_EQ(instance.ParentChannel(test.mode, test.channel), test.parent);
    }
}

TEST_F(DerivedQueries, VirtualModesInheritAsTheirBaseMode) {
    Load(Channels);
    for (int const mode : {1, 2})
        for (int const extension : {1, 7, 15}) {
            int const virtual_mode = instance.VirtModeGenerateId(mode, extension);
            ASSERT_EQ(virtual_mode, mode + (extension << 27));
            for (int const channel : {10, 11, 12, 13}) {
                SCOPED_TRACE(testing::Message() << virtual_mode << ' ' << channel);
                EXPECT_EQ(instance.BaseChannel(virtual_mode, channel), instance.BaseChannel(mode, channel));
                EXPECT_EQ(instance.ChannelFlags(virtual_mode, channel), instance.ChannelFlags(mode, channel));
                EXPECT_EQ(instance.ParentChannel(virtual_mode, channel),
                          instance.ParentChannel(mode, channel));
            }
        }
    EXPECT_EQ(instance.ParentChannel(instance.VirtModeGenerateId(2, 3), 10), 12);
    EXPECT_EQ(instance.BaseChannel(instance.VirtModeGenerateId(1, 3), 10), 12);
    EXPECT_EQ(instance.ChannelFlags(instance.VirtModeGenerateId(1, 3), 10), 7);
}

TEST_F(DerivedQueries, TriggersOfAllClasses) {
    std::string instruments = "<TInstrument>: {\n";
    std::string parameters = "<TInstrumentParam>: {\n";
    std::string sections;
    int parameter = 100;
    for (auto const& trigger_class : derivation::TriggerClasses()) {
        std::string const instrument = std::to_string(trigger_class.instrument);
        ++parameter;
        instruments += instrument + " i" + instrument + '\n';
        parameters += std::to_string(parameter) + ' ' + instrument + " p 0 0 0\n";
        // The parameter behind it has no row and no higher one.
        parameters += std::to_string(parameter + 1000) + ' ' + instrument + " q 0 0 0\n";
        sections += derivation::TriggerSection(trigger_class, parameter, parameter + 50000);
    }
    Load(instruments + "}\n" + parameters + "}\n" + sections);
    ASSERT_EQ(parameter, 130);
    for (; parameter > 100; --parameter) {
        EXPECT_EQ(instance.TriggerId(parameter), parameter + 50000);
        EXPECT_EQ(instance.TriggerId(parameter + 1000), -1);
    }
    for (int const unknown : {-1, 0, 100, 131, 1100, 1131, std::numeric_limits<int>::max()})
        EXPECT_EQ(instance.TriggerId(unknown), -1) << unknown;
}

TEST_F(DerivedQueries, TriggersOfTrendsAndOfParametersWithoutRow) {
    Load("<TInstrument>: {\n2500 s\n10201 b\n13202 t\n}\n"
         "<TInstrumentParam>: {\n5 2500 a 0 0 0\n6 2500 b 0 0 0\n7 10201 c 0 0 0\n8 13202 d 0 0 0\n"
         "9 13202 e 0 0 0\n10 13202 f 0 0 0\n11 9999 g 0 0 0\n}\n"
         "<TIpSpectrum>: {\n6 60 0 0 0\n}\n"
         "<TIpSvBinOp>: {\n7 1 2 3 4 5 70\n}\n"
         "<TIpCurveTrackTrend>: {\n8 5 0 0 0 0 0\n9 7 0 0 0 0 0\n10 8 0 0 0 0 0\n}\n");
    EXPECT_EQ(instance.TriggerId(5), 60);
    EXPECT_EQ(instance.TriggerId(6), 60);
    EXPECT_EQ(instance.TriggerId(7), -1);
    EXPECT_EQ(instance.TriggerId(8), 60);
    EXPECT_EQ(instance.TriggerId(9), -1);
    EXPECT_EQ(instance.TriggerId(10), 60);
    EXPECT_EQ(instance.TriggerId(11), -1);
}

constexpr char Definitions[] = "<TIpSpectralValue>: {\n5 1 0 0 O1;O2;O3;O4 0 0\n6 1 0 0 F100 0 0\n"
                               "7 1 0 0 \"\" 0 0\n}\n"
                               "<TIpSpectralTrack>: {\n5 1 0 0 O8;O9 0 0\n8 1 0 0 H1 0 0\n}\n"
                               "<TIpResidualTrack>: {\n9 1 0 0 O1 0 0\n}\n";

TEST_F(DerivedQueries, DefinitionsOfValuesThenOfTracks) {
    Load(Definitions);
    EXPECT_STREQ(instance.SpecIntervalDefinition(5), L"O1;O2;O3;O4");
    EXPECT_STREQ(instance.SpecIntervalDefinition(6), L"F100");
    EXPECT_STREQ(instance.SpecIntervalDefinition(7), L"");
    EXPECT_STREQ(instance.SpecIntervalDefinition(8), L"H1");
    for (unsigned const unknown : {0u, 4u, 9u, 10u, 0xFFFFFFFFu})
        EXPECT_EQ(instance.SpecIntervalDefinition(unknown), nullptr) << unknown;
}

TEST_F(DerivedQueries, IntervalsOfOneParameter) {
    Load(Definitions);
    auto const [begin, end] = instance.SpecIntervalRange(5);
    ASSERT_EQ(std::distance(begin, end), 2);
    EXPECT_EQ(begin->first, QIdx2(5, 0));
    EXPECT_EQ(begin->second.lower().order(), 1.0f);
    EXPECT_EQ(begin->second.upper().order(), 2.0f);
    EXPECT_EQ(std::next(begin)->first, QIdx2(5, 2));
    EXPECT_EQ(std::next(begin)->second.lower().order(), 3.0f);
    EXPECT_EQ(std::next(begin)->second.upper().order(), 4.0f);

    auto const [only, behind] = instance.SpecIntervalRange(6);
    ASSERT_EQ(std::distance(only, behind), 1);
    EXPECT_EQ(only->first, QIdx2(6, 0));
    EXPECT_EQ(only->second.lower().frequency(), 100.0f);
    EXPECT_EQ(only->second.upper().frequency(), 100.0f);
    for (unsigned const without : {4u, 7u, 9u, 0xFFFFFFFFu}) {
        auto const [first, last] = instance.SpecIntervalRange(without);
        EXPECT_EQ(first, last) << without;
    }
}

TEST_F(DerivedQueries, PolygonsOfTheLoad) {
    Load("<TIpPolygonValue>: {\n4 10 0.5\n4 -10 1.5\n}\n"
         "<TIpParamAndStore>: {\n1 2 3 4 5 6 0 0 0 0 0\n1 2 3 4 5 7 0 0 0 0 0\n2 2 3 4 5 7 0 0 0 0 0\n}\n"
         "<TIpTrackPolygon>: {\n-1 -1 -1 -1 -1 6 4 0 501 77 9 0 0 0 0 0\n"
         "1 -1 3 -1 -1 7 4 0 502 78 2.5 1 100 200 1 2\n}\n");
    CGrexInfo const& groups = instance.GroupInfo();
    ASSERT_EQ(groups.Entries().size(), 2u);
    ASSERT_NE(groups.Entry({1, 2, 3, 4, 5, 6}), nullptr);
    EXPECT_EQ(*groups.Entry({1, 2, 3, 4, 5, 6}), (CGrexInfo::entry{501, 77, 4}));
    ASSERT_NE(groups.Entry({1, 2, 3, 4, 5, 7}), nullptr);
    EXPECT_EQ(*groups.Entry({1, 2, 3, 4, 5, 7}), (CGrexInfo::entry{502, 78, 5}));
    EXPECT_EQ(groups.Entry({2, 2, 3, 4, 5, 7}), nullptr);
    EXPECT_EQ(groups.Group(4), (std::vector<CGrexInfo::group_element>{{-10.0f, 1.5f}, {10.0f, 0.5f}}));
    EXPECT_EQ(groups.Group(5), (std::vector<CGrexInfo::group_element>{{100.0f, 3.5f}, {200.0f, 4.5f}}));
}

TEST_F(DerivedQueries, DumpShowsTheDerivedTablesBehindAllOthers) {
    Load(std::string(Channels) + "<TIpSpectralValue>: {\n5 1 0 0 O1;O2;O3;O4 0 0\n}\n");
    instance.DumpTables(1);
    auto const lines = messages.Take();
    std::vector<Message> const expected{{8, 1, L"->\t<TExternalName>\n"},
                                        {8, 1, L"<-\t<PiBaseChannelId>\n"},
                                        {8, 1, L"   1:\t1 10 | 12 7\n"},
                                        {8, 1, L"   2:\t1 11 | 12 6\n"},
                                        {8, 1, L"... more ...\n"},
                                        {8, 1, L"->\t<PiBaseChannelId>\n"},
                                        {8, 1, L"<-\t<PiSpecIntervalStore>\n"},
                                        {8, 1, L"   1:\t5 0 | 0 1 0 0 0 2 0 2 0 0 0 2\n"},
                                        {8, 1, L"   2:\t5 2 | 0 3 0 0 0 2 0 4 0 0 0 2\n"},
                                        {8, 1, L"... more ...\n"},
                                        {8, 1, L"->\t<PiSpecIntervalStore>\n"}};
    ASSERT_GT(lines.size(), expected.size());
    EXPECT_EQ(std::vector<Message>(lines.end() - static_cast<std::ptrdiff_t>(expected.size()), lines.end()),
              expected);
}

TEST_F(DerivedQueries, APurgeLeavesWhatIsDerived) {
    Load(std::string(Channels) + "<TInstrument>: {\n2500 s\n}\n<TInstrumentParam>: {\n5 2500 a 0 0 0\n}\n"
                                 "<TIpSpectrum>: {\n6 60 0 0 0\n}\n");
    instance.PurgeTables();
    EXPECT_EQ(instance.BaseChannel(1, 10), 12);
    EXPECT_EQ(instance.TriggerId(5), 60);
    EXPECT_EQ(instance.ParentChannel(1, 10), -1); // asks the table itself
    Load("");
    EXPECT_EQ(instance.BaseChannel(1, 10), 0);
    EXPECT_EQ(instance.TriggerId(5), -1);
}

} // namespace
