#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <filesystem>

namespace {

class ConvertVerbTest : public CommandTest {
protected:
    static std::filesystem::path PathOf(std::string const& name) {
        return std::u8string(name.begin(), name.end());
    }
    static std::string Bytes(std::string const& name) { return test_support::ReadBytes(PathOf(name)); }

    std::string const m_lake = File(u8"a.lake", SampleLake);
};

std::string const Commented = "; one\n" + SampleLake + "; two\nother: 5\n";

} // namespace

TEST_F(ConvertVerbTest, GoesThroughEveryKindAndBack) {
    auto const before = RunCommand({"dump", m_lake});
    std::string from = m_lake;
    std::string const first = Name(u8"first.lake");
    std::vector<std::string> const names{first,           Name(u8"a.json"), Name(u8"tables/"),
                                         Name(u8"a.sea"), Name(u8"b.json"), Name(u8"b.sea"),
                                         Name(u8"b.csv"), Name(u8"c.json"), Name(u8"last.lake")};
    for (std::string const& to : names) {
        auto const run = RunCommand({"convert", from, to});
        ASSERT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(run.out, to + ": 3 tables with 9 rows\n");
        EXPECT_EQ(run.err, "");
        from = to;
    }
    EXPECT_EQ(Bytes(names.back()), Bytes(first));
    EXPECT_EQ(Bytes(Name(u8"a.json")), Bytes(Name(u8"c.json")));
    EXPECT_EQ(Bytes(Name(u8"a.sea")), Bytes(Name(u8"b.sea")));
    auto const after = RunCommand({"dump", names.back()});
    EXPECT_EQ(after.out, before.out);
    EXPECT_EQ(after.code, 0);
    EXPECT_EQ(RunCommand({"format", "--check", names.back()}).code, 0);
}

TEST_F(ConvertVerbTest, TheExampleSurvives) {
    std::string const gearbox =
        (std::filesystem::path(PARAMDB_SOURCE_DIR) / "examples/gearbox/gearbox.lake").string();
    auto const before = RunCommand({"dump", gearbox});
    std::string from = gearbox;
    for (auto const& to : {Name(u8"g.json"), Name(u8"g.sea"), Name(u8"g.lake")}) {
        ASSERT_EQ(RunCommand({"convert", from, to, "--drop", "comments"}).code, 0) << to;
        from = to;
    }
    EXPECT_TRUE(RunCommand({"dump", from}).out == before.out);
}

TEST_F(ConvertVerbTest, ALossIsRefusedUnlessItIsAskedFor) {
    std::string const in = File(u8"b.lake", Commented);
    std::string const out = Name(u8"b.json");
    std::string const comments = "paramdb: " + in + ":1: 2 comments, the first of them here\n";
    std::string const other = "paramdb: " + in + ":20: nothing reads the value of other\n";
    std::string const refused =
        "paramdb: " + out + ": not written, since this would be lost; it is left out with";
    auto run = RunCommand({"convert", in, out});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, comments + other + refused + " --drop comments --drop unknown\n");
    run = RunCommand({"convert", in, out, "--drop", "comments"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, other + refused + " --drop unknown\n");
    EXPECT_FALSE(std::filesystem::exists(PathOf(out)));
    std::string const done = out + ": 3 tables with 9 rows; left out: 2 comments, 1 unknown\n";
    for (auto const& options :
         std::vector<std::vector<std::string>>{{"--drop", "comments", "--drop", "unknown"}, {"--lossy"}}) {
        std::vector<std::string> arguments{"convert", in, out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        run = RunCommand(arguments);
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out, done);
    }
    EXPECT_EQ(RunCommand({"convert", m_lake, Name(u8"c.json")}).code, 0);
    EXPECT_EQ(Bytes(Name(u8"c.json")), Bytes(out));
}

TEST_F(ConvertVerbTest, LongListsAreCut) {
    std::string lines;
    std::string expected;
    std::string const in = Name(u8"b.lake");
    for (int line = 1; line <= 13; ++line) {
        lines += "k" + std::to_string(line) + ": 1\n";
        if (line <= 10)
            expected += "paramdb: " + in + ":" + std::to_string(line) + ": nothing reads the value of k" +
                        std::to_string(line) + "\n";
    }
    File(u8"b.lake", lines + SampleLake);
    auto const run = RunCommand({"convert", in, Name(u8"b.sea")});
    EXPECT_EQ(run.err, expected + "paramdb: " + in + ": and 3 more\nparamdb: " + Name(u8"b.sea") +
                           ": not written, since this would be lost; it is left out with --drop unknown\n");
    std::string const json = Name(u8"b.json");
    std::string rows;
    std::string faults;
    for (int row = 1; row <= 12; ++row) {
        rows += (row == 1 ? "" : ",") + std::string("{\"mode\": ") + std::to_string(row) +
                ", \"name\": \"\xE2\x82\xAC\"}";
        if (row <= 10)
            faults += "paramdb: " + json + ": <TMode>, row " + std::to_string(row) +
                      ", name: the character U+20AC cannot be in a lake\n";
    }
    File(u8"b.json", "{\"tables\": {\"<TMode>\": [" + rows + "]}}");
    auto const to_lake = RunCommand({"convert", json, Name(u8"c.lake")});
    EXPECT_EQ(to_lake.code, 2);
    EXPECT_EQ(to_lake.err, faults + "paramdb: " + json + ": and 2 more\n");
    EXPECT_EQ(RunCommand({"convert", json, Name(u8"c.sea")}).code, 0);
}

TEST_F(ConvertVerbTest, FaultyRowsOfASeaCanBeDropped) {
    std::string const in =
        File(u8"b.sea", "list\t<TMode>\n\t1 a\n\tx\nvalue\t<DbDesign.CacheVersion>\t0\t216\n");
    std::string const out = Name(u8"b.json");
    auto const run = RunCommand({"convert", in, out});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "paramdb: " + in + ": <TMode>, line 2: the row cannot be read\nparamdb: " + out +
                           ": not written, since this would be lost; it is left out with --drop faulty\n");
    auto const dropped = RunCommand({"convert", in, out, "--drop", "faulty"});
    EXPECT_EQ(dropped.code, 0);
    EXPECT_EQ(dropped.out, out + ": 1 table with 1 row; left out: 1 faulty\n");
    EXPECT_EQ(Bytes(out),
              "{\n  \"version\": {\n    \"major\": 216\n  },\n  \"tables\": {\n    \"<TMode>\": [\n"
              "      {\"mode\": 1, \"name\": \"a\"}\n    ]\n  }\n}\n");
}

TEST_F(ConvertVerbTest, KindsCanBeGiven) {
    std::string const text = File(u8"a.txt", SampleLake);
    std::string const out = Name(u8"out");
    auto const untold = RunCommand({"convert", text, out});
    EXPECT_EQ(untold.code, 2);
    std::string const kinds = " lake, sea, json or csv\n";
    EXPECT_EQ(untold.err,
              "paramdb: " + text + ": the name does not tell the kind of file; give it with --from" + kinds +
                  "paramdb: " + out + ": the name does not tell the kind of file; give it with --to" + kinds);
    EXPECT_EQ(RunCommand({"convert", text, out, "--from", "lake", "--to", "csv"}).out,
              out + ": 3 tables with 9 rows\n");
    EXPECT_EQ(Bytes(Name(u8"out/TMode.csv")), "mode,name\r\n1,Idle\r\n2,Warm up\r\n3,Pr\xC3\xBC"
                                              "fen\r\n11,1. gear drive\r\n");
    EXPECT_EQ(RunCommand({"convert", out, text, "--to", "lake"}).code, 0);
}

TEST_F(ConvertVerbTest, TargetsAreSafe) {
    auto const same = RunCommand({"convert", m_lake, m_lake});
    EXPECT_EQ(same.code, 2);
    EXPECT_EQ(same.err, "paramdb: " + m_lake + ": is an input; --force overwrites it\n");
    EXPECT_EQ(Bytes(m_lake), SampleLake);
    EXPECT_EQ(RunCommand({"convert", m_lake, m_lake, "--force"}).code, 0);
    EXPECT_NE(Bytes(m_lake), SampleLake);
    auto const folder = RunCommand({"convert", m_lake, Folder(), "--to", "json"});
    EXPECT_EQ(folder.code, 2);
    EXPECT_EQ(folder.err, "paramdb: " + Folder() + ": is a folder\n");

    std::string const tables = Name(u8"tables");
    EXPECT_EQ(RunCommand({"convert", m_lake, tables, "--to", "csv"}).code, 0);
    auto const full = RunCommand({"convert", m_lake, tables});
    EXPECT_EQ(full.code, 2);
    EXPECT_EQ(full.err, "paramdb: " + tables + ": is not empty; --force replaces the tables in it\n");
    EXPECT_EQ(RunCommand({"convert", tables, tables}).err,
              "paramdb: " + tables + ": is the input; --force overwrites it\n");
    EXPECT_EQ(RunCommand({"convert", m_lake, tables, "--force"}).code, 0);
    EXPECT_EQ(RunCommand({"convert", tables, tables, "--force"}).code, 0);
    EXPECT_EQ(RunCommand({"convert", tables, Name(u8"b.lake")}).code, 0);
    EXPECT_EQ(Bytes(Name(u8"b.lake")), Bytes(m_lake));
#ifndef _WIN32
    auto const device = RunCommand({"convert", m_lake, "/dev/full", "--to", "json"});
    EXPECT_EQ(device.code, 2);
    EXPECT_EQ(device.err, "paramdb: /dev/full: No space left on device\n");
#endif
}

TEST_F(ConvertVerbTest, SourcesWithoutParameters) {
    struct Case {
        std::string name;
        std::string err;
    };
    std::string const help = "Run with --help for more information.\n";
    Case const cases[] = {
        {File(u8"empty.lake", ""), ": the file is empty\n"},
        {File(u8"empty.sea", ""), ": holds no table and no value\n"},
        {File(u8"empty.json", "{}"), ": holds no table and no value\n"},
        {File(u8"bad.json", "5"), ": no object\n"},
        {File(u8"file.csv", "x"), ": is no folder, and CSV is a folder with a file for each table\n"},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand({"convert", test.name, Name(u8"out.lake")});
        EXPECT_EQ(run.code, 2) << test.name;
        EXPECT_EQ(run.out, "") << test.name;
        EXPECT_EQ(run.err, "paramdb: " + test.name + test.err);
    }
    EXPECT_EQ(RunCommand({"convert", Name(u8"none.lake"), Name(u8"out.sea")}).code, 2);
    EXPECT_EQ(RunCommand({"convert", m_lake}).err, "OUT is required\n" + help);
    EXPECT_EQ(RunCommand({"convert", m_lake, Name(u8"out.sea"), "--drop", "rows"}).code, 2);
    EXPECT_FALSE(std::filesystem::exists(PathOf(Name(u8"out.lake"))));
    // A folder with a faulty file.
    std::filesystem::create_directory(PathOf(Name(u8"t")));
    std::string const cell = File(u8"t/TMode.csv", "mode,name\n1,a\nx,b\n");
    auto const run = RunCommand({"convert", Name(u8"t"), Name(u8"out.lake")});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "paramdb: " + cell + ":3: mode: no int: x\n");
}
