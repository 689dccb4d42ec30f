#include "tests/tools/command_run.h"

#include <nlohmann/json.hpp>

namespace {

std::string const Base = "<DbDesign.CacheVersion>: 216\n"
                         "<DbDesign.CacheMinorVersion>: 1\n"
                         "<QLearn><FLearnArcName>: \"learn archive.arc\"\n"
                         "<QCalib><FCalibFileName>: bench.cal\n"
                         "<QType><FBaseName>: GX-320\n"
                         "<QType><FAliasName>: \"GX-320 \xC4\"\n"
                         "<TMode>: {\n"
                         "\t1 \"Idle\"\n"
                         "\t2 \"Warm up\"\n"
                         "} ; the modes of tests\n";

std::string const Later = "<DbDesign.CacheVersion>: 999\n"
                          "<QType><FBaseName>: other\n"
                          "<TMode>: {\n"
                          "\t7 \"Shifting\"\n"
                          "}\n";

// The report behind the files, with that many rows in all.
std::string Reported(int rows) {
    return "\n"
           "Version           216.1, accepted\n"
           "Learn file        learn archive.arc\n"
           "Calibration file  bench.cal\n"
           "Base type         GX-320\n"
           "Alias type        GX-320 \xC3\x84\n"
           "Tables            1 of 103 with " +
           std::to_string(rows) +
           " rows\n"
           "Messages          none\n"
           "Time ...\n"
           "Throughput ...\n";
}

using LoadVerbTest = CommandTest;

} // namespace

TEST_F(LoadVerbTest, ReportsACleanLoad) {
    std::string const base = File(u8"base.lake", Base);
    auto const run = RunCommand({"load", base});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(WithoutTimes(run.out), "Bytes  Lines  Sections  File\n"
                                     "  258     10         1  " +
                                         base + "\n" + Reported(2));
}

TEST_F(LoadVerbTest, TheFirstVersionStandsAndTheLastTable) {
    std::string const base = File(u8"base.lake", Base);
    std::string const later = File(u8"later.lake", Later);
    auto const run = RunCommand({"load", base, later});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(WithoutTimes(run.out), "Bytes  Lines  Sections  File\n"
                                     "  258     10         1  " +
                                         base +
                                         "\n"
                                         "   82      5         1  " +
                                         later +
                                         "\n"
                                         "  340     15         2  total\n" +
                                         Reported(1));
    auto const table = CParameterLake::Lake()[L"<TMode>"].position;
    EXPECT_EQ((*table->begin_unnamed())->value(), L"7 \"Shifting\"");
}

TEST_F(LoadVerbTest, TheOrderOfTheFilesCounts) {
    auto const run = RunCommand({"load", File(u8"later.lake", Later), File(u8"base.lake", Base)});
    EXPECT_EQ(run.code, 2);
    EXPECT_NE(run.out.find("Version     999.1, refused\n"), std::string::npos) << run.out;
    EXPECT_EQ(run.err, "CQTableManager::ReadTablesFromCandidateLake(): Loading parameter data base failed:\n"
                       "\tTable version 999.1 is greater than the supported major version 216\t"
                       "Please contact Brelix for a software update.\n");
}

TEST_F(LoadVerbTest, ALakeWithoutVersionComesToTheGate) {
    std::string const name = File(u8"none.lake", "<TMode>: {\n1 \"Idle\"\n}\n");
    auto const run = RunCommand({"load", name});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "CQTableManager::ReadTablesFromCandidateLake(): Loading parameter data base failed:\n"
                       "\tTable version 0.0 is less than the supported version 216.1\n"
                       "\tPlease contact Brelix for a parameter database update.\n");
    EXPECT_EQ(WithoutTimes(run.out), "Bytes  Lines  Sections  File\n"
                                     "   22      3         1  " +
                                         name +
                                         "\n\n"
                                         "Version     0.0, refused\n"
                                         "Messages    1 of category 8, style 4 (refusal)\n"
                                         "Time ...\n"
                                         "Throughput ...\n");
}

TEST_F(LoadVerbTest, RunsDoNotDependOnEachOther) {
    std::vector<std::string> const good{"load", File(u8"base.lake", Base)};
    std::vector<std::string> const refused{"load", "--format=json", File(u8"none.lake", "k: v\n")};
    auto const first = RunCommand(good);
    auto const second = RunCommand(refused);
    auto const third = RunCommand({"load", Name(u8"missing.lake")});
    auto const fourth = RunCommand(good);
    EXPECT_EQ(first.code, 0);
    EXPECT_EQ(second.code, 2);
    EXPECT_TRUE(nlohmann::json::parse(second.out)["texts"]["base_type"].is_null());
    EXPECT_EQ(third.code, 2);
    EXPECT_EQ(fourth.code, 0);
    EXPECT_EQ(WithoutTimes(fourth.out), WithoutTimes(first.out));
}

TEST_F(LoadVerbTest, ReportsInJson) {
    std::string const base = File(u8"base.lake", Base);
    auto const run = RunCommand({"load", base, "--format", "json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    auto report = nlohmann::ordered_json::parse(run.out);
    for (char const* const time : {"read", "load", "total"})
        EXPECT_TRUE(report["seconds"][time].is_number()) << time;
    EXPECT_GT(report["seconds"]["total"], 0);
    EXPECT_GT(report["throughput"]["megabytes_per_second"], 0);
    EXPECT_GT(report["throughput"]["lines_per_second"], 0);
    report.erase("seconds");
    report.erase("throughput");
    nlohmann::ordered_json expected = nlohmann::ordered_json::parse(R"({
        "sources": [{"file": "", "bytes": 258, "lines": 10, "sections": 1}],
        "version": {"major": 216, "minor": 1, "verdict": "accepted"},
        "result": "complete",
        "texts": {"learn_file": "learn archive.arc", "calib_file": "bench.cal", "base_type": "GX-320",
                  "alias_type": "GX-320 \u00C4"},
        "totals": {"bytes": 258, "lines": 10, "sections": 1, "tables": 1, "all_tables": 103, "rows": 2},
        "messages": []
    })");
    expected["sources"][0]["file"] = base;
    EXPECT_EQ(report.dump(), expected.dump());
}

TEST_F(LoadVerbTest, FaultyFilesGiveNoReport) {
    std::string const empty = File(u8"empty.lake", "");
    std::string const good = File(u8"base.lake", Base);
    for (std::string const format : {"text", "json"}) {
        auto const run = RunCommand({"load", "--format", format, good, empty});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "paramdb: " + empty + ": the file is empty\n");
    }
}

TEST_F(LoadVerbTest, TakesNamesThatAreNotAscii) {
    std::string const name = File(u8"Pr\u00FCfstand \u8A66\u9A13 \U0001F600.lake", Base);
    auto const run = RunCommand({"load", name});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("  " + name + "\n"), std::string::npos) << run.out;
    EXPECT_EQ(nlohmann::json::parse(RunCommand({"load", "--format=json", name}).out)["sources"][0]["file"],
              name);
}

#ifndef _WIN32 // where a name need not be text

TEST_F(LoadVerbTest, TakesNamesOfAnyBytes) {
    std::string const name = Folder() + "/a\xFF\xC3(\x1B[31m.lake";
    test_support::WriteBytes(name, Base);
    auto const run = RunCommand({"load", name});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("/a\xFF\xC3(\xEF\xBF\xBD[31m.lake\n"), std::string::npos) << run.out;
    auto const report = nlohmann::json::parse(RunCommand({"load", "--format=json", name}).out);
    EXPECT_EQ(report["sources"][0]["file"], Folder() + "/a\xEF\xBF\xBD\xEF\xBF\xBD(\x1B[31m.lake");
}

#endif
