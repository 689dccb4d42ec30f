#include "tests/tools/command_run.h"

TEST(WrongWord, TellsTheNearest) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    Case const cases[] = {
        {{"lod"}, "lod: no such subcommand; did you mean load?"},
        {{"laod", "a.lake", "--format", "json"}, "laod: no such subcommand; did you mean load?"},
        {{"SHOW"}, "SHOW: no such subcommand; did you mean show?"},
        {{"zzzz"}, "zzzz: no such subcommand"},
        {{"\x1B[1m"}, "\xEF\xBF\xBD[1m: no such subcommand"},
        {{"--quite"}, "--quite: no such option; did you mean --quiet?"},
        {{"--versoin"}, "--versoin: no such option; did you mean --version?"},
        {{"--quite", "load", "a.lake"}, "--quite: no such option; did you mean --quiet?"},
        {{"load", "--fromat", "json"}, "--fromat: no such option; did you mean --format?"},
        {{"load", "a.lake", "--fromat=json"}, "--fromat=json: no such option; did you mean --format?"},
        {{"load", "a.lake", "--colour", "never"}, "--colour: no such option; did you mean --color?"},
        {{"load", "a.lake", "-format"}, "-format: no such option; did you mean --format?"},
        {{"load", "a.lake", "--bogus"}, "--bogus: no such option"},
        {{"load", "a.lake", "-x"}, "-x: no such option"},
        {{"load", "--fromat"}, "--fromat: no such option; did you mean --format?"},
        {{"key", "a.lake", "1/2", "--lan=de"}, "--lan=de: no such option; did you mean --lang?"},
        {{"--lang", "de", "load", "a.lake"}, "--lang: no such option"},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand(test.arguments);
        EXPECT_EQ(run.code, 2) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, "paramdb: " + test.message + "\nRun with --help for more information.\n");
    }
}

// Words beyond those that a subcommand takes are no subcommands.
TEST(WrongWord, LeavesOtherFaultsAlone) {
    EXPECT_EQ(RunCommand({"load"}).err, "FILE is required\nRun with --help for more information.\n");
    EXPECT_EQ(RunCommand({"man", "load"}).err,
              "The following argument was not expected: load\nRun with --help for more information.\n");
    EXPECT_EQ(RunCommand({"--color", "blue", "load", "a.lake"}).err,
              "--color: blue not in {auto,always,never}\nRun with --help for more information.\n");
}
