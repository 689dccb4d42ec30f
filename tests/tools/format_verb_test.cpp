#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <thread>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

std::string const Loose = "; note\n"
                          "<DbDesign.CacheVersion>:216\n"
                          "<DbDesign.CacheMinorVersion> : 1  \n"
                          "<TMode>:{\n"
                          "  1   \"Idle\"\n"
                          ";in the table\n"
                          "2 \"Warm up\n"
                          "}\n";
std::string const Neat = "; note\n"
                         "<DbDesign.CacheVersion>: 216\n"
                         "<DbDesign.CacheMinorVersion>: 1\n"
                         "<TMode>: {\n"
                         "\t1 Idle\n"
                         "\t; in the table\n"
                         "\t2 \"Warm up\"\n"
                         "}\n";

class FormatVerbTest : public CommandTest {
protected:
    static std::filesystem::path PathOf(std::string const& name) {
        return std::u8string(name.begin(), name.end());
    }
    static std::string Bytes(std::string const& name) { return test_support::ReadBytes(PathOf(name)); }
};

} // namespace

TEST_F(FormatVerbTest, RewritesFilesOnce) {
    std::string const loose = File(u8"loose.lake", Loose);
    std::string const neat = File(u8"neat.lake", Neat);
    auto const before = RunCommand({"dump", loose});
    auto const time = std::filesystem::last_write_time(PathOf(neat));
    auto const run = RunCommand({"format", loose, neat});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, loose + ": 6 lines changed\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Bytes(loose), Neat);
    EXPECT_EQ(Bytes(neat), Neat);
    EXPECT_EQ(std::filesystem::last_write_time(PathOf(neat)), time);
    EXPECT_EQ(RunCommand({"dump", loose}).out, before.out);
    auto const again = RunCommand({"format", loose});
    EXPECT_EQ(again.code, 0);
    EXPECT_EQ(again.out, "");
}

TEST_F(FormatVerbTest, ChecksFiles) {
    std::string const loose = File(u8"loose.lake", Loose);
    std::string const neat = File(u8"neat.lake", Neat);
    std::string const line = File(u8"line.lake", "k:1\n");
    auto const run = RunCommand({"format", "--check", loose, neat, line});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, loose + "\n" + line + "\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Bytes(loose), Loose);
    EXPECT_EQ(RunCommand({"format", "--check", neat}).code, 0);
    auto const changed = RunCommand({"format", line});
    EXPECT_EQ(changed.out, line + ": 1 line changed\n");
}

TEST_F(FormatVerbTest, PrintsOneFile) {
    std::string const loose = File(u8"loose.lake", Loose);
    auto const run = RunCommand({"format", "--stdout", loose});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, Neat);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Bytes(loose), Loose);
    EXPECT_EQ(RunCommand({"format", "--stdout", File(u8"neat.lake", Neat)}).out, Neat);
    auto const two = RunCommand({"format", "--stdout", loose, loose});
    EXPECT_EQ(two.code, 2);
    EXPECT_EQ(two.out, "");
    EXPECT_EQ(two.err, "paramdb: --stdout takes one file\n");
    auto const both = RunCommand({"format", "--stdout", "--check", loose});
    EXPECT_EQ(both.code, 2);
    EXPECT_EQ(both.err, "--check excludes --stdout\nRun with --help for more information.\n");
}

TEST_F(FormatVerbTest, AFaultyFileDoesNotKeepTheOthers) {
    std::string const loose = File(u8"loose.lake", Loose);
    std::string const empty = File(u8"empty.lake", "");
    std::string const binary = File(u8"binary.lake", std::string("k: \0\n", 5));
    auto const run = RunCommand({"format", empty, loose, binary});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, loose + ": 6 lines changed\n");
    EXPECT_EQ(run.err, "paramdb: " + empty + ": the file is empty\nparamdb: " + binary +
                           ": no parameter file: it holds binary data\n");
    EXPECT_EQ(Bytes(loose), Neat);
}

TEST_F(FormatVerbTest, LeavesWhatIsNestedTooDeep) {
    std::string text = "k:v\n";
    for (int level = 0; level < 200; ++level)
        text += "{\n";
    std::string const deep = File(u8"deep.lake", text);
    for (char const* const option : {"--check", "--stdout", "--"}) {
        auto const run = RunCommand({"format", option, deep});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "paramdb: " + deep +
                               ": sections stand deeper than 100 levels; the file was left as it is\n");
    }
}

TEST_F(FormatVerbTest, TheExampleLoadsAsBefore) {
    std::string const gearbox =
        File(u8"gearbox.lake", test_support::ReadBytes(std::filesystem::path(PARAMDB_SOURCE_DIR) /
                                                       "examples/gearbox/gearbox.lake"));
    auto const before = RunCommand({"dump", gearbox});
    EXPECT_EQ(RunCommand({"format", gearbox}).code, 0);
    EXPECT_EQ(RunCommand({"format", "--check", gearbox}).code, 0);
    auto const after = RunCommand({"dump", gearbox});
    EXPECT_TRUE(after.out == before.out);
    EXPECT_EQ(after.err, before.err);
}

TEST_F(FormatVerbTest, TheExamplesAreInIt) {
    std::string const folder = PARAMDB_SOURCE_DIR "/examples/gearbox/";
    auto const run = RunCommand({"format", "--check", folder + "gearbox.lake", folder + "customer.lake"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out + run.err, "");
}

#ifndef _WIN32
TEST_F(FormatVerbTest, APipeIsReadButNotWritten) {
    std::string const pipe = Name(u8"pipe.lake");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    struct Case {
        std::string option;
        int code;
        std::string out;
        std::string err;
    };
    Case const cases[] = {
        {"--stdout", 0, Neat, ""},
        {"--check", 1, pipe + "\n", ""},
        {"--", 2, "", "paramdb: " + pipe + ": is no regular file; --stdout prints its layout\n"},
    };
    for (Case const& test : cases) {
        std::thread writer([&] { std::ofstream(pipe) << Loose; });
        auto const run = RunCommand({"format", test.option, pipe});
        writer.join();
        EXPECT_EQ(run.code, test.code) << test.option;
        EXPECT_EQ(run.out, test.out) << test.option;
        EXPECT_EQ(run.err, test.err) << test.option;
    }
}
#endif
