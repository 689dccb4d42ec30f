#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

std::string const PolygonsLake = "<DbDesign.CacheVersion>: 216\n"
                                 "<DbDesign.CacheMinorVersion>: 1\n"
                                 "<TInstrumentParam>: {\n"
                                 "7 10001 \"Above polygon\" 0 1 0\n"
                                 "8 2001 \"Mesh track\" 0 1 0\n"
                                 "}\n"
                                 "<TIpParamAndStore>: {\n"
                                 "1 10001 1 2 7 10 0 0 0 0 0 0\n"
                                 "2 10001 1 2 7 10 0 0 0 0 0 0\n"
                                 "3 10001 1 2 7 10 0 0 0 0 0 0\n"
                                 "4 1001 1 2 8 10 0 0 0 0 0 0\n"
                                 "}\n"
                                 "<TIpTrackPolygon>: {\n"
                                 "1 10001 -1 -1 7 -1 5 0 3 8 0 0 0 0 0 0\n"
                                 "2 10001 -1 -1 7 -1 -1 0 16 8 1.5 1 10 20 30 40\n"
                                 "3 10001 -1 -1 7 -1 6 0 0 9 0 0 0 0 0 0\n"
                                 "}\n"
                                 "<TIpPolygon>: {\n"
                                 "5 1 \"Level\"\n"
                                 "}\n"
                                 "<TIpPolygonValue>: {\n"
                                 "5 1000 68.5\n"
                                 "5 2000 70\n"
                                 "}\n";

using PolygonsVerbTest = CommandTest;

} // namespace

TEST_F(PolygonsVerbTest, ListsPolygonsAndKeys) {
    auto const run = RunCommand({"polygons", File(u8"a.lake", PolygonsLake)});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Polygon  Name          Points x, y\n"
                       "      5  Level         1000, 68.5 | 2000, 70\n"
                       "      6  (two points)  10, 31.5 | 20, 41.5\n"
                       "\n"
                       "Key               Parameter      Area interpretation  Source parameter  Polygon\n"
                       "1/10001/1/2/7/10  Above polygon  3 Sum above          8 Mesh track            5\n"
                       "2/10001/1/2/7/10  Above polygon  16                   8 Mesh track            6\n"
                       "3/10001/1/2/7/10  Above polygon  0 not defined        9                       6\n");
}

TEST_F(PolygonsVerbTest, ListsWhatJudgesAKey) {
    auto const run = RunCommand({"polygons", File(u8"a.lake", PolygonsLake), "--key", "1"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Polygon  Name   Points x, y\n"
                       "      5  Level  1000, 68.5 | 2000, 70\n"
                       "\n"
                       "Key               Parameter      Area interpretation  Source parameter  Polygon\n"
                       "1/10001/1/2/7/10  Above polygon  3 Sum above          8 Mesh track            5\n");
}

TEST_F(PolygonsVerbTest, GivesJson) {
    auto const run =
        RunCommand({"polygons", File(u8"a.lake", PolygonsLake), "--key", "2", "--format", "json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out).dump(), nlohmann::ordered_json::parse(R"({
        "polygons": [{"number": 6, "name": null, "two_points": true,
                      "points": [[10.0, 31.5], [20.0, 41.5]]}],
        "judged": [{"key": [2, 10001, 1, 2, 7, 10], "parameter": {"id": 7, "name": "Above polygon"},
                    "area_interpretation": {"id": 16, "name": null},
                    "source_parameter": {"id": 8, "name": "Mesh track"}, "polygon": 6,
                    "is_missing": false}]})")
                                                                 .dump());
}

TEST_F(PolygonsVerbTest, ManyPointsTakeMoreLines) {
    std::string lake = SampleLake + "<TIpPolygonValue>: {\n";
    for (int count = 10; count < 40; ++count)
        lake += "1 " + std::to_string(count) + " 5\n";
    auto const run = RunCommand({"polygons", File(u8"a.lake", lake + "}\n")});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("10, 5 | 11, 5 | 12, 5 | 13, 5 | 14, 5 | 15, 5 | 16, 5 | 17, 5 | 18, 5\n"
                           "               19, 5 | "),
              std::string::npos)
        << run.out;
}

TEST_F(PolygonsVerbTest, APolygonWithoutPoints) {
    std::string lake = PolygonsLake;
    lake.replace(lake.find("-1 5 0 3 8"), 10, "-1 1 0 3 8");
    auto const run = RunCommand({"polygons", File(u8"a.lake", lake), "-k", "1"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("8 Mesh track            1  has no points\n"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("Points"), std::string::npos);
}

TEST_F(PolygonsVerbTest, NothingIsAFinding) {
    auto const none = RunCommand({"polygons", File(u8"a.lake", SampleLake)});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, "paramdb: there are no polygons\n");
    auto const key = RunCommand({"polygons", File(u8"b.lake", PolygonsLake), "-k", "4"});
    EXPECT_EQ(key.code, 1);
    EXPECT_EQ(key.err, "paramdb: no polygon judges a key of 4\n");
    auto const bad = RunCommand({"polygons", Name(u8"b.lake"), "-k", "x"});
    EXPECT_EQ(bad.code, 2);
    EXPECT_EQ(bad.err.substr(0, bad.err.find(':')), "paramdb");
    EXPECT_EQ(RunCommand({"polygons", File(u8"old.lake", RefusedLake)}).code, 2);
}
