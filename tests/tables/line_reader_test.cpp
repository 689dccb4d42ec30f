#include <paramdb/tables/line_reader.h>
#include <paramdb/tables/line_writer.h>
#include <paramdb/tables/row.h>

#include "reader_cases.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <tests/support/messages.h>
#include <tests/support/text_lines.h>
#include <vector>

using paramdb::Fields;
using paramdb::ReadLine;
using test_support::Widened;

namespace {

using ReadRow = QVRow<QInt<"i">, QUnsigned<"u">, QInt64<"q">, QFloat<"f">, QDouble<"d">, QText<"t">>;

ReadRow const Before(11, 12U, std::int64_t{13}, 14.5F, 15.5, CFixedText(L"before"));

std::wstring ConversionMessage(std::wstring const& reason, std::wstring const& rest) {
    return L"Error converting parameter sea to parameter tables: '" + reason + L"' for substring '" + rest +
           L"'\n";
}

// Reads the fields of a row from a line of bytes and from the same as a wide text; both must do the same.
struct Reading {
    bool good;
    std::wstring row;  // as written
    std::wstring rest; // of the line
    std::vector<Message> messages;
};

template <class AnyRow>
Reading ReadBothWays(std::string const& line, AnyRow const& before) {
    MessageLog messages;
    AnyRow row = before;
    std::string_view bytes = line;
    Reading narrow{ReadLine(bytes, Fields(row)), L"", L"", {}};
    paramdb::AppendFields(narrow.row, paramdb::ConstFields(row));
    narrow.rest = Widened(std::string(bytes));
    narrow.messages = messages.Take();

    row = before;
    std::wstring const wide_line = Widened(line);
    std::wstring_view wide = wide_line;
    EXPECT_EQ(ReadLine(wide, Fields(row)), narrow.good);
    std::wstring wide_row;
    paramdb::AppendFields(wide_row, paramdb::ConstFields(row));
    EXPECT_EQ(wide_row, narrow.row);
    EXPECT_EQ(wide, narrow.rest);
    EXPECT_EQ(messages.Take(), narrow.messages);
    return narrow;
}

struct LineCase {
    std::string line;
    std::wstring row;
    std::wstring rest;
    std::wstring fault; // the message, or empty if the line is good
};

} // namespace

void reader_cases::CheckLineFields() {
    LineCase const cases[] = {
        {"1 2 3 4.5 5.5 six", L"1 2 3 4.5 5.5 six", L"", L""},
        {"-1 -1 -5000000000 -4.25e3 1e-7 \"two words\" 7", L"-1 4294967295 -5000000000 -4250 1e-07 two words",
         L" 7", L""},
        {"  1\t2  3 0x10 inf a", L"1 2 3 16 inf a", L"", L""},
        {"1-2+3.5.25-.5abc", L"1 4294967294 3 0.5 0.25 -.5abc", L"", L""},
        // Fewer fields: numbers stay, the text becomes empty.
        {"", L"11 12 13 14.5 15.5 ", L"", L""},
        {"1", L"1 12 13 14.5 15.5 ", L"", L""},
        {"1 2", L"1 2 13 14.5 15.5 ", L"", L""},
        {"1 2 3", L"1 2 3 14.5 15.5 ", L"", L""},
        {"1 2 3 4", L"1 2 3 4 15.5 ", L"", L""},
        {"1 2 3 4 5", L"1 2 3 4 5 ", L"", L""},
        {"1 2 3 4 5 ", L"1 2 3 4 5 ", L"", L""},
        // Blanks behind the last field are no number.
        {"1 ", L"1 12 13 14.5 15.5 before", L" ", ConversionMessage(L"invalid stoul argument", L" ")},
        // A comma ends a number, and begins none.
        {"1 2 3 4,5 5 x", L"1 2 3 4 15.5 before", L",5 5 x",
         ConversionMessage(L"invalid stod argument", L",5 5 x")},
        {"1 2 3 4.5 5,5 x", L"1 2 3 4.5 5 ,5", L" x", L""},
        {"1.000 2 3 4 5 x", L"1 12 13 14.5 15.5 before", L".000 2 3 4 5 x",
         ConversionMessage(L"invalid stoul argument", L".000 2 3 4 5 x")},
        // The first fault ends the reading; the text before it is what was cut.
        {"a 2 3", L"11 12 13 14.5 15.5 before", L"a 2 3",
         ConversionMessage(L"invalid stoi argument", L"a 2 3")},
        {"1 b 3", L"1 12 13 14.5 15.5 before", L" b 3",
         ConversionMessage(L"invalid stoul argument", L" b 3")},
        {"1 2 c 4", L"1 2 13 14.5 15.5 before", L" c 4",
         ConversionMessage(L"invalid stoll argument", L" c 4")},
        {"1 2 3 d\xE4", L"1 2 3 14.5 15.5 before", L" d\xE4",
         ConversionMessage(L"invalid stof argument", L" d\xE4")},
        {"1 2 3 4 \"5\" x", L"1 2 3 4 15.5 before", L" \"5\" x",
         ConversionMessage(L"invalid stod argument", L" \"5\" x")},
        {"2147483648 2", L"11 12 13 14.5 15.5 before", L"2147483648 2",
         ConversionMessage(L"stoi argument out of range", L"2147483648 2")},
        {"-2147483649", L"11 12 13 14.5 15.5 before", L"-2147483649",
         ConversionMessage(L"stoi argument out of range", L"-2147483649")},
        {"1 4294967296 3", L"1 12 13 14.5 15.5 before", L" 4294967296 3",
         ConversionMessage(L"stoul argument out of range", L" 4294967296 3")},
        {"1 2 9223372036854775808", L"1 2 13 14.5 15.5 before", L" 9223372036854775808",
         ConversionMessage(L"stoll argument out of range", L" 9223372036854775808")},
        {"1 2 3 1e39 5", L"1 2 3 14.5 15.5 before", L" 1e39 5",
         ConversionMessage(L"stof argument out of range", L" 1e39 5")},
        {"1 2 3 1e-50 1e309", L"1 2 3 0 15.5 before", L" 1e309",
         ConversionMessage(L"stod argument out of range", L" 1e309")},
    };
    for (auto const& [line, row, rest, fault] : cases) {
        SCOPED_TRACE(line);
        Reading const reading = ReadBothWays(line, Before);
        EXPECT_EQ(reading.good, fault.empty());
        EXPECT_EQ(reading.row, row);
        EXPECT_EQ(reading.rest, rest);
        std::vector<Message> messages;
        if (!fault.empty())
            messages.push_back({8, 3, fault});
        EXPECT_EQ(reading.messages, messages);
    }
}

namespace {

TEST(LineReader, Lines) {
    reader_cases::CheckLineFields();
}

TEST(LineReader, Texts) {
    struct {
        std::string line;
        std::wstring text;
        std::wstring rest;
    } const cases[] = {
        {"", L"", L""},
        {"a", L"a", L""},
        {"a b", L"a", L" b"},
        {" \t\r\n\v\f a\tb", L"a", L"\tb"},
        {"\x85\xA0"
         "a\x85"
         "b",
         L"a",
         L"\x85"
         L"b"},
        {"a\xA0"
         "b",
         L"a",
         L"\xA0"
         L"b"},
        {" ", L"", L""},
        {"   ", L"", L""},
        {"\"\"", L"", L""},
        {"\"\" 1", L"", L" 1"},
        {"\"a b\"", L"a b", L""},
        {"  \" a  b \"1", L" a  b ", L"1"},
        {"\"a b", L"a b", L""},
        {"\"a b 1 2 3", L"a b 1 2 3", L""},
        {"\"", L"", L""},
        {" \"", L"", L""},
        {"\" ", L" ", L""},
        {"\"a\"b\"c\"", L"a", L"b\"c\""},
        {"a\"b c\"", L"a\"b", L" c\""},
        {"a\\\"b \\", L"a\\\"b", L" \\"},
        {"\"a\\\" b", L"a\\", L" b"},
        {"-1.5e3", L"-1.5e3", L""},
        {"\xE4\xF6\xFF\x80", L"\xE4\xF6\xFF\x80", L""},
        {std::string("a\0b c", 5), L"a", L" c"},
        {std::string("\"a\0b\"c", 6), L"a", L"c"},
    };
    using TextRow = QVRow<QText<"t">>;
    for (auto const& [line, text, rest] : cases) {
        SCOPED_TRACE(testing::PrintToString(line));
        Reading const reading = ReadBothWays(line, TextRow(CFixedText(L"before")));
        EXPECT_TRUE(reading.good);
        EXPECT_EQ(reading.row, text);
        EXPECT_EQ(reading.rest, rest);
        EXPECT_EQ(reading.messages, std::vector<Message>());
    }
}

TEST(LineReader, ATextCountsTheWholeRestOfTheLine) {
    using NumberedRow = QVRow<QInt<"i">, QText<"t">, QInt<"j">>;
    NumberedRow const before(5, CFixedText(L"before"), 6);
    std::string const blanks(100, ' ');
    struct {
        std::string line;
        bool good;
        std::wstring row;
        std::wstring rest;
    } const cases[] = {
        // 198 characters behind the number, then 199
        {"1 " + std::string(197, 'a'), true, L"1 " + std::wstring(197, L'a') + L" 6", L""},
        {"1 " + std::string(198, 'a'), false, L"1 before 6", L" " + std::wstring(198, L'a')},
        {"1\"" + std::string(197, 'b'), true, L"1 " + std::wstring(197, L'b') + L" 6", L""},
        {"1\"" + std::string(197, 'b') + "\"", false, L"1 before 6", L"\"" + std::wstring(197, L'b') + L"\""},
        // a short text with much behind it
        {"1 a 2" + std::string(194, ' '), true, L"1 a 2", std::wstring(194, L' ')},
        {"1 a 2" + std::string(195, ' '), false, L"1 before 6", L" a 2" + std::wstring(195, L' ')},
        {"1" + blanks + blanks, false, L"1 before 6", std::wstring(200, L' ')},
        {"1 " + std::string(500, 'c'), false, L"1 before 6", L" " + std::wstring(500, L'c')},
    };
    for (auto const& [line, good, row, rest] : cases) {
        SCOPED_TRACE(line);
        Reading const reading = ReadBothWays(line, before);
        EXPECT_EQ(reading.good, good);
        EXPECT_EQ(reading.row, row);
        EXPECT_EQ(reading.rest, rest);
        EXPECT_EQ(reading.messages, std::vector<Message>());
    }
    using TextRow = QVRow<QText<"t">>;
    EXPECT_EQ(ReadBothWays(std::string(198, 'a'), TextRow()).row, std::wstring(198, L'a'));
    EXPECT_FALSE(ReadBothWays(std::string(199, 'a'), TextRow()).good);
    EXPECT_FALSE(ReadBothWays(std::string(199, ' '), TextRow()).good);
}

TEST(LineReader, ALongLineOfNumbersIsNoFault) {
    using NumberRow = QVRow<QInt<"i">, QFloat<"f">>;
    Reading const reading =
        ReadBothWays(std::string(300, ' ') + "7" + std::string(300, ' ') + "0.5", NumberRow());
    EXPECT_TRUE(reading.good);
    EXPECT_EQ(reading.row, L"7 0.5");
}

TEST(LineReader, TwoTextsInOneLine) {
    using TwoTexts = QVRow<QText<"a">, QText<"b">>;
    TwoTexts const before(CFixedText(L"x"), CFixedText(L"y"));
    struct {
        char const* line;
        wchar_t const* row;
    } const cases[] = {
        {"a b", L"a b"}, {"\"a\"b", L"a b"}, {"\"a\"\"b\"", L"a b"}, {"a", L"a "},
        {"a ", L"a "},   {"", L" "},         {"\"a b", L"a b "},     {"\"\" \"\"", L" "},
    };
    for (auto const& [line, row] : cases) {
        SCOPED_TRACE(line);
        EXPECT_EQ(ReadBothWays(line, before).row, row);
    }
}

TEST(LineReader, AWideTextKeepsCharactersBeyondABytesRange) {
    using NumberedRow = QVRow<QText<"t">, QInt<"i">>;
    NumberedRow row;
    std::wstring_view line = L"\x20AC\x4E2D\x3000 5\x20AC";
    EXPECT_TRUE(ReadLine(line, Fields(row)));
    EXPECT_EQ(row.get<"t">(), L"\x20AC\x4E2D");
    EXPECT_EQ(row.get<"i">(), 5);
    EXPECT_EQ(line, L"\x20AC");
    MessageLog messages;
    auto const fields = Fields(row);
    EXPECT_FALSE(ReadLine(line, std::span(fields).last(1)));
    EXPECT_EQ(row.get<"i">(), 5);
    EXPECT_EQ(line, L"\x20AC");
    EXPECT_EQ(messages.Take(),
              (std::vector<Message>{{8, 3, ConversionMessage(L"invalid stoi argument", L"\x20AC")}}));
}

TEST(LineReader, NoFieldsTakeNothing) {
    std::string_view line = "1 2";
    EXPECT_TRUE(ReadLine(line, {}));
    EXPECT_EQ(line, "1 2");
}

} // namespace
