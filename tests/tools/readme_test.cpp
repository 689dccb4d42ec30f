// The runs of the command that the README shows: each line "$ paramdb ..." of a block, and below it what it
// prints.
#include "tests/support/text_lines.h"
#include "tests/tools/command_run.h"
#include "tests/tools/example_folder.h"
#include "tools/databases.h"

using namespace paramdb::tools;

namespace {

using test_support::JoinLines;
using test_support::Lines;
using test_support::SplitLines;

struct ShownRun {
    std::string command;
    Lines output; // a line of three dots stands for any lines
};

std::vector<ShownRun> ReadShownRuns(std::string const& markdown) {
    std::vector<ShownRun> runs;
    bool is_in_block = false;
    bool is_run = false;
    for (std::string const& line : SplitLines(markdown)) {
        if (line.starts_with("```")) {
            is_in_block = !is_in_block;
            is_run = false;
        } else if (is_in_block && line.starts_with("$ ")) {
            is_run = line.starts_with("$ paramdb ") || line.starts_with("$ cat ");
            if (is_run)
                runs.push_back({line.substr(2), {}});
        } else if (is_run) {
            runs.back().output.push_back(line);
        }
    }
    return runs;
}

// Without what differs from run to run, with every change of a page, and from system to system: times, the
// bytes of a file that is written, and the memory of tables.
std::string Settled(std::string const& line) {
    static std::pair<std::regex, char const*> const settled[] = {
        {std::regex("^(Time|Throughput) +.*"), "$1 ..."},
        {std::regex("[0-9][0-9 ]* bytes"), "N bytes"},
        {std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}Z"), "T"},
        {std::regex("^(<\\w+> +[0-9 ]*?[0-9])  +[0-9][0-9 ]*(  C\\w+)"), "$1 N$2"},
        {std::regex("^([0-9]+ of [0-9]+ with rows +[0-9 ]*?[0-9])  +[0-9][0-9 ]*$"), "$1 N"},
    };
    std::string text = line;
    for (auto const& [form, instead] : settled)
        text = std::regex_replace(text, form, instead);
    return text;
}

bool Fits(Lines const& shown, std::size_t at, Lines const& printed, std::size_t from) {
    for (; at < shown.size(); ++at, ++from) {
        if (shown[at] == "...") {
            for (std::size_t next = from; next <= printed.size(); ++next)
                if (Fits(shown, at + 1, printed, next))
                    return true;
            return false;
        }
        if (from == printed.size() || Settled(shown[at]) != Settled(printed[from]))
            return false;
    }
    return from == printed.size();
}

// Databases are left out of some builds.
bool IsOfDatabases(std::string const& command) {
    return command.starts_with("paramdb db ") || command.find(" sqlite3:") != command.npos;
}

using Readme = LoadTest;

} // namespace

TEST_F(Readme, ShowsWhatTheCommandPrints) {
    ExampleFolder const folder;
    auto const runs = ReadShownRuns(test_support::ReadBytes(PARAMDB_SOURCE_DIR "/README.md"));
    EXPECT_GT(runs.size(), 25U);
    bool const has_databases = IsConnection("sqlite3:bench.db");
    for (ShownRun const& shown : runs) {
        SCOPED_TRACE(shown.command);
        if (!has_databases && IsOfDatabases(shown.command))
            continue;
        if (shown.command.starts_with("cat ")) {
            test_support::WriteBytes(shown.command.substr(4), JoinLines(shown.output));
            continue;
        }
        ShellWords shell = ReadShellWords(shown.command);
        shell.words.erase(shell.words.begin());
        Reset();
        CommandRun const run = RunCommand(shell.words);
        std::string const printed = run.err + run.out;
        if (!shell.target.empty())
            test_support::WriteBytes(shell.target, run.out);
        EXPECT_TRUE(Fits(shown.output, 0, SplitLines(shell.target.empty() ? printed : run.err), 0))
            << printed;
    }
}

TEST(ShownRuns, AreTakenFromBlocks) {
    auto const runs =
        ReadShownRuns("$ paramdb no\n```\n$ paramdb a\nx\n\n$ paramdb b\n$ other c\ny\n```\nz\n");
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].command, "paramdb a");
    EXPECT_EQ(runs[0].output, (Lines{"x", ""}));
    EXPECT_EQ(runs[1].command, "paramdb b");
    EXPECT_EQ(runs[1].output, Lines());
    EXPECT_TRUE(Fits({"a", "...", "d"}, 0, {"a", "b", "c", "d"}, 0));
    EXPECT_TRUE(Fits({"a", "..."}, 0, {"a"}, 0));
    EXPECT_FALSE(Fits({"a", "...", "c"}, 0, {"a", "b"}, 0));
    EXPECT_FALSE(Fits({"a"}, 0, {"a", "b"}, 0));
    EXPECT_EQ(Settled("<TMode>       1 030    4 088  CDynNameIdTable  x"),
              "<TMode>       1 030 N  CDynNameIdTable  x");
    EXPECT_EQ(Settled("103 of 103 with rows   5 907  384 676"), "103 of 103 with rows   5 907 N");
    EXPECT_TRUE(Fits({"x: 5 907 rows, 12 bytes"}, 0, {"x: 5 907 rows, 1 400 bytes"}, 0));
}
