// `paramdb db`, and revisions where other verbs take files.
#include "tests/database/database_test.h"
#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

std::string const When = "2024-01-01T00:00:00Z";

class DbVerb : public CommandTest {
protected:
    // A run whose times are those of the clock and which is done by whoever runs the tests.
    static std::string WithoutTimesAndNames(std::string text) {
        text = std::regex_replace(text, std::regex("20..-..-..T..:..:..Z"), When);
        return std::regex_replace(text, std::regex("(Time|Throughput) +[^\n]*"), "$1 ...");
    }
    CommandRun Run(std::vector<std::string> const& arguments) {
        auto run = RunCommand(arguments);
        run.out = WithoutTimesAndNames(run.out);
        return run;
    }
    std::string Place() const { return "sqlite3:" + Name(u8"bench.db"); }
    // Exports a lake of two modes as the first revision of the set "gearbox", and one of three as the second.
    void ExportTwo() {
        std::string const lake = File(u8"a.lake", SampleLake);
        for (std::string const remark : {"First", "Second"})
            ASSERT_EQ(
                Run({"db", "export", lake, Place() + "#gearbox", "--who", "me@bench", "-m", remark}).code, 0);
    }
};

TEST_F(DbVerb, Export) {
    std::string const lake = File(u8"a.lake", SampleLake);
    auto const run =
        Run({"db", "export", lake, Place() + "#gearbox", "--who", "me@bench", "--remark", "First"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Set       gearbox\n"
                       "Revision  1\n"
                       "When      2024-01-01T00:00:00Z\n"
                       "Who       me@bench\n"
                       "Remark    First\n"
                       "Tables    3 with 9 rows\n");
    auto const json = Run({"db", "export", lake, Place() + "#gearbox", "--who", "me", "--format", "json"});
    auto const document = nlohmann::json::parse(json.out);
    EXPECT_EQ(document, nlohmann::json({{"set", "gearbox"},
                                        {"revision", 2},
                                        {"when", When},
                                        {"who", "me"},
                                        {"remark", ""},
                                        {"tables", 3},
                                        {"rows", 9}}));
}

TEST_F(DbVerb, ExportOfFaultyFiles) {
    std::string const lake = File(u8"a.lake", FaultyLake);
    auto run = Run({"db", "export", lake, Place(), "--strict"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.ends_with("paramdb: nothing was exported, since the load has findings\n"));
    run = Run({"db", "list", Place()});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "ParamDb::Revisions(): Listing of '" + Place() + "' failed: there is no such file\n");

    run = Run({"db", "export", lake, Place(), "--who", "me"});
    EXPECT_EQ(run.code, 1);
    // Each message comes once.
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 2) << run.err;
    EXPECT_NE(run.out.find("Tables    4 with 10 rows\n"), std::string::npos) << run.out;

    EXPECT_EQ(Run({"db", "export", File(u8"r.lake", RefusedLake), Place()}).code, 2);
    EXPECT_EQ(Run({"db", "export", Name(u8"none.lake"), Place()}).code, 2);
    run = Run({"db", "export", lake, "x.db"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "paramdb: x.db: is no connection\n");
    run = Run({"db", "export", Place()});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "paramdb: a FILE is required before the CONNECTION\n");
}

TEST_F(DbVerb, ListAndLog) {
    ExportTwo();
    std::string const lake = File(u8"b.lake", SampleLake);
    ASSERT_EQ(Run({"db", "export", lake, Place() + "#other", "--who", "J\xC3\xBCrgen"}).code, 0);
    auto run = Run({"db", "list", Place()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Set      Revisions  Newest  When                  Who       Rows  Remark\n"
                       "gearbox          2       2  2024-01-01T00:00:00Z  me@bench     9  Second\n"
                       "other            1       1  2024-01-01T00:00:00Z  J\xC3\xBCrgen       9\n");
    run = Run({"db", "log", Place() + "#gearbox"});
    EXPECT_EQ(run.out, "Set      Revision  When                  Who       Tables  Rows  Remark\n"
                       "gearbox         2  2024-01-01T00:00:00Z  me@bench       3     9  Second\n"
                       "gearbox         1  2024-01-01T00:00:00Z  me@bench       3     9  First\n");
    auto const list = nlohmann::json::parse(Run({"db", "list", Place(), "--format", "json"}).out);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0], nlohmann::json({{"set", "gearbox"},
                                       {"revisions", 2},
                                       {"newest", 2},
                                       {"when", When},
                                       {"who", "me@bench"},
                                       {"remark", "Second"},
                                       {"tables", 3},
                                       {"rows", 9}}));
    auto const log = nlohmann::json::parse(Run({"db", "log", Place(), "--format", "json"}).out);
    ASSERT_EQ(log.size(), 3u);
    EXPECT_EQ(log[0].at("set"), "other");
    EXPECT_EQ(log[2].at("remark"), "First");
    // Nothing in a database plays tricks on the terminal.
    ASSERT_EQ(Run({"db", "export", lake, Place() + "#x", "--who", "\x1B[2J"}).code, 0);
    EXPECT_EQ(Run({"db", "list", Place()}).out.find('\x1B'), std::string::npos);
}

TEST_F(DbVerb, Import) {
    ExportTwo();
    std::string const copy = Name(u8"gearbox.copy");
    auto run = Run({"db", "import", Place() + "#gearbox@1", "--cache", copy, "--timeout", "2"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "Set       gearbox\n"
                       "Revision  1\n"
                       "When      2024-01-01T00:00:00Z\n"
                       "Who       me@bench\n"
                       "Remark    First\n"
                       "Tables    3 with 9 rows\n");
    std::filesystem::remove(Name(u8"bench.db"));
    run = Run({"db", "import", Place() + "#gearbox", "--cache", copy, "--format", "json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.err.starts_with("ParamDb::ImportTables(): Import from '" + Place() +
                                    "' failed: there is no such file. The local copy '" + copy +
                                    "' is used: revision 1 of set 'gearbox', copied "))
        << run.err;
    auto const document = nlohmann::json::parse(run.out);
    EXPECT_EQ(document.at("is_local_copy"), true);
    EXPECT_EQ(document.at("faults"), 0);
    EXPECT_EQ(Run({"db", "import", Place() + "#gearbox"}).code, 2);
    // Any verb takes the copy so.
    run = Run({"dump", Place() + "#gearbox", "--cache", copy, "--table", "TMode"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("Idle"), std::string::npos);
}

TEST_F(DbVerb, ImportIntoAFile) {
    ExportTwo();
    std::string const revision = Place() + "#gearbox@1";
    auto const dump = Run({"dump", Name(u8"a.lake")}).out;
    for (std::string const name : {"out.lake", "out.sea", "out.json", "out.csv"}) {
        SCOPED_TRACE(name);
        std::string const out = Folder() + "/" + name;
        auto const run = Run({"db", "import", revision, "-o", out});
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.code, 0);
        EXPECT_NE(run.out.find("Tables    3 with 9 rows\n"), std::string::npos) << run.out;
        std::string const lake = Folder() + "/back.lake";
        ASSERT_EQ(Run({"convert", out, lake, "--force"}).code, 0);
        EXPECT_EQ(Run({"dump", lake}).out, dump);
        std::filesystem::remove(lake);
    }

    auto run = Run({"db", "import", revision, "-o", "out.txt"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "paramdb: out.txt: the name tells no kind of file: .lake, .sea, .json, or a folder for CSV\n");
    run = Run({"db", "import", revision, "-o", Folder() + "/out.csv"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "paramdb: " + Folder() + "/out.csv: is not empty; --force replaces the tables in it\n");
    EXPECT_EQ(Run({"db", "import", revision, "-o", Folder() + "/out.csv", "--force"}).code, 0);
    // A lake has no room for every text.
    test_support::RunSql(Place(), "DROP TRIGGER \"TMode_UPDATE\"; UPDATE \"TMode\" SET name = '\xE2\x82\xAC' "
                                  "WHERE mode = 1 AND revision_id = 1");
    std::filesystem::remove(Name(u8"out.lake"));
    run = Run({"db", "import", revision, "-o", Name(u8"out.lake")});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err,
              "paramdb: " + revision + ": <TMode>, row 1, name: the character U+20AC cannot be in a lake\n");
    EXPECT_FALSE(std::filesystem::exists(Name(u8"out.lake")));
    EXPECT_EQ(Run({"db", "import", revision, "-o", Name(u8"euro.json")}).code, 0);
}

TEST_F(DbVerb, ImportOfFaultyData) {
    ExportTwo();
    test_support::RunSql(Place(), "DROP TRIGGER \"TMode_DELETE\"; DELETE FROM \"TMode\" WHERE mode = 1");
    auto run = Run({"db", "import", Place() + "#gearbox"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, "ParamDb::ImportTables(): table 'TMode': 3 rows where the revision has 4\n");
    run = Run({"db", "import", Place() + "#gearbox", "--strict"});
    EXPECT_EQ(run.code, 2);
    EXPECT_TRUE(run.err.ends_with("failed: 1 fault in the data\n"));
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Run({"tables", Place() + "#gearbox"}).code, 1);
}

TEST_F(DbVerb, RevisionsWhereFilesStand) {
    ExportTwo();
    std::string const lake = Name(u8"a.lake");
    std::string const revision = Place() + "#gearbox@1";
    for (std::vector<std::string> const& words :
         {std::vector<std::string>{"dump"}, {"tables"}, {"show"}, {"show", "TMode"}, {"modes"}, {"rotors"}}) {
        auto with_lake = words;
        with_lake.insert(with_lake.begin() + 1, lake);
        auto with_revision = words;
        with_revision.insert(with_revision.begin() + 1, revision);
        auto const expected = Run(with_lake);
        auto const run = Run(with_revision);
        EXPECT_EQ(run.code, expected.code) << words.back();
        EXPECT_EQ(run.out, expected.out) << words.back();
    }
    auto run = Run({"name", revision, "mode", "11"});
    EXPECT_EQ(run.out, Run({"name", lake, "mode", "11"}).out);
    run = Run({"load", revision});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("    -      9         3  " + revision + "\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("Version           216.1, accepted\n"), std::string::npos) << run.out;
    EXPECT_EQ(Run({"load", Place() + "#gearbox@9"}).code, 2);
    EXPECT_EQ(Run({"load", "sqlite3:"}).code, 2);
}

// A later source replaces tables; single values stay with the first.
TEST_F(DbVerb, RevisionsBesideFiles) {
    ExportTwo();
    std::string const other = File(u8"b.lake", "<DbDesign.CacheVersion>: 7\n"
                                               "<QType><FBaseName>: Base\n"
                                               "<TMode>: {\n\t5 \"Only\"\n}\n");
    std::string const lake = Name(u8"a.lake");
    for (std::string const& name : {lake, Place() + "#gearbox"}) {
        SCOPED_TRACE(name);
        auto const run = Run({"load", name, other});
        EXPECT_EQ(run.code, 0);
        EXPECT_NE(run.out.find("Version           216.1, accepted\n"), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("Base type         Base\n"), std::string::npos) << run.out;
        auto const dump = Run({"dump", name, other});
        EXPECT_EQ(dump.out, Run({"dump", lake, other}).out);
        EXPECT_NE(dump.out.find("Only"), std::string::npos);
        EXPECT_EQ(dump.out.find("Idle"), std::string::npos);
        EXPECT_NE(dump.out.find("Gearbox"), std::string::npos);
    }
    // The other way round the version is the wrong one.
    EXPECT_EQ(Run({"load", other, Place() + "#gearbox"}).code, 2);
    EXPECT_EQ(Run({"load", other, lake}).code, 2);
}

// Verbs that look at the lines of files take a revision as the file that an import into a file makes.
TEST_F(DbVerb, RevisionsAsLines) {
    std::string const lake = File(u8"a.lake", SampleLake + "<TRelativeLimit>: {\n\t1 77 1 1 1 1 1 2\n}\n");
    std::string const revision = Place() + "#gearbox@1";
    EXPECT_LT(Run({"db", "export", lake, Place() + "#gearbox"}).code, 2);
    std::string const file = Name(u8"file.lake");
    ASSERT_LT(Run({"db", "import", revision, "-o", file}).code, 2);
    auto const with_its_name = [&](std::string text) {
        for (auto place = text.find(file); place != text.npos; place = text.find(file))
            text.replace(place, file.size(), revision);
        return text;
    };

    auto const of_file = Run({"check", file});
    auto const of_revision = Run({"check", revision});
    EXPECT_EQ(of_revision.out, with_its_name(of_file.out));
    EXPECT_EQ(of_revision.err, with_its_name(of_file.err));
    EXPECT_EQ(of_revision.code, of_file.code);
    EXPECT_NE(of_revision.out.find(revision + ":"), std::string::npos) << of_revision.out;

    std::string const merged = Name(u8"merged.lake");
    EXPECT_EQ(Run({"merge", revision, "-o", merged}).code, 0);
    EXPECT_EQ(Run({"diff", revision, merged}).code, 0);
    std::string const json = Name(u8"c.json");
    EXPECT_EQ(Run({"convert", revision, json}).code, 0);
    EXPECT_EQ(Run({"convert", json, Name(u8"c.lake")}).code, 0);
    EXPECT_EQ(Run({"diff", revision, Name(u8"c.lake")}).code, 0);
    EXPECT_EQ(Run({"format", "--stdout", revision}).out, Run({"format", "--stdout", file}).out);
    EXPECT_EQ(Run({"report", revision, "-o", Name(u8"r.html")}).code,
              Run({"report", file, "-o", Name(u8"f.html")}).code);

    for (std::string const verb : {"check", "format"}) {
        auto const run = Run({verb, Place() + "#none"});
        EXPECT_EQ(run.code, 2) << verb;
        EXPECT_NE(run.err.find("there is no set 'none'"), std::string::npos) << run.err;
    }
}

TEST_F(DbVerb, Diff) {
    ExportTwo();
    std::string const changed = std::regex_replace(SampleLake, std::regex("Warm up"), "Warm");
    ASSERT_EQ(Run({"db", "export", File(u8"c.lake", changed), Place() + "#gearbox"}).code, 0);
    EXPECT_EQ(Run({"db", "diff", Place() + "#gearbox@1", Place() + "#gearbox@2"}).code, 0);
    auto const run = Run({"db", "diff", Place() + "#gearbox@2", Place() + "#gearbox"});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.out.find("Warm up"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("Idle"), std::string::npos) << run.out;
}

TEST_F(DbVerb, WrongArguments) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    Case const cases[] = {
        {{"db"}, "A subcommand is required"},
        {{"db", "list"}, "CONNECTION is required"},
        {{"db", "list", "a.db"}, "CONNECTION: a.db is no connection"},
        {{"db", "list", "sqlite3:a", "--timeout", "0"},
         "--timeout: 0 is no number of seconds from 1 to 86400"},
        {{"load", "a.lake", "--timeout", "1s"}, "--timeout: 1s is no number of seconds from 1 to 86400"},
    };
    for (Case const& test : cases) {
        auto const run = Run(test.arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err, test.message + "\nRun with --help for more information.\n");
    }
    for (std::string const verb : {"list", "log", "import", "export"}) {
        auto const run = Run({"db", verb, "--help"});
        EXPECT_EQ(run.code, 0);
        EXPECT_NE(run.out.find("--timeout SECONDS"), std::string::npos) << run.out;
    }
    EXPECT_EQ(Run({"load", "--help"}).out.find("--timeout"), std::string::npos);
}

} // namespace
