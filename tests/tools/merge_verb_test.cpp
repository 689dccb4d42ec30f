#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

std::string const LaterVersion = "<DbDesign.CacheVersion>: 217\n"
                                 "<TMode>: {\n"
                                 "\t7  \"Shifting\" ; kept\n"
                                 "}\n"
                                 "<TPhysMode>: {\n"
                                 "\t1 \"Gear\"\n"
                                 "}\n";

class MergeVerbTest : public CommandTest {
protected:
    std::string Bytes(std::u8string const& name) const {
        std::u8string const path(name);
        std::string const full = Name(path);
        return test_support::ReadBytes(std::filesystem::path(std::u8string(full.begin(), full.end())));
    }

    std::string const m_base = File(u8"base.lake", SampleLake);
    std::string const m_later = File(u8"later.lake", LaterVersion);
    std::string const m_out = Name(u8"out.lake");
};

} // namespace

TEST_F(MergeVerbTest, WritesTheFilesAndTellsWhereTablesComeFrom) {
    auto const run = RunCommand({"merge", m_base, m_later, "-o", m_out});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Bytes(u8"out.lake"), SampleLake + "\n" + LaterVersion);
    EXPECT_EQ(run.out, "Section        Rows  From" + std::string(m_later.size(), ' ') +
                           "Instead of\n"
                           "<TMode>           1  " +
                           m_later + ":2  " + m_base +
                           ":3 with 4 rows\n"
                           "<TRotorSpeed>     3  " +
                           m_base +
                           ":9\n"
                           "<TAuxStrings>     2  " +
                           m_base +
                           ":14\n"
                           "<TPhysMode>       1  " +
                           m_later +
                           ":5\n"
                           "\n"
                           "Key                      Value  From" +
                           std::string(m_base.size(), ' ') +
                           "Passed over\n"
                           "<DbDesign.CacheVersion>  216    " +
                           m_base + ":1  217 of " + m_later +
                           ":1\n"
                           "\n" +
                           m_out + ": 25 lines, " +
                           std::to_string(SampleLake.size() + 1 + LaterVersion.size()) + " bytes\n");
}

TEST_F(MergeVerbTest, LoadsAsTheFilesDo) {
    auto const expected = RunCommand({"dump", m_base, m_later});
    for (std::string const& option : std::vector<std::string>{"--format=text", "--clean"}) {
        EXPECT_EQ(RunCommand({"merge", option, m_base, m_later, "-o", m_out}).code, 0);
        auto const run = RunCommand({"dump", m_out});
        EXPECT_EQ(run.out, expected.out) << option;
        EXPECT_EQ(run.err, expected.err) << option;
    }
}

TEST_F(MergeVerbTest, LeavesOutSupersededLines) {
    auto const run = RunCommand({"merge", "--clean", m_base, m_later, "--output", m_out});
    EXPECT_EQ(run.code, 0);
    std::string const tables = SampleLake.substr(SampleLake.find("<TRotorSpeed>"));
    std::string const expected = SampleLake.substr(0, SampleLake.find("<TMode>")) + tables + "\n" +
                                 LaterVersion.substr(LaterVersion.find('\n') + 1);
    EXPECT_EQ(Bytes(u8"out.lake"), expected);
    EXPECT_TRUE(run.out.ends_with(m_out + ": 18 lines, " + std::to_string(expected.size()) +
                                  " bytes, 7 superseded lines left out\n"))
        << run.out;
}

TEST_F(MergeVerbTest, ReportsAsJson) {
    auto const run = RunCommand({"merge", m_base, m_later, "-o", m_out, "--format", "json"});
    EXPECT_EQ(run.code, 0);
    using Json = nlohmann::json;
    Json const expected{
        {"output",
         {{"file", m_out},
          {"bytes", SampleLake.size() + 1 + LaterVersion.size()},
          {"lines", 25},
          {"left_out", 0}}},
        {"sections",
         {{{"key", "<TMode>"},
           {"file", m_later},
           {"line", 2},
           {"rows", 1},
           {"replaced", {{{"file", m_base}, {"line", 3}, {"rows", 4}}}}},
          {{"key", "<TRotorSpeed>"}, {"file", m_base}, {"line", 9}, {"rows", 3}, {"replaced", Json::array()}},
          {{"key", "<TAuxStrings>"},
           {"file", m_base},
           {"line", 14},
           {"rows", 2},
           {"replaced", Json::array()}},
          {{"key", "<TPhysMode>"},
           {"file", m_later},
           {"line", 5},
           {"rows", 1},
           {"replaced", Json::array()}}}},
        {"keys",
         {{{"key", "<DbDesign.CacheVersion>"},
           {"value", "216"},
           {"file", m_base},
           {"line", 1},
           {"passed_over", {{{"value", "217"}, {"file", m_later}, {"line", 1}}}}}}}};
    EXPECT_EQ(Json::parse(run.out), expected) << run.out;
}

TEST_F(MergeVerbTest, OneFileCanBeCleaned) {
    std::string const twice = File(u8"twice.lake", "k: 1\nk: 2\n<T>: {\n1\n}\n<T>: {\n2\n}\n");
    auto const run = RunCommand({"merge", "--clean", "--force", twice, "-o", twice});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Bytes(u8"twice.lake"), "k: 1\n<T>: {\n2\n}\n");
}

TEST_F(MergeVerbTest, AnInputIsNotOverwritten) {
    auto const run = RunCommand({"merge", m_base, m_later, "-o", m_later});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "paramdb: " + m_later + ": is an input; --force overwrites it\n");
    auto const other = RunCommand({"merge", m_base, m_later, "-o", Name(u8"./base.lake")});
    EXPECT_EQ(other.code, 2);
    EXPECT_EQ(other.err,
              "paramdb: " + Name(u8"./base.lake") + ": is the input " + m_base + "; --force overwrites it\n");
    EXPECT_EQ(Bytes(u8"later.lake"), LaterVersion);
    EXPECT_EQ(Bytes(u8"base.lake"), SampleLake);
    EXPECT_EQ(RunCommand({"merge", m_base, m_later, "-o", m_later, "--force"}).code, 0);
    EXPECT_EQ(Bytes(u8"later.lake"), SampleLake + "\n" + LaterVersion);
}

TEST_F(MergeVerbTest, NothingIsWrittenAfterAFault) {
    std::string const stray = File(u8"stray.lake", "k: 1\n}\n");
    std::string const open = File(u8"open.lake", "<T>: {\n1\n");
    std::string const empty = File(u8"empty.lake", "");
    std::string const help = "Run with --help for more information.\n";
    struct Case {
        std::vector<std::string> arguments;
        std::string err;
    };
    Case const cases[] = {
        {{"merge", m_base}, "--output is required\n" + help},
        {{"merge", "-o", m_out}, "FILE is required\n" + help},
        {{"merge", m_base, "-o", ""}, "paramdb: \"\": no name of a file\n"},
        {{"merge", m_base, "-o", Folder()}, "paramdb: " + Folder() + ": is a folder\n"},
        {{"merge", empty, m_base, "-o", m_out}, "paramdb: " + empty + ": the file is empty\n"},
        {{"merge", open, stray, m_base, "-o", m_out},
         "paramdb: " + open +
             ":1: the section <T> is not closed, so what the next file holds would become a part of it\n"
             "paramdb: " +
             stray + ":2: this line closes no section, so nothing behind it would be read\n"},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand(test.arguments);
        EXPECT_EQ(run.code, 2) << test.err;
        EXPECT_EQ(run.out, "") << test.err;
        EXPECT_EQ(run.err, test.err);
    }
    EXPECT_EQ(RunCommand({"merge", m_base, Name(u8"missing.lake"), "-o", m_out}).code, 2);
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(m_out)));
#ifndef _WIN32
    auto const full = RunCommand({"merge", m_base, "-o", "/dev/full"});
    EXPECT_EQ(full.code, 2);
    EXPECT_EQ(full.out, "");
    EXPECT_EQ(full.err, "paramdb: /dev/full: No space left on device\n");
#endif
}
