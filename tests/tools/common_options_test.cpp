// The options that every subcommand takes, and what goes to which stream.
#include "tests/tools/command_nodes.h"
#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

using namespace paramdb::tools;

namespace {

using Texts = std::vector<std::string>;

std::string Gearbox() {
    return PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";
}

// A command for each subcommand that loads and only answers, for these files.
std::vector<Texts> Commands(std::string const& lake, std::string const& other) {
    return {
        {"load", lake},
        {"tables", lake},
        {"show", lake, "Mode", "11"},
        {"dump", lake, "--table", "Mode"},
        {"modes", lake},
        {"rotors", lake, "--mode", "11"},
        {"order", lake, "--parameter", "1023"},
        {"polygons", lake},
        {"name", lake, "mode", "11"},
        {"id", lake, "mode", "1. gear drive"},
        {"find", lake, "torque"},
        {"key", lake, "11/1001/1/1/1011/1"},
        {"explain", lake, "1025"},
        {"interval", lake, "--parameter", "1025"},
        {"trigger", lake, "2"},
        {"diff", lake, other},
    };
}

// Those that read the files in their own way: faults are part of their answer, or nothing is loaded.
bool IsOfAnotherSort(std::string const& path) {
    Texts const paths = {"", "check", "report", "merge", "format", "convert", "completion", "man"};
    return std::find(paths.begin(), paths.end(), path) != paths.end() || path.starts_with("db");
}

Texts With(Texts arguments, std::size_t place, Texts const& added) {
    arguments.insert(arguments.begin() + static_cast<std::ptrdiff_t>(place), added.begin(), added.end());
    return arguments;
}

std::string Shown(Texts const& arguments) {
    return Joined(arguments, " ");
}

class CommonOptionsTest : public CommandTest {
protected:
    CommandRun Run(Texts const& arguments) {
        Reset();
        CommandRun run = RunCommand(arguments);
        run.out = WithoutTimes(run.out);
        return run;
    }

    // The gearbox with a row that cannot be read.
    std::string Faulty() {
        std::string text = test_support::ReadBytes(Gearbox());
        text.insert(text.find("<TMode>: {\n") + 11, "\tx \"bad\"\n");
        return File(u8"faulty.lake", text);
    }
};

} // namespace

TEST_F(CommonOptionsTest, StandAnywhere) {
    std::string const faulty = Faulty();
    for (Texts const& arguments : Commands(faulty, Gearbox())) {
        CommandRun const expected = Run(arguments);
        for (std::size_t place = 0; place <= arguments.size(); ++place) {
            // Not between an option and its value.
            if (place > 0 && arguments[place - 1].starts_with("--"))
                continue;
            auto const with = With(arguments, place, {"--color", "never"});
            SCOPED_TRACE(Shown(with));
            CommandRun const run = Run(with);
            EXPECT_EQ(run.code, expected.code);
            EXPECT_EQ(run.out, expected.out);
            EXPECT_EQ(run.err, expected.err);
        }
    }
}

TEST_F(CommonOptionsTest, QuietLeavesTheAnswerAlone) {
    std::string const faulty = Faulty();
    for (Texts const& arguments : Commands(faulty, Gearbox())) {
        SCOPED_TRACE(Shown(arguments));
        CommandRun const loud = Run(arguments);
        EXPECT_NE(loud.out, "");
        EXPECT_NE(loud.err.find("Error converting parameter sea"), std::string::npos) << loud.err;
        EXPECT_EQ(loud.out.find("Error converting parameter sea"), std::string::npos) << loud.out;
        EXPECT_EQ(loud.code, arguments[0] == "diff" ? 0 : 1);
        for (auto const& quiet :
             {With(arguments, 0, {"-q"}), With(arguments, arguments.size(), {"--quiet"})}) {
            CommandRun const run = Run(quiet);
            EXPECT_EQ(run.code, loud.code);
            EXPECT_EQ(run.out, loud.out);
            EXPECT_EQ(run.err, "");
        }
        EXPECT_EQ(Run(arguments).err, loud.err); // of one run alone
    }
}

TEST_F(CommonOptionsTest, QuietStillTellsWhyThereIsNoAnswer) {
    EXPECT_EQ(Run({"-q", "id", Gearbox(), "mode", "Idel"}).err,
              "paramdb: Idel: no such mode; did you mean 1 Idle?\n");
    EXPECT_NE(Run({"-q", "load", Name(u8"missing.lake")}).err, "");
    std::string const old = File(u8"old.lake", RefusedLake);
    EXPECT_EQ(Run({"-q", "load", old}).err, Run({"load", old}).err);
}

TEST_F(CommonOptionsTest, QuietCheckHasNoSummary) {
    CommandRun const clean = Run({"check", "--quiet", Gearbox()});
    EXPECT_EQ(clean.code, 0);
    EXPECT_EQ(clean.out, "");
    CommandRun const loud = Run({"check", Faulty()});
    CommandRun const quiet = Run({"check", "-q", Faulty()});
    EXPECT_EQ(quiet.code, 1);
    EXPECT_NE(quiet.out, "");
    EXPECT_TRUE(loud.out.starts_with(quiet.out + "\nFound ")) << loud.out;
}

TEST_F(CommonOptionsTest, ColoursStandInAnswersAndMessages) {
    std::string const faulty = Faulty();
    CommandRun const plain = Run({"check", faulty});
    CommandRun const check = Run({"check", faulty, "--color=always"});
    EXPECT_NE(check.out.find(": \x1B[1;31merror\x1B[0m P"), std::string::npos) << check.out;
    EXPECT_NE(check.out.find("\x1B[1;32m^"), std::string::npos) << check.out;
    std::regex const sequences("\x1B\\[[0-9;]*m");
    EXPECT_EQ(std::regex_replace(check.out, sequences, ""), plain.out);

    CommandRun const load = Run({"--color=always", "load", faulty});
    EXPECT_TRUE(load.err.starts_with("\x1B[1;35mError converting parameter sea")) << load.err;
    EXPECT_TRUE(load.err.ends_with("\x1B[0m\n")) << load.err;

    CommandRun const diff = Run({"diff", faulty, Gearbox(), "--color", "always"});
    CommandRun const plain_diff = Run({"diff", faulty, Gearbox()});
    EXPECT_EQ(std::regex_replace(diff.out, sequences, ""), plain_diff.out);

    for (char const* const form : {"json", "sarif", "github"})
        EXPECT_EQ(Run({"check", faulty, "--format", form, "--color", "always"}).out,
                  Run({"check", faulty, "--format", form}).out);
    EXPECT_EQ(Run({"check", faulty}).out, plain.out); // of one run alone
}

TEST_F(CommonOptionsTest, ColourOfChanges) {
    std::string const before = File(u8"a.lake", SampleLake);
    std::string text = SampleLake;
    text.replace(text.find("1 \"Idle\""), 8, "1 \"Idling\"");
    text.replace(text.find("\t2 \"Warm up\"\n"), 13, "\t4 \"New\"\n");
    CommandRun const run = Run({"diff", before, File(u8"b.lake", text), "--color", "always"});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.out.find("\x1B[33m  ~ "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("\x1B[32m  + "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("\x1B[31m  - "), std::string::npos) << run.out;
}

TEST_F(CommonOptionsTest, TheLastOneCounts) {
    EXPECT_EQ(Run({"--color", "always", "load", Faulty(), "--color", "never"}).err.find('\x1B'),
              std::string::npos);
    EXPECT_EQ(Run({"-q", "load", "-q", Faulty(), "--quiet"}).err, "");
}

TEST_F(CommonOptionsTest, VersionAndHelpStandAnywhere) {
    CommandRun const version = Run({"--version"});
    EXPECT_EQ(Run({"load", "--version"}).out, version.out);
    EXPECT_EQ(Run({"load", "a.lake", "--version"}).out, version.out);
    EXPECT_EQ(Run({"--quiet", "--version"}).out, version.out);
    EXPECT_EQ(Run({"--quiet", "load", "a.lake", "--help"}).out, Run({"load", "-h"}).out);
}

// A new subcommand belongs into one of the two lists.
TEST_F(CommonOptionsTest, KnowAllSubcommands) {
    auto const commands = Commands("a", "b");
    CommandNode const command = WholeCommand();
    for (CommandNode const* node : AllNodes(command)) {
        auto const is_it = [&](Texts const& arguments) { return arguments[0] == node->path; };
        EXPECT_NE(IsOfAnotherSort(node->path), std::any_of(commands.begin(), commands.end(), is_it))
            << node->path;
    }
}
