#include <paramdb/platform/core/windows_api.h>
#include <paramdb/platform/framework/replace_file.h>

#include "tests/platform/temporary_folder.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <tests/support/deep_folder.h>
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

TEST_F(ReplaceFileTest, NamesOfAnyCharacters) {
    for (wchar_t const* const file :
         {L"gr\u00F6\u00DFe", L"\u20AC \u6E2C\u5B9A", L"\xD83D\xDE00 and \xD834\xDD1E"}) {
        for (char const* const content : {"new", "newer"}) {
            EXPECT_TRUE(ReplaceFileWith(m_folder.Name(file), content, m_error)) << paramdb::ToUtf8(m_error);
            EXPECT_EQ(TemporaryFolder::Read(m_folder.Name(file)), content);
        }
    }
    EXPECT_EQ(m_folder.Count(), 3u);
}

TEST_F(ReplaceFileTest, LongPaths) {
    test_support::TempDir const parent;
    test_support::DeepFolder deep(parent);
    fs::path const path = deep.path() / "file";
    std::wstring const name = test_support::WideName(path);
    for (char const* const content : {"new", "newer"}) {
        EXPECT_TRUE(ReplaceFileWith(name, content, m_error)) << paramdb::ToUtf8(m_error);
        CFile file(name.c_str(), CFile::modeRead);
        std::string read(16, '\0');
        read.resize(file.Read(read.data(), 16));
        EXPECT_EQ(read, content);
    }
    EXPECT_TRUE(fs::remove(test_support::AnyLength(path)));
    EXPECT_TRUE(deep.Remove()); // no temporary is left
}

TEST_F(ReplaceFileTest, WhoeverReadsTheOldFileKeepsIt) {
    TemporaryFolder::Write(m_name, "old content");
    CFile reader(m_name.c_str(), CFile::modeRead | CFile::shareDenyNone);
    char buffer[11] = {};
    EXPECT_EQ(reader.Read(buffer, 4), 4u);
    EXPECT_TRUE(ReplaceFileWith(m_name, "new", m_error)) << paramdb::ToUtf8(m_error);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "new");
    EXPECT_EQ(reader.Read(buffer + 4, 7), 7u);
    EXPECT_EQ(std::string(buffer, 11), "old content");
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

#ifdef _WIN32
TEST_F(ReplaceFileTest, WhatMayNotBeWrittenIsRefused) {
    TemporaryFolder::Write(m_name, "old");
    std::wstring const native = TemporaryFolder::Native(m_name).wstring();
    ASSERT_TRUE(SetFileAttributesW(native.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(ReplaceFileWith(m_name, "new", m_error));
    EXPECT_EQ(m_error, CFileException(ERROR_ACCESS_DENIED).Text());
    EXPECT_EQ(TemporaryFolder::Read(m_name), "old");
    EXPECT_EQ(m_folder.Count(), 1u);
    ASSERT_TRUE(SetFileAttributesW(native.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST_F(ReplaceFileTest, KeepsAttributes) {
    TemporaryFolder::Write(m_name, "old");
    std::wstring const native = TemporaryFolder::Native(m_name).wstring();
    constexpr DWORD seen = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    for (DWORD const attributes : {seen, DWORD{FILE_ATTRIBUTE_HIDDEN}}) {
        ASSERT_TRUE(SetFileAttributesW(native.c_str(), attributes));
        EXPECT_TRUE(ReplaceFileWith(m_name, "new", m_error)) << paramdb::ToUtf8(m_error);
        EXPECT_EQ(GetFileAttributesW(native.c_str()) & seen, attributes);
    }
    EXPECT_EQ(m_folder.Count(), 1u);
}

TEST_F(ReplaceFileTest, WhatAnotherProgramKeepsOpenStaysAsItIs) {
    TemporaryFolder::Write(m_name, "old");
    std::ifstream const other(TemporaryFolder::Native(m_name)); // without leave to remove the file
    ASSERT_TRUE(other.is_open());
    EXPECT_FALSE(ReplaceFileWith(m_name, "new", m_error));
    EXPECT_EQ(m_error, CFileException(ERROR_SHARING_VIOLATION).Text());
    EXPECT_EQ(TemporaryFolder::Read(m_name), "old");
    EXPECT_EQ(m_folder.Count(), 1u);
}

TEST_F(ReplaceFileTest, WhatAnotherProgramSoonClosesIsReplaced) {
    TemporaryFolder::Write(m_name, "old");
    std::ifstream other(TemporaryFolder::Native(m_name));
    std::thread closing([&other] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        other.close();
    });
    bool const replaced = ReplaceFileWith(m_name, "new", m_error);
    closing.join();
    EXPECT_TRUE(replaced) << paramdb::ToUtf8(m_error);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "new");
    EXPECT_EQ(m_folder.Count(), 1u);
}

TEST_F(ReplaceFileTest, ADeviceIsWrittenDirectly) {
    EXPECT_TRUE(ReplaceFileWith(L"NUL", "gone", m_error)) << paramdb::ToUtf8(m_error);
    EXPECT_EQ(m_folder.Count(), 0u);
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
