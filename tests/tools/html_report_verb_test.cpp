#include <paramdb/platform/core/lib_mgr.h>

#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"
#include "tools/report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

class HtmlReportVerbTest : public CommandTest {
protected:
    std::string Content(std::u8string const& name) const {
        std::string const path = Name(name);
        return test_support::ReadBytes(std::filesystem::path(std::u8string(path.begin(), path.end())));
    }
};

nlohmann::json DataOf(std::string const& page) {
    std::string const begin = "<script type=\"application/json\" id=\"data\">";
    std::size_t const place = page.find(begin) + begin.size();
    return nlohmann::json::parse(page.substr(place, page.find("</script>", place) - place));
}

} // namespace

TEST_F(HtmlReportVerbTest, WritesAPage) {
    std::string const lake = File(u8"a.lake", SampleLake);
    auto const run = RunCommand({"report", lake, "-o", Name(u8"r.html"), "--lang", "de", "--rpm", "4500.5"});
    EXPECT_EQ(run.err, "");
    std::string const page = Content(u8"r.html");
    EXPECT_TRUE(run.out.starts_with(Name(u8"r.html") + ": 9 rows in 3 tables, ")) << run.out;
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    auto const data = DataOf(page);
    EXPECT_EQ(run.code, data["findings"].empty() ? 0 : 1);
    EXPECT_EQ(data["sources"][0]["file"], lake);
    EXPECT_EQ(data["language"], "de");
    EXPECT_EQ(data["rpm"], 4500.5);
    EXPECT_EQ(data["keys"]["words"][2], "Kanal");

    // The same, but for the command to be read where it is shown.
    auto const shown = RunCommand({"report", lake, "--lang", "de", "--rpm=4500.5"});
    EXPECT_EQ(shown.code, run.code);
    EXPECT_EQ(shown.out, page);
    EXPECT_EQ(shown.err, "");
}

TEST_F(HtmlReportVerbTest, LanguageIsThatOfTheEnvironmentElse) {
    CLibMgr::SetLanguage(CLibMgr::Language::french);
    auto const run = RunCommand({"report", File(u8"a.lake", SampleLake)});
    EXPECT_EQ(DataOf(run.out)["language"], "fr");
    RunCommand({"report", Name(u8"a.lake"), "--lang", "it"});
    EXPECT_EQ(CLibMgr::GetLanguage(), CLibMgr::Language::french);
    CLibMgr::ResetLanguage();
}

TEST_F(HtmlReportVerbTest, TheExampleHasNoFindings) {
    auto const run = RunCommand(
        {"report", PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake", "--output", Name(u8"r.html")});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, Name(u8"r.html") + ": 5 907 rows in 103 tables, no findings, " +
                           paramdb::tools::Grouped(Content(u8"r.html").size()) + " bytes\n");
}

TEST_F(HtmlReportVerbTest, MergesFiles) {
    auto const run = RunCommand(
        {"report", File(u8"a.lake", SampleLake), File(u8"b.lake", "<TMode>: {\n5 \"Other\"\n}\n")});
    auto const data = DataOf(run.out);
    EXPECT_EQ(data["sources"].size(), 2U);
    EXPECT_EQ(data["tables"][0]["rows"].dump(), R"([[5,"Other"]])");
}

TEST_F(HtmlReportVerbTest, FaultsAreFindings) {
    auto const run = RunCommand({"report", File(u8"a.lake", FaultyLake), "-o", Name(u8"r.html")});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("<TTrigger>"), std::string::npos) << run.err;
    auto const data = DataOf(Content(u8"r.html"));
    auto const& findings = data["findings"];
    auto const fault = std::find_if(findings.begin(), findings.end(), [](auto const& finding) {
        return finding["source"] == "\tx \"Time\" 1";
    });
    ASSERT_NE(fault, findings.end()) << findings.dump();
    EXPECT_EQ((*fault)["file"], Name(u8"a.lake"));
    EXPECT_EQ((*fault)["line"], 20);
    EXPECT_EQ((*fault)["severity"], "error");
    std::string const count =
        findings.size() == 1 ? " 1 finding, " : " " + std::to_string(findings.size()) + " findings, ";
    EXPECT_NE(run.out.find(count), std::string::npos) << run.out;
}

TEST_F(HtmlReportVerbTest, NeverWritesOverAnInput) {
    std::string const lake = File(u8"a.lake", SampleLake);
    std::string const other = File(u8"b.lake", SampleLake);
    auto const same = RunCommand({"report", other, lake, "-o", lake});
    EXPECT_EQ(same.code, 2);
    EXPECT_EQ(same.out, "");
    EXPECT_EQ(same.err, "paramdb: " + lake + ": it is one of the files to read\n");
    std::string const detour = Folder() + "/./a.lake";
    EXPECT_EQ(RunCommand({"report", lake, "-o", detour}).err,
              "paramdb: " + detour + ": it is one of the files to read\n");
    EXPECT_EQ(Content(u8"a.lake"), SampleLake);
}

TEST_F(HtmlReportVerbTest, ReplacesAnOldPage) {
    File(u8"r.html", "old");
    std::string const lake = File(u8"a.lake", SampleLake);
    RunCommand({"report", lake, "-o", Name(u8"r.html")});
    EXPECT_TRUE(Content(u8"r.html").starts_with("<!DOCTYPE html>"));
}

TEST_F(HtmlReportVerbTest, WithoutALoadThereIsNoPage) {
    File(u8"r.html", "old");
    for (std::string const& content : {RefusedLake, std::string("no lake"), std::string()}) {
        auto const run = RunCommand({"report", File(u8"a.lake", content), "-o", Name(u8"r.html")});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err, "");
        EXPECT_EQ(Content(u8"r.html"), "old");
    }
    std::string const lake = File(u8"a.lake", SampleLake);
    auto const nowhere = RunCommand({"report", lake, "-o", Name(u8"no/r.html")});
    EXPECT_EQ(nowhere.code, 2);
    EXPECT_EQ(nowhere.out, "");
    EXPECT_TRUE(nowhere.err.starts_with("paramdb: " + Name(u8"no/r.html") + ": ")) << nowhere.err;
    EXPECT_EQ(RunCommand({"report", lake, "-o", Folder()}).code, 2);
}

TEST_F(HtmlReportVerbTest, RefusesWrongOptions) {
    std::string const lake = File(u8"a.lake", SampleLake);
    for (std::vector<std::string> const& arguments : {std::vector<std::string>{"report"},
                                                      {"report", lake, "--rpm", "0"},
                                                      {"report", lake, "--rpm", "-1"},
                                                      {"report", lake, "--rpm", "inf"},
                                                      {"report", lake, "--rpm", "fast"},
                                                      {"report", lake, "--lang", "nl"}}) {
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 2) << arguments.back();
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err, "");
    }
}
