// The command in odd surroundings: what it answers and writes depends on its arguments and files alone.
#include "tests/support/program_run.h"
#include "tests/tools/command_run.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using test_support::ProgramRun;
namespace fs = std::filesystem;

constexpr char Example[] = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";

class Environment : public CommandTest {
protected:
    // A line for the shell, in which "paramdb" stands for the program and "$EXAMPLE" for a file.
    static ProgramRun Shell(std::string const& line) {
        return test_support::RunProgram("/bin/sh", {"-c", "paramdb() { \"$0\" \"$@\"; }\n" + line,
                                                    PARAMDB_COMMAND, Example, PARAMDB_COMMAND});
    }
    // Verbs that print numbers, texts and messages.
    static constexpr char Asking[] = "{ paramdb dump $1; paramdb check $1; }";
    static std::string Bytes(std::string const& name) { return test_support::ReadBytes(fs::path(name)); }
    static unsigned ModeOf(std::string const& name) {
        struct stat status {};
        return stat(name.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
    }

    ProgramRun const m_usual = Shell(std::string("cd /; ") + Asking);
};

TEST_F(Environment, AnswersDependOnNoVariable) {
    ASSERT_GT(m_usual.out.size(), 10'000U);
    ASSERT_NE(m_usual.out.find('.'), std::string::npos);
    std::string const folder = Folder();
    // A language with a decimal comma, where the system can make one.
    bool const has_commas =
        std::system(("localedef -i de_DE -f UTF-8 '" + folder + "/de_DE.UTF-8' > /dev/null 2>&1").c_str()) ==
        0;
    EXPECT_TRUE(has_commas || !fs::exists("/usr/share/i18n/locales/de_DE"));
    fs::create_directory(fs::path(folder) / "home");
    fs::permissions(fs::path(folder) / "home", fs::perms::owner_read | fs::perms::owner_exec);
    std::vector<std::string> const all{
        "unset LANG LC_ALL LC_NUMERIC",
        // The C library never gives back what it has read of LOCPATH.
        "export LC_NUMERIC=de_DE.UTF-8 ASAN_OPTIONS=detect_leaks=0 LOCPATH='" + folder + "'",
        "export LC_NUMERIC=no_SUCH LC_CTYPE=nonsense",
        "unset HOME",
        "export HOME='" + folder + "/home'",
        "export HOME=/no/such/folder",
        "unset TMPDIR PATH TERM",
        "export TMPDIR=/no/such/folder",
        "export TMPDIR=/proc",
        "umask 077",
        "umask 777",
        "exec < /dev/null",
        "exec <&-",
    };
    for (std::string const& surroundings : all) {
        ProgramRun const run = Shell("cd /; " + surroundings + '\n' + Asking);
        EXPECT_EQ(run.code, m_usual.code) << surroundings;
        EXPECT_TRUE(WithoutTimes(run.out) == WithoutTimes(m_usual.out)) << surroundings;
        EXPECT_EQ(run.err, m_usual.err) << surroundings;
    }
}

TEST_F(Environment, FilesAreWrittenWithoutHomeOrTemporaryFolder) {
    std::string const lake = File(u8"in.lake", "<k>:1\n<TMode>: {\n1   idle\n}\n");
    std::string const folder = Folder();
    ProgramRun const run = Shell("cd /; unset HOME; export TMPDIR=/no/such/folder\n"
                                 "paramdb merge '" +
                                 lake + "' -o '" + folder +
                                 "/merged.lake' && "
                                 "paramdb format '" +
                                 lake + "' && paramdb report $1 -o '" + folder +
                                 "/page.html' && "
                                 "paramdb convert $1 '" +
                                 folder + "/page.json' --lossy");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(Bytes(folder + "/merged.lake"), "<k>:1\n<TMode>: {\n1   idle\n}\n");
    EXPECT_EQ(Bytes(lake), "<k>: 1\n<TMode>: {\n\t1 idle\n}\n");
    EXPECT_TRUE(Bytes(folder + "/page.html").ends_with("</html>\n"));
    EXPECT_TRUE(fs::exists(folder + "/page.json"));
}

// Were a closed stream's place given to the next file, the report would end in what is written.
TEST_F(Environment, ClosedStreamsAreNoFiles) {
    std::string const lake = File(u8"in.lake", "<k>: 1\n<TMode>: {\n1 idle\n}\n");
    std::string const bytes = Bytes(lake);
    struct {
        char const* closing;
        int code;
    } const cases[] = {{"<&-", 0},      {">&-", 2},          {"2>&-", 0},     {"<&- >&-", 2},
                       {"<&- 2>&-", 0}, {"<&- >&- 2>&-", 2}, {">&- 2>&-", 2}, {"> /dev/full", 2}};
    for (auto const& [closing, code] : cases) {
        SCOPED_TRACE(closing);
        std::string const target = Folder() + "/out.lake";
        fs::remove(fs::path(target));
        ProgramRun const run = Shell("paramdb merge '" + lake + "' -o '" + target + "' " + closing);
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(Bytes(target), bytes);
        ProgramRun const name = Shell("paramdb name '" + lake + "' mode 1 " + closing);
        EXPECT_EQ(name.code, 2) << "no version, or no output";
        EXPECT_EQ(Bytes(lake), bytes);
    }
    EXPECT_EQ(Shell("paramdb tables $1 >&-").err, "paramdb: standard output: cannot be written\n");
    EXPECT_EQ(Shell("paramdb tables $1 > /dev/full").err, "paramdb: standard output: cannot be written\n");
    EXPECT_EQ(Shell("paramdb load /no/such/file 2>&-").code, 2);
}

// A reader that has seen enough ends the command, and nobody waits.
TEST_F(Environment, AReaderThatLeaves) {
    ProgramRun const run = Shell("paramdb dump $1 2> /dev/null | head -n 1");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Shell("paramdb dump $1 2> /dev/null").out.substr(0, run.out.size()));
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1);
}

TEST_F(Environment, NewFilesFollowTheMaskAndOldOnesKeepTheirRights) {
    std::string const lake = File(u8"in.lake", "<k>: 1\n");
    std::string const old = File(u8"old.lake", "<k>: 2\n");
    chmod(old.c_str(), 0664);
    std::string const fresh = Folder() + "/new.lake";
    EXPECT_EQ(Shell("umask 077; paramdb merge '" + lake + "' -o '" + fresh + "'").code, 0);
    EXPECT_EQ(Shell("umask 077; paramdb merge '" + lake + "' -o '" + old + "'").code, 0);
    EXPECT_EQ(ModeOf(fresh), 0600U);
    EXPECT_EQ(ModeOf(old), 0664U);
    EXPECT_EQ(Bytes(old), "<k>: 1\n");
}

TEST_F(Environment, AWorkingFolderThatIsGone) {
    fs::create_directory(fs::path(Folder()) / "gone");
    std::string const gone = "cd '" + Folder() + "/gone' && rmdir '" + Folder() + "/gone' && ";
    ProgramRun const whole = Shell(gone + Asking);
    EXPECT_EQ(whole.code, m_usual.code);
    EXPECT_TRUE(WithoutTimes(whole.out) == WithoutTimes(m_usual.out));
    fs::create_directory(fs::path(Folder()) / "gone");
    ProgramRun const reading = Shell(gone + "paramdb load file.lake");
    EXPECT_EQ(reading.code, 2);
    EXPECT_EQ(reading.err, "paramdb: file.lake: No such file or directory\n");
    fs::create_directory(fs::path(Folder()) / "gone");
    ProgramRun const writing = Shell(gone + "paramdb merge $1 -o out.lake");
    EXPECT_EQ(writing.code, 2);
    EXPECT_EQ(writing.err, "paramdb: out.lake: No such file or directory\n");
}

} // namespace
