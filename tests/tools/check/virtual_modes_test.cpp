#include <paramdb/query/param_instance.h>

#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

#include <random>

namespace {

class VirtualModesTest : public CheckTest {};

std::string Signals() {
    return TableText("TApplicationSignal", {"10 Speed", "11 Travel", "12 Torque"}) +
           TableText("TAppSignalProperty", {"10 3 rpm 0 7 0", "11 3 mm 0 7 0", "12 3 Nm 0 8 0"});
}
constexpr int SignalLines = 10;

// The rest of a row behind start, stop and step.
std::string Rest(bool has_state = true) {
    return std::string(" 1 0 1 ") + (has_state ? "1" : "0") + " 1 1";
}

} // namespace

TEST_F(VirtualModesTest, PhysicalModes) {
    std::string const modes = TableText("TMode", {"1 a", "2 b", "3 c"});
    EXPECT_EQ(RuleFindings(modes), Texts());
    EXPECT_EQ(RuleFindings(modes + TableText("TModeProperty", {"1 -1 0 0 0", "2 0 0 0 0", "3 7 0 0 0"})),
              Texts());
    EXPECT_EQ(
        RuleFindings(modes + TableText("TModeProperty", {"2 0 0 0 0"})),
        (Texts{"2:1 P420 the mode has no row in <TModeProperty>, so no physical mode and no rotor ratios",
               "4:1 P420 the mode has no row in <TModeProperty>, so no physical mode and no rotor ratios"}));
    EXPECT_EQ(
        RuleFindings(TableText("TMode", {"1 a"}) + TableText("TModeProperty", {})),
        (Texts{"2:1 P420 the mode has no row in <TModeProperty>, so no physical mode and no rotor ratios"}));
}

TEST_F(VirtualModesTest, Grids) {
    struct Case {
        std::vector<std::string> orders;
        std::vector<std::string> params;
        Texts findings; // lines counted behind the signals
    };
    std::string const speed = "10 0 6000 500" + Rest();
    std::string const torque = "12 -100 250 50" + Rest();
    std::string const no_grid = ", so the load makes no grid of virtual modes";
    Case const cases[] = {
        {{}, {}, {}},
        {{"0 10", "1 12"}, {speed, torque}, {}},
        {{"0 12", "1 10"}, {speed, torque}, {}},
        // The same signals in both.
        {{"0 10", "1 11"}, {speed, torque}, {"3:3 P421 signal 11 has no row in <TAutoModeParam>" + no_grid}},
        {{"0 10", "1 -1"}, {speed, torque}, {"3:3 P421 signal -1 has no row in <TAutoModeParam>" + no_grid}},
        {{"0 10"}, {speed, torque}, {"6:1 P421 signal 12 has no row in <TAutoModeParamOrder>" + no_grid}},
        {{"0 10", "1 12", "2 10"},
         {speed, torque},
         {"4:3 P421 signal 10 is in the grid already, so the load makes none"}},
        {{"0 10"}, {}, {"2:3 P421 signal 10 has no row in <TAutoModeParam>" + no_grid}},
        // The load takes this for a grid.
        {{"0 10", "1 10"}, {speed, torque}, {}},
        {{"1 10", "2 12"},
         {speed, torque},
         {"2:1 P422 the order key 1 is not the place of its row in the grid, which is 0",
          "3:1 P422 the order key 2 is not the place of its row in the grid, which is 1"}},
        {{"-1 10", "1 12"},
         {speed, torque},
         {"2:1 P422 the order key -1 is not the place of its row in the grid, which is 0"}},
        // Ranges.
        {{"0 10"}, {"10 5 5 1" + Rest()}, {"5:6 P423 the range from 5 to 5 in steps of 1 has no intervals"}},
        {{"0 10"}, {"10 0 5 0" + Rest()}, {"5:8 P423 the range from 0 to 5 in steps of 0 has no intervals"}},
        {{"0 10"},
         {"10 0 5 -1" + Rest()},
         {"5:8 P423 the range from 0 to 5 in steps of -1 has no intervals"}},
        // Room for the number of the interval plus 1.
        {{"0 10"}, {"10 0 8 1" + Rest()}, {}},
        {{"0 10"}, {"10 0 7 1" + Rest()}, {}},
        {{"0 10"},
         {"10 0 7.5 1" + Rest()},
         {"5:10 P424 the parameter has 8 intervals, but only 3 bits in a virtual mode, which hold 7: the "
          "last one runs "
          "over into "
          "the next field"}},
        {{"0 10"},
         {"10 0 8192 1" + Rest()},
         {"5:11 P424 the parameter has 8 192 intervals, but only 13 bits in a virtual mode, which hold 8 "
          "191: the last one "
          "runs "
          "over into the next field"}},
        {{"0 10"},
         {"10 0 1 1" + Rest()},
         {"5:8 P424 the parameter has 1 interval, but only 0 bits in a virtual mode, which hold none: the "
          "last one runs over "
          "into the "
          "next field"}},
    };
    for (Case const& test : cases) {
        Texts expected;
        for (std::string const& finding : test.findings) {
            std::size_t const colon = finding.find(':');
            expected.push_back(std::to_string(SignalLines + std::stoi(finding)) + finding.substr(colon));
        }
        EXPECT_EQ(RuleFindings(Signals() + TableText("TAutoModeParamOrder", test.orders) +
                               TableText("TAutoModeParam", test.params)),
                  expected);
    }
    // A file with one of the tables alone is for merging.
    EXPECT_EQ(RuleFindings(Signals() + TableText("TAutoModeParam", {speed})), Texts());
    EXPECT_EQ(RuleFindings(Signals() + TableText("TAutoModeParamOrder", {"0 10"})), Texts());
}

TEST_F(VirtualModesTest, Bits) {
    struct Case {
        int mode;
        std::string range; // of the one parameter: 2 bits for the state besides
        std::string finding;
        std::string hint;
    };
    Case const cases[] = {
        {16383, "0 30000 1", " P426 no bit is left for a finer grid or for modes with higher ids",
         "the grid takes 17 of 31 bits, modes up to 16383 take 14, and 0 are left"},
        {8191, "0 30000 1", "", ""},
        // A mode that the load lets pass, though its top bit is one of the grid.
        {16384, "0 30000 1",
         " P425 the ids of modes and the grid of virtual modes need more bits than there are",
         "the grid takes 17 of 31 bits, modes up to 16384 take 15, and 1 too many"},
        {16385, "0 30000 1",
         " P425 the ids of modes and the grid of virtual modes need more bits than there are",
         "the grid takes 17 of 31 bits, modes up to 16385 take 15, and 1 too many"},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.mode);
        std::string const text = Signals() +
                                 TableText("TMode", {"1 Idle", std::to_string(test.mode) + " Last"}) +
                                 TableText("TAutoModeParamOrder", {"0 10"}) +
                                 TableText("TAutoModeParam", {"10 " + test.range + Rest()});
        EXPECT_EQ(RuleFindings(text), test.finding.empty() ? Texts() : Texts{"18:1" + test.finding});
        auto const run = RunCommand({"check", File(u8"bits.lake", LakeVersion + text)});
        EXPECT_EQ(run.out.find("  hint: " + test.hint + '\n') != std::string::npos, !test.hint.empty())
            << run.out;
        EXPECT_EQ(run.out.find("the load reports"), std::string::npos) << run.out;
    }
}

// An interval has room if the id of a virtual mode gives it back.
TEST_F(VirtualModesTest, RandomRanges) {
    int without_room = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        int const quarters = static_cast<int>(random() % 140U) + 1;
        std::string const stop = std::to_string(quarters / 4) + "." + std::to_string(quarters % 4 * 25);
        Texts const found = RuleFindings(
            Signals() + TableText("TAutoModeParamOrder", {"0 10", "1 12"}) +
            TableText("TAutoModeParam", {"10 0 100 10" + Rest(), "12 0 " + stop + " 1" + Rest(false)}));
        CQtParamInstance const instance;
        int const count = instance.VirtModeIntervals(instance.AutoModeParams().at(1));
        int const intervals[] = {4, count - 1};
        int const mode = instance.VirtModeGenerateId(1, instance.VirtModeExtension(intervals, nullptr));
        int const later = instance.AutoModeParams().at(1).IntervalBits;
        // The state of the first parameter is in the two lowest bits of the extension.
        int const field = instance.VirtModeExtension(mode) >> 2 & ((1 << later) - 1);
        EXPECT_EQ(found.size(), field == count ? 0U : 1U) << stop;
        without_room += field == count ? 0 : 1;
    }
    EXPECT_GT(without_room, 5);
}
