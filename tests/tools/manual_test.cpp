#include "tests/support/program_run.h"
#include "tests/tools/command_nodes.h"
#include "tests/tools/command_run.h"
#include "tools/manual.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

TEST(Manual, TellsEverything) {
    std::string const page = ManualPage(SmallCommand(), "paramdb 1.2.3");
    std::string const expected = R"(.TH PARAMDB 1 "" "paramdb 1.2.3" "User Commands"
.ad l
.nh
.SH NAME
paramdb \- parameter files of the test bench
.SH SYNOPSIS
\fBparamdb\fR [\fIOPTIONS\fR] \fISUBCOMMAND\fR ...
.SH DESCRIPTION
What it is.
.PP
All of it.
.SH OPTIONS
.TP
\fB\-h\fR, \fB\-\-help\fR
Help.
.TP
\fB\-\-color\fR \fIWHEN\fR
Colours.
One of auto, never.
.SH SUBCOMMANDS
.SS paramdb show
\fBparamdb show [OPTIONS] FILE... TAG\fR
.PP
Show [rows]: it\(aqs all.
.TP
\fB\-k\fR, \fB\-\-key\fR \fIKEY\fR
The key.
.TP
\fB\-t\fR, \fB\-\-table\fR \fITAG\fR
Tables to show.
One of Mode, Trigger.
May be given more than once.
.TP
\fB\-o\fR, \fB\-\-output\fR \fIFILE\fR
Where to.
.PP
\&.first line
second \e line
.RS
.nf
as it \- is
\(dqtoo\(dq
.fi
.RE
.PP
Examples:
.RS
.nf
paramdb show \(aqa b.lake\(aq Mode
.fi
.RE
.PP
Exit codes:
.RS
.nf
0  good
1  bad
.fi
.RE
And so on.
.SS paramdb db
\fBparamdb db SUBCOMMAND\fR
.PP
Databases.
.SS paramdb db list
\fBparamdb db list CONNECTION\fR
.PP
List.
.SS paramdb shell
\fBparamdb shell NAME\fR
.PP
Shells \[u00FC] \[u4E2D] \[u1F600].
.SH EXIT STATUS
.RS
.nf
0  good
.fi
.RE
.SH ENVIRONMENT
)";
    EXPECT_EQ(page.substr(0, expected.size()), expected);
}

TEST(Manual, IsPrintedForTheWholeCommand) {
    auto const run = RunCommand({"man"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(std::regex_search(run.out, std::regex("^\\.TH PARAMDB 1 \"\" \"paramdb \\d+\\.\\d+\\.\\d+\" "
                                                      "\"User Commands\"\n")));
    EXPECT_NE(run.out.find("\n\\fB\\-q\\fR, \\fB\\-\\-quiet\\fR\n"), std::string::npos);
    EXPECT_TRUE(
        std::ranges::all_of(run.out, [](char byte) { return byte == '\n' || (byte >= ' ' && byte <= '~'); }));
    CommandNode const command = WholeCommand();
    for (CommandNode const* node : AllNodes(command)) {
        if (node == &command)
            continue;
        std::size_t const begin = run.out.find("\n.SS paramdb " + node->path + '\n');
        ASSERT_NE(begin, std::string::npos) << node->path;
        std::string const part = run.out.substr(begin, run.out.find("\n.S", begin + 1) - begin);
        for (CommandOption const& option : node->options) {
            for (std::string name : option.names) {
                if (name == "-h" || name == "--help")
                    continue;
                for (std::size_t at = name.find('-'); at != name.npos; at = name.find('-', at + 2))
                    name.insert(at, 1, '\\');
                EXPECT_NE(part.find("\\fB" + name + "\\fR"), std::string::npos) << node->path << ' ' << name;
            }
        }
    }
}

#ifndef _WIN32 // groff, which Windows has not

// Warnings of any sort would be told.
TEST(Manual, IsSetWithoutWarnings) {
    test_support::TempDir const folder;
    auto const path = folder / u8"paramdb.1";
    for (std::string const& page : {RunCommand({"man"}).out, ManualPage(SmallCommand(), "paramdb 1.2.3")}) {
        test_support::WriteBytes(path, page);
        auto const run = test_support::RunProgram(
            "/usr/bin/env", {"groff", "-man", "-Tutf8", "-ww", "-rLL=80n", path.string()});
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_NE(run.out.find("PARAMDB(1)"), std::string::npos);
    }
}

#endif
