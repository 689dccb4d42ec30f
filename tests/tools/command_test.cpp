#include <paramdb/platform/framework/cfile.h>

#include "tests/tools/command_run.h"

#include <streambuf>

namespace {

std::string const Codes = "Exit codes:\n"
                          "  0  clean\n"
                          "  1  loaded, but with findings: faults in the data were reported\n"
                          "  2  nothing loaded: wrong arguments, an unreadable file, a refused version\n";

// A medium without room: takes some characters and then no more.
class FullBuffer : public std::streambuf {
public:
    explicit FullBuffer(int room) : m_room(room) {}

protected:
    int_type overflow(int_type character) override {
        return m_room-- > 0 ? traits_type::not_eof(character) : traits_type::eof();
    }

private:
    int m_room;
};

// One that swallows everything but fails at the end.
class LateBuffer : public std::streambuf {
protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    int sync() override { return -1; }
};

} // namespace

TEST(Command, Help) {
    for (char const* const flag : {"--help", "-h"}) {
        auto const run = RunCommand({flag});
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_TRUE(run.out.starts_with(
            "The parameter database of the test bench: load and examine parameter files.\n"
            "Usage: paramdb [OPTIONS] SUBCOMMAND\n"))
            << run.out;
        for (std::string const verb : {"load", "tables", "show", "dump"})
            EXPECT_NE(run.out.find("\n  " + verb + "   "), std::string::npos) << run.out;
        EXPECT_TRUE(run.out.ends_with("\n" + Codes)) << run.out;
    }
}

TEST(Command, HelpOfLoad) {
    auto const run = RunCommand({"load", "--help"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Read parameter files, merge them in their order, load them, report\n"
                       "Usage: paramdb load [OPTIONS] FILE...\n"
                       "\n"
                       "Positionals:\n"
                       "  FILE ... REQUIRED           "
                       "Parameter files; tables of a later file replace those of an earlier one\n"
                       "\n"
                       "Options:\n"
                       "  -h,--help                   Print this help and exit\n"
                       "  --format FORM:{text,json}   How the report is printed (default: text)\n"
                       "\n"
                       "Example:\n"
                       "  paramdb load gearbox.lake customer.lake\n"
                       "\n" +
                           Codes);
}

TEST(Command, Version) {
    auto const run = RunCommand({"--version"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(std::regex_match(run.out, std::regex("paramdb \\d+\\.\\d+\\.\\d+\n"))) << run.out;
}

TEST(Command, UsageErrors) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    Case const cases[] = {
        {{}, "A subcommand is required"},
        {{"load"}, "FILE is required"},
        {{"load", "a.lake", "--format"}, "--format: 1 required FORM:{text,json} missing"},
        {{"load", "a.lake", "--format", "xml"}, "--format: xml not in {text,json}"},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand(test.arguments);
        EXPECT_EQ(run.code, 2) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, test.message + "\nRun with --help for more information.\n");
    }
}

using CommandFiles = CommandTest;

TEST_F(CommandFiles, NamesThatLookLikeOtherArguments) {
    CFileException missing;
    CFile().Open(L"no such file", CFile::modeRead, &missing);
    std::string const reason = missing.what();
    for (std::string const name : {"load", "/format", "--odd.lake", "-", "a,b", "[c].lake"}) {
        auto const run = RunCommand({"load", "--", name});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err, "paramdb: " + name + ": " + reason + "\n");
    }
}

TEST_F(CommandFiles, OutputThatCannotBeWritten) {
    std::string const name =
        File(u8"good.lake", "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n");
    for (auto const& arguments : {std::vector<std::string>{"load", name}, {"--help"}, {"--version"}}) {
        for (int const room : {0, 5}) {
            FullBuffer full(room);
            std::ostream out(&full);
            std::ostringstream err;
            EXPECT_EQ(paramdb::tools::RunCommand(arguments, out, err), 2);
            EXPECT_EQ(err.str(), "paramdb: standard output: cannot be written\n");
        }
        LateBuffer late;
        std::ostream out(&late);
        std::ostringstream err;
        EXPECT_EQ(paramdb::tools::RunCommand(arguments, out, err), 2);
        EXPECT_EQ(err.str(), "paramdb: standard output: cannot be written\n");
    }
}
