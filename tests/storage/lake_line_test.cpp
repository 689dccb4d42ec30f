#include <paramdb/storage/lake.h>
#include <paramdb/storage/lake_line.h>

#include "lake_model.h"
#include "lake_support.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_view_literals;
using paramdb::LakeLine;
using paramdb::TakeLine;

namespace {

struct Split {
    std::string_view line;
    std::string_view key, value, comment;
};

constexpr Split Splits[] = {
    // keys
    {"name: text", "name", "text", ""},
    {"name:", "name", "", ""},
    {"name: ", "name", "", ""},
    {"name: {", "name", "{", ""},
    {"name:{", "name", "{", ""},
    {"key:value", "key", "value", ""},
    {"  name \t:\t text  ", "name", "text", ""},
    {"a: b: c:d", "a", "b: c:d", ""},
    {"1 2 a: b", "1 2 a", "b", ""},
    {"<QType><FBaseName>: \"x y\"", "<QType><FBaseName>", "\"x y\"", ""},
    {"<DbDesign.CacheVersion>: 216", "<DbDesign.CacheVersion>", "216", ""},
    {": text", "", "text", ""},
    {":", "", "", ""},
    {" : {", "", "{", ""},
    {": }", "", "}", ""},
    {"::", "", ":", ""},
    {"}: x", "}", "x", ""},
    {"{: {", "{", "{", ""},
    // a colon first, then a semicolon
    {"name: text \t; note", "name", "text \t; note", ""},
    {"name: { \t; note", "name", "{ \t; note", ""},
    {"name:;", "name", ";", ""},
    {"a: \"b", "a", "\"b", ""},
    // rows and brackets
    {"1 2 \"a b\"", "", "1 2 \"a b\"", ""},
    {"{", "", "{", ""},
    {"\t{ ", "", "{", ""},
    {"{ x", "", "{ x", ""},
    {"{{", "", "{{", ""},
    {"}", "", "}", ""},
    {"}x", "", "}x", ""},
    {"", "", "", ""},
    {" \t\v\f", "", "", ""},
    // comments
    {"; text", "", "", "text"},
    {";text", "", "", "text"},
    {"  ;  two words  ", "", "", "two words"},
    {";", "", "", ""},
    {";;", "", "", ";"},
    {"; a: b", "", "", "a: b"},
    {"; {", "", "", "{"},
    {"; \"", "", "", "\""},
    {"} ; text", "", "}", "text"},
    {"};", "", "}", ""},
    {"}x y ;a;b", "", "}x y", "a;b"},
    {"  } \t; <TMode>", "", "}", "<TMode>"},
    {"} ; a: b", "", "}", "a: b"},
    {"} a: b ; c", "} a", "b ; c", ""},
    // a semicolon that means nothing
    {"abc ; text", "", "abc ; text", ""},
    {"abc ; a: b", "", "abc ; a: b", ""},
    {"{ ; text", "", "{ ; text", ""},
    {"1;", "", "1;", ""},
    // quotes
    {"1 2 \"a: b; c\"", "", "1 2 \"a: b; c\"", ""},
    {"\"a:b\" c: d", "\"a:b\" c", "d", ""},
    {"\"a;b\" c: d", "\"a;b\" c", "d", ""},
    {"\"a: b; c", "", "\"a: b; c", ""},
    {"a\"b:c\"d:e", "a\"b:c\"d", "e", ""},
    {"\"\"a: b", "\"\"a", "b", ""},
    {"\"\"\": a", "", "\"\"\": a", ""},
    {"\\\":\": a", "\\\":\"", "a", ""},
    {"} \"a;b\" ; c", "", "} \"a;b\"", "c"},
    {"} \"a ; c", "", "} \"a ; c", ""},
    {"\" ; x", "", "\" ; x", ""},
    // bytes
    {"a: b\r", "a", "b", ""},
    {"\r", "", "", ""},
    {"a\rb", "", "a\rb", ""},
    {"{\r", "", "{", ""},
    {"} ; x\r", "", "}", "x"},
    {"\x85\xA0 k\xA0: v\x85", "k", "v", ""},
    {"\x1A", "", "\x1A", ""},
    {"a\x1A: b", "a\x1A", "b", ""},
    {"\0a: \0"sv, "\0a"sv, "\0"sv, ""},
    {"\xEF\xBB\xBFk: v", "\xEF\xBB\xBFk", "v", ""},
    {"\xFF: \xE4", "\xFF", "\xE4", ""},
    {"\x1C\x1F", "", "\x1C\x1F", ""},
    {"\x80\x84\x86\x9F\xA1", "", "\x80\x84\x86\x9F\xA1", ""},
};

std::wstring Wide(std::string_view bytes) {
    std::wstring text;
    for (char const byte : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    return text;
}

} // namespace

TEST(LakeLine, SplitsALine) {
    for (Split const& test : Splits) {
        if (test.line.empty())
            continue; // no line that TakeLine may be called for
        SCOPED_TRACE(lake_support::Escaped(test.line));
        char const* next = test.line.data();
        char const* const end = next + test.line.size();
        LakeLine const line = TakeLine(next, end);
        EXPECT_EQ(line.key, test.key);
        EXPECT_EQ(line.value, test.value);
        EXPECT_EQ(line.comment, test.comment);
        EXPECT_EQ(next, end);
    }
}

TEST(LakeLine, SplitsALineThatALineEndFollows) {
    for (Split const& test : Splits)
        for (std::string_view const rest : {""sv, "\n"sv, ";:\"x"sv, "k: v\n"sv}) {
            SCOPED_TRACE(lake_support::Escaped(test.line));
            std::string const text = std::string(test.line) + '\n' + std::string(rest);
            char const* next = text.data();
            LakeLine const line = TakeLine(next, text.data() + text.size());
            EXPECT_EQ(line.key, test.key);
            EXPECT_EQ(line.value, test.value);
            EXPECT_EQ(line.comment, test.comment);
            EXPECT_EQ(std::string_view(next), rest);
        }
}

TEST(LakeLine, TextsAreViewsOfTheLine) {
    std::string_view const text = "  key :  value \n";
    char const* next = text.data();
    LakeLine const line = TakeLine(next, text.data() + text.size());
    EXPECT_EQ(line.key.data(), text.data() + 2);
    EXPECT_EQ(line.value.data(), text.data() + 9);
}

TEST(LakeLine, IsWhatALakeReads) {
    for (Split const& test : Splits) {
        SCOPED_TRACE(lake_support::Escaped(test.line));
        CLake lake;
        lake_support::ReadText(lake, "1\n" + std::string(test.line) + "\n");
        ASSERT_EQ(lake.size(), 3U);
        CLake::CNode const& node = lake_support::Node(lake, 2);
        EXPECT_EQ(node.key(), Wide(test.key));
        EXPECT_EQ(node.value(), Wide(test.value));
        EXPECT_EQ(node.comment(), Wide(test.comment));
        EXPECT_EQ(node.is_named(), !test.key.empty());
        EXPECT_EQ(node.is_section(), test.value == "{");
    }
}

TEST(LakeLine, TheModelAgrees) {
    for (Split const& test : Splits) {
        SCOPED_TRACE(lake_support::Escaped(test.line));
        lake_model::Line const line = lake_model::ParseLine(test.line);
        EXPECT_EQ(line.key, Wide(test.key));
        EXPECT_EQ(line.value, Wide(test.value));
        EXPECT_EQ(line.comment, Wide(test.comment));
    }
}
