#include <paramdb/platform/framework/cfile.h>

#include "tests/platform/temporary_folder.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <gtest/gtest.h>
#include <tests/support/deep_folder.h>
#include <type_traits>

namespace {

constexpr unsigned ReadMode = CFile::modeRead | CFile::shareDenyNone | CFile::typeBinary;
constexpr unsigned CreateMode =
    CFile::modeCreate | CFile::modeWrite | CFile::shareDenyNone | CFile::typeBinary;

class CFileTest : public testing::Test {
protected:
    TemporaryFolder m_folder;
    std::wstring m_name = m_folder.Name(L"\u20AC \u00E4 file.bin");
};

TEST_F(CFileTest, WritesAndReads) {
    std::string const content("a\r\n\0\x1A\xFF", 6);
    CFile file(m_name.c_str(), CreateMode);
    EXPECT_TRUE(file.IsOpen());
    file.Write(content.data(), 4);
    file.Write(content.data() + 4, 2);
    file.Write(nullptr, 0);
    file.Flush();
    EXPECT_EQ(file.GetPosition(), 6);
    EXPECT_EQ(file.GetLength(), 6);
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    file.Close();
    EXPECT_EQ(TemporaryFolder::Read(m_name), content);

    CFile reader;
    ASSERT_TRUE(reader.Open(m_name.c_str(), ReadMode));
    char buffer[16] = {};
    EXPECT_EQ(reader.Read(buffer, 4), 4u);
    EXPECT_EQ(reader.Read(buffer + 4, 12), 2u);
    EXPECT_EQ(std::string(buffer, 6), content);
    EXPECT_EQ(reader.Read(buffer, 16), 0u);
    EXPECT_EQ(reader.Read(nullptr, 0), 0u);
}

TEST_F(CFileTest, Seeks) {
    TemporaryFolder::Write(m_name, "0123456789");
    CFile file(m_name.c_str(), CFile::modeReadWrite);
    EXPECT_EQ(file.Seek(4, CFile::begin), 4);
    char c = 0;
    EXPECT_EQ(file.Read(&c, 1), 1u);
    EXPECT_EQ(c, '4');
    EXPECT_EQ(file.Seek(2, CFile::current), 7);
    EXPECT_EQ(file.Seek(-1, CFile::end), 9);
    file.Write("x", 1);
    EXPECT_EQ(file.Seek(0, CFile::end), 10);
    EXPECT_THROW(file.Seek(-1, CFile::begin), CFileException);
    file.Close();
    EXPECT_EQ(TemporaryFolder::Read(m_name), "012345678x");
}

TEST_F(CFileTest, Modes) {
    TemporaryFolder::Write(m_name, "old content");
    CFile(m_name.c_str(), CreateMode | CFile::modeNoTruncate).Write("OLD", 3);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "OLD content");
    CFile(m_name.c_str(), CFile::modeWrite).Write("new", 3);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "new content");
    CFile(m_name.c_str(), CreateMode).Write("n", 1);
    EXPECT_EQ(TemporaryFolder::Read(m_name), "n");
    CFile both(m_folder.Name(L"second").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    both.Write("ab", 2);
    both.Seek(0, CFile::begin);
    char buffer[2];
    EXPECT_EQ(both.Read(buffer, 2), 2u);
}

TEST_F(CFileTest, TheWrongDirectionThrows) {
    TemporaryFolder::Write(m_name, "content");
    char c = 0;
    CFile reader(m_name.c_str(), CFile::modeRead);
    EXPECT_THROW(reader.Write("x", 1), CFileException);
    CFile writer(m_name.c_str(), CFile::modeWrite);
    EXPECT_THROW(writer.Read(&c, 1), CFileException);
}

TEST_F(CFileTest, WhatCannotBeOpened) {
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(m_name.c_str(), CFile::modeRead, &error));
    EXPECT_TRUE(error.IsNotFound());
    EXPECT_NE(error.Code(), 0);
    EXPECT_FALSE(error.Text().empty());
    EXPECT_STRNE(error.what(), "");
    EXPECT_FALSE(file.Open(m_name.c_str(), CFile::modeWrite));
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
    EXPECT_FALSE(file.Open(L"", CFile::modeRead));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_THROW(CFile(m_name.c_str(), CFile::modeRead), CFileException);
    EXPECT_THROW(CFile(m_folder.Name(L"no/such/file").c_str(), CreateMode), CFileException);
}

TEST_F(CFileTest, ADirectoryIsRefusedInEveryMode) {
    for (unsigned const mode :
         {CFile::modeRead + 0u, CFile::modeWrite + 0u, CFile::modeReadWrite + 0u, CreateMode}) {
        CFile file;
        CFileException error;
        EXPECT_FALSE(file.Open(m_folder.Name().c_str(), mode, &error)) << mode;
        EXPECT_FALSE(error.IsNotFound()) << mode;
        EXPECT_FALSE(file.IsOpen()) << mode;
    }
}

TEST_F(CFileTest, OpenIsRefusedWhileOpen) {
    TemporaryFolder::Write(m_name, "content");
    CFile file(m_name.c_str(), CFile::modeRead);
    CFileException error;
    EXPECT_FALSE(file.Open(m_name.c_str(), CFile::modeRead, &error));
    EXPECT_NE(error.Code(), 0);
    char c = 0;
    EXPECT_EQ(file.Read(&c, 1), 1u);
    file.Close();
    EXPECT_TRUE(file.Open(m_name.c_str(), CFile::modeRead));
}

TEST_F(CFileTest, AClosedFileThrows) {
    CFile file;
    char c = 0;
    EXPECT_THROW(file.Read(&c, 1), CFileException);
    EXPECT_THROW(file.Write(&c, 1), CFileException);
    EXPECT_THROW(file.Flush(), CFileException);
    EXPECT_THROW(file.Seek(0, CFile::begin), CFileException);
    EXPECT_THROW((void)file.GetPosition(), CFileException);
    EXPECT_THROW((void)file.GetLength(), CFileException);
    EXPECT_NO_THROW(file.Close());
}

TEST_F(CFileTest, MovesAndSharing) {
    static_assert(!std::is_copy_constructible_v<CFile> && !std::is_copy_assignable_v<CFile>);
    CFile writer(m_name.c_str(), CreateMode);
    CFile reader(m_name.c_str(), ReadMode);
    writer.Write("abc", 3);
    CFile moved(std::move(writer));
    EXPECT_FALSE(writer.IsOpen()); // NOLINT(bugprone-use-after-move)
    moved.Write("def", 3);
    CFile assigned(m_folder.Name(L"other").c_str(), CreateMode);
    assigned = std::move(moved);
    EXPECT_FALSE(moved.IsOpen()); // NOLINT(bugprone-use-after-move)
    assigned.Write("g", 1);
    char buffer[16];
    EXPECT_EQ(reader.Read(buffer, 16), 7u);
    EXPECT_EQ(std::string(buffer, 7), "abcdefg");
    EXPECT_EQ(TemporaryFolder::Read(m_folder.Name(L"other")), "");
}

TEST_F(CFileTest, LongNames) {
    test_support::TempDir const parent;
    test_support::DeepFolder deep(parent);
    std::filesystem::path const path = deep.path() / "file";
    std::wstring const name = test_support::WideName(path);
    ASSERT_GT(name.size(), 300u);
    CFile file(name.c_str(), CreateMode);
    file.Write("x", 1);
    file.Close();
    EXPECT_EQ(CFile(name.c_str(), ReadMode).GetLength(), 1);
    EXPECT_TRUE(std::filesystem::remove(test_support::AnyLength(path))); // the name is not cut anywhere
    EXPECT_TRUE(deep.Remove());
}

TEST_F(CFileTest, NamesOfAnyCharacters) {
    for (wchar_t const* const file : {L"gr\u00F6\u00DFe", L"\u20AC \u6E2C\u5B9A",
                                      L"\xD83D\xDE00 and \xD834\xDD1E", L"a.b,c;d=e[f]{g}'h~$#%&!"}) {
        std::wstring const name = m_folder.Name(file);
        CFile(name.c_str(), CreateMode).Write("ab", 2);
        EXPECT_EQ(TemporaryFolder::Read(name), "ab") << paramdb::ToUtf8(name);
        EXPECT_EQ(CFile(name.c_str(), ReadMode).GetLength(), 2) << paramdb::ToUtf8(name);
    }
    EXPECT_EQ(m_folder.Count(), 4u);
}

// What other programs do to a file that is open here, by way of the C library.
TEST_F(CFileTest, OthersReadAndWriteMeanwhile) {
    TemporaryFolder::Write(m_name, "0123456789");
    for (unsigned const mode : {ReadMode, CFile::modeWrite | 0u, CFile::modeReadWrite | 0u}) {
        CFile file(m_name.c_str(), mode);
        {
            std::fstream other(TemporaryFolder::Native(m_name),
                               std::ios::in | std::ios::out | std::ios::binary);
            EXPECT_EQ(other.get(), '0') << mode;
            other.seekp(2);
            EXPECT_TRUE(other.write("x", 1).flush()) << mode;
        }
        EXPECT_EQ(file.GetLength(), 10);
    }
    EXPECT_EQ(TemporaryFolder::Read(m_name), "01x3456789");
    std::fstream other(TemporaryFolder::Native(m_name), std::ios::in | std::ios::out | std::ios::binary);
    CFile file(m_name.c_str(), CFile::modeReadWrite);
    char c = 0;
    EXPECT_EQ(file.Read(&c, 1), 1u);
    EXPECT_EQ(c, '0');
    EXPECT_TRUE(other.write("abc", 3).flush());
    EXPECT_EQ(file.Read(&c, 1), 1u);
    EXPECT_EQ(c, 'b'); // nothing is kept from before
    file.Write("y", 1);
    other.seekg(2);
    EXPECT_EQ(other.get(), 'y');
}

// A host's own file beneath code that takes a CFile.
class ZeroFile : public CFile {
public:
    unsigned Read(void* buffer, unsigned count) override {
        std::fill_n(static_cast<char*>(buffer), count, '\0');
        return count;
    }
};

TEST_F(CFileTest, ReadMayBeReplaced) {
    ZeroFile zero;
    CFile& file = zero;
    char buffer[3] = {'a', 'b', 'c'};
    EXPECT_EQ(file.Read(buffer, 3), 3u);
    EXPECT_EQ(std::string(buffer, 3), std::string(3, '\0'));
}

#ifdef __linux__
TEST_F(CFileTest, AFullDeviceThrows) {
    CFile file(L"/dev/full", CFile::modeWrite);
    try {
        file.Write("x", 1);
        FAIL() << "wrote to a full device";
    } catch (CFileException const& error) {
        EXPECT_EQ(error.Code(), ENOSPC);
    }
}

TEST_F(CFileTest, BytesThatAreNoUtf8NameAFileToo) {
    std::string const bytes = std::string("bad\xFF\x80name");
    std::wstring const name = m_folder.Name(paramdb::FromUtf8(bytes));
    CFile(name.c_str(), CreateMode).Write("x", 1);
    EXPECT_EQ(
        std::filesystem::begin(std::filesystem::directory_iterator(TemporaryFolder::Native(m_folder.Name())))
            ->path()
            .filename()
            .native(),
        bytes);
}
#endif

} // namespace
