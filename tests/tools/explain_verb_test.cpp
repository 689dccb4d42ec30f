#include <paramdb/platform/core/lib_mgr.h>

#include "tests/tools/command_run.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"
#include "tools/parameter_report.h"

#include <nlohmann/json.hpp>

namespace {

using ExplainVerbTest = CommandTest;

} // namespace

TEST_F(ExplainVerbTest, ExplainsAParameter) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const run = RunCommand({"explain", lake, "8", "--lang", "en", "--rpm", "1200"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(
        run.out,
        "Parameter   8 Pinion track\n"
        "Instrument  2001 Spectral track\n"
        "Yields      a track\n"
        "\n"
        "Settings\n"
        "  Trigger: Speed and torque (#2)\n"
        "  Base order ref.: Pinion (#131)\n"
        "  Interpretation: Maximum (#6)\n"
        "  Definition: H1-M0.5;H1+M0.5\n"
        "  Source instrument: (Instr. 3500) (#3500)\n"
        "  Source parameter:  (#1006)\n"
        "\n"
        "Trigger 2 Speed and torque\n"
        "\n"
        "Mode              Dimension  Kind            Start  Stop  Step  Cells  Direction\n"
        "11 1. gear drive          1  2 closed above      0   100    10     10  raising\n"
        "                          2  1 fixed           -10    10    20      1  raising\n"
        "\n"
        "Definition  H1-M0.5;H1+M0.5\n"
        "Mode        11 1. gear drive  chosen among its modes\n"
        "Rotor       1 Input shaft     the speed source of its channel 2 Mix\n"
        "Gear        131 Pinion        its base order reference\n"
        "Base order  17\n"
        "Ratio       1/2, 0.5          turns of the gear for one of the rotor\n"
        "Speed       20 Hz             1200 turns of the rotor in a minute\n"
        "\n"
        "Interval  From                               To                                 Unit    Lower  "
        "Upper  Lower Hz  Upper Hz\n"
        "       1  1 x base order - 0.5 x modulation  1 x base order + 0.5 x modulation  orders   8.25   "
        "8.75       165       175\n"
        "\n"
        "Rotor           Speed source   Kind       Signal          Fraction  Ratio\n"
        "2 Output shaft  1 Input shaft  reference  10 Input speed      -1/2  -0.5\n"
        "1 Input shaft   1 Input shaft  source     10 Input speed       1/1  1\n"
        "\n"
        "Polygon  Judge             Source parameter  Keys\n"
        "5 Level  15 Above polygon  8 Pinion track       1\n"
        "6        15 Above polygon  8 Pinion track       1  has no points\n");
    EXPECT_EQ(RunCommand({"explain", "Pinion track", lake, "--lang=en", "-s20"}).out, run.out);
}

TEST_F(ExplainVerbTest, ExplainsWhatHasLittle) {
    std::string const lake = File(u8"a.lake", DriveLake);
    EXPECT_EQ(RunCommand({"explain", lake, "16"}).out, "Parameter   16 Unnamed class\n"
                                                       "Instrument  1006\n"
                                                       "Yields      a single value\n"
                                                       "Settings    none that are shown\n");
    // The settings of this class cannot be found.
    EXPECT_EQ(RunCommand({"explain", lake, "12"}).out,
              "Parameter   12 Cepstrum\n"
              "Instrument  2900 Cepstrum\n"
              "Yields      a spectrum\n"
              "Settings    cannot be shown: invalid map<K, T> key\n"
              "\n"
              "Trigger 3 Nowhere has no dimensions in mode 11 1. gear drive\n");
    auto const band = RunCommand({"explain", lake, "9", "--lang", "en"});
    EXPECT_EQ(band.code, 0);
    EXPECT_EQ(band.out.substr(band.out.find("Definition  ")),
              "Definition  F100;F200\n"
              "Mode        11 1. gear drive  chosen among its modes\n"
              "Rotor       none\n"
              "Gear        none\n"
              "Base order  none\n"
              "Ratio       none\n"
              "\n"
              "Interval  From    To      Unit  Lower  Upper\n"
              "       1  100 Hz  200 Hz  Hz      100    200\n");
}

TEST_F(ExplainVerbTest, SpeaksTheLanguageAskedFor) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const german = RunCommand({"explain", lake, "13", "--lang", "de"});
    EXPECT_EQ(german.code, 0);
    EXPECT_NE(german.out.find("  Trigger: Speed (#1)\n  Berechnung: Mittelwert (#3)\n"), std::string::npos)
        << german.out;
    CLibMgr::SetLanguage(CLibMgr::Language::german); // without the option that of the process
    EXPECT_EQ(RunCommand({"explain", lake, "13"}).out, german.out);
    CLibMgr::ResetLanguage();
    EXPECT_NE(RunCommand({"explain", lake, "13", "--lang", "en"})
                  .out.find("  Calculation: Average (#3)\n  Avg. const.: 0.500000\n"),
              std::string::npos);
    CLibMgr::ResetLanguage();
    EXPECT_EQ(RunCommand({"explain", lake, "13", "--lang", "xx"}).code, 2);
}

TEST_F(ExplainVerbTest, GivesJson) {
    auto const run =
        RunCommand({"explain", File(u8"a.lake", DriveLake), "7", "--lang=en", "-d0.5", "--format", "json"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out).dump(), nlohmann::ordered_json::parse(R"json({
        "parameter": {"id": 7, "name": "Mesh"}, "instrument": {"id": 1001, "name": "Spectral value"},
        "result_type": 1, "yields": "a single value",
        "settings": ["Trigger: Speed (#1)", "Base order ref.: Driving wheel (#90)",
                     "Interpretation: Maximum (#6)", "Definition: H1-L2;H1+L2",
                     "Source instrument: (Instr. 2500) (#2500)", "Source parameter:  (#1001)"],
        "mode": {"id": 11, "name": "1. gear drive", "reason": "chosen among its modes"},
        "trigger": {"id": 1, "name": "Speed"},
        "dimensions": [{"dimension": 1, "kind": 2, "start": 0.0, "stop": 100.0, "step": 10.0, "cells": 10,
                        "raising": true}],
        "intervals": {"parameter": {"id": 7, "name": "Mesh"}, "definition": "H1-L2;H1+L2",
            "verdict": "good",
            "mode": {"id": 11, "name": "1. gear drive", "reason": "chosen among its modes"},
            "rotor": {"id": 1, "name": "Input shaft", "reason": "that of its channel 1 Sync"},
            "gear": {"id": 90, "name": "Driving wheel", "reason": "its base order reference"},
            "base_order": 13.0, "ratio": {"numerator": 1, "denominator": 1, "value": 1.0},
            "speed": null, "line_distance": 0.5, "line_count": 0,
            "intervals": [{"from": "1 x base order - 2 lines", "to": "1 x base order + 2 lines",
                           "unit": "orders", "result": 0, "fault": null, "lower": 12.0, "upper": 14.0,
                           "lower_hz": null, "upper_hz": null, "first_line": 24, "last_line": 28}]},
        "rotors": [{"rotor": {"id": 1, "name": "Input shaft"},
                    "speed_source": {"id": 1, "name": "Input shaft"}, "kind": "source",
                    "signal": {"id": 10, "name": "Input speed"},
                    "ratio": {"numerator": 1, "denominator": 1, "value": 1.0}}],
        "polygons": []})json")
                                                                 .dump());
    auto const cepstrum =
        nlohmann::json::parse(RunCommand({"explain", Name(u8"a.lake"), "12", "--format=json"}).out);
    EXPECT_TRUE(cepstrum["settings"].is_null());
    EXPECT_TRUE(cepstrum["intervals"].is_null());
    EXPECT_TRUE(cepstrum["dimensions"].empty());
    EXPECT_TRUE(cepstrum["rotors"].empty());
}

TEST_F(ExplainVerbTest, ABadDefinitionIsTold) {
    std::string lake = DriveLake;
    lake.replace(lake.find("H1-L2;H1+L2"), 11, "H1*2;H1");
    auto const run = RunCommand({"explain", File(u8"a.lake", lake), "7", "--lang=en"});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("Syntax error in order definition 'H1*2;H1'"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("\nNo intervals: the definition is bad; `paramdb order` explains it\n"),
              std::string::npos)
        << run.out;
}

TEST_F(ExplainVerbTest, MissesAreFindings) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const none = RunCommand({"explain", lake, "11", "--format", "json"});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, "paramdb: 11: no such parameter; did you mean 10 Ghost, 12 Cepstrum or 9 Band?\n");
    auto const several = RunCommand({"explain", lake, "Level"});
    EXPECT_EQ(several.code, 1);
    EXPECT_EQ(several.out, "");
    EXPECT_EQ(several.err.substr(0, several.err.find(';')), "paramdb: Level: 2 parameters have that name");
    EXPECT_EQ(RunCommand({"explain", lake, "Level", "--instrument", "1004"}).out.substr(0, 20),
              "Parameter   14 Level");
    EXPECT_EQ(RunCommand({"explain", lake, "7", "-m", "99"}).code, 1);
    EXPECT_EQ(RunCommand({"explain", lake}).err, "paramdb: a FILE is required before the PARAMETER\n");
    EXPECT_EQ(RunCommand({"explain", lake, "7", "--instrument", "x"}).code, 2);
    EXPECT_EQ(RunCommand({"explain", File(u8"old.lake", RefusedLake), "7"}).code, 2);
}

TEST_F(ExplainVerbTest, WordsForResults) {
    using paramdb::tools::ResultTypeText;
    EXPECT_STREQ(ResultTypeText(-1), "nothing");
    EXPECT_STREQ(ResultTypeText(0), "not known, the number is no instrument's");
    EXPECT_STREQ(ResultTypeText(3), "a spectrum");
    EXPECT_STREQ(ResultTypeText(4), "data of its own kind");
    EXPECT_STREQ(ResultTypeText(5), "a track of the second kind");
    EXPECT_STREQ(ResultTypeText(6), "data in two dimensions");
    EXPECT_STREQ(ResultTypeText(7), "not known, the number is no instrument's");
}

// Each of the parameters of a whole bench.
TEST_F(ExplainVerbTest, ExplainsTheExample) {
    std::string const lake = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";
    ASSERT_EQ(RunCommand({"explain", lake, "1025", "--rpm", "3000", "-d", "0.5"}).code, 0);
    CQtParamInstance const parameters;
    std::size_t bands = 0;
    for (auto const& [key, row] : parameters.InstrumentParam()) {
        SCOPED_TRACE(key[0]);
        auto const report = paramdb::tools::ExplainParameter(parameters, key[0], {});
        EXPECT_EQ(report.parameter.id, key[0]);
        EXPECT_GT(report.result_type, 0);
        EXPECT_EQ(report.settings_fault.empty(), row.get<"instrument">() != 2900);
        if (!report.intervals)
            continue;
        for (auto const& band : report.intervals->bands) {
            EXPECT_TRUE(band.fault.empty() || band.fault == "orders beside frequencies: needs the speed");
            ++bands;
        }
    }
    EXPECT_GT(bands, 70U);
}
