#include "tests/tools/command_nodes.h"
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

namespace {

using Texts = std::vector<std::string>;

// A subcommand as words.
Texts WordsOf(paramdb::tools::CommandNode const& node) {
    Texts words;
    std::istringstream path(node.path);
    for (std::string word; path >> word;)
        words.push_back(word);
    return words;
}

} // namespace

TEST(WrongWord, TellsTheNearestOptionOfEverySubcommand) {
    auto const command = WholeCommand();
    for (auto const* node : AllNodes(command)) {
        for (auto const& option : node->options) {
            for (std::string const& name : option.names) {
                if (!name.starts_with("--") || name.size() < 6)
                    continue;
                Texts arguments = WordsOf(*node);
                std::string const wrong = name.substr(0, 3) + name.substr(4) + "z";
                arguments.push_back(wrong);
                auto const run = RunCommand(arguments);
                EXPECT_EQ(run.code, 2) << node->path;
                EXPECT_EQ(run.out, "");
                EXPECT_TRUE(run.err.starts_with("paramdb: " + wrong + ": no such option")) << run.err;
                if (name.size() > 8) { // in a shorter one two letters are too much
                    EXPECT_NE(run.err.find(name), std::string::npos) << node->path << ' ' << run.err;
                }
            }
        }
    }
}

TEST(WrongWord, HelpOfEverySubcommandStandsAnywhere) {
    auto const command = WholeCommand();
    for (auto const* node : AllNodes(command)) {
        Texts const words = WordsOf(*node);
        auto with = [&](Texts const& before, Texts const& behind) {
            Texts arguments = before;
            arguments.insert(arguments.end(), words.begin(), words.end());
            arguments.insert(arguments.end(), behind.begin(), behind.end());
            auto const run = RunCommand(arguments);
            EXPECT_EQ(run.code, 0) << node->path;
            EXPECT_EQ(run.err, "") << node->path;
            return run.out;
        };
        std::string const help = with({}, {"--help"});
        EXPECT_NE(help.find("Usage: paramdb " + node->path), std::string::npos) << help;
        EXPECT_EQ(with({"--quiet", "--color", "never"}, {"-h"}), help);
        EXPECT_EQ(with({"--color=always"}, {"--help", "-q"}), help);
    }
}
