#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

std::string const ModesLake = "<DbDesign.CacheVersion>: 216\n"
                              "<DbDesign.CacheMinorVersion>: 1\n"
                              "<TMode>: {\n"
                              "1 \"Idle\"\n"
                              "11 \"1. gear drive\"\n"
                              "100 \"Calibration\"\n"
                              "}\n"
                              "<TPhysMode>: {\n"
                              "0 \"Neutral\"\n"
                              "}\n"
                              "<TModeProperty>: {\n"
                              "1 0 4 0 0\n"
                              "11 7 1 0 0\n"
                              "100 -1 1024 0 0\n"
                              "}\n"
                              "<TApplicationSignal>: {\n"
                              "10 \"Input speed\"\n"
                              "12 \"Torque\"\n"
                              "}\n"
                              "<TAppSignalProperty>: {\n"
                              "10 1 \"\" 0 0 0\n"
                              "12 1 \"\" 0 0 0\n"
                              "}\n"
                              "<TAutoModeParamOrder>: {\n"
                              "0 10\n"
                              "3 12\n"
                              "}\n"
                              "<TAutoModeParam>: {\n"
                              "10 0 6000 500 1 0 1 1 1 1\n"
                              "12 -96 8096 1 1 0 1 0 1 1\n"
                              "}\n";

using ModesVerbTest = CommandTest;

} // namespace

TEST_F(ModesVerbTest, ListsModesAndLayout) {
    auto const run = RunCommand({"modes", File(u8"a.lake", ModesLake)});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Mode  Name           Physical mode  Flags\n"
                       "   1  Idle           0 Neutral          4\n"
                       "  11  1. gear drive  7                  1\n"
                       " 100  Calibration                    1024  hidden\n"
                       "\n"
                       "Virtual modes\n"
                       "Extension bits  19  2 of them for states\n"
                       "Base mode bits  12  7 used by ids up to 100, 5 left\n"
                       "Extension mask  0x7FFFF000\n"
                       "\n"
                       "Key  Signal          Start  Stop  Step  Intervals  Bits  State\n"
                       "  0  10 Input speed      0  6000   500         12     4  yes\n"
                       "  3  12 Torque         -96  8096     1       8192    13  no     "
                       "no room for the last interval\n");
}

TEST_F(ModesVerbTest, GivesJson) {
    auto const run = RunCommand({"modes", File(u8"a.lake", ModesLake), "--format", "json"});
    EXPECT_EQ(run.code, 0);
    auto const document = nlohmann::ordered_json::parse(run.out);
    EXPECT_EQ(document["modes"].dump(), nlohmann::ordered_json::parse(R"([
        {"id": 1, "name": "Idle", "physical_mode": {"id": 0, "name": "Neutral"}, "flags": 4,
         "hidden": false, "virtual": false},
        {"id": 11, "name": "1. gear drive", "physical_mode": {"id": 7, "name": null}, "flags": 1,
         "hidden": false, "virtual": false},
        {"id": 100, "name": "Calibration", "physical_mode": null, "flags": 1024, "hidden": true,
         "virtual": false}])")
                                            .dump());
    EXPECT_EQ(document["layout"].dump(), nlohmann::ordered_json::parse(R"({
        "extension_bits": 19, "state_bits": 2, "mask": 2147479552,
        "base_bits": {"all": 12, "used": 7, "left": 5},
        "parameters": [
            {"key": 0, "signal": {"id": 10, "name": "Input speed"}, "start": 0.0, "stop": 6000.0,
             "step": 500.0, "intervals": 12, "interval_bits": 4, "state": true, "fits": true},
            {"key": 3, "signal": {"id": 12, "name": "Torque"}, "start": -96.0, "stop": 8096.0,
             "step": 1.0, "intervals": 8192, "interval_bits": 13, "state": false, "fits": false}]})")
                                             .dump());
}

TEST_F(ModesVerbTest, AModeWithoutPropertiesHasNoFlags) {
    auto const run = RunCommand({"modes", File(u8"a.lake", SampleLake), "--format", "json"});
    EXPECT_EQ(run.code, 0);
    auto const document = nlohmann::json::parse(run.out);
    ASSERT_EQ(document["modes"].size(), 4U);
    EXPECT_EQ(document["modes"][2]["name"], "Pr\xC3\xBC"
                                            "fen");
    EXPECT_TRUE(document["modes"][2]["flags"].is_null());
    EXPECT_EQ(document["layout"]["extension_bits"], 0);
    EXPECT_TRUE(document["layout"]["parameters"].empty());
}

TEST_F(ModesVerbTest, FindingsAndRefusals) {
    EXPECT_EQ(RunCommand({"modes", File(u8"faulty.lake", FaultyLake)}).code, 1);
    auto const refused = RunCommand({"modes", File(u8"old.lake", RefusedLake)});
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(refused.out, "");
}

TEST_F(ModesVerbTest, TellsWhenTheIdsDoNotFit) {
    std::string lake = ModesLake;
    lake.replace(lake.find("100 \"Cal"), 3, "99999999");
    auto const run = RunCommand({"modes", File(u8"a.lake", lake)});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "CQtModeInfo: Not enough bits to encode virtual modes\n");
    EXPECT_NE(run.out.find("27 used by ids up to 99999999, -15 left\n"), std::string::npos) << run.out;
}
