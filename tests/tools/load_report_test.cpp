#include "tools/load_report.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace paramdb::tools;

namespace {

Load CleanLoad() {
    Load load;
    load.sources.files = {{"gearbox.lake", 2000000, 41000, 103}, {"customer.lake", 500000, 250, 6}};
    load.sources.seconds = 0.02;
    load.load_seconds = 0.005;
    load.major = 216;
    load.minor = 1;
    load.result = LoadResult::Complete;
    load.texts = {L"learn archive.arc", L"bench.cal", L"GX-320", L""};
    return load;
}

std::string Text(Load const& load) {
    std::ostringstream out;
    PrintLoadReport(out, load, ReportFormat::Text);
    return out.str();
}

nlohmann::ordered_json Json(Load const& load) {
    std::ostringstream out;
    PrintLoadReport(out, load, ReportFormat::Json);
    return nlohmann::ordered_json::parse(out.str());
}

} // namespace

TEST(LoadReportText, OfACleanLoad) {
    EXPECT_EQ(Text(CleanLoad()), "    Bytes   Lines  Sections  File\n"
                                 "2 000 000  41 000       103  gearbox.lake\n"
                                 "  500 000     250         6  customer.lake\n"
                                 "2 500 000  41 250       109  total\n"
                                 "\n"
                                 "Version           216.1, accepted\n"
                                 "Learn file        learn archive.arc\n"
                                 "Calibration file  bench.cal\n"
                                 "Base type         GX-320\n"
                                 "Alias type        (none)\n"
                                 "Messages          none\n"
                                 "Time              read 20.00 ms, load 5.00 ms, total 25.00 ms\n"
                                 "Throughput        100.0 MB/s, 1 650 000 lines/s\n");
}

TEST(LoadReportText, OfALoadWithFindings) {
    Load load = CleanLoad();
    load.sources.files = {{"/dev/fd/63", std::nullopt, 1, 0}};
    load.result = LoadResult::Incomplete;
    load.texts.alias_type = L"Pr\u00FCfling";
    load.tables = TableTotals{97, 103, 3180};
    load.messages = {{{8, 1}, 1}, {{8, 3}, 1234}, {{16, 7}, 2}};
    EXPECT_EQ(Text(load),
              "Bytes  Lines  Sections  File\n"
              "    -      1         0  /dev/fd/63\n"
              "\n"
              "Version           216.1, accepted\n"
              "Load              incomplete: the tables are read, what is derived from them is missing\n"
              "Learn file        learn archive.arc\n"
              "Calibration file  bench.cal\n"
              "Base type         GX-320\n"
              "Alias type        Pr\u00FCfling\n"
              "Tables            97 of 103 with 3 180 rows\n"
              "Messages          1 of category 8, style 1 (plain)\n"
              "                  1 234 of category 8, style 3 (fault in the data)\n"
              "                  2 of category 16, style 7\n"
              "Time              read 20.00 ms, load 5.00 ms, total 25.00 ms\n"
              "Throughput        40 lines/s\n");
}

TEST(LoadReportText, OfARefusal) {
    Load load;
    load.sources.files = {{"old.lake", 30, 1, 0}};
    load.major = -1;
    load.messages = {{{8, 4}, 1}};
    EXPECT_EQ(Text(load), "Bytes  Lines  Sections  File\n"
                          "   30      1         0  old.lake\n"
                          "\n"
                          "Version   -1.0, refused\n"
                          "Messages  1 of category 8, style 4 (refusal)\n"
                          "Time      read 0.00 ms, load 0.00 ms, total 0.00 ms\n");
}

TEST(LoadReportJson, OfACleanLoad) {
    EXPECT_EQ(Json(CleanLoad()).dump(), nlohmann::ordered_json::parse(R"({
        "sources": [
            {"file": "gearbox.lake", "bytes": 2000000, "lines": 41000, "sections": 103},
            {"file": "customer.lake", "bytes": 500000, "lines": 250, "sections": 6}
        ],
        "version": {"major": 216, "minor": 1, "verdict": "accepted"},
        "result": "complete",
        "texts": {"learn_file": "learn archive.arc", "calib_file": "bench.cal", "base_type": "GX-320",
                  "alias_type": ""},
        "totals": {"bytes": 2500000, "lines": 41250, "sections": 109, "tables": null, "all_tables": null,
                   "rows": null},
        "messages": [],
        "seconds": {"read": 0.02, "load": 0.005, "total": 0.025},
        "throughput": {"megabytes_per_second": 100.0, "lines_per_second": 1650000.0}
    })")
                                            .dump());
}

TEST(LoadReportJson, OfALoadWithFindings) {
    Load load = CleanLoad();
    load.sources.files = {{"/dev/fd/63", std::nullopt, 1, 0}};
    load.result = LoadResult::Incomplete;
    load.tables = TableTotals{97, 103, 3180};
    load.messages = {{{8, 1}, 1}, {{8, 3}, 1234}};
    auto const report = Json(load);
    EXPECT_EQ(report["sources"].dump(), R"([{"file":"/dev/fd/63","bytes":null,"lines":1,"sections":0}])");
    EXPECT_EQ(report["version"]["verdict"], "accepted");
    EXPECT_EQ(report["result"], "incomplete");
    EXPECT_EQ(report["totals"].dump(),
              R"({"bytes":null,"lines":1,"sections":0,"tables":97,"all_tables":103,"rows":3180})");
    EXPECT_EQ(report["messages"].dump(),
              R"([{"category":8,"style":1,"count":1},{"category":8,"style":3,"count":1234}])");
    EXPECT_EQ(report["throughput"].dump(), R"({"megabytes_per_second":null,"lines_per_second":40.0})");
}

TEST(LoadReportJson, OfARefusal) {
    Load load;
    load.sources.files = {{"old.lake", 30, 1, 0}};
    load.messages = {{{8, 4}, 1}};
    auto const report = Json(load);
    EXPECT_EQ(report["version"].dump(), R"({"major":0,"minor":0,"verdict":"refused"})");
    EXPECT_EQ(report["result"], "refused");
    EXPECT_EQ(report["texts"].dump(),
              R"({"learn_file":null,"calib_file":null,"base_type":null,"alias_type":null})");
    EXPECT_EQ(report["throughput"].dump(), R"({"megabytes_per_second":null,"lines_per_second":null})");
}

TEST(LoadReportJson, ReplacesWhatIsNoUtf8) {
    Load load = CleanLoad();
    load.sources.files.front().name = "a\xFF.lake";
    load.texts.base_type = L"\xDC80\x1B\xD800";
    auto const report = Json(load);
    EXPECT_EQ(report["sources"][0]["file"], "a\uFFFD.lake");
    EXPECT_EQ(report["texts"]["base_type"], "\uFFFD\x1B\uFFFD");
}
