// Reading and writing lake files.
#include <paramdb/platform/core/line_end.h>
#include <paramdb/storage/lake.h>

#include "../support/temp_dir.h"
#include "lake_support.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_literals;
using namespace std::string_view_literals;
using lake_support::Lines;
using lake_support::Node;
using test_support::ReadBytes;
using test_support::WideName;
using test_support::WriteBytes;
using Texts = std::vector<std::wstring>;

namespace {

class LakeFile : public testing::Test {
protected:
    /// Reads a file with these bytes.
    bool Read(std::string_view bytes) {
        WriteBytes(path, bytes);
        return lake.read(name);
    }
    /// The bytes that the lake writes, with LF at the line ends.
    std::string Written() const { return lake_support::WrittenText(lake); }
    std::wstring NameOf(char8_t const* file) const { return WideName(folder / file); }

    test_support::TempDir folder;
    std::filesystem::path path = folder / u8"a.lake";
    std::wstring name = WideName(path);
    CLake lake;
};

std::string OnDisk(std::string text) {
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos;) {
        text.replace(at, 1, paramdb::LineEnd);
        at += std::string_view(paramdb::LineEnd).size();
    }
    return text;
}

} // namespace

TEST_F(LakeFile, AMissingFileLeavesAnEmptyLakeEmpty) {
    EXPECT_TRUE(lake.read(name));
    EXPECT_TRUE(lake.empty());
    EXPECT_EQ(lake.filename(), name);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(LakeFile, WhatCannotBeOpenedLeavesTheLines) {
    for (std::wstring const& missing :
         {NameOf(u8"missing"), NameOf(u8"no folder/a"), WideName(folder.path())}) {
        ASSERT_TRUE(Read("k: 1\ns: {\n2\n}\n"));
        EXPECT_TRUE(lake.read(missing));
        EXPECT_EQ(lake.filename(), missing);
        EXPECT_EQ(Lines(lake), (Texts{L"k|1|", L"s|{|", L"|2|", L"|}|"}));
        EXPECT_EQ(lake[L"k"].text(), L"1");
        EXPECT_EQ(lake_support::Rows(*lake[L"s"].position), Texts{L"2"});
    }
}

TEST_F(LakeFile, WhatCannotBeOpenedStillLinksAgain) {
    ASSERT_TRUE(Read("k: 1\n"));
    lake[L"new"] = L"2";
    ASSERT_EQ(Node(lake, 2).level(), -1);
    Node(lake, 1).value(L"{");
    EXPECT_TRUE(lake.read(NameOf(u8"missing")));
    EXPECT_FALSE(lake[L"new"].found());
    EXPECT_EQ(Node(lake, 2).level(), 1);
    EXPECT_EQ(lake[L"k"].position->find(L"new"), std::next(lake.begin(), 2));
}

TEST_F(LakeFile, AnEmptyFileClearsAFullLake) {
    ASSERT_TRUE(Read("k: 1\n"));
    EXPECT_TRUE(Read(""));
    EXPECT_TRUE(lake.empty());
    EXPECT_EQ(lake.size(), 1U);
    EXPECT_FALSE(lake[L"k"].found());
}

TEST_F(LakeFile, LineEnds) {
    struct Case {
        std::string_view bytes;
        Texts lines;
    };
    Case const cases[] = {
        {"", {}},
        {"\n", {L"||"}},
        {"\r\n", {L"||"}},
        {"\n\n", {L"||", L"||"}},
        {"a: 1\n", {L"a|1|"}},
        {"a: 1", {L"a|1|"}},
        {"a: 1\r\nb: {\r\n}\r\n", {L"a|1|", L"b|{|", L"|}|"}},
        {"a: 1\r\nb", {L"a|1|", L"|b|"}},
        {"a\rb\r\r\n", {L"|a\rb|"}},
        {"a\n ", {L"|a|", L"||"}},
        {"a\x1A\nb\n\x1A", {L"|a\x1A|", L"|b|", L"|\x1A|"}},
        {"a\0b\n\0\n"sv, {L"|a\0b|"s, L"|\0|"s}},
        {"\xEF\xBB\xBFk: \xC3\xA4\n", {L"\xEF\xBB\xBFk|\xC3\xA4|"}},
        {"\xFF\xFEk\n", {L"|\xFF\xFEk|"}},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(lake_support::Escaped(test.bytes));
        EXPECT_TRUE(Read(test.bytes));
        EXPECT_EQ(Lines(lake), test.lines);
    }
}

TEST_F(LakeFile, LongLines) {
    std::string row;
    while (row.size() < 5'000'000)
        row += "12345.25 ";
    std::string const text = "<T>: {\n" + row + "\n" + row + "k: " + row + "\n}\nlast: 1";
    ASSERT_TRUE(Read(text));
    ASSERT_EQ(lake.size(), 6U);
    row.pop_back();
    std::wstring const wide(row.begin(), row.end());
    EXPECT_TRUE(Node(lake, 2).value() == wide);
    EXPECT_TRUE(Node(lake, 3).key() == wide + L" k");
    EXPECT_TRUE(Node(lake, 3).value() == wide);
    EXPECT_EQ(lake[L"last"].text(), L"1");
    EXPECT_TRUE(Written() == "<T>: {\n\t" + row + "\n\t" + row + " k: " + row + "\n}\nlast: 1\n");
}

TEST_F(LakeFile, ReadingAgainReplacesEverything) {
    ASSERT_TRUE(Read("a: 1\nb: 2\nc: {\n1\n}\n"));
    ASSERT_TRUE(Read("b: 3\n"));
    EXPECT_EQ(Lines(lake), Texts{L"b|3|"});
    EXPECT_FALSE(lake[L"a"].found());
    ASSERT_TRUE(Read("x: {\n1\n2\n3\n}\ny: {\n4\n}\n"));
    EXPECT_EQ(lake.size(), 9U);
    EXPECT_EQ(lake_support::Rows(*lake[L"x"].position), (Texts{L"1", L"2", L"3"}));
    ASSERT_TRUE(lake.read());
    EXPECT_EQ(lake.size(), 9U);
    EXPECT_EQ(lake_support::Rows(*lake[L"x"].position), (Texts{L"1", L"2", L"3"}));
}

TEST_F(LakeFile, AnEmptyNameMeansTheStoredOne) {
    ASSERT_TRUE(Read("a: 1\n"));
    lake.clear();
    EXPECT_TRUE(lake.empty());
    EXPECT_EQ(lake.filename(), name);
    EXPECT_TRUE(lake.read());
    EXPECT_EQ(lake[L"a"].text(), L"1");
    lake[L"a"] = L"2";
    EXPECT_TRUE(lake.write());
    EXPECT_EQ(ReadBytes(path), OnDisk("a: 2\n"));
    std::wstring const other = NameOf(u8"b.lake");
    EXPECT_TRUE(lake.write(other));
    EXPECT_EQ(lake.filename(), other);
    EXPECT_EQ(ReadBytes(folder / u8"b.lake"), OnDisk("a: 2\n"));
}

TEST_F(LakeFile, WithoutAnyNameNothingOpens) {
    EXPECT_TRUE(lake.read());
    EXPECT_TRUE(lake.empty());
    EXPECT_FALSE(lake.write());
}

TEST_F(LakeFile, TheConstructorReadsTheFile) {
    WriteBytes(path, "a: 1\n");
    CLake const full(name);
    EXPECT_EQ(full[L"a"].text(), L"1");
    EXPECT_EQ(full.filename(), name);
    CLake const missing(NameOf(u8"missing"));
    EXPECT_TRUE(missing.empty());
    EXPECT_EQ(missing.filename(), NameOf(u8"missing"));
}

TEST_F(LakeFile, NamesMayHoldAnyCharacter) {
    for (char8_t const* const file :
         {u8"gr\u00F6\u00DFe.lake", u8"\u20AC \u6E2C\u5B9A.lake", u8"\U0001D11E.lake"}) {
        WriteBytes(folder / file, "a: 1\n");
        CLake other(NameOf(file));
        EXPECT_EQ(other[L"a"].text(), L"1");
        other[L"a"] = L"2";
        EXPECT_TRUE(other.write());
        EXPECT_EQ(ReadBytes(folder / file), OnDisk("a: 2\n"));
    }
}

TEST_F(LakeFile, TheIndentIsTheLevel) {
    ASSERT_TRUE(Read("a: {\n  b: {\n1\n\n}\n \t  2\n}\n{\n}\n"));
    EXPECT_EQ(Written(), "a: {\n\tb: {\n\t\t1\n\t\t\n\t}\n\t2\n}\n{\n}\n");
}

TEST_F(LakeFile, SupersededLinesAreWrittenToo) {
    ASSERT_TRUE(Read("x: 1\nx: 2\ns: {\n1\n}\ns: {\n2\n}\n"));
    EXPECT_EQ(Written(), "x: 1\nx: 2\ns: {\n\t1\n}\ns: {\n\t2\n}\n");
}

TEST_F(LakeFile, WhatIsPrintedAndReadBack) {
    struct Case {
        wchar_t const *key, *value, *comment;
        char const* printed;
        wchar_t const* read_back;
    };
    Case const cases[] = {
        {L"name", L"text", L"", "name: text\n", L"name|text|"},
        {L"name", L"", L"", "name: \n", L"name||"},
        {L"name", L"{", L"", "name: {\n", L"name|{|"},
        {L"", L"}", L"note", "}\t; note\n", L"|}|note"},
        {L"", L"", L"note", "\t; note\n", L"||note"},
        {L"", L"", L"", "\n", L"||"},
        {L"", L"1 \"a b\"", L"", "1 \"a b\"\n", L"|1 \"a b\"|"},
        {L"name", L"text", L"note", "name: text\t; note\n", L"name|text\t; note|"},
        {L"name", L"", L"note", "name: \t; note\n", L"name|; note|"},
        {L"name", L"{", L"note", "name: {\t; note\n", L"name|{\t; note|"},
        {L"", L"value", L"note", "value\t; note\n", L"|value\t; note|"},
        {L"", L"} x", L"", "} x\n", L"|} x|"},
        {L"", L"a: b", L"", "a: b\n", L"a|b|"},
        {L"", L" padded ", L"", " padded \n", L"|padded|"},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.printed);
        ASSERT_TRUE(Read(*test.key != 0 ? std::string(test.key, test.key + 4) + ":\n" : "\n"));
        Node(lake, 1).value(test.value);
        Node(lake, 1).comment(test.comment);
        std::string const written = Written();
        EXPECT_EQ(written, test.printed);
        ASSERT_TRUE(Read(written));
        EXPECT_EQ(Lines(lake), Texts{test.read_back});
    }
}

TEST_F(LakeFile, AnOpenerWithACommentLosesItsSection) {
    ASSERT_TRUE(Read("a: {\nx: 1\n}\nb: 2\n"));
    Node(lake, 1).comment(L"note");
    ASSERT_TRUE(Read(Written()));
    EXPECT_EQ(lake[L"a"].text(), L"{\t; note");
    EXPECT_EQ(lake[L"x"].text(), L"1");
    EXPECT_FALSE(lake[L"b"].found());
}

TEST_F(LakeFile, ASectionMadeInMemorySurvives) {
    ASSERT_TRUE(Read("<T>:\nz: 1\n"));
    for (wchar_t const* const row : {L"1 \"a b\"", L"2 \"c: d; e\""})
        lake[L"<T>"].position->push_back(row);
    Texts const lines = Lines(lake);
    ASSERT_TRUE(Read(Written()));
    EXPECT_EQ(Lines(lake), lines);
    EXPECT_EQ(lines, (Texts{L"<T>|{|", L"|1 \"a b\"|", L"|2 \"c: d; e\"|", L"|}|<T>", L"z|1|"}));
    EXPECT_EQ(lake_support::Rows(*lake[L"<T>"].position), (Texts{L"1 \"a b\"", L"2 \"c: d; e\""}));
    EXPECT_EQ(lake[L"z"].text(), L"1");
}

TEST_F(LakeFile, EveryByteSurvives) {
    std::string text;
    for (int code = 0; code <= 0xFF; ++code)
        if (code != '\n')
            text += "x" + std::string(1, static_cast<char>(static_cast<unsigned char>(code))) + "x\n";
    ASSERT_TRUE(Read(text));
    std::string expected = text;
    expected.replace(expected.find("x:x"), 3, "x: x");
    EXPECT_EQ(Written(), expected);
}

TEST_F(LakeFile, ACharacterWithoutAByteEndsTheOutput) {
    for (wchar_t const* const character : {L"\x100", L"\x20AC", L"\xFFFF", L"\x1041"}) {
        ASSERT_TRUE(Read("a: 1\nb: 2\nc: 3\n"));
        lake[L"b"] = L"xy"s + character + L"z";
        EXPECT_TRUE(lake.write(name));
        EXPECT_EQ(ReadBytes(path), OnDisk("a: 1\nb: xy"));
    }
}

TEST_F(LakeFile, ALineFeedInATextMakesTwoLines) {
    ASSERT_TRUE(Read("a: {\nb: 2\n}\n"));
    Node(lake, 2).value(L"3\nc: 4");
    EXPECT_TRUE(lake.write(name));
    EXPECT_EQ(ReadBytes(path), OnDisk("a: {\n\tb: 3\nc: 4\n}\n"));
}

TEST_F(LakeFile, ALineOfNoLevelCannotBeWritten) {
    for (char const* const text : {"a: 1\n}\n", "a: 1\n}\nb: 2\n", "a: 1\n}\nb: {\n}\n"}) {
        ASSERT_TRUE(Read(text));
        EXPECT_THROW(lake.write(name), std::length_error);
        EXPECT_EQ(ReadBytes(path), OnDisk("a: 1\n"));
    }
    ASSERT_TRUE(Read("a: 1\n"));
    lake[L"new"] = L"2";
    EXPECT_THROW(lake.write(name), std::length_error);
}

TEST_F(LakeFile, WritingWhereThereIsNoFileToOpen) {
    ASSERT_TRUE(Read("a: 1\n"));
    std::wstring const missing = NameOf(u8"no folder/a.lake");
    EXPECT_FALSE(lake.write(missing));
    EXPECT_EQ(lake.filename(), missing);
    EXPECT_FALSE(lake.write(WideName(folder.path())));
    EXPECT_EQ(lake[L"a"].text(), L"1");
}

TEST_F(LakeFile, WritingEmptiesTheFileFirst) {
    WriteBytes(path, std::string(100'000, 'x'));
    EXPECT_TRUE(lake.write(name));
    EXPECT_EQ(ReadBytes(path), "");
}

TEST_F(LakeFile, LargeFilesSurvive) {
    std::string text;
    for (int table = 0; table < 50; ++table) {
        text += "<T" + std::to_string(table) + ">: {\n";
        for (int row = 0; row < 1000; ++row)
            text += "\t" + std::to_string(row) + " 0.5 \"name of " + std::to_string(table * row) + "\"\n";
        text += "}\n";
    }
    ASSERT_TRUE(Read(text));
    EXPECT_EQ(lake.size(), 50U * 1002U + 1U);
    EXPECT_EQ(lake[L"<T49>"].position->unnamed_size(), 1000U);
    EXPECT_TRUE(Written() == text);
}

#ifdef __linux__
TEST_F(LakeFile, AFullDeviceGoesUnseen) {
    std::string text;
    for (int row = 0; row < 20'000; ++row)
        text += "123456789\n";
    ASSERT_TRUE(Read(text));
    EXPECT_TRUE(lake.write(L"/dev/full"));
    EXPECT_EQ(lake.filename(), L"/dev/full"s);
}
#endif
