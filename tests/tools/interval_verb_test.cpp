#include "tests/tools/command_run.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

using IntervalVerbTest = CommandTest;

} // namespace

TEST_F(IntervalVerbTest, PlacesADefinition) {
    std::string const lake = File(u8"a.lake", DriveLake);
    std::vector<std::string> const options{"--mode", "11", "--rotor", "1",      "--gear",
                                           "131",    "-s", "20",      "-d0.25", "-n100"};
    std::vector<std::string> arguments{"interval", lake, "H1-L2;H1+L2;F100;F200;O1+F50;O2+F50;H9;H1"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    auto const run = RunCommand(arguments);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(
        run.out,
        "Definition  H1-L2;H1+L2;F100;F200;O1+F50;O2+F50;H9;H1\n"
        "Mode        11 1. gear drive\n"
        "Rotor       1 Input shaft\n"
        "Gear        131 Pinion\n"
        "Base order  17\n"
        "Ratio       1/2, 0.5          turns of the gear for one of the rotor\n"
        "Speed       20 Hz             1200 turns of the rotor in a minute\n"
        "Lines       100 of them       each 0.25 from the one before\n"
        "\n"
        "Interval  From                      To                        Unit    Lower  Upper  Lower Hz  "
        "Upper Hz     Lines  Fault\n"
        "       1  1 x base order - 2 lines  1 x base order + 2 lines  orders      8      9       160  "
        "     180  32 to 36\n"
        "       2  100 Hz                    200 Hz                    Hz                               "
        "                   it begins beyond the last line\n"
        "       3  50 Hz + order 1           50 Hz + order 2           Hz                               "
        "                   it begins beyond the last line\n"
        "       4  9 x base order            1 x base order            orders                           "
        "                   it begins below 0 or behind its end\n");
    arguments[1].swap(arguments[2]); // the definition may come first
    EXPECT_EQ(RunCommand(arguments).out, run.out);
}

TEST_F(IntervalVerbTest, PlacesThatOfAParameter) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const run = RunCommand({"interval", lake, "--parameter", "8"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(
        run.out,
        "Parameter   8 Pinion track\n"
        "Definition  H1-M0.5;H1+M0.5\n"
        "Mode        11 1. gear drive  chosen among its modes\n"
        "Rotor       1 Input shaft     the speed source of its channel 2 Mix\n"
        "Gear        131 Pinion        its base order reference\n"
        "Base order  17\n"
        "Ratio       1/2, 0.5          turns of the gear for one of the rotor\n"
        "\n"
        "Interval  From                               To                                 Unit    Lower  "
        "Upper\n"
        "       1  1 x base order - 0.5 x modulation  1 x base order + 0.5 x modulation  orders   8.25 "
        "  8.75\n");
    auto const by_name = RunCommand({"interval", lake, "-p", "Pinion track", "--mode", "12", "--rpm=600"});
    EXPECT_EQ(by_name.code, 0);
    EXPECT_NE(by_name.out.find("Ratio       1/4, 0.25"), std::string::npos) << by_name.out;
    EXPECT_NE(by_name.out.find("4.125  4.375     41.25     43.75\n"), std::string::npos) << by_name.out;
    auto const lines = RunCommand({"interval", lake, "-p", "7"});
    EXPECT_EQ(lines.code, 0);
    EXPECT_NE(lines.out.find("Lines are left out: --line-distance tells how far apart they are.\n"),
              std::string::npos)
        << lines.out;
}

TEST_F(IntervalVerbTest, WithoutGear) {
    auto const run = RunCommand({"interval", File(u8"a.lake", DriveLake), "H1;F5"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "Definition  H1;F5\n"
                       "Mode        11 1. gear drive  chosen among all modes\n"
                       "Rotor       none\n"
                       "Gear        none\n"
                       "Base order  none\n"
                       "Ratio       none\n"
                       "\n"
                       "Interval  From            To    Unit  Lower  Upper  Fault\n"
                       "       1  1 x base order  5 Hz  Hz                  a harmonic, but the gear has no "
                       "base order\n");
}

TEST_F(IntervalVerbTest, GivesJson) {
    auto const run = RunCommand({"interval", File(u8"a.lake", DriveLake), "-p", "10", "--rpm", "1200", "-d",
                                 "0.5", "--format", "json"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out).dump(), nlohmann::ordered_json::parse(R"({
        "parameter": {"id": 10, "name": "Ghost"}, "definition": "O1+F50;O2+F50", "verdict": "good",
        "mode": {"id": 11, "name": "1. gear drive", "reason": "chosen among all modes"},
        "rotor": {"id": 1, "name": "Input shaft", "reason": "the speed source of the gear"},
        "gear": {"id": 1, "name": "Input shaft", "reason": "its base order reference"},
        "base_order": 1.0, "ratio": {"numerator": 1, "denominator": 1, "value": 1.0},
        "speed": 20.0, "line_distance": 0.5, "line_count": 0,
        "intervals": [{"from": "50 Hz + order 1", "to": "50 Hz + order 2", "unit": "Hz", "result": 0,
                       "fault": null, "lower": 70.0, "upper": 90.0, "lower_hz": null, "upper_hz": null,
                       "first_line": 140, "last_line": 180}]})")
                                                                 .dump());
    auto const bad =
        RunCommand({"interval", Name(u8"a.lake"), "O1;O2;O3", "-m12", "-r-1", "--format", "json"});
    EXPECT_EQ(bad.code, 1);
    EXPECT_EQ(nlohmann::ordered_json::parse(bad.out).dump(), nlohmann::ordered_json::parse(R"({
        "parameter": null, "definition": "O1;O2;O3", "verdict": "odd",
        "mode": {"id": 12, "name": "2. gear drive", "reason": null}, "rotor": null, "gear": null,
        "base_order": 0.0, "ratio": {"numerator": null, "denominator": null, "value": 0.0},
        "speed": null, "line_distance": null, "line_count": 0, "intervals": []})")
                                                                 .dump());
    auto const needs = RunCommand({"interval", Name(u8"a.lake"), "-p", "10", "--format", "json"});
    EXPECT_EQ(needs.code, 1);
    auto const interval = nlohmann::json::parse(needs.out)["intervals"][0];
    EXPECT_EQ(interval["fault"], "orders beside frequencies: needs the speed");
    EXPECT_TRUE(interval["lower"].is_null());
}

TEST_F(IntervalVerbTest, MissesAreFindings) {
    std::string const lake = File(u8"a.lake", DriveLake);
    struct Case {
        std::vector<std::string> arguments;
        std::string err;
    };
    for (Case const& sample : std::vector<Case>{
             {{"O1*2"}, "paramdb: O1*2: no intervals, the definition is bad; `paramdb order` explains it\n"},
             {{""}, "paramdb: : no intervals, the definition is empty; `paramdb order` explains it\n"},
             {{"O1;O2;O3"},
              "paramdb: O1;O2;O3: no intervals, the definition is odd; `paramdb order` explains it\n"},
             {{"-p", "13"},
              "paramdb: parameter 13 has no order definition; <TIpSpectralValue> and <TIpSpectralTrack> have "
              "them\n"},
             {{"-p", "Mash"}, "paramdb: Mash: no such parameter; did you mean 7 Mesh?\n"},
             {{"O1", "--mode", "13"},
              "paramdb: 13: no such mode; did you mean 12 2. gear drive, 11 1. gear drive or 1 Idle?\n"},
         }) {
        SCOPED_TRACE(testing::PrintToString(sample.arguments));
        std::vector<std::string> arguments{"interval", lake};
        arguments.insert(arguments.end(), sample.arguments.begin(), sample.arguments.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, sample.err);
    }
}

TEST_F(IntervalVerbTest, RefusesWrongArguments) {
    std::string const lake = File(u8"a.lake", DriveLake);
    std::string const required =
        "paramdb: files and a DEFINITION are required; for one that is in a file, add --parameter ID\n";
    EXPECT_EQ(RunCommand({"interval", lake}).err, required);
    EXPECT_EQ(RunCommand({"interval", lake, lake}).err, required);
    EXPECT_EQ(RunCommand({"interval", "O1"}).err, required);
    for (std::vector<std::string> const& more : std::vector<std::vector<std::string>>{
             {},
             {"--speed", "x"},
             {"--speed", "1", "--rpm", "1"},
             {"--lines", "-1"},
             {"--lines", "x"},
             {"--line-distance", "nan"},
             {"--mode", "x"},
             {"--format", "csv"},
             {"--lang", "de"},
         }) {
        SCOPED_TRACE(testing::PrintToString(more));
        std::vector<std::string> arguments{"interval", lake};
        if (!more.empty())
            arguments.emplace_back("O1");
        arguments.insert(arguments.end(), more.begin(), more.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err, "");
    }
    EXPECT_EQ(RunCommand({"interval", Name(u8"no.lake"), "O1"}).code, 2);
    EXPECT_EQ(RunCommand({"interval", File(u8"old.lake", RefusedLake), "O1"}).code, 2);
}
