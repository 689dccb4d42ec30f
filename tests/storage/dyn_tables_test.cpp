#include <paramdb/storage/dyn_tables.h>

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

// A file in memory, so that every byte and every call can be looked at.
class MemoryFile : public CFile {
public:
    explicit MemoryFile(std::string content = {}) : m_content(std::move(content)) {}
    unsigned Read(void* buffer, unsigned count) override {
        unsigned const taken =
            static_cast<unsigned>(std::min<std::size_t>(count, m_content.size() - m_position));
        std::memcpy(buffer, m_content.data() + m_position, taken);
        m_position += taken;
        return taken;
    }
    void Write(void const* buffer, unsigned count) override {
        m_content.append(static_cast<char const*>(buffer), count);
        ++m_writes;
    }
    std::string const& content() const { return m_content; }
    std::size_t position() const { return m_position; }
    int writes() const { return m_writes; }

private:
    std::string m_content;
    std::size_t m_position = 0;
    int m_writes = 0;
};

using namespace std::string_literals;

std::string const FullHeader = "\x1c\0\0\0++++++++\x02\0\0\0\x03\0\0\0\xff\xff\xff\xff\x78\x56\x34\x12"s;
std::string const ShortHeader = "\x14\0\0\0++++++++\x01\0\0\0\x78\x56\x34\x12"s;

TEST(DynTables, HeaderOnDisk) {
    DynTables::QtTableHeader header;
    DynTables::FillHeader(header, 2, 3, 0xFFFFFFFF, 0x12345678);
    MemoryFile file;
    DynTables::WriteToFile(file, header);
    EXPECT_EQ(file.content(), FullHeader);
    EXPECT_EQ(file.writes(), 1);

    DynTables::QtTableHeader read;
    MemoryFile source(FullHeader + "rest");
    ASSERT_TRUE(DynTables::ReadFromFile(source, read));
    EXPECT_EQ(source.position(), 28u);
    EXPECT_EQ(read.header_size, 28u);
    EXPECT_EQ(read.magic, DynTables::Magic);
    EXPECT_EQ(read.word1, 2u);
    EXPECT_EQ(read.word2, 3u);
    EXPECT_EQ(read.word3, 0xFFFFFFFFu);
    EXPECT_EQ(read.word4, 0x12345678u);
}

TEST(DynTables, HeaderOfAnOldFileLacksTwoWords) {
    DynTables::QtTableHeader header;
    header.word2 = header.word3 = 7;
    MemoryFile file(ShortHeader);
    ASSERT_TRUE(DynTables::ReadFromFile(file, header));
    EXPECT_EQ(file.position(), 20u);
    EXPECT_EQ(header.word1, 1u);
    EXPECT_EQ(header.word2, 1u);
    EXPECT_EQ(header.word3, 1u);
    EXPECT_EQ(header.word4, 0x12345678u);
}

TEST(DynTables, HeaderOfAnOldVersionIsWrittenWhole) {
    DynTables::QtTableHeader header;
    DynTables::FillHeader(header, 1, 2, 3, 4);
    MemoryFile file;
    DynTables::WriteToFile(file, header);
    EXPECT_EQ(file.content().size(), 28u);
}

TEST(DynTables, EveryShorterHeaderIsRefused) {
    for (std::string const& whole : {FullHeader, ShortHeader}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            DynTables::QtTableHeader header;
            MemoryFile file(whole.substr(0, size));
            EXPECT_FALSE(DynTables::ReadFromFile(file, header)) << size;
        }
    }
}

TEST(DynTables, EveryByteOfTheMagicCounts) {
    for (std::size_t byte = 4; byte < 12; ++byte) {
        std::string content = FullHeader;
        content[byte] = '-';
        DynTables::QtTableHeader header;
        MemoryFile file(content);
        EXPECT_FALSE(DynTables::ReadFromFile(file, header)) << byte;
        EXPECT_EQ(file.position(), 12u);
    }
}

TEST(DynTables, RecordOnDisk) {
    std::uint32_t const number = 0x04030201;
    wchar_t const text[4] = {L'a', L'\u20AC', L'\0', L'z'};
    char const byte = 'x';
    int const sizes[] = {4, -4, 0, 1};
    void const* const fields[] = {&number, text, &byte, &byte};
    MemoryFile file;
    DynTables::WriteToFile(file, sizes, fields, 4);
    EXPECT_EQ(file.content(), "\x01\x02\x03\x04\x04\0\0\0a\0\xAC\x20\0\0z\0x"s);

    std::uint32_t read_number = 0;
    wchar_t read_text[4] = {};
    char read_byte = 0;
    void* read_fields[] = {&read_number, read_text, &read_byte, &read_byte};
    MemoryFile source(file.content());
    ASSERT_TRUE(DynTables::ReadFromFile(source, sizes, read_fields, 4));
    EXPECT_EQ(read_number, number);
    EXPECT_TRUE(std::equal(std::begin(text), std::end(text), read_text));
    EXPECT_EQ(read_byte, byte);
}

TEST(DynTables, EveryShorterRecordIsRefused) {
    std::uint32_t number = 7;
    wchar_t text[300] = L"long buffer";
    int const sizes[] = {4, -300};
    void const* const fields[] = {&number, text};
    MemoryFile whole;
    DynTables::WriteToFile(whole, sizes, fields, 2);
    ASSERT_EQ(whole.content().size(), 4u + 4 + 600);
    std::string content = whole.content();
    content[4] = 100; // a stored number that reading accepts
    content[5] = 0;
    void* targets[] = {&number, text};
    for (std::size_t size = 0; size <= content.size(); ++size) {
        MemoryFile file(content.substr(0, size));
        EXPECT_EQ(DynTables::ReadFromFile(file, sizes, targets, 2), size == content.size()) << size;
    }
}

TEST(DynTables, StoredNumberOfATextIsOnlyChecked) {
    struct {
        std::string number;
        bool expected;
    } const cases[] = {
        {"\xC8\0\0\0"s, true},        // 200
        {"\xC9\0\0\0"s, false},       // 201
        {"\0\0\0\0"s, true},          // 0
        {"\xFF\xFF\xFF\xFF"s, true},  // -1
        {"\xFF\xFF\xFF\x7F"s, false}, // the largest
    };
    for (auto const& [number, expected] : cases) {
        wchar_t text[2] = {};
        int const size = -2;
        void* field = text;
        MemoryFile file(number + "a\0b\0rest"s);
        EXPECT_EQ(DynTables::ReadFromFile(file, &size, &field, 1), expected);
        EXPECT_EQ(file.position(), expected ? 8u : 4u);
        EXPECT_EQ(text[1], expected ? L'b' : L'\0');
    }
}

TEST(DynTables, CountOfZeroTouchesNothing) {
    MemoryFile file("abc");
    DynTables::WriteToFile(file, nullptr, nullptr, 0);
    EXPECT_TRUE(DynTables::ReadFromFile(file, nullptr, nullptr, 0));
    EXPECT_EQ(file.content(), "abc");
    EXPECT_EQ(file.position(), 0u);
}

} // namespace
