#include <paramdb/query/param_instance.h>

#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace {

std::string const RotorsLake = "<DbDesign.CacheVersion>: 216\n"
                               "<DbDesign.CacheMinorVersion>: 1\n"
                               "<TMode>: {\n"
                               "3 \"Shifting\"\n"
                               "11 \"1. gear drive\"\n"
                               "}\n"
                               "<TModeProperty>: {\n"
                               "3 -1 0 0 0\n"
                               "11 1 0 0 0\n"
                               "}\n"
                               "<TPhysMode>: {\n"
                               "1 \"Gear 1\"\n"
                               "}\n"
                               "<TLocation>: {\n"
                               "1 \"Input shaft\"\n"
                               "2 \"Output shaft\"\n"
                               "90 \"Driving wheel\"\n"
                               "101 \"Wheel 1\"\n"
                               "}\n"
                               "<TApplicationSignal>: {\n"
                               "10 \"Input speed\"\n"
                               "}\n"
                               "<TAppSignalProperty>: {\n"
                               "10 1 \"\" 0 0 0\n"
                               "}\n"
                               "<TRotorSpeed>: {\n"
                               "1 1 1.0 1 1\n"
                               "1 2 0.5 -2 -4\n"
                               "1 4 0.3 1 0\n"
                               "2 1 1.0 1 1\n"
                               "}\n"
                               "<TSpeedSource>: {\n"
                               "1 10\n"
                               "}\n"
                               "<TRotorSpeedSource>: {\n"
                               "1 1 1\n"
                               "1 4 -1\n"
                               "}\n"
                               "<TRotorSpeedReference>: {\n"
                               "1 1 7\n"
                               "1 2 7\n"
                               "1 4 7\n"
                               "}\n"
                               "<TOrderSource2Rotor>: {\n"
                               "90 1 1\n"
                               "101 1 1\n"
                               "101 2 1\n"
                               "}\n"
                               "<TVirtual2PhysGear>: {\n"
                               "1 90 101\n"
                               "}\n"
                               "<TBaseOrder>: {\n"
                               "101 13.5\n"
                               "}\n";

std::string const GearOne = "Physical mode 1 Gear 1\n"
                            "\n"
                            "Rotor  Name          Fraction  Ratio  Speed source   Kind       Signal\n"
                            "    1  Input shaft        1/1  1      1 Input shaft  source     10 Input speed\n"
                            "    2  Output shaft       1/2  0.5    7              reference\n"
                            "    4                          0.3\n"
                            "\n"
                            "Rotor  Order source      Gear         Base order\n"
                            "    1  90 Driving wheel  101 Wheel 1        13.5\n"
                            "       101 Wheel 1                          13.5\n";

using RotorsVerbTest = CommandTest;

} // namespace

TEST_F(RotorsVerbTest, ListsThoseOfAPhysicalMode) {
    std::string const lake = File(u8"a.lake", RotorsLake);
    auto const run = RunCommand({"rotors", lake, "--physical-mode", "1"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, GearOne);
    EXPECT_EQ(RunCommand({"rotors", lake, "--mode", "11"}).out, GearOne);
}

TEST_F(RotorsVerbTest, ListsAll) {
    auto const run = RunCommand({"rotors", File(u8"a.lake", RotorsLake)});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, GearOne + "\nPhysical mode 2\n"
                                 "\n"
                                 "Rotor  Name         Fraction  Ratio  Speed source  Kind  Signal\n"
                                 "    1  Input shaft       1/1  1\n"
                                 "\n"
                                 "Rotor  Order source  Gear  Base order\n"
                                 "    1  101 Wheel 1               13.5\n");
}

TEST_F(RotorsVerbTest, GivesJson) {
    auto const run = RunCommand({"rotors", File(u8"a.lake", RotorsLake), "--mode=11", "--format=json"});
    EXPECT_EQ(run.code, 0);
    auto const document = nlohmann::ordered_json::parse(run.out);
    ASSERT_EQ(document.size(), 1U);
    EXPECT_EQ(document[0]["physical_mode"].dump(), R"({"id":1,"name":"Gear 1"})");
    auto const& rotors = document[0]["rotors"];
    ASSERT_EQ(rotors.size(), 3U);
    EXPECT_EQ(rotors[1].dump(), nlohmann::ordered_json::parse(R"({
        "rotor": {"id": 2, "name": "Output shaft"}, "numerator": 1, "denominator": 2, "ratio": 0.5,
        "speed_source": {"id": 7, "name": null}, "speed_source_kind": "reference", "signal": null,
        "order_sources": []})")
                                    .dump());
    EXPECT_TRUE(rotors[2]["numerator"].is_null());
    EXPECT_TRUE(rotors[2]["speed_source_kind"].is_null());
    EXPECT_EQ(rotors[0]["signal"]["name"], "Input speed");
    EXPECT_EQ(rotors[0]["order_sources"][0].dump(),
              nlohmann::ordered_json::parse(R"({"order_source": {"id": 90, "name": "Driving wheel"},
                  "gear": {"id": 101, "name": "Wheel 1"}, "base_order": 13.5})")
                  .dump());
}

TEST_F(RotorsVerbTest, NoneIsAFinding) {
    std::string const lake = File(u8"a.lake", RotorsLake);
    auto const missing = RunCommand({"rotors", lake, "-p", "9"});
    EXPECT_EQ(missing.code, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "paramdb: physical mode 9 has no rotors\n");
    auto const neutral = RunCommand({"rotors", lake, "-m", "3", "--format", "json"});
    EXPECT_EQ(neutral.code, 1);
    EXPECT_EQ(neutral.out, "[]\n");
    EXPECT_EQ(neutral.err, "paramdb: mode 3 has no physical mode\n");
    EXPECT_EQ(RunCommand({"rotors", lake, "-m", "3", "-p", "1"}).code, 2);
    EXPECT_EQ(RunCommand({"rotors", File(u8"old.lake", RefusedLake)}).code, 2);
}

// What is shown is what a host is told.
TEST_F(RotorsVerbTest, AgreesWithTheQueries) {
    std::string const lake = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";
    auto const run = RunCommand({"rotors", lake, "--mode", "41", "--format", "json"});
    ASSERT_EQ(run.code, 0) << run.err;
    auto const document = nlohmann::json::parse(run.out);
    ASSERT_EQ(document.size(), 1U);
    CQtParamInstance const parameters;
    std::size_t sources = 0;
    for (auto const& entry : document[0]["rotors"]) {
        int const rotor = entry["rotor"]["id"];
        EXPECT_EQ(parameters.RotorSpeedRatio(41, 1, rotor),
                  numeric::CRatio(entry["numerator"].get<int>(), entry["denominator"].get<int>()));
        auto const& source = entry["speed_source"];
        EXPECT_EQ(parameters.RotorSpeedSource(41, rotor, true),
                  source.is_null() ? -1 : source["id"].get<int>());
        for (auto const& order : entry["order_sources"]) {
            int const id = order["order_source"]["id"];
            EXPECT_EQ(parameters.OrderSource2Rotor(41, id), rotor);
            EXPECT_EQ(parameters.PhysicalGear(41, id), order["gear"]["id"].get<int>());
            EXPECT_EQ(parameters.BaseOrder(41, id), order["base_order"].get<float>());
            ++sources;
        }
    }
    EXPECT_GT(sources, 10U);
}
