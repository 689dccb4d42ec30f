#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;

std::string const Version = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
std::string const Warned = Version + "<TMode>: {\n\t1 \"Idle\"\n\t1 \"Warm up\"\n}\n";
std::string const Erroneous = Version + "<TMode>: {\n\tx \"Idle\"\n}\n";

class CheckVerbTest : public CommandTest {
protected:
    std::string const m_good = File(u8"good.lake", SampleLake);
    std::string const m_warned = File(u8"warned.lake", Warned);
    std::string const m_erroneous = File(u8"erroneous.lake", Erroneous);
    std::string const m_refused = File(u8"refused.lake", RefusedLake);
};

} // namespace

TEST_F(CheckVerbTest, ExitCodes) {
    struct Case {
        std::vector<std::string> arguments;
        int code;
        std::string summary;
    };
    Case const cases[] = {
        {{m_good}, 0, "No findings in 1 file with 17 lines\n"},
        {{m_good, "--strict"}, 0, "No findings in 1 file with 17 lines\n"},
        {{m_warned}, 0, "Found 1 warning in 1 file with 6 lines\n"},
        {{m_warned, "--strict"}, 1, "Found 1 warning in 1 file with 6 lines\n"},
        {{"--strict", "--disable", "P204", m_warned}, 0, "No findings in 1 file with 6 lines\n"},
        {{"--strict", "--disable=duplicate-row", m_warned}, 0, "No findings in 1 file with 6 lines\n"},
        {{"--disable=p205,P204", m_warned, "--strict"}, 0, "No findings in 1 file with 6 lines\n"},
        {{m_warned, "--strict", "--disable", "P205"}, 1, "Found 1 warning in 1 file with 6 lines\n"},
        {{m_erroneous}, 1, "Found 1 error in 1 file with 5 lines\n"},
        {{m_erroneous, "--disable", "P205"}, 0, "No findings in 1 file with 5 lines\n"},
        {{m_warned, m_erroneous}, 1, "Found 1 error and 1 note in 2 files with 11 lines\n"},
        {{m_refused},
         2,
         "Found 1 error in 1 file with 1 line\nThe version is refused, so that only the lines were "
         "checked\n"},
    };
    for (Case const& test : cases) {
        std::vector<std::string> arguments{"check"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, test.code) << run.out;
        EXPECT_EQ(run.err, "");
        EXPECT_TRUE(run.out.ends_with(test.summary)) << run.out;
    }
}

TEST_F(CheckVerbTest, WrongArguments) {
    struct Case {
        std::vector<std::string> arguments;
        std::string err;
    };
    Case const cases[] = {
        {{}, "FILE is required\nRun with --help for more information.\n"},
        {{m_good, "--disable", "nested-setcion"},
         "paramdb: nested-setcion: no such code; did you mean nested-section?\n"},
        {{"--explain", "duplicate-rows"},
         "paramdb: duplicate-rows: no such code; did you mean duplicate-row?\n"},
        {{m_good, "--format", "xml"},
         "--format: xml not in {text,json,sarif,github}\nRun with --help for more information.\n"},
    };
    for (Case const& test : cases) {
        std::vector<std::string> arguments{"check"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, test.err);
    }
    std::string const missing = Name(u8"missing.lake");
    auto const run = RunCommand({"check", m_good, missing});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("paramdb: " + missing + ": ")) << run.err;
}

TEST_F(CheckVerbTest, ExplainsACode) {
    for (char const* const code : {"P202", "p202", "comment-in-table"}) {
        auto const run = RunCommand({"check", "--explain", code});
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.out, "## P202 comment-in-table\n"
                           "\n"
                           "**Warning.** A comment or blank line stands in a table.\n"
                           "\n"
                           "Inside of a section every line without a key is a row. One without fields "
                           "repeats the row before it "
                           "and is left out\n"
                           "as a duplicate; it does harm as soon as it stands before the first row.\n"
                           "\n"
                           "```\n"
                           "\t1 \"Idle\"\n"
                           "\t; two of them\n"
                           "\t2 \"Warm up\"\n"
                           "```\n"
                           "\n"
                           "**Remedy.** Put comments and blank lines outside of sections. The closing line "
                           "may have a comment: "
                           "`} ; <TMode>`.\n");
    }
}

TEST_F(CheckVerbTest, MessagesOfTheLoadAreNotTwice) {
    auto const run = RunCommand({"check", m_erroneous});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(
        run.out,
        m_erroneous +
            ":4:2: error P205 the row is left out: \"x\" is not a whole number of 32 bits, as the column "
            "mode takes it\n"
            "  4 |  x \"Idle\"\n"
            "    |  ^\n"
            "  hint: the columns are mode name\n"
            "\n"
            "Found 1 error in 1 file with 5 lines\n");
}

TEST_F(CheckVerbTest, Json) {
    auto const run = RunCommand({"check", m_warned, m_good, "--format", "json"});
    EXPECT_EQ(run.code, 0);
    Json const expected = {
        {"files",
         {{{"file", m_warned}, {"lines", 6}, {"sections", 1}},
          {{"file", m_good}, {"lines", 17}, {"sections", 3}}}},
        {"result", "complete"},
        {"findings", Json::array()},
        {"summary", {{"errors", 0}, {"warnings", 0}, {"notes", 0}}},
    };
    EXPECT_EQ(Json::parse(run.out), expected);

    auto const warned = RunCommand({"check", m_warned, "--format", "json"});
    EXPECT_EQ(Json::parse(warned.out)["findings"],
              Json::parse(R"([{"code": "P204", "name": "duplicate-row", "severity": "warning", "file": )" +
                          Json(m_warned).dump() +
                          R"(, "line": 5, "column": 2, "length": 1,
        "message": "the row is left out: <TMode> has the key 1 already",
        "hint": "leave one of the two lines out, or give one another key", "source": "\t1 \"Warm up\"",
        "related": [{"file": )" +
                          Json(m_warned).dump() +
                          R"(, "line": 4, "column": 2, "text": "the row that counts"}]}])"));
    auto const refused = RunCommand({"check", m_refused, "--format", "json"});
    Json const document = Json::parse(refused.out);
    EXPECT_EQ(document["result"], "refused");
    EXPECT_EQ(document["findings"].size(), 1U);
}

TEST_F(CheckVerbTest, JsonOfAWholeFile) {
    auto const run = RunCommand({"check", File(u8"no version.lake", "<TMode>: {\n}\n"), "--format", "json"});
    Json const finding = Json::parse(run.out)["findings"][0];
    EXPECT_EQ(finding["code"], "P101");
    for (char const* const key : {"line", "column", "length", "source"})
        EXPECT_TRUE(finding[key].is_null()) << key;
}

TEST_F(CheckVerbTest, Sarif) {
    auto const run = RunCommand({"check", m_warned, "--format", "sarif"});
    Json const document = Json::parse(run.out);
    EXPECT_EQ(document["version"], "2.1.0");
    ASSERT_EQ(document["runs"].size(), 1U);
    Json const& driver = document["runs"][0]["tool"]["driver"];
    EXPECT_EQ(driver["name"], "paramdb");
    ASSERT_EQ(document["runs"][0]["results"].size(), 1U);
    Json const& result = document["runs"][0]["results"][0];
    EXPECT_EQ(result["ruleId"], "P204");
    EXPECT_EQ(driver["rules"][result["ruleIndex"].get<std::size_t>()]["id"], "P204");
    EXPECT_EQ(result["level"], "warning");
    EXPECT_EQ(result["message"]["text"],
              "the row is left out: <TMode> has the key 1 already; leave one of the two "
              "lines out, or give one another key");
    Json const& place = result["locations"][0]["physicalLocation"];
    EXPECT_EQ(place["region"], Json::parse(R"({"startLine": 5, "startColumn": 2, "endColumn": 3})"));
    std::string const uri = place["artifactLocation"]["uri"];
    EXPECT_TRUE(uri.starts_with("file:///")) << uri;
    EXPECT_TRUE(uri.ends_with("/warned.lake")) << uri;
    EXPECT_EQ(result["relatedLocations"][0]["message"]["text"], "the row that counts");
    EXPECT_EQ(result["relatedLocations"][0]["physicalLocation"]["region"]["startLine"], 4);
}

TEST_F(CheckVerbTest, SarifOfAStrangeName) {
    auto const run = RunCommand({"check", File(u8"a b\u00FC%.lake", Warned), "--format", "sarif"});
    std::string const uri = Json::parse(
        run.out)["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"];
    EXPECT_TRUE(uri.ends_with("/a%20b%C3%BC%25.lake")) << uri;
}

TEST_F(CheckVerbTest, Github) {
    std::string const name = File(u8"a,b%.lake", Warned);
    auto const run = RunCommand({"check", name, "--format", "github"});
    std::string shown;
    for (char const letter : name)
        shown += letter == ','   ? "%2C"
                 : letter == '%' ? "%25"
                 : letter == ':' ? "%3A"
                                 : std::string(1, letter);
    EXPECT_EQ(run.out,
              "::warning file=" + shown +
                  ",line=5,col=2,endColumn=3,title=P204 duplicate-row::the row is left out: <TMode> has the "
                  "key 1 already%0Ahint: leave one of the two lines out, or give one another key\n");
    auto const note = RunCommand({"check", m_warned, m_erroneous, "--format=github"});
    EXPECT_NE(note.out.find("::notice file="), std::string::npos) << note.out;
    EXPECT_TRUE(RunCommand({"check", m_good, "--format=github"}).out.empty());
}

TEST_F(CheckVerbTest, ALongLineIsShownInPart) {
    std::string const line = "\t\"" + std::string(120, 'a') + "\" \"" + std::string(30, 'b') + "\" surplus";
    std::string const file = File(u8"long.lake", Version + "<TAuxStrings>: {\n" + line + "\n}\n");
    auto const run = RunCommand({"check", file});
    EXPECT_NE(run.out.find("\n  4 | ..." + line.substr(line.size() - 100) + "\n    | " +
                           std::string(96, ' ') + "^~~~~~~\n"),
              std::string::npos)
        << run.out;
}

TEST_F(CheckVerbTest, TheHelpTellsTheForms) {
    auto const run = RunCommand({"check", "--help"});
    EXPECT_EQ(run.code, 0);
    for (char const* const text :
         {"--strict", "--disable CODE", "--explain CODE", "--format FORM", "Exit codes:"})
        EXPECT_NE(run.out.find(text), std::string::npos) << run.out;
}
