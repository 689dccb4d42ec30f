#include <paramdb/platform/framework/read_file.h>

#include "tests/platform/temporary_folder.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

using paramdb::MostBytesOf;
using paramdb::MostUnforeseenBytes;
using paramdb::ReadToEnd;

// So many bytes, in pieces as they are asked for, behind a length of one's own choice; -1 for none.
class ToldFile : public CFile {
public:
    ToldFile(std::uint64_t bytes, std::int64_t length) : m_left(bytes), m_length(length) {}
    unsigned Read(void* buffer, unsigned count) override {
        count = static_cast<unsigned>(std::min<std::uint64_t>(count, m_left));
        m_left -= count;
        std::memset(buffer, 'x', count);
        return count;
    }
    std::int64_t GetLength() const override {
        if (m_length < 0)
            throw CFileException(EINVAL);
        return m_length;
    }

private:
    std::uint64_t m_left;
    std::int64_t m_length;
};

TEST(ReadFile, ExpectsTheLengthOrWhatNobodyForesees) {
    constexpr auto least = static_cast<std::int64_t>(MostUnforeseenBytes);
    EXPECT_EQ(MostUnforeseenBytes, 268'435'456U);
    EXPECT_EQ(MostBytesOf(ToldFile(0, -1)), MostUnforeseenBytes);
    EXPECT_EQ(MostBytesOf(ToldFile(0, 0)), MostUnforeseenBytes);
    EXPECT_EQ(MostBytesOf(ToldFile(0, least)), MostUnforeseenBytes);
    EXPECT_EQ(MostBytesOf(ToldFile(0, least + 1)), MostUnforeseenBytes + 1);
}

TEST(ReadFile, WhateverTheLengthTells) {
    for (std::uint64_t const size : {0U, 1U, 65535U, 65536U, 65537U, 131072U, 1'000'000U})
        for (std::int64_t const length : {-1, 0, 10, 10'000'000}) {
            ToldFile file(size, length);
            EXPECT_EQ(ReadToEnd(file), std::string(size, 'x')) << size << ' ' << length;
        }
}

TEST(ReadFile, FromThePresentPosition) {
    TemporaryFolder const folder;
    std::wstring const name = folder.Name(L"file");
    TemporaryFolder::Write(name, std::string("ab\r\n\0c", 6));
    CFile file(name.c_str(), CFile::modeRead);
    file.Seek(1, CFile::begin);
    EXPECT_EQ(ReadToEnd(file), std::string("b\r\n\0c", 5));
    EXPECT_EQ(ReadToEnd(file), "");
    CFile writing(name.c_str(), CFile::modeWrite);
    EXPECT_THROW(static_cast<void>(ReadToEnd(writing)), CFileException);
}

} // namespace
