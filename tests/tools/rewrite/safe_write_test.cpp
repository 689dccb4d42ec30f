#include "tests/support/temp_dir.h"
#include "tools/rewrite/safe_write.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>
#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace paramdb::tools;
namespace fs = std::filesystem;

namespace {

class SafeWriteTest : public testing::Test {
protected:
    std::string Name(std::u8string const& name) const {
        std::u8string const path = (m_folder / name).u8string();
        return {path.begin(), path.end()};
    }
    std::string File(std::u8string const& name, std::string const& bytes) const {
        test_support::WriteBytes(m_folder / name, bytes);
        return Name(name);
    }
    std::string Bytes(std::u8string const& name) const { return test_support::ReadBytes(m_folder / name); }
    // The names in the folder, in order.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (auto const& entry : fs::directory_iterator(m_folder.path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    // What MayWrite says, the line cut after the name.
    std::string Refusal(std::string const& target, std::vector<std::string> const& inputs,
                        bool may_be_input = false) const {
        std::ostringstream err;
        bool const may = MayWrite(target, inputs, may_be_input, err);
        EXPECT_EQ(may, err.str().empty());
        std::string const start = "paramdb: " + (target.empty() ? "\"\"" : target) + ": ";
        return err.str().starts_with(start) ? err.str().substr(start.size()) : err.str();
    }

    test_support::TempDir m_folder;
};

} // namespace

TEST_F(SafeWriteTest, AFileOfItsOwnMayBeWritten) {
    std::string const input = File(u8"in.lake", "k: 1\n");
    EXPECT_EQ(Refusal(Name(u8"out.lake"), {input}), "");
    EXPECT_EQ(Refusal(File(u8"old.lake", "k: 1\n"), {input}), "");
    EXPECT_EQ(Refusal(Name(u8"out.lake"), {}), "");
}

TEST_F(SafeWriteTest, AnInputIsKnownByEveryName) {
    std::string const input = File(u8"in.lake", "k: 1\n");
    std::string const other = File(u8"other.lake", "k: 1\n");
    EXPECT_EQ(Refusal(input, {other, input}), "is an input; --force overwrites it\n");
    EXPECT_EQ(Refusal(input, {other, input}, true), "");
    std::string const told = "is the input " + input + "; --force overwrites it\n";
    fs::create_directory(m_folder / u8"sub");
    EXPECT_EQ(Refusal(Name(u8"./in.lake"), {other, input}), told);
    EXPECT_EQ(Refusal(Name(u8"sub/../in.lake"), {other, input}), told);
    fs::create_hard_link(m_folder / u8"in.lake", m_folder / u8"hard.lake");
    EXPECT_EQ(Refusal(Name(u8"hard.lake"), {other, input}), told);
#ifndef _WIN32
    fs::create_symlink("in.lake", m_folder / u8"soft.lake");
    EXPECT_EQ(Refusal(Name(u8"soft.lake"), {other, input}), told);
    EXPECT_EQ(Refusal(input, {Name(u8"soft.lake")}),
              "is the input " + Name(u8"soft.lake") + "; --force overwrites it\n");
    // Where nothing is kept, nothing can be lost.
    EXPECT_EQ(Refusal("/dev/null", {"/dev/null"}), "");
#endif
}

TEST_F(SafeWriteTest, FoldersAndNothingAreNoTargets) {
    EXPECT_EQ(Refusal(m_folder.path().string(), {}), "is a folder\n");
    EXPECT_EQ(Refusal(m_folder.path().string(), {}, true), "is a folder\n");
    EXPECT_EQ(Refusal("", {}), "no name of a file\n");
}

TEST_F(SafeWriteTest, WritesAllBytes) {
    std::ostringstream err;
    std::string const bytes = std::string("a\r\n\0\xFF", 5) + std::string(300000, 'x');
    EXPECT_TRUE(WriteFile(Name(u8"\u00E4.lake"), bytes, err));
    EXPECT_EQ(Bytes(u8"\u00E4.lake"), bytes);
    EXPECT_TRUE(WriteFile(Name(u8"\u00E4.lake"), "", err));
    EXPECT_EQ(Bytes(u8"\u00E4.lake"), "");
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(Names().size(), 1U);
}

TEST_F(SafeWriteTest, AMissingFolderIsTold) {
    std::ostringstream err;
    std::string const name = Name(u8"none/out.lake");
    EXPECT_FALSE(WriteFile(name, "k: 1\n", err));
    EXPECT_TRUE(err.str().starts_with("paramdb: " + name + ": ")) << err.str();
#ifndef _WIN32
    EXPECT_EQ(err.str(), "paramdb: " + name + ": No such file or directory\n");
#endif
    EXPECT_TRUE(Names().empty());
}

#ifndef _WIN32

TEST_F(SafeWriteTest, AFullMediumIsTold) {
    std::ostringstream err;
    EXPECT_FALSE(WriteFile("/dev/full", "k: 1\n", err));
    EXPECT_EQ(err.str(), "paramdb: /dev/full: No space left on device\n");
}

TEST_F(SafeWriteTest, AFileThatMayNotBeWrittenStays) {
    std::string const name = File(u8"old.lake", "k: 1\n");
    fs::permissions(m_folder / u8"old.lake", fs::perms::owner_read);
    std::ostringstream err;
    bool const written = WriteFile(name, "k: 2\n", err);
    bool const is_root = geteuid() == 0; // who may write everything
    EXPECT_EQ(written, is_root);
    EXPECT_EQ(err.str(), is_root ? "" : "paramdb: " + name + ": Permission denied\n");
    EXPECT_EQ(Bytes(u8"old.lake"), is_root ? "k: 2\n" : "k: 1\n");
    EXPECT_EQ(Names(), std::vector<std::string>{"old.lake"});
}

// A child process that may write so many bytes into a file and no more.
int WriteWithLimit(std::string const& name, rlim_t limit, void (*at_limit)(int),
                   std::string const& expected) {
    pid_t const child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, at_limit);
        rlimit const limits{limit, limit};
        setrlimit(RLIMIT_FSIZE, &limits);
        rlimit const no_core{0, 0};
        setrlimit(RLIMIT_CORE, &no_core);
        std::ostringstream err;
        bool const written = WriteFile(name, std::string(100000, 'n'), err);
        _exit(!written && err.str() == expected ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

TEST_F(SafeWriteTest, AWriteThatFailsHalfwayLeavesTheOldFile) {
    std::string const name = File(u8"old.lake", "k: 1\n");
    int const status = WriteWithLimit(name, 5000, SIG_IGN, "paramdb: " + name + ": File too large\n");
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(Bytes(u8"old.lake"), "k: 1\n");
    EXPECT_EQ(Names(), std::vector<std::string>{"old.lake"});
}

TEST_F(SafeWriteTest, AProcessKilledHalfwayLeavesTheOldFile) {
    std::string const name = File(u8"old.lake", "k: 1\n");
    int const status = WriteWithLimit(name, 5000, SIG_DFL, "");
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGXFSZ);
    EXPECT_EQ(Bytes(u8"old.lake"), "k: 1\n");
    // The temporary is left, and is in nobody's way.
    EXPECT_EQ(Names().size(), 2U);
    EXPECT_TRUE(Names().front().starts_with(".paramdb-")) << Names().front();
    std::ostringstream err;
    EXPECT_TRUE(WriteFile(name, "k: 2\n", err));
    EXPECT_EQ(Bytes(u8"old.lake"), "k: 2\n");
}

#endif
