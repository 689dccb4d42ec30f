#include <paramdb/platform/signal/measuring_unit.h>

#include "mode_world.h"

#include <gtest/gtest.h>
#include <limits>
#include <tests/support/messages.h>

namespace {

class ModeNamesTest : public testing::Test {
protected:
    ModeNamesTest() {
        own.AddMode(4, L"Ramp", 2);
        own.tables().PhysMode.Add(2, L"Third gear");
    }

    CQtParamInstance& instance() { return own.instance(); }
    CQtModeInfo const& modes() { return own.derived().ModeInfo(); }

    // An id over mode 4.
    int Id(std::vector<int> const& intervals, std::vector<int> const& states = {}) {
        return modes().GenerateId(
            4, modes().Extension(intervals.data(), states.empty() ? nullptr : states.data()));
    }
    std::wstring Name(int id) { return instance().VirtModeName(id).GetString(); }
    std::wstring BaseName(int extension, int physical_mode) {
        return instance().VirtModeBaseName(extension, physical_mode).GetString();
    }
    std::wstring Fragment(CAutoModeParamMap::const_iterator parameter, float value, unsigned int precision) {
        return instance().VirtModeNameFragment(parameter, value, precision).GetString();
    }
    // Two parameters with a state and one without between them.
    void AddThree() {
        own.AddParameter(0, 10, 0, 1000, 100, 1);
        own.AddParameter(1, 20, 0, 3, 1, 0);
        own.AddParameter(2, 30, 0, 5, 1, 1);
        own.AddSignal(10, L"rpm");
        own.AddSignal(20, L"Nm");
        ASSERT_TRUE(own.Build());
    }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(ModeNamesTest, DefaultNaming) {
    CQtParamDistillery::AutoModeNaming const naming;
    EXPECT_EQ(naming.SeparatorText, L"-");
    EXPECT_EQ(naming.PositionSeparatorText, L"\u00B7");
    EXPECT_EQ(naming.ConstantSuffix, L"cn");
    EXPECT_EQ(naming.StationaryText, L"s");
    EXPECT_EQ(naming.StateDownText, L"D");
    EXPECT_EQ(naming.StateConstantText, L"C");
    EXPECT_EQ(naming.StateUpText, L"u");
    EXPECT_EQ(naming.StateFallText, L"d");
    EXPECT_EQ(naming.IndexedSuffix, L"i");
    EXPECT_TRUE(naming.ParamTexts.empty());
}

TEST_F(ModeNamesTest, OneParameterWithoutState) {
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddSignal(10, L"rpm");
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(Name(Id({2})), L"Third gear-cn\u00B7250rpm");
    EXPECT_EQ(Name(Id({0})), L"Third gear-cn\u00B750rpm");
    EXPECT_EQ(Name(4), L"") << "not virtual";
    EXPECT_EQ(Name(-1), L"");
}

TEST_F(ModeNamesTest, PositionsThatAreNoNumber) {
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddSignal(10, L"rpm");
    ASSERT_TRUE(own.Build());
    auto const parameter = instance().AutoModeParams().find(0);
    ASSERT_NE(parameter, instance().AutoModeParams().end());
    std::wstring const usual = Fragment(parameter, 250.0f, 0);
    ASSERT_NE(usual.find(L"250"), std::wstring::npos) << "the place of the number";
    struct Case {
        float value;
        wchar_t const* text;
    };
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    for (auto const& [value, text] :
         {Case{infinity, L"inf"}, Case{-infinity, L"-inf"}, Case{nan, L"nan"}, Case{-0.0f, L"-0"},
          Case{std::numeric_limits<float>::max(), L"340282346638528859811704183484516925440"}}) {
        std::wstring expected = usual;
        expected.replace(usual.find(L"250"), 3, text);
        EXPECT_EQ(Fragment(parameter, value, 0), expected);
    }
}

TEST_F(ModeNamesTest, SuffixesOfStates) {
    AddThree();
    struct Case {
        std::vector<int> states;
        wchar_t const* suffix;
    };
    Case const cases[] = {
        {{0, 0, 0}, L"i"},   {{0, 0, 1}, L"i"},   {{1, 0, 0}, L"cn"},  {{1, 0, 1}, L"cn"},
        {{0, 0, 2}, L"CCd"}, {{0, 0, 3}, L"CCu"}, {{2, 0, 0}, L"dCC"}, {{3, 0, 1}, L"uCD"},
        {{2, 0, 3}, L"dCu"}, {{1, 0, 2}, L"DCd"}, {{3, 3, 3}, L"uCu"},
    };
    for (auto const& [states, suffix] : cases) {
        std::wstring const expected = std::wstring(L"Third gear-") + suffix;
        EXPECT_EQ(Name(Id({2, 0, 4}, states)),
                  expected + L"\u00B7250rpm\u00B71Nm\u00B7"); // the third has no row
        EXPECT_EQ(BaseName(modes().Extension(Id({2, 0, 4}, states)), 2), expected);
    }
}

TEST_F(ModeNamesTest, SuffixWithoutAStateAtTheFirst) {
    own.AddParameter(0, 10, 0, 5, 1, 0);
    own.AddParameter(1, 20, 0, 5, 1, 1);
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(BaseName(0, 2), L"Third gear-cn");
    EXPECT_EQ(BaseName(3, 2), L"Third gear-Cu");
}

TEST_F(ModeNamesTest, BaseNameWithoutParametersOrPhysicalMode) {
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(BaseName(3, 2), L"Third gear-cn");
    EXPECT_EQ(BaseName(3, 9), L"-cn");
    EXPECT_EQ(BaseName(-1, -1), L"-cn");
}

TEST_F(ModeNamesTest, LabelsByStyle) {
    AddThree();
    struct Case {
        int style;
        wchar_t const* suffixes[4]; // of the first parameter by state, the last one rising
    };
    Case const cases[] = {
        {0, {L"Ns", L"Ns", L"Nd", L"Nu"}},
        {1, {L"C", L"D", L"Nd", L"Nu"}},
        {2, {L"NC", L"ND", L"Nd", L"Nu"}},
        {-1, {L"NC", L"ND", L"Nd", L"Nu"}},
    };
    for (auto const& one : cases) {
        CQtParamDistillery::AutoModeNaming naming;
        naming.ParamTexts[10] = {one.style, L"N"};
        instance().SetAutoModeNaming(naming);
        for (int state = 0; state < 4; ++state)
            EXPECT_EQ(BaseName(modes().Extension(Id({2, 0, 4}, {state, 0, 3})), 2),
                      std::wstring(L"Third gear-") + one.suffixes[state] + L"Cu")
                << one.style << " " << state;
    }
    // A parameter without state is at rest.
    CQtParamDistillery::AutoModeNaming naming;
    naming.ParamTexts[20] = {0, L"T"};
    naming.ParamTexts[30] = {1, L"S"};
    instance().SetAutoModeNaming(naming);
    EXPECT_EQ(BaseName(modes().Extension(Id({2, 0, 4}, {2, 0, 3})), 2), L"Third gear-dTsSu");
}

TEST_F(ModeNamesTest, EveryPieceOfTheNaming) {
    AddThree();
    CQtParamDistillery::AutoModeNaming naming;
    naming.SeparatorText = L"<separator>";
    naming.PositionSeparatorText = L"<at>";
    naming.ConstantSuffix = L"<constant>";
    naming.StationaryText = L"<rests>";
    naming.StateDownText = L"<down>";
    naming.StateConstantText = L"<same>";
    naming.StateUpText = L"<up>";
    naming.StateFallText = L"<fall>";
    naming.IndexedSuffix = L"<indexed>";
    naming.ParamTexts[30] = {0, L"<load>"};
    instance().SetAutoModeNaming(naming);
    naming.SeparatorText = L"the library has a copy";
    auto const name = [&](std::vector<int> const& states) { return Name(Id({0, 0, 0}, states)); };
    std::wstring const positions = L"<at>50rpm<at>1Nm<at>";
    EXPECT_EQ(name({2, 0, 1}), std::wstring(L"Third gear<separator><fall><same><load><rests>") + positions);
    EXPECT_EQ(name({1, 0, 3}), std::wstring(L"Third gear<separator><down><same><load><up>") + positions);
    EXPECT_EQ(name({1, 0, 0}), std::wstring(L"Third gear<separator><constant>") + positions);
    EXPECT_EQ(name({0, 0, 0}), std::wstring(L"Third gear<separator><indexed>") + positions);
    instance().SetAutoModeNaming({});
    EXPECT_EQ(name({0, 0, 0}), L"Third gear-i\u00B750rpm\u00B71Nm\u00B7");
}

TEST_F(ModeNamesTest, AnEmptyFieldIsAnX) {
    AddThree();
    EXPECT_EQ(Name(Id({-1, 2, -1}, {3, 0, 0})), L"Third gear-uCC\u00B7xrpm\u00B73Nm\u00B7x");
    EXPECT_EQ(Name(Id({3, -1, 1}, {3, 0, 0})), L"Third gear-uCC\u00B7350rpm\u00B7xNm\u00B7");
}

TEST_F(ModeNamesTest, FragmentsFollowTheOrderTable) {
    // The keys count as positions: the first has no parameter there, the second is that of the middle one.
    own.AddParameter(-3, 10, 0, 1000, 100, 0);
    own.AddParameter(1, 20, 0, 3, 1, 0);
    own.AddParameter(5, 30, 0, 3, 1, 0);
    own.AddSignal(10, L"rpm");
    own.AddSignal(20, L"Nm");
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(Name(Id({2, 1, 0})), L"Third gear-cn\u00B7\u00B72Nm\u00B7");
}

TEST_F(ModeNamesTest, PositionsAreWholeNumbers) {
    struct Case {
        float start, step;
        int interval;
        wchar_t const* text;
    };
    Case const cases[] = {{0, 1, 0, L"1"},
                          {0, 1, 1, L"2"},
                          {-4, 1, 0, L"-4"},
                          {-2, 3, 0, L"-1"},
                          {0, 0.5f, 0, L"0"},
                          {0, 0.25f, 1, L"0"},
                          {0.25f, 0.5f, 0, L"1"},
                          {-0.75f, 1, 0, L"-0"},
                          {1e6f, 1e6f, 2, L"3500000"},
                          {1e20f, 1e20f, 0, L"150000003006131601408"}};
    for (auto const& [start, step, interval, text] : cases) {
        own.Clear();
        own.AddMode(4, L"Ramp", 2);
        own.AddParameter(0, 10, start, start + 7 * step, step, 0);
        own.AddSignal(10, L"");
        ASSERT_TRUE(own.Build());
        EXPECT_EQ(Name(Id({interval})), std::wstring(L"-cn\u00B7") + text) << start << " " << step;
    }
}

TEST_F(ModeNamesTest, WithoutPhysicalModeThereIsNoName) {
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddMode(5, L"no physical mode", -1);
    own.AddMode(6, L"nameless physical mode", 77);
    own.tables().Mode.Add(7, L"no property");
    ASSERT_TRUE(own.Build());
    int const interval = 2;
    int const extension = modes().Extension(&interval, nullptr);
    EXPECT_EQ(Name(modes().GenerateId(5, extension)), L"");
    EXPECT_EQ(Name(modes().GenerateId(7, extension)), L"");
    EXPECT_EQ(Name(modes().GenerateId(6, extension)), L"-cn\u00B7");
}

// The mask goes onto the extension, not onto the id.
TEST_F(ModeNamesTest, WithoutOrderTheExtensionIsTheName) {
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.tables().Mode.Add(3, L"three");
    ASSERT_TRUE(own.Build());
    own.tables().AutoModeParamOrder.PurgeTable();
    EXPECT_EQ(Name(Id({2})), L"three#3");
    EXPECT_EQ(Name(Id({4})), L"#5");
    EXPECT_EQ(Name(Id({3})), L"Ramp#4") << "the mode that the extension happens to name";
    own.tables().ModeProperty.insert({static_cast<int>(0x80000004u), QVModeProps(2, 0, 0, 0)});
    EXPECT_EQ(Name(static_cast<int>(0x80000004u | 3u << 27)), L"#-13");
}

TEST_F(ModeNamesTest, UnitCodes) {
    struct Case {
        int code, prefix;
        wchar_t const* unit;
    };
    Case const cases[] = {
        {6, 0, L"Hz"},      {6, 3, L"kHz"},     {6, 1, L"Hz"},        {6, -1, L"Hz"},
        {6, -3, L"mHz"},    {7, 0, L"1/min"},   {2, 0, L"m/s\u00B2"}, {30, 0, L"K"},
        {8, 6, L"MNm"},     {0, 0, L""},        {0, 3, L""},          {1, 3, L"stored"},
        {31, 0, L"stored"}, {-1, 0, L"stored"}, {-6, 0, L"stored"},   {1000000, 3, L"stored"}};
    for (auto const& [code, prefix, unit] : cases) {
        own.Clear();
        own.AddMode(4, L"Ramp", 2);
        own.AddParameter(0, 10, 0, 1000, 100, 0);
        own.AddSignal(10, L"stored", code, prefix);
        ASSERT_TRUE(own.Build());
        EXPECT_EQ(own.tables().AppSignalProperty.find(10)->second.get<"unit">(), L"stored")
            << "not asked yet";
        EXPECT_EQ(Name(Id({2})), std::wstring(L"-cn\u00B7250") + unit) << code << " " << prefix;
        EXPECT_EQ(own.tables().AppSignalProperty.find(10)->second.get<"unit">(), unit) << "the row has it";
    }
}

TEST_F(ModeNamesTest, AllCommonUnits) {
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    ASSERT_TRUE(own.Build());
    auto const parameter = std::as_const(instance()).AutoModeParams().begin();
    for (int code = 2; code <= 30; ++code) {
        own.tables().AppSignalProperty.PurgeTable();
        own.AddSignal(10, L"stored", code, -3);
        std::wstring const unit = CMeasuringUnit(code, -3).prefixunit(false).GetString();
        ASSERT_GT(unit.size(), 1u);
        EXPECT_EQ(Fragment(parameter, 7, 0), std::wstring(L"7") + unit);
    }
}

TEST_F(ModeNamesTest, FragmentsOfAnyValue) {
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddParameter(1, 20, 0, 1000, 100, 0);
    own.AddSignal(10, L"rpm");
    ASSERT_TRUE(own.Build());
    auto const parameter = std::as_const(instance()).AutoModeParams().begin();
    struct Case {
        float value;
        unsigned int precision;
        wchar_t const* text;
    };
    Case const cases[] = {{0.5f, 0, L"0rpm"},
                          {1.5f, 0, L"2rpm"},
                          {2.5f, 0, L"2rpm"},
                          {1.25f, 1, L"1.2rpm"},
                          {-1.25f, 2, L"-1.25rpm"},
                          {0.1f, 10, L"0.1000000015rpm"},
                          {1234567, 3, L"1234567.000rpm"},
                          {std::numeric_limits<float>::infinity(), 3, L"infrpm"},
                          {-std::numeric_limits<float>::infinity(), 0, L"-infrpm"},
                          {std::numeric_limits<float>::quiet_NaN(), 1, L"nanrpm"}};
    for (auto const& [value, precision, text] : cases)
        EXPECT_EQ(Fragment(parameter, value, precision), text);
    EXPECT_EQ(Fragment(std::next(parameter), 1, 0), L"") << "no row";
    EXPECT_EQ(Fragment(instance().AutoModeParams().begin(), 1, 0), L"1rpm");
}

TEST_F(ModeNamesTest, SameAsTheModelOnRandomData) {
    constexpr std::uint32_t seed = 5302;
    ModeWorld world(seed);
    for (int round = 0; round < 4000; ++round) {
        world.Renew();
        bool combines = false;
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round << " " << world.Describe());
        ASSERT_TRUE(world.Build(combines));
        if (world.Below(10) == 0) {
            world.own.tables().AutoModeParamOrder.PurgeTable();
            world.model.order_rows.clear();
        }
        auto const& instance = world.own.instance();
        for (int query = 0; query < 30; ++query) {
            int const id = world.AnyId();
            int const extension = world.AnyInt();
            int const physical_mode = world.Below(4) - 1;
            ASSERT_EQ(std::wstring(instance.VirtModeName(id)), world.model.VirtualName(id)) << id;
            ASSERT_EQ(std::wstring(instance.ModeName(id)), world.model.Name(id)) << id;
            ASSERT_EQ(std::wstring(instance.VirtModeBaseName(extension, physical_mode)),
                      world.model.BaseName(extension, physical_mode))
                << extension;
        }
    }
}

} // namespace
