#include <paramdb/query/param_instance.h>

#include <cmath>
#include <gtest/gtest.h>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <thread>

namespace {

class ModesTest : public testing::Test {
protected:
    ModesTest() {
        own.AddMode(4, L"Ramp", 2, 1024 | 3);
        own.AddMode(5, L"Coast", 3, 8);
        own.tables().PhysMode.Add(2, L"Third");
        own.AddParameter(0, 10, 0, 1000, 100, 0);
        own.AddSignal(10, L"rpm");
        EXPECT_TRUE(own.Build());
    }

    CQtParamInstance& instance() { return own.instance(); }
    static int Id(int mode, int interval) { return mode + ((interval + 1) << 27); } // 4 bits of extension

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(ModesTest, SplittingAndPacking) {
    int const interval = 2;
    EXPECT_EQ(instance().VirtModeExtension(&interval, nullptr), 3);
    EXPECT_EQ(instance().VirtModeGenerateId(4, 3), Id(4, 2));
    EXPECT_EQ(instance().VirtModeGenerateId(-1, 3), -1);
    EXPECT_EQ(instance().VirtModeGenerateId(5, -1), 5);
    EXPECT_EQ(instance().VirtMode2BaseMode(Id(4, 2)), 4);
    EXPECT_EQ(instance().VirtModeExtension(Id(4, 2)), 3);
    EXPECT_EQ(instance().VirtMode2BaseMode(-1), -1);
    EXPECT_EQ(instance().VirtModeExtension(-1), -1);
    EXPECT_TRUE(instance().IsVirtualMode(Id(4, 2)));
    EXPECT_TRUE(instance().IsValidVirtualMode(Id(4, 2)));
    EXPECT_FALSE(instance().IsVirtualMode(4));
    EXPECT_FALSE(instance().IsValidVirtualMode(-1));
    EXPECT_EQ(instance().PhysModeId(Id(4, 2)), 2);
    EXPECT_EQ(instance().PhysModeId(5), 3);
    EXPECT_EQ(instance().PhysModeId(6), -1);
    EXPECT_EQ(instance().PhysModeId(-1), -1);
}

TEST_F(ModesTest, CountsOfIntervals) {
    struct Case {
        float start, stop, step;
        int intervals;
    };
    Case const cases[] = {
        {0, 1000, 100, 10},
        {0, 1001, 100, 11},
        {0, 999, 100, 10},
        {0, 0.5f, 1, 1},
        {-5, 5, 2.5f, 4},
        {5, 5, 1, -1},
        {6, 5, 1, -1},
        {6, 5, -1, -1},
        {0, 1000, 0, -1},
        {0, 1000, -0.0f, -1},
        {0, 1000, -100, -10},
        {0, 1050, -100, -10},
        {NotANumber, 5, 1, -1},
        {0, NotANumber, 1, -1},
        {0, 5, NotANumber, 0},
        {0, Infinite, 1, 0},
        {-Infinite, 0, 1, 0},
        {0, 5, Infinite, 0},
        {0, 3e9f, 1, -1294967296},
        {0, 1e30f, 1, 0},
        {0, 8589934592.0f, 1, 0},
    };
    for (auto const& [start, stop, step, intervals] : cases) {
        CVAutoModeParams params;
        params.Start = start;
        params.Stop = stop;
        params.Step = step;
        EXPECT_EQ(instance().VirtModeIntervals(params), intervals) << start << " " << stop << " " << step;
    }
}

TEST_F(ModesTest, MiddlesOfIntervals) {
    struct Case {
        float start, step;
        unsigned int index;
        float middle;
    };
    Case const cases[] = {
        {0, 100, 2, 250},
        {0, 1, 0, 1},
        {0, 1, 1, 2},
        {-3, 1, 0, -3},
        {-1, 1, 0, -1},
        {0.3f, 0.2f, 0, 0},
        {0, 0, 7, 0},
        {10, -4, 0, 8},
        {0, 1, 4294967295u, 4294967296.0f},
        {0, Infinite, 0, Infinite},
        {1, -Infinite, 3, -Infinite},
        {0, 3e38f, 9, Infinite},
        {16777216, 1, 1, 16777218},
        // Single precision on the way would give less.
        {11.9000006f, 9.19999981f, 25, 247},
        {2.9000001f, 5.5999999f, 23, 135},
        {0, 1, 16777217, 16777218},
        {0, 0.99999994f, 0, 0},
    };
    for (auto const& [start, step, index, middle] : cases) {
        CVAutoModeParams params;
        params.Start = start;
        params.Step = step;
        EXPECT_EQ(instance().VirtModePosition(params, index), middle) << start << " " << step << " " << index;
    }
    CVAutoModeParams params;
    params.Step = NotANumber;
    EXPECT_TRUE(std::isnan(instance().VirtModePosition(params, 0)));
}

TEST_F(ModesTest, HiddenModesAreNotReduced) {
    EXPECT_TRUE(instance().ModeIsHidden(4));
    EXPECT_FALSE(instance().ModeIsHidden(5));
    EXPECT_FALSE(instance().ModeIsHidden(6));
    EXPECT_FALSE(instance().ModeIsHidden(-1));
    EXPECT_FALSE(instance().ModeIsHidden(Id(4, 2)));
    EXPECT_TRUE(instance().ModeIsOfType(Id(4, 2), QVModeProps::hidden));
    own.tables().ModeProperty.insert({Id(4, 2), QVModeProps(2, 1024, 0, 0)});
    EXPECT_TRUE(instance().ModeIsHidden(Id(4, 2))) << "a row of its own";
}

TEST_F(ModesTest, TypesOfModes) {
    auto const flag = [](unsigned int bits) { return static_cast<QVModeProps::modeFlag>(bits); };
    EXPECT_EQ(QVModeProps::hidden, 1024u);
    EXPECT_TRUE(instance().ModeIsOfType(4, flag(1)));
    EXPECT_TRUE(instance().ModeIsOfType(4, flag(2 | 4)));
    EXPECT_FALSE(instance().ModeIsOfType(4, flag(4)));
    EXPECT_FALSE(instance().ModeIsOfType(4, flag(0)));
    EXPECT_FALSE(instance().ModeIsOfType(5, QVModeProps::hidden));
    EXPECT_FALSE(instance().ModeIsOfType(6, flag(0xFFFFFFFF)));
    EXPECT_FALSE(instance().ModeIsOfType(-1, flag(0xFFFFFFFF)));
    EXPECT_FALSE(instance().ModeIsOfType(Id(6, 0), flag(0xFFFFFFFF)));
    EXPECT_TRUE(CQtParamInstance::ModeIsOfType(QVModeProps(0, 0x80000000, 0, 0), flag(0x80000000)));
    EXPECT_FALSE(CQtParamInstance::ModeIsOfType(QVModeProps(1024, 0, 1024, 1024), QVModeProps::hidden));
}

TEST_F(ModesTest, NamesOfModes) {
    EXPECT_STREQ(instance().ModeName(-1), L"");
    EXPECT_STREQ(instance().ModeName(4), L"Ramp");
    EXPECT_STREQ(instance().ModeName(6), L"");
    EXPECT_STREQ(instance().ModeName(Id(4, 2)), L"Third-cn\u00B7250rpm");
    EXPECT_STREQ(instance().ModeName(Id(5, 2)), L"-cn\u00B7250rpm") << "the physical mode has no name";
    EXPECT_STREQ(instance().ModeName(Id(6, 2)), L"");
    own.tables().Mode.Add(Id(4, 2), L"own name");
    EXPECT_STREQ(instance().ModeName(Id(4, 2)), L"own name");
    EXPECT_STREQ(instance().VirtModeName(Id(4, 2)), L"Third-cn\u00B7250rpm");
    own.tables().Mode.Add(-1, L"never shown");
    EXPECT_STREQ(instance().ModeName(-1), L"");
}

TEST_F(ModesTest, GeneratedNamesAreCut) {
    CQtParamDistillery::AutoModeNaming naming;
    // "Third" before and "cn", the middle dot and "250rpm" behind: 14 characters.
    for (std::size_t const length : {484u, 485u, 486u, 490u, 494u, 2000u}) {
        naming.SeparatorText = std::wstring(length, L'=');
        instance().SetAutoModeNaming(naming);
        std::wstring const whole = L"Third" + naming.SeparatorText + L"cn\u00B7250rpm";
        EXPECT_EQ(std::wstring(instance().VirtModeName(Id(4, 2))), whole);
        EXPECT_EQ(std::wstring(instance().ModeName(Id(4, 2))), whole.substr(0, 499)) << length;
    }
    instance().SetAutoModeNaming({});
    EXPECT_STREQ(instance().ModeName(Id(4, 0)), L"Third-cn\u00B750rpm") << "a shorter one leaves no rest";
}

TEST_F(ModesTest, ThreadsHaveTheirOwnBuffers) {
    wchar_t const* const mine = instance().ModeName(Id(4, 2));
    std::thread([&] { EXPECT_STREQ(instance().ModeName(Id(4, 3)), L"Third-cn\u00B7350rpm"); }).join();
    EXPECT_STREQ(mine, L"Third-cn\u00B7250rpm");
    EXPECT_EQ(instance().ModeName(Id(4, 3)), mine) << "one buffer in a thread";
}

TEST_F(ModesTest, AddingUnderTheGeneratedName) {
    EXPECT_FALSE(instance().AddVMode(-1));
    EXPECT_FALSE(instance().AddVMode(4));
    EXPECT_FALSE(instance().AddVMode(99));
    EXPECT_EQ(instance().Mode().size(), 2u);
    EXPECT_TRUE(instance().AddVMode(Id(4, 2)));
    EXPECT_STREQ(instance().Mode().Name(Id(4, 2)), L"Third-cn\u00B7250rpm");
    EXPECT_EQ(instance().Mode().Idx(L"Third-cn\u00B7250rpm"), Id(4, 2));
    own.tables().PhysMode.PurgeTable();
    EXPECT_TRUE(instance().AddVMode(Id(4, 2))) << "there already";
    EXPECT_STREQ(instance().Mode().Name(Id(4, 2)), L"Third-cn\u00B7250rpm") << "the row stays";
    EXPECT_TRUE(instance().AddVMode(Id(6, 2))) << "no physical mode";
    EXPECT_TRUE(instance().Mode().IsValidId(Id(6, 2)));
    EXPECT_STREQ(instance().Mode().Name(Id(6, 2)), L"");
    EXPECT_EQ(instance().Mode().Idx(L""), Id(6, 2));
    EXPECT_EQ(instance().Mode().size(), 4u);
}

TEST_F(ModesTest, AddingUnderAGivenName) {
    EXPECT_FALSE(instance().AddVModeName(-1, L"none"));
    EXPECT_FALSE(instance().AddVModeName(4, L"base"));
    EXPECT_EQ(instance().Mode().Idx(L"base"), -1);
    EXPECT_TRUE(instance().AddVModeName(Id(4, 2), L"given"));
    EXPECT_STREQ(instance().Mode().Name(Id(4, 2)), L"given");
    EXPECT_EQ(instance().Mode().Idx(L"given"), Id(4, 2));
    EXPECT_FALSE(instance().AddVModeName(Id(4, 2), L"again"));
    EXPECT_EQ(instance().Mode().Idx(L"again"), -1);
    EXPECT_STREQ(instance().Mode().Name(Id(4, 2)), L"given");
    EXPECT_TRUE(instance().AddVMode(Id(4, 2)));
    EXPECT_STREQ(instance().ModeName(Id(4, 2)), L"given");
    // A name that another mode has: the first one keeps the direction from name to id.
    EXPECT_TRUE(instance().AddVModeName(Id(4, 3), L"Ramp"));
    EXPECT_EQ(instance().Mode().Idx(L"Ramp"), 4);
    EXPECT_STREQ(instance().Mode().Name(Id(4, 3)), L"Ramp");
}

TEST_F(ModesTest, AddedNamesKeep199Characters) {
    CQtParamDistillery::AutoModeNaming naming;
    naming.SeparatorText = std::wstring(300, L'=');
    instance().SetAutoModeNaming(naming);
    ASSERT_TRUE(instance().AddVMode(Id(4, 2)));
    std::wstring const cut = L"Third" + std::wstring(194, L'=');
    EXPECT_EQ(std::wstring(instance().Mode().Name(Id(4, 2))), cut);
    EXPECT_EQ(instance().Mode().Idx(cut.c_str()), Id(4, 2));
    std::wstring const long_name(200, L'n');
    ASSERT_TRUE(instance().AddVModeName(Id(4, 3), long_name.c_str()));
    EXPECT_EQ(std::wstring(instance().Mode().Name(Id(4, 3))), long_name.substr(1));
    EXPECT_EQ(instance().Mode().Idx(long_name.c_str() + 1), Id(4, 3));
}

// The id of an added mode counts as the largest one.
TEST_F(ModesTest, AddedModesTakeTheRoomOfTheNextBuild) {
    ASSERT_TRUE(instance().AddVMode(Id(4, 2)));
    EXPECT_FALSE(own.Build());
    EXPECT_EQ(messages.Take(),
              (std::vector<Message>{{16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n"}}));
    EXPECT_TRUE(instance().IsVirtualMode(Id(4, 2))) << "the layout is there all the same";
}

using ModesLoadTest = LoadTest;

TEST_F(ModesLoadTest, FromALake) {
    MessageLog messages;
    FillLake(
        "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
        "<TMode>: {\n 4 \"Ramp\"\n}\n<TModeProperty>: {\n 4 2 1024 0 0\n}\n<TPhysMode>: {\n 2 \"Third\"\n}\n"
        "<TApplicationSignal>: {\n 10 \"Speed\"\n}\n<TAppSignalProperty>: {\n 10 1 \"?\" 0 7 0\n}\n"
        "<TAutoModeParam>: {\n 10 0 1000 100 1 0 1 1 1 1\n}\n<TAutoModeParamOrder>: {\n 0 10\n}\n");
    CQtParamInstance instance;
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    int const interval = 2;
    int const state = 3;
    int const id = instance.VirtModeGenerateId(4, instance.VirtModeExtension(&interval, &state));
    EXPECT_EQ(id, 4 + (15 << 25));
    EXPECT_TRUE(instance.IsValidVirtualMode(id));
    EXPECT_STREQ(instance.ModeName(id), L"Third-u\u00B72501/min");
    EXPECT_EQ(instance.AppSignalProperty().find(10)->second.get<"unit">(), L"1/min");
    EXPECT_FALSE(instance.ModeIsHidden(id));
    EXPECT_TRUE(instance.ModeIsHidden(4));
}

TEST_F(ModesLoadTest, WithoutRoomTheLoadFails) {
    MessageLog messages;
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n<TMode>: {\n 1000 \"Ramp\"\n}\n"
             "<TAutoModeParam>: {\n 10 0 1000 0.001 1 0 1 1 1 1\n}\n<TAutoModeParamOrder>: {\n 0 10\n}\n");
    CQtParamInstance instance;
    EXPECT_FALSE(instance.ReadTablesFromCandidateLake());
    EXPECT_FALSE(instance.Initialized());
    EXPECT_EQ(messages.Take(),
              (std::vector<Message>{{16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n"}}));
    EXPECT_EQ(instance.Mode().size(), 1u);
}

} // namespace
