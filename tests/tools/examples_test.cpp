// The examples in the help of each subcommand, run one after the other as they stand there.
#include "tests/tools/command_nodes.h"
#include "tests/tools/command_run.h"
#include "tests/tools/example_folder.h"

#include <algorithm>
#include <map>

using namespace paramdb::tools;

namespace {

// The exit codes of examples whose answer is a finding.
std::map<std::string, int> const OtherCodes = {
    {"paramdb diff gearbox.lake gearbox_new.lake --rpm 3000", 1},
    {"paramdb diff gearbox.lake gearbox.lake,customer.lake --format html > diff.html", 1},
    {"paramdb report gearbox.lake customer.lake --lang de -o report.html", 1}, // as `check` finds it
    {"paramdb db diff sqlite3:bench.db#gearbox@3 sqlite3:bench.db#gearbox", 1},
};
// Those that answer with their exit code alone, or have nothing to do.
std::vector<std::string> const SilentExamples = {
    "paramdb format gearbox.lake customer.lake", // which are in that layout
    "paramdb format --check *.lake",
};

using Examples = LoadTest;

} // namespace

TEST_F(Examples, OfEachSubcommandAreRight) {
    CommandNode const command = WholeCommand();
    bool const has_databases = FindNode(command, "db export") != nullptr;
    for (CommandNode const* node : AllNodes(command)) {
        ExampleFolder const folder;
        if (has_databases && node->path.starts_with("db")) {
            for (char const* const file :
                 {"gearbox.lake", "gearbox_new.lake", "gearbox.lake", "gearbox_new.lake"})
                ASSERT_EQ(RunCommand({"db", "export", file, "sqlite3:bench.db#gearbox"}).code, 0);
            ASSERT_EQ(
                RunCommand({"db", "import", "sqlite3:bench.db#gearbox", "--cache", "gearbox.copy"}).code, 0);
        }
        for (std::string const& example : node->notes.examples) {
            SCOPED_TRACE(example);
            if (example.find("postgresql:") != std::string::npos)
                continue; // asks for a server
            auto shell = ReadShellWords(example);
            ASSERT_GE(shell.words.size(), 2u);
            EXPECT_EQ(shell.words[0], "paramdb");
            shell.words.erase(shell.words.begin());
            auto const before = folder.Content();
            Reset();
            CommandRun const run = RunCommand(shell.words);
            auto const code = OtherCodes.find(example);
            EXPECT_EQ(run.code, code == OtherCodes.end() ? 0 : code->second);
            EXPECT_EQ(run.err, "");
            bool const is_silent = std::ranges::count(SilentExamples, example) > 0;
            EXPECT_EQ(run.out.empty() && folder.Content() == before, is_silent) << run.out;
            if (!shell.target.empty()) {
                EXPECT_NE(run.out, "");
                test_support::WriteBytes(shell.target, run.out);
            }
        }
    }
}

TEST(ShellWords, AreTakenAsAShellDoes) {
    auto const shell = ReadShellWords("paramdb id 'a b' \"c\" d'e f'g -o x > out.txt");
    EXPECT_EQ(shell.words, (std::vector<std::string>{"paramdb", "id", "a b", "c", "de fg", "-o", "x"}));
    EXPECT_EQ(shell.target, "out.txt");
}
