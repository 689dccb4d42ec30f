#include <paramdb/query/trigger_store.h>

#include "tests/tools/command_run.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

using TriggerVerbTest = CommandTest;

std::string const FieldOfTwo =
    "Trigger 2 Speed and torque\n"
    "\n"
    "Mode              Dimension  Kind            Start  Stop  Step  Cells  Direction\n"
    "11 1. gear drive          1  2 closed above      0   100    10     10  raising\n"
    "                          2  1 fixed           -10    10    20      1  raising\n";

} // namespace

TEST_F(TriggerVerbTest, ShowsTheField) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const run = RunCommand({"trigger", lake, "2"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, FieldOfTwo);
    EXPECT_EQ(RunCommand({"trigger", lake, "Speed and torque"}).out, FieldOfTwo);
    EXPECT_EQ(RunCommand({"trigger", "2", lake, "--mode", "11"}).out, FieldOfTwo);
    EXPECT_EQ(RunCommand({"trigger", lake, "Speed"}).out,
              "Trigger 1 Speed\n"
              "\n"
              "Mode              Dimension  Kind            Start  Stop  Step  Cells  Direction\n"
              "11 1. gear drive          1  2 closed above      0   100    10     10  raising\n"
              "12 2. gear drive          1  3 closed below    100     0    10     10  falling\n");
}

TEST_F(TriggerVerbTest, FindsTheCellOfAPosition) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const run = RunCommand({"trigger", lake, "1", "-p", "10.5"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.substr(run.out.find("\n\n", 20) + 2),
              "Mode              Cell number  Dimension  Position    Cell  Boundary\n"
              "11 1. gear drive            1          1      10.5       1        20\n"
              "12 2. gear drive            1          1      10.5       1        10\n");
    struct Case {
        std::vector<std::string> arguments;
        int code;
        std::string lines;
    };
    std::string const head = "Mode              Cell number  Dimension  Position    Cell  Boundary\n";
    for (Case const& sample : std::vector<Case>{
             {{"2", "-p", "10,0"},
              0,
              head + "11 1. gear drive            0          1        10       0        10\n"
                     "                                       2         0       0\n"},
             {{"2", "-p", "25"},
              0,
              head + "11 1. gear drive            2          1        25       2        30\n"},
             {{"2", "-p", ",0"}, 0, head + "11 1. gear drive            0          2         0       0\n"},
             {{"1", "-m11", "-p", "105"},
              0,
              head +
                  "11 1. gear drive           10          1       105      10       110  not in the field\n"},
             {{"1", "-m11", "--position=-15", "--clamp"},
              0,
              head + "11 1. gear drive            0          1       -15       0        10\n"},
             {{"1", "-m11", "--position=-15"},
              1,
              head + "11 1. gear drive         none          1       -15    none            no cell\n"},
             {{"2", "-p", "15,-35"},
              1,
              head + "11 1. gear drive         none          1        15       1        20\n"
                     "                                       2       -35    none            no cell\n"},
         }) {
        SCOPED_TRACE(testing::PrintToString(sample.arguments));
        std::vector<std::string> arguments{"trigger", lake};
        arguments.insert(arguments.end(), sample.arguments.begin(), sample.arguments.end());
        auto const asked = RunCommand(arguments);
        EXPECT_EQ(asked.code, sample.code);
        EXPECT_EQ(asked.err, sample.code == 0 ? "" : "paramdb: the position has no cell\n");
        EXPECT_EQ(asked.out.substr(std::min(asked.out.find("\n\n", 30) + 2, asked.out.size())), sample.lines);
    }
    // A dimension that the trigger does not have.
    auto const other = RunCommand({"trigger", lake, "1", "-p", ",,,5"});
    EXPECT_EQ(other.code, 1);
    EXPECT_EQ(other.err, "paramdb: the position has no cell\n");
}

TEST_F(TriggerVerbTest, FindsThePositionOfACell) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const run = RunCommand({"trigger", lake, "1", "--cell", "3"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.substr(run.out.find("\n\n", 20) + 2),
              "Mode              Cell number  Dimension  Position          Cell  Boundary\n"
              "11 1. gear drive            3          1        35  middle     3        40\n"
              "12 2. gear drive            3          1        35  middle     3        30\n");
    auto const extent = RunCommand({"trigger", lake, "2", "--cell=-65526", "--extent", "2"});
    EXPECT_EQ(extent.code, 0);
    EXPECT_EQ(
        extent.out.substr(extent.out.find("\n\n", 30) + 2),
        "Mode              Cell number  Dimension  Position            Cell  Boundary\n"
        "11 1. gear drive       -65526          1       120  far edge    10       110  not in the "
        "field\n"
        "                                       2       -20  middle      -1            not in the field\n");
}

TEST_F(TriggerVerbTest, GivesJson) {
    std::string const lake = File(u8"a.lake", DriveLake);
    auto const run = RunCommand({"trigger", lake, "2", "--position", "15,0", "--format", "json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out).dump(), nlohmann::ordered_json::parse(R"({
        "trigger": {"id": 2, "name": "Speed and torque"},
        "modes": [{"mode": {"id": 11, "name": "1. gear drive"}, "varying": 1,
            "dimensions": [
                {"dimension": 1, "kind": 2, "start": 0.0, "stop": 100.0, "step": 10.0, "cells": 10,
                 "raising": true},
                {"dimension": 2, "kind": 1, "start": -10.0, "stop": 10.0, "step": 20.0, "cells": 1,
                 "raising": true}],
            "cell_number": 1,
            "places": [{"dimension": 1, "position": 15.0, "cell": 1, "boundary": 20.0, "in_field": true},
                       {"dimension": 2, "position": 0.0, "cell": 0, "boundary": null, "in_field": true}]}]})")
                                                                 .dump());
    auto const plain = nlohmann::json::parse(RunCommand({"trigger", lake, "1", "--format=json"}).out);
    EXPECT_TRUE(plain["modes"][0]["places"].is_null());
    EXPECT_EQ(plain["modes"][1]["dimensions"][0]["start"], 100.0);
    auto const none = RunCommand({"trigger", lake, "3", "--format=json"});
    EXPECT_EQ(none.code, 1);
    EXPECT_TRUE(nlohmann::json::parse(none.out)["modes"].empty());
}

TEST_F(TriggerVerbTest, MissesAreFindings) {
    std::string const lake = File(u8"a.lake", DriveLake);
    struct Case {
        std::vector<std::string> arguments;
        std::string err;
    };
    for (Case const& sample : std::vector<Case>{
             {{"3"}, "paramdb: trigger 3 has no dimensions\n"},
             {{"2", "-m", "12"}, "paramdb: trigger 2 has no dimensions in mode 12\n"},
             {{"spead"}, "paramdb: spead: no such trigger; did you mean 1 Speed?\n"},
             {{"4"}, "paramdb: 4: no such trigger; did you mean 3 Nowhere, 2 Speed and torque or 1 Speed?\n"},
             {{"1", "--mode", "0"},
              "paramdb: 0: no such mode; did you mean 1 Idle, 11 1. gear drive or 12 2. gear drive?\n"},
         }) {
        SCOPED_TRACE(testing::PrintToString(sample.arguments));
        std::vector<std::string> arguments{"trigger", lake};
        arguments.insert(arguments.end(), sample.arguments.begin(), sample.arguments.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, sample.err);
    }
}

TEST_F(TriggerVerbTest, ADimensionThatThereIsNot) {
    std::string lake = DriveLake;
    lake.insert(lake.find("12 1 1 3 10"), "11 9 5 2 10 0 100 10 0 0 0 0 0\n");
    auto const run = RunCommand({"trigger", File(u8"a.lake", lake), "9", "-p", "5"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "paramdb: the position has no cell\n"
                       "paramdb: a dimension that is none of 1 to 4 makes the field of that mode unusable\n");
    EXPECT_EQ(run.out, "Trigger 9\n"
                       "\n"
                       "Mode              Dimension  Kind            Start  Stop  Step  Cells  Direction\n"
                       "11 1. gear drive          5  2 closed above      0   100    10     10  raising    no "
                       "such dimension\n");
}

TEST_F(TriggerVerbTest, RefusesWrongArguments) {
    std::string const lake = File(u8"a.lake", DriveLake);
    EXPECT_EQ(RunCommand({"trigger", lake}).err, "paramdb: a FILE is required before the TRIGGER\n");
    for (std::vector<std::string> const& more : std::vector<std::vector<std::string>>{
             {"--position", ""},
             {"--position", ",,"},
             {"--position", "x"},
             {"--position", "1;2"},
             {"--position", "1,2,3,4,5"},
             {"--position", "1,2,3,4,"},
             {"--position", "nan"},
             {"--position", "1", "--cell", "1"},
             {"--cell", "x"},
             {"--cell", "1x"},
             {"--cell", "9223372036854775808"},
             {"--cell", "99999999999999999999"},
             {"--clamp"},
             {"--extent", "1"},
             {"--cell", "1", "--extent", "x"},
             {"--mode", "x"},
         }) {
        SCOPED_TRACE(testing::PrintToString(more));
        std::vector<std::string> arguments{"trigger", lake, "1"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err, "");
    }
    EXPECT_EQ(RunCommand({"trigger", File(u8"old.lake", RefusedLake), "1"}).code, 2);
}

// What is shown is what a host gets.
TEST_F(TriggerVerbTest, AgreesWithTheStore) {
    std::string const lake = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";
    CQtParamInstance const parameters;
    CTriggerStore const store(parameters);
    std::size_t count = 0;
    for (int trigger = 1; trigger <= 4; ++trigger) {
        auto const run = RunCommand(
            {"trigger", lake, std::to_string(trigger), "--position", "1925,145", "--format", "json"});
        auto const document = nlohmann::json::parse(run.out);
        for (auto const& mode : document["modes"]) {
            int const id = mode["mode"]["id"];
            SCOPED_TRACE(testing::Message() << trigger << " in " << id);
            CTriggerStore::CIntervals field;
            ASSERT_TRUE(store.field(id, trigger, field));
            EXPECT_EQ(field.dimensions.count(), mode["dimensions"].size());
            CTriggerStore::CDimensions position;
            position.positions = {1925, 145, 0, 0};
            position.dimensions = 3;
            std::int64_t number = 0;
            bool const has_cell = CTriggerStore::cell(field, position, number, false);
            EXPECT_EQ(mode["cell_number"], has_cell ? nlohmann::json(number) : nlohmann::json(nullptr));
            int const varying = store.dimension(id, trigger);
            EXPECT_EQ(mode["varying"], varying == -1 ? nlohmann::json(nullptr) : nlohmann::json(varying + 1));
            count += has_cell ? 1 : 0;
        }
    }
    EXPECT_GT(count, 20U);
}
