#include <paramdb/query/param_instance.h>

#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <string>
#include <tests/distillery/derivation_support.h>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <utility>
#include <vector>

namespace {

struct Numbers {
    int first, last, result;
};
constexpr Numbers Results[] = {
    {1001, 1008, 1},   {1050, 1051, 1},   {1060, 1061, 1},   {1070, 1070, 1},   {1100, 1100, 1},
    {1110, 1110, 1},   {1150, 1157, 1},   {1700, 1700, 1},   {2001, 2008, 2},   {2012, 2012, 2},
    {2070, 2070, 2},   {2100, 2100, 3},   {2500, 2500, 3},   {2600, 2600, 4},   {2700, 2700, 3},
    {2800, 2800, 3},   {2900, 2900, 3},   {3000, 3000, 1},   {3500, 3500, 5},   {3600, 3600, 6},
    {3700, 3700, 6},   {5000, 5000, 2},   {5001, 5001, 4},   {5002, 5002, 1},   {8000, 8000, -1},
    {8999, 8999, -1},  {9000, 9000, 1},   {9090, 9090, 1},   {9500, 9500, 1},   {9600, 9600, 1},
    {9650, 9651, 1},   {10000, 10001, 1}, {10100, 10102, 1}, {10201, 10202, 1}, {11000, 11000, 2},
    {11201, 11201, 2}, {12202, 12202, 3}, {13202, 13202, 5}, {16000, 16001, 1}, {20000, 20000, 1},
    {21000, 21000, 2},
};

// 0 for a number in no range.
int ResultOf(int instrument) {
    for (auto const& [first, last, result] : Results)
        if (instrument >= first && instrument <= last)
            return result;
    return 0;
}

// Every number of the range that instruments come from, and some far off.
std::vector<int> ManyInstruments() {
    std::vector<int> instruments{Lowest, Lowest + 1001, -21000, -2500, -1001, 65536 + 1001, Highest};
    for (int instrument = -10; instrument <= 30000; ++instrument)
        instruments.push_back(instrument);
    return instruments;
}

TEST(Classification, EveryResultType) {
    CQtParamDistillery distillery;
    CQtParamInstance const instance(&distillery);
    std::map<int, int> counts;
    for (int const instrument : ManyInstruments()) {
        SCOPED_TRACE(instrument);
        int const result = ResultOf(instrument);
        ++counts[result];
        EXPECT_EQ(CQtParamInstance::ResultType(instrument), result);
        EXPECT_EQ(instance.IsSingleValueInstrument(instrument), result == 1);
        EXPECT_EQ(instance.IsTrackInstrument(instrument), result == 2 || result == 5);
        EXPECT_EQ(instance.IsSpectrumInstrument(instrument), result == 3);
        EXPECT_EQ(instance.Is2dDataInstrument(instrument), result == 6);
    }
    EXPECT_EQ(counts,
              (std::map<int, int>{{-1, 2}, {0, 29948}, {1, 42}, {2, 14}, {3, 6}, {4, 2}, {5, 2}, {6, 2}}));
}

TEST(Classification, ScalarsAndTracks) {
    static const std::map<int, int> tracks{{1001, 2001}, {1002, 2002}, {1003, 2003},
                                           {1004, 2004}, {1005, 2005}, {1070, 2070},
                                           {1700, 2070}, {2500, 3500}, {20000, 21000}};
    static const std::map<int, int> scalars{{2001, 1001}, {2002, 1002}, {2003, 1003}, {2004, 1004},
                                            {2005, 1005}, {2070, 1700}, {3500, 2500}, {21000, 20000}};
    auto const partner = [](std::map<int, int> const& pairs, int instrument) {
        auto const pair = pairs.find(instrument);
        return pair != pairs.end() ? pair->second : -1;
    };
    for (int const instrument : ManyInstruments()) {
        SCOPED_TRACE(instrument);
        EXPECT_EQ(CQtParamInstance::ScalarInstrumentToTrackInstrument(instrument),
                  partner(tracks, instrument));
        EXPECT_EQ(CQtParamInstance::TrackInstrumentToScalarInstrument(instrument),
                  partner(scalars, instrument));
    }
}

class ClassificationTest : public testing::Test {
protected:
    ~ClassificationTest() override { EXPECT_EQ(messages.Take(), std::vector<Message>()); }

    CQtParamInstance& instance() { return own.instance(); }
    void AddChannel(int channel, unsigned int flags) {
        own.tables().ChannelProperty.insert({channel, QVChannelProperty(flags, 99)});
    }
    void AddValue(int instrument, int channel, int location, int mode = 0) {
        own.tables().IpParamAndStore.insert(
            {QClavis(mode, instrument, channel, location, 0, 0), QVIpParamAndStore()});
    }
    // The rows of the signals as a dump shows them.
    std::vector<std::wstring> SignalRows() {
        std::vector<Message> const before = messages.Take();
        EXPECT_EQ(before, std::vector<Message>());
        own.tables().AppSignalProperty.DumpTable(0);
        std::vector<std::wstring> rows;
        for (auto const& message : messages.Take())
            rows.push_back(message.text);
        return rows;
    }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(ClassificationTest, FlagsOfChannels) {
    static constexpr unsigned int all_flags[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 0x80000000, 0xFFFFFFFF};
    EXPECT_EQ(CQtParamInstance::sync_channel, 1u);
    EXPECT_EQ(CQtParamInstance::mix_channel, 2u);
    EXPECT_EQ(CQtParamInstance::fix_channel, 4u);
    int channel = -2;
    for (unsigned int const flags : all_flags)
        AddChannel(channel += 2, flags);
    channel = -2;
    for (unsigned int const flags : all_flags) {
        channel += 2;
        EXPECT_EQ(instance().ChannelResamplingType(channel), flags);
        EXPECT_EQ(instance().ChannelIsSync(channel), flags % 2 == 1);
        EXPECT_EQ(instance().ChannelIsMix(channel), flags / 2 % 2 == 1);
        EXPECT_EQ(instance().ChannelIsFix(channel), flags / 4 % 2 == 1);
        for (int const unknown : {channel + 1, -1, Lowest, Highest}) {
            EXPECT_EQ(instance().ChannelResamplingType(unknown), 0u);
            EXPECT_FALSE(instance().ChannelIsSync(unknown));
            EXPECT_FALSE(instance().ChannelIsMix(unknown));
            EXPECT_FALSE(instance().ChannelIsFix(unknown));
        }
    }
}

TEST_F(ClassificationTest, FlagsOfLocations) {
    own.tables().LocationProperty.insert({5, QVLocationProperty(4u, 1, 2)});
    own.tables().LocationProperty.insert({-1, QVLocationProperty(0xFFFFFFFF, 1, 2)});
    own.tables().LocationProperty.insert({7, QVLocationProperty(0u, 1, 2)});
    EXPECT_EQ(instance().LocationPropertyFlag(5), 4u);
    EXPECT_EQ(instance().LocationPropertyFlag(-1), 0xFFFFFFFF);
    EXPECT_EQ(instance().LocationPropertyFlag(7), 0u);
    for (int const unknown : {4, 6, 8, Lowest, Highest})
        EXPECT_EQ(instance().LocationPropertyFlag(unknown), 0u) << unknown;
}

TEST_F(ClassificationTest, ASignalWithoutRowHasNoUnit) {
    own.AddSignal(5, L"rpm");
    auto const rows = SignalRows();
    for (int const unknown : {-1, 4, 6, Lowest, Highest}) {
        CMeasuringUnit const unit = instance().ApplicationSignalUnit(unknown);
        EXPECT_EQ(unit.unit(), 0);
        EXPECT_EQ(unit.prefix(), 0);
        EXPECT_EQ(unit.value(), 1);
        EXPECT_EQ(unit.factor(), 1.0);
        EXPECT_EQ(unit.flags(), 0u);
        EXPECT_STREQ(unit.prefixunit(true), L"");
    }
    EXPECT_EQ(SignalRows(), rows);
}

TEST_F(ClassificationTest, UnitsOfSignals) {
    static constexpr struct {
        int code, prefix;
        wchar_t const* stored; // the unit text of the row
        int unit, power;
        wchar_t const *text, *rewritten;
    } cases[] = {
        // By the code.
        {0, 0, L"old", 0, 0, L"", L""},
        {0, 3, L"old", 0, 3, L"", L""},
        {2, 0, L"old", 2, 0, L"m/s\u00B2", L"m/s\u00B2"},
        {6, 0, L"Hz", 6, 0, L"Hz", L"Hz"},
        {6, 0, L"", 6, 0, L"Hz", L"Hz"},
        {6, 0, L"----", 6, 0, L"Hz", L"Hz"},
        {6, 3, L"old", 6, 3, L"kHz", L"kHz"},
        {6, -3, L"old", 6, -3, L"mHz", L"mHz"},
        {6, -6, L"old", 6, -6, L"\u00B5Hz", L"\u00B5Hz"},
        {6, 1, L"old", 6, 0, L"Hz", L"Hz"},
        {6, -1, L"old", 6, 0, L"Hz", L"Hz"},
        {6, 2, L"old", 6, 2, L"hHz", L"hHz"},
        {6, 4711, L"old", 6, 0, L"Hz", L"Hz"}, // no such power
        {6, Lowest, L"old", 6, 0, L"Hz", L"Hz"},
        {30, 0, L"old", 30, 0, L"K", L"K"},
        {30, -3, L"old", 30, -3, L"mK", L"mK"},
        // By the text, whatever the prefix.
        {1, 0, L"kHz", 6, 3, L"kHz", L"kHz"},
        {1, 3, L"Hz", 6, 0, L"Hz", L"Hz"},
        {31, 0, L"kHz", 6, 3, L"kHz", L"kHz"},
        {-1, 0, L"kHz", 6, 3, L"kHz", L"kHz"},
        {Highest, 3, L"kHz", 6, 3, L"kHz", L"kHz"},
        {Lowest, 3, L"kHz", 6, 3, L"kHz", L"kHz"},
        {1, 3, L"sone", -1, 0, L"sone", L"sone"},
        {31, 0, L"\u03A9\u03A9", -1, 0, L"\u03A9\u03A9", L"\u03A9\u03A9"},
        {1, 0, L"", 0, 0, L"", L""},
        {1, 0, L"----", 0, 0, L"", L"----"},
        {31, 3, L"----", 0, 0, L"", L"----"},
        {1, 0, L"---", -1, 0, L"---", L"---"},
        {1, 0, L"-----", -1, 0, L"-----", L"-----"},
        {1, 0, L"---- ", -1, 0, L"---- ", L"---- "},
        {1, 0, L" ----", -1, 0, L" ----", L" ----"},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::Message() << test.code << ' ' << test.prefix << ' '
                                        << testing::PrintToString(std::wstring(test.stored)));
        own.Clear();
        own.tables().AppSignalProperty.insert(
            {9, QVAppSignalProperty(3, test.stored, 0.5f, test.code, test.prefix)});
        own.AddSignal(8, L"before", 6, 3);
        own.AddSignal(10, L"behind", 6, 3);
        auto const dump = [&](wchar_t const* text) {
            return std::vector<std::wstring>{L"<-\t<TAppSignalProperty>\n", L"   1:\t8 | 0 before 0 6 3\n",
                                             L"   2:\t9 | 3 " + std::wstring(text) + L" 0.5 " +
                                                 std::to_wstring(test.code) + L" " +
                                                 std::to_wstring(test.prefix) + L"\n",
                                             L"   3:\t10 | 0 behind 0 6 3\n", L"->\t<TAppSignalProperty>\n"};
        };
        EXPECT_EQ(SignalRows(), dump(test.stored));
        for (int time = 1; time <= 2; ++time) {
            CMeasuringUnit const unit = instance().ApplicationSignalUnit(9);
            EXPECT_EQ(unit.unit(), test.unit);
            EXPECT_EQ(unit.prefix(), test.power);
            EXPECT_EQ(unit.value(), 1);
            EXPECT_EQ(unit.factor(), 1.0);
            EXPECT_EQ(unit.flags(), 0u);
            EXPECT_STREQ(unit.prefixunit(false), test.text);
            EXPECT_EQ(SignalRows(), dump(test.rewritten));
        }
    }
}

TEST_F(ClassificationTest, UnitsOfAllCodesAndPrefixes) {
    static constexpr int prefixes[] = {-1, 0,  1,  2,   3, 6,    9,      12,     -2,
                                       -3, -6, -9, -12, 5, -100, Lowest, Highest};
    for (int code = -2; code <= 33; ++code)
        for (int const prefix : prefixes) {
            SCOPED_TRACE(testing::Message() << code << ' ' << prefix);
            own.tables().AppSignalProperty.clear();
            own.AddSignal(1, L"old text", code, prefix);
            bool const is_common = code == 0 || (code >= 2 && code <= 30);
            CMeasuringUnit const expected(is_common ? code : 0, prefix == 1 || prefix == -1 ? 0 : prefix);
            std::wstring const text = is_common ? expected.prefixunit(false).GetString() : L"old text";
            EXPECT_STREQ(instance().ApplicationSignalUnit(1).prefixunit(false), text.c_str());
            EXPECT_STREQ(own.tables().AppSignalProperty.begin()->second.get<"unit">(), text.c_str());
        }
}

// A row changed by the host, as it may do with this table, shows at the next question.
TEST_F(ClassificationTest, AUnitFollowsItsRow) {
    own.AddSignal(5, L"rpm", 6, 3);
    EXPECT_STREQ(instance().ApplicationSignalUnit(5).prefixunit(false), L"kHz");
    instance().AppSignalProperty().find(5)->second.get<"unit_code">() = 4;
    EXPECT_STREQ(instance().ApplicationSignalUnit(5).prefixunit(false), L"kPa");
    instance().AppSignalProperty().find(5)->second.get<"unit_code">() = 1;
    EXPECT_STREQ(instance().ApplicationSignalUnit(5).prefixunit(false), L"kPa") << "the text that was left";
    instance().AppSignalProperty().find(5)->second.get<"unit">() = CFixedText(L"phon");
    EXPECT_STREQ(instance().ApplicationSignalUnit(5).prefixunit(false), L"phon");
}

TEST_F(ClassificationTest, NamesOfVirtualModesShowTheSameUnits) {
    own.AddMode(4, L"Ramp", 2);
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddSignal(10, L"old", 6, 3);
    ASSERT_TRUE(own.Build());
    int const interval = 2;
    int const mode = instance().VirtModeGenerateId(4, instance().VirtModeExtension(&interval, nullptr));
    EXPECT_STREQ(instance().ModeName(mode), L"-cn\u00B7250kHz");
    EXPECT_EQ(SignalRows()[1], L"   1:\t10 | 0 kHz 0 6 3\n");
    EXPECT_STREQ(instance().ApplicationSignalUnit(10).prefixunit(true), L"[kHz]");
}

TEST_F(ClassificationTest, PlacesOfTheMixChannel) {
    EXPECT_FALSE(instance().IpMultipleMixLocs());
    AddChannel(6, 2);
    AddChannel(7, 3); // a mix channel too, but not that alone
    AddChannel(8, 6);
    EXPECT_FALSE(instance().IpMultipleMixLocs());
    AddValue(1001, 6, 50);
    AddValue(1002, 6, 50, -5);
    EXPECT_FALSE(instance().IpMultipleMixLocs());
    AddValue(1001, 7, 51);
    AddValue(1001, -1, 52);
    AddValue(5000, 6, 53);
    AddValue(9000, 6, 54);
    EXPECT_FALSE(instance().IpMultipleMixLocs());
    AddValue(4999, 6, 55);
    EXPECT_TRUE(instance().IpMultipleMixLocs());
}

TEST_F(ClassificationTest, TwoMixChannelsAreMoreThanOnePlace) {
    AddChannel(6, 2);
    AddChannel(9, 2);
    EXPECT_TRUE(instance().IpMultipleMixLocs());
}

TEST_F(ClassificationTest, WithoutMixChannelTheKeysWithoutChannelCount) {
    AddChannel(6, 3);
    AddValue(1001, 6, 50);
    AddValue(1001, 6, 51);
    AddValue(1001, -1, 50);
    EXPECT_FALSE(instance().IpMultipleMixLocs());
    AddValue(-1, -1, 51);
    EXPECT_TRUE(instance().IpMultipleMixLocs());
}

TEST_F(ClassificationTest, APlaceOfMinusOneIsNoneAtFirst) {
    AddChannel(6, 2);
    AddValue(1001, 6, -1, 1);
    AddValue(1001, 6, 50, 2);
    AddValue(1001, 6, 50, 3);
    EXPECT_FALSE(instance().IpMultipleMixLocs()) << "the next row tells the place";
    AddValue(1001, 6, -1, 4);
    EXPECT_TRUE(instance().IpMultipleMixLocs()) << "once there is a place, it differs";
}

TEST_F(ClassificationTest, RandomPlacesAgainstAModel) {
    int multiple = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        own.tables().ChannelProperty.clear();
        own.tables().IpParamAndStore.clear();
        std::vector<int> mixed;
        for (int channel = 0; channel < 4; ++channel) {
            unsigned int const flags = static_cast<unsigned>(random.OneIn(6) ? 2 : random.Between(0, 7));
            if (random.OneIn(3))
                continue;
            AddChannel(channel, flags);
            if (flags == 2)
                mixed.push_back(channel);
        }
        int const sought = mixed.empty() ? -1 : mixed.back();
        std::map<std::vector<int>, int> keys;
        for (int count = random.Between(0, 12); count > 0; --count) {
            int const mode = random.Between(-1, 1);
            int const instrument = random.Pick(std::vector{-1, 0, 1001, 4999, 5000, 5001, 20000});
            int const channel = random.OneIn(2) ? sought : random.Between(-1, 3);
            int const location = random.OneIn(3) ? -1 : 50 + (random.OneIn(6) ? 1 : 0);
            AddValue(instrument, channel, location, mode);
            keys[{mode, instrument, channel, location}] = 0;
        }
        std::vector<int> locations;
        for (auto const& [key, unused] : keys)
            if (key[1] < 5000 && key[2] == sought && (key[3] != -1 || !locations.empty()))
                locations.push_back(key[3]);
        bool expected = mixed.size() > 1;
        for (int const location : locations)
            expected = expected || location != locations.front();
        EXPECT_EQ(instance().IpMultipleMixLocs(), expected);
        multiple += expected ? 1 : 0;
    }
    EXPECT_GT(multiple, 500);
    EXPECT_LT(multiple, 2500);
}

TEST_F(ClassificationTest, BaseModesOfKeys) {
    own.AddMode(4, L"Ramp", 2);
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    ASSERT_TRUE(own.Build());
    std::pair<int, int> const cases[] = {{4, 4}, {-1, -1},           {99, 99},
                                         {0, 0}, {4 + (3 << 27), 4}, {5 << 27, 0}};
    for (auto const& [mode, base] : cases) {
        SCOPED_TRACE(mode);
        QClavis const key(mode, 3 << 27, 4 << 27, 5, 6, 7);
        QClavis const expected(base, 3 << 27, 4 << 27, 5, 6, 7);
        CQtParamInstance const& constant = instance();
        EXPECT_EQ(constant.BaseModeClavis(key), expected);
        EXPECT_EQ(key[Clavis::qMode], mode);
        QClavis changed = key;
        constant.BaseModeClavis(changed);
        EXPECT_EQ(changed, expected);
    }
}

using ClassificationLoadTest = LoadTest;

TEST_F(ClassificationLoadTest, FromALake) {
    MessageLog const messages;
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
             "<TApplicationSignal>: {\n10 Speed\n11 Time\n12 Time2\n}\n"
             "<TAppSignalProperty>: {\n10 1 \"?\" 0 7 0\n11 4 s 0 1 0\n12 4 s 0 1 0\n}\n"
             "<TChannelProperty>: {\n6 2 0\n}\n<TLocationProperty>: {\n50 5 0 0\n}\n"
             "<TIpParamAndStore>: {\n1 1001 6 50 1 1 0 0 0 0 0\n1 1001 6 51 1 1 0 0 0 0 0\n}\n");
    CQtParamInstance instance;
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(CQtParamInstance::TimeSignalId(), 11);
    EXPECT_STREQ(instance.ApplicationSignalUnit(10).prefixunit(false), L"1/min");
    EXPECT_STREQ(instance.ApplicationSignalUnit(11).prefixunit(false), L"s");
    EXPECT_EQ(instance.ChannelResamplingType(6), 2u);
    EXPECT_EQ(instance.LocationPropertyFlag(50), 5u);
    EXPECT_TRUE(instance.IpMultipleMixLocs());
}

} // namespace
