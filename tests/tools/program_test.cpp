// The program itself, as it is started from a shell: what it makes of its arguments, what it gives out, how
// it ends.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/cfile.h>

#include "tests/support/program_run.h"
#include "tests/support/terminal_run.h"
#include "tests/tools/command_run.h"
#include "tests/tools/names_lake.h"
#include "tests/tools/sample_lake.h"

#include <cstdlib>

namespace {

using test_support::ProgramRun;

class ProgramTest : public CommandTest {
protected:
    static ProgramRun Run(std::vector<std::string> const& arguments) {
        return test_support::RunProgram(PARAMDB_COMMAND, arguments);
    }
    static std::string Bytes(std::u8string const& text) { return {text.begin(), text.end()}; }

    // Umlauts, Chinese, and a character beyond U+FFFF.
    std::string m_lake = File(u8"Pr\u00FCf \u4E2D\u6587 \U0001F600.lake", NamesLake);
};

TEST_F(ProgramTest, TellsItsVersion) {
    ProgramRun const run = Run({"--version"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(std::regex_match(run.out, std::regex("paramdb [0-9]+\\.[0-9]+\\.[0-9]+\n"))) << run.out;
    EXPECT_EQ(run.err, "");
}

TEST_F(ProgramTest, TakesAndGivesUtf8) {
    std::string const name = Bytes(u8"Pr\u00DCfen");
    ProgramRun const id = Run({"id", m_lake, "mode", name});
    EXPECT_EQ(id.code, 0);
    EXPECT_EQ(id.out, "3\n");
    EXPECT_EQ(id.err, "");
    ProgramRun const mode = Run({"name", m_lake, "mode", "3"});
    EXPECT_EQ(mode.code, 0);
    EXPECT_EQ(mode.out, name + '\n');
    EXPECT_EQ(mode.err, "");
}

TEST_F(ProgramTest, ReadsAFileThatIsOpenHere) {
    CFile const file(paramdb::FromUtf8(m_lake).c_str(), CFile::modeReadWrite | CFile::shareDenyNone);
    EXPECT_EQ(Run({"id", m_lake, "mode", "Warm up"}).out, "2\n");
}

// The other tests of the command run it in their own process.
TEST_F(ProgramTest, IsTheCommandOfTheOtherTests) {
    std::vector<std::string> const runs[] = {
        {},
        {"--help"},
        {"nonsense"},
        {"load"},
        {"load", Name(u8"missing \u00E4 \u4E2D.lake")},
        {"load", File(u8"old.lake", "<DbDesign.CacheVersion>: 215\n")},
        {"tables", Name(u8"missing.lake")},
        {"rotors", m_lake},
        {"dump", m_lake, "--table", "Mode"},
        {"find", m_lake, Bytes(u8"pr\u00FCfen")},
        {"id", m_lake, "mode", "two words"},
        {"id", m_lake, "mode", "back\\slash \"quoted\\\" \\\\"},
        {"id", m_lake, "mode", ""},
        {"id", m_lake, "mode", Bytes(u8"\u4E2D\U0001F600")},
        {"name", m_lake, "trigger", "1"},
        {"key", m_lake, "3/1001/1/4/7/10", "--lang", "zh"},
    };
    for (auto const& arguments : runs) {
        std::string words;
        for (std::string const& argument : arguments)
            words += " [" + argument + "]";
        Reset();
        CommandRun const expected = RunCommand(arguments);
        ProgramRun const run = Run(arguments);
        EXPECT_EQ(run.code, expected.code) << words;
        EXPECT_EQ(WithoutTimes(run.out), WithoutTimes(expected.out)) << words;
        EXPECT_EQ(run.err, expected.err) << words;
    }
}

#ifndef _WIN32 // where a terminal is no device of its own

TEST_F(ProgramTest, ShowsColoursOnATerminal) {
    std::string const lake = File(u8"faulty.lake", FaultyLake);
    auto const shows_colours = [&](std::vector<std::string> const& options, char const* no_color,
                                   char const* terminal_name) {
        setenv("TERM", terminal_name, 1);
        if (no_color != nullptr)
            setenv("NO_COLOR", no_color, 1);
        else
            unsetenv("NO_COLOR");
        std::vector<std::string> arguments = {"name", lake, "mode", "1"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        ProgramRun const run = test_support::RunOnTerminal(PARAMDB_COMMAND, arguments);
        EXPECT_EQ(run.code, 1);
        EXPECT_TRUE(run.out.ends_with("Idle\r\n")) << run.out;
        return run.out.find('\x1B') != std::string::npos;
    };
    EXPECT_TRUE(shows_colours({}, nullptr, "xterm"));
    EXPECT_TRUE(shows_colours({}, "", "xterm"));
    EXPECT_FALSE(shows_colours({}, "1", "xterm"));
    EXPECT_FALSE(shows_colours({}, nullptr, "dumb"));
    EXPECT_FALSE(shows_colours({"--color", "never"}, nullptr, "xterm"));
    EXPECT_FALSE(shows_colours({"--quiet"}, nullptr, "xterm"));
    EXPECT_TRUE(shows_colours({"--color", "always"}, "1", "dumb"));
    unsetenv("NO_COLOR");
    EXPECT_EQ(Run({"name", lake, "mode", "1"}).err.find('\x1B'), std::string::npos);
    EXPECT_NE(Run({"name", lake, "mode", "1", "--color", "always"}).err.find('\x1B'), std::string::npos);
}

#endif

} // namespace
