#include <paramdb/platform/framework/replace_file.h>

#include "tests/platform/temporary_folder.h"

#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

using paramdb::ReplaceFileWith;
namespace fs = std::filesystem;

class ReplaceFileTest : public testing::Test {
protected:
    TemporaryFolder m_folder;
    std::wstring m_name = m_folder.Name(L"\u00E4 target.txt");
    std::wstring m_error = L"untouched";
};

TEST_F(ReplaceFileTest, NewAndExistingFiles) {
    EXPECT_TRUE(ReplaceFileWith(m_name, "first", m_error));
    EXPECT_EQ(TemporaryFolder::Read(m_name), "first");
    EXPECT_TRUE(ReplaceFileWith(m_name, std::string("a\r\n\0b", 5), m_error));
    EXPECT_EQ(TemporaryFolder::Read(m_name), std::string("a\r\n\0b", 5));
    EXPECT_TRUE(ReplaceFileWith(m_name, "", m_error));
    EXPECT_EQ(TemporaryFolder::Read(m_name), "");
    EXPECT_EQ(m_error, L"untouched");
    EXPECT_EQ(m_folder.Count(), 1u);
}

TEST_F(ReplaceFileTest, ContentFromAWriter) {
    bool target_seen = true;
    auto const write = [&](CFile& file) {
        file.Write("ab", 2);
        file.Write("cd", 2);
        target_seen = fs::exists(TemporaryFolder::Native(m_name));
    };
    EXPECT_TRUE(ReplaceFileWith(m_name, write, m_error));
    EXPECT_FALSE(target_seen); // not before all of it is there
    EXPECT_EQ(TemporaryFolder::Read(m_name), "abcd");
}

TEST_F(ReplaceFileTest, AFailingWriterLeavesTheOldFile) {
    TemporaryFolder::Write(m_name, "old");
    EXPECT_FALSE(ReplaceFileWith(
        m_name,
        [](CFile& file) {
            file.Write("ab", 2);
            throw CFileException(EIO);
        },
        m_error));
    EXPECT_EQ(m_error, CFileException(EIO).Text());
    EXPECT_THROW((void)ReplaceFileWith(
                     m_name, [](CFile&) { throw std::logic_error("other"); }, m_error),
                 std::logic_error);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "old");
    EXPECT_EQ(m_folder.Count(), 1u);
}

TEST_F(ReplaceFileTest, FailuresHaveAReason) {
    EXPECT_FALSE(ReplaceFileWith(m_folder.Name(L"no/such/folder"), "x", m_error));
    EXPECT_NE(m_error, L"untouched");
    EXPECT_FALSE(m_error.empty());
    m_error.clear();
    EXPECT_FALSE(ReplaceFileWith(m_folder.Name(), "x", m_error));
    EXPECT_FALSE(m_error.empty());
    m_error.clear();
    EXPECT_FALSE(ReplaceFileWith(L"", "x", m_error));
    EXPECT_FALSE(m_error.empty());
    m_error.clear();
    EXPECT_FALSE(ReplaceFileWith(m_name + std::wstring(1, L'\0') + L"x", "x", m_error));
    EXPECT_FALSE(m_error.empty());
    EXPECT_EQ(m_folder.Count(), 0u);
}

TEST_F(ReplaceFileTest, ManyWritersLeaveOneWholeContent) {
    std::vector<std::thread> threads;
    for (char letter = 'a'; letter < 'e'; ++letter) {
        threads.emplace_back([this, letter] {
            std::wstring error;
            for (int i = 0; i < 5; ++i)
                EXPECT_TRUE(ReplaceFileWith(m_name, std::string(10000, letter), error))
                    << paramdb::ToUtf8(error);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::string const content = TemporaryFolder::Read(m_name);
    EXPECT_EQ(content, std::string(10000, content.at(0)));
    EXPECT_EQ(m_folder.Count(), 1u);
}

#ifndef _WIN32

TEST_F(ReplaceFileTest, KeepsPermissions) {
    TemporaryFolder::Write(m_name, "old");
    fs::path const path = TemporaryFolder::Native(m_name);
    for (unsigned const mode : {0600u, 0640u, 0777u}) {
        fs::permissions(path, static_cast<fs::perms>(mode));
        EXPECT_TRUE(ReplaceFileWith(m_name, "new", m_error));
        EXPECT_EQ(static_cast<unsigned>(fs::status(path).permissions()), mode);
    }
}

TEST_F(ReplaceFileTest, ANewFileFollowsTheMask) {
    mode_t const before = umask(027);
    EXPECT_TRUE(ReplaceFileWith(m_name, "new", m_error));
    umask(before);
    EXPECT_EQ(static_cast<unsigned>(fs::status(TemporaryFolder::Native(m_name)).permissions()), 0640u);
}

TEST_F(ReplaceFileTest, FollowsLinks) {
    fs::create_directory(TemporaryFolder::Native(m_folder.Name(L"sub")));
    std::wstring const link = m_folder.Name(L"link");
    fs::create_symlink("sub/second", TemporaryFolder::Native(link));
    fs::create_symlink("file", TemporaryFolder::Native(m_folder.Name(L"sub/second")));
    // First a link to a file that is still missing, then one to a file.
    for (char const* const content : {"new", "newer"}) {
        EXPECT_TRUE(ReplaceFileWith(link, content, m_error)) << paramdb::ToUtf8(m_error);
        EXPECT_EQ(TemporaryFolder::Read(m_folder.Name(L"sub/file")), content);
        EXPECT_TRUE(fs::is_symlink(TemporaryFolder::Native(link)));
        EXPECT_TRUE(fs::is_symlink(TemporaryFolder::Native(m_folder.Name(L"sub/second"))));
    }
    fs::create_symlink("loop", TemporaryFolder::Native(m_folder.Name(L"loop")));
    EXPECT_FALSE(ReplaceFileWith(m_folder.Name(L"loop"), "x", m_error));
    EXPECT_NE(m_error, L"untouched");
}

TEST_F(ReplaceFileTest, LongNamesAndRelativeNames) {
    EXPECT_TRUE(ReplaceFileWith(m_folder.Name(std::wstring(255, L'n')), "x", m_error))
        << paramdb::ToUtf8(m_error);
    EXPECT_FALSE(ReplaceFileWith(m_folder.Name(std::wstring(256, L'n')), "x", m_error));
    EXPECT_EQ(m_folder.Count(), 1u);
    fs::path const before = fs::current_path();
    fs::current_path(TemporaryFolder::Native(m_folder.Name()));
    EXPECT_TRUE(ReplaceFileWith(L"relative", "here", m_error));
    fs::current_path(before);
    EXPECT_EQ(TemporaryFolder::Read(m_folder.Name(L"relative")), "here");
}

TEST_F(ReplaceFileTest, APipeIsWrittenDirectly) {
    std::wstring const pipe = m_folder.Name(L"pipe");
    ASSERT_EQ(mkfifo(paramdb::ToUtf8(pipe).c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = TemporaryFolder::Read(pipe); });
    EXPECT_TRUE(ReplaceFileWith(pipe, "through the pipe", m_error)) << paramdb::ToUtf8(m_error);
    reader.join();
    EXPECT_EQ(received, "through the pipe");
    EXPECT_TRUE(fs::is_fifo(TemporaryFolder::Native(pipe)));
}

TEST_F(ReplaceFileTest, AnOpenDescriptorIsWrittenDirectly) {
    // What a shell does with ">> file" for a program that writes to standard output.
    TemporaryFolder::Write(m_name, "before ");
    int const fd = dup(1);
    ASSERT_GE(fd, 0);
    FILE* const stream = std::fopen(paramdb::ToUtf8(m_name).c_str(), "a");
    ASSERT_NE(stream, nullptr);
    ASSERT_GE(dup2(fileno(stream), fd), 0);
    bool const written = ReplaceFileWith(L"/dev/fd/" + std::to_wstring(fd), "after", m_error);
    std::fclose(stream);
    close(fd);
    EXPECT_TRUE(written) << paramdb::ToUtf8(m_error);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "before after");
    EXPECT_EQ(m_folder.Count(), 1u);
}

#endif

#ifdef __linux__
TEST_F(ReplaceFileTest, AFullDeviceIsReported) {
    EXPECT_FALSE(ReplaceFileWith(L"/dev/full", "x", m_error));
    EXPECT_EQ(m_error, CFileException(ENOSPC).Text());
    EXPECT_TRUE(ReplaceFileWith(L"/dev/null", "x", m_error));
}
#endif

} // namespace
