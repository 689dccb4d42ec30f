#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

std::string const OrderLake = "<DbDesign.CacheVersion>: 216\n"
                              "<DbDesign.CacheMinorVersion>: 1\n"
                              "<TLocation>: {\n"
                              "90 \"Driving wheel\"\n"
                              "}\n"
                              "<TInstrumentParam>: {\n"
                              "7 1001 \"Mesh H1\" 0 1 0\n"
                              "8 2001 \"Bad\" 0 1 0\n"
                              "}\n"
                              "<TIpSpectralValue>: {\n"
                              "7 1 90 6 \"H1-L2;H1+L2\" 2500 1001\n"
                              "}\n";

using OrderVerbTest = CommandTest;

} // namespace

TEST_F(OrderVerbTest, ExplainsADefinition) {
    auto const run = RunCommand({"order", "H1-O0,5; H1+O0.5"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Definition  H1-O0,5; H1+O0.5\n"
                       "\n"
                       "Position  Domain  Term   Value  Meaning\n"
                       "       1  order   H1         1  multiple of the base order\n"
                       "                  -O0.5   -0.5  order\n"
                       "       2  order   H1         1  multiple of the base order\n"
                       "                  +O0.5    0.5  order\n"
                       "\n"
                       "Interval  Positions  Lower                       Upper\n"
                       "       1  1 and 2    1 x base order - order 0.5  1 x base order + order 0.5\n");
}

TEST_F(OrderVerbTest, MarksAFault) {
    auto const run = RunCommand({"order", "\xC3\x84;O1 *2"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Definition  \xC3\x84;O1 *2\n"
                       "                 ^\n"
                       "'*' cannot follow the number of 'O'\n");
}

TEST_F(OrderVerbTest, RemarksOnWhatIsEasilyOverlooked) {
    auto const run = RunCommand({"order", "--", "-O+O2;HX"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("Position 1: '-O' has no number and counts as 0.\n"
                           "Position 1: '+O2' is not looked at.\n"
                           "Position 2 is repeated for the harmonics 2 to 31.\n"),
              std::string::npos)
        << run.out;
    std::string many;
    for (int count = 0; count < 33; ++count)
        many += "HX;";
    EXPECT_NE(RunCommand({"order", many})
                  .out.find("Only the first 32 positions count.\n"
                            "A series, but there is no room for a second harmonic.\n"),
              std::string::npos);
    EXPECT_NE(RunCommand({"order", "HX;HX+O1"})
                  .out.find("Positions 1 to 2 are repeated for the harmonics 2 to "
                            "16.\n"),
              std::string::npos);
}

TEST_F(OrderVerbTest, AnOddDefinitionIsAFinding) {
    auto const run = RunCommand({"order", "O1;O2;;"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "Definition  O1;O2;;\n"
                       "\n"
                       "Position  Domain  Term  Value  Meaning\n"
                       "       1  order   O1        1  order\n"
                       "       2  order   O2        2  order\n"
                       "       3  lines\n"
                       "\n"
                       "No intervals: of 3 positions one is left over. It takes a single one or an even "
                       "number.\n");
    EXPECT_EQ(RunCommand({"order", "O1"}).code, 0);
    auto const empty = RunCommand({"order", " "});
    EXPECT_EQ(empty.code, 0);
    EXPECT_EQ(empty.out, "Definition   \nIt is empty: no positions and no intervals.\n");
}

TEST_F(OrderVerbTest, GivesJson) {
    auto const good = RunCommand({"order", "HX-M1;HX+M1", "--format", "json"});
    EXPECT_EQ(good.code, 0);
    auto const document = nlohmann::ordered_json::parse(good.out);
    EXPECT_EQ(document["verdict"], "good");
    EXPECT_TRUE(document["parameter"].is_null());
    EXPECT_TRUE(document["fault"].is_null());
    EXPECT_EQ(document["written"], 2);
    EXPECT_EQ(document["series"].dump(), R"({"first":1,"last":2,"harmonics":16})");
    ASSERT_EQ(document["positions"].size(), 32U);
    EXPECT_EQ(document["positions"][0].dump(), nlohmann::ordered_json::parse(R"({
        "terms": [{"text": "HX", "letter": "H", "value": 1.0, "has_number": true},
                  {"text": "-M1", "letter": "M", "value": -1.0, "has_number": true}],
        "domain": "order", "frequency": 0.0, "order": 0.0, "harmonic": 1.0, "modulation": -1.0,
        "lines": 0, "ignored": null})")
                                                   .dump());
    EXPECT_TRUE(document["positions"][2]["terms"].empty());
    EXPECT_EQ(document["positions"][2]["harmonic"], 2.0);
    EXPECT_EQ(document["intervals"][1].dump(), R"({"lower":3,"upper":4})");

    auto const bad = RunCommand({"order", "O1;OO", "--format", "json"});
    EXPECT_EQ(bad.code, 1);
    auto const fault = nlohmann::json::parse(bad.out);
    EXPECT_EQ(fault["verdict"], "bad");
    EXPECT_EQ(fault["fault"]["place"], 4);
    EXPECT_TRUE(fault["positions"].empty());
}

TEST_F(OrderVerbTest, ExplainsThatOfAParameter) {
    std::string const lake = File(u8"a.lake", OrderLake);
    auto const run = RunCommand({"order", lake, "--parameter", "7"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out.substr(0, run.out.find("\n\n")), "Parameter   7 Mesh H1\n"
                                                       "Base order  90 Driving wheel\n"
                                                       "Definition  H1-L2;H1+L2");
    auto const missing = RunCommand({"order", lake, "--parameter", "9"});
    EXPECT_EQ(missing.code, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "paramdb: parameter 9 has no order definition; <TIpSpectralValue> and "
                           "<TIpSpectralTrack> have them\n");
}

TEST_F(OrderVerbTest, ABadOneInAFileIsToldByTheLoadAndShown) {
    std::string const lake = File(u8"a.lake", OrderLake + "<TIpSpectralTrack>: {\n"
                                                          "8 1 90 6 \"O1*2\" 2500 1001\n"
                                                          "}\n");
    auto const run = RunCommand({"order", lake, "--parameter", "8"});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("Syntax error in order definition 'O1*2'"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("Definition  O1*2\n              ^\n"), std::string::npos) << run.out;
}

TEST_F(OrderVerbTest, TellsFilesFromDefinitions) {
    std::string const lake = File(u8"a.lake", OrderLake);
    auto const file = RunCommand({"order", lake});
    EXPECT_EQ(file.code, 2);
    EXPECT_EQ(file.err, "paramdb: that is a file and no DEFINITION; to explain one in a file, add "
                        "--parameter ID\n");
    EXPECT_EQ(RunCommand({"order", "O1", "O2"}).err,
              "paramdb: more than one DEFINITION; to explain one in a file, add --parameter ID\n");
    EXPECT_EQ(RunCommand({"order"}).code, 2);
    EXPECT_EQ(RunCommand({"order", File(u8"old.lake", RefusedLake), "-p", "7"}).code, 2);
}
