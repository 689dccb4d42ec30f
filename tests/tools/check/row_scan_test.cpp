#include <paramdb/storage/white_space.h>

#include "tools/check/row_scan.h"
#include "tools/row_buffer.h"

#include <gtest/gtest.h>
#include <random>
#include <sstream>

using namespace paramdb;
using namespace paramdb::tools;
using namespace paramdb::tools::check;

namespace {

// A table of these columns, the first of them its key.
TableDescription TableOf(std::vector<FieldType> const& types) {
    TableDescription table{};
    table.tag = L"<TAny>";
    for (FieldType const type : types)
        (table.key_columns.empty() ? table.key_columns : table.row_columns).push_back({"column", type});
    return table;
}

std::string Shown(RowScan const& scan) {
    std::ostringstream text;
    for (std::string_view const field : scan.fields)
        text << '[' << field << ']';
    constexpr char const* faults[] = {"", " invalid", " large", " long"};
    text << faults[static_cast<int>(scan.fault)];
    if (!scan.at_fault.empty())
        text << '<' << scan.at_fault << '>';
    if (!scan.surplus.empty())
        text << " surplus<" << scan.surplus << '>';
    if (scan.glued)
        text << " glued " << *scan.glued;
    if (!scan.open_quote.empty())
        text << " open<" << scan.open_quote << '>';
    if (!scan.at_limit.empty())
        text << " limit";
    if (scan.nan)
        text << " nan " << *scan.nan;
    return text.str();
}

bool IsFine(RowScan const& scan, std::size_t columns) {
    return scan.fault == RowScan::Fault::None && scan.fields.size() == columns && scan.surplus.empty() &&
           !scan.glued && scan.open_quote.empty() && scan.at_limit.empty() && !scan.nan;
}

} // namespace

TEST(RowScan, FindsTheFields) {
    struct Case {
        std::vector<FieldType> types;
        std::string line;
        std::string expected;
        bool is_plain;
    };
    using enum FieldType;
    std::string const x150(150, 'x');
    Case const cases[] = {
        {{Int, Text}, "1 \"Warm up\"", "[1][Warm up]", true},
        {{Int, Text}, "1\t\"a: b; c\"", "[1][a: b; c]", true},
        {{Int, Text}, "1 Idle", "[1][Idle]", true},
        {{Int, Text}, "1 \"\"", "[1][]", true},
        {{Int, Int}, "-1   +2", "[-1][+2]", false},
        {{Int, Int}, "-1   2", "[-1][2]", true},
        {{Int}, "2147483647", "[2147483647]", false},
        {{Int}, "2147483648", " large<2147483648>", false},
        {{Unsigned}, "4294967295", "[4294967295]", false},
        {{Int64}, "4294967296", "[4294967296]", false},
        {{Int}, "", "", false},
        {{Int, Int}, "1", "[1]", false},
        {{Int, Int}, "1 2 3 4", "[1][2] surplus<3 4>", false},
        {{Int, Text}, "1 Warm up", "[1][Warm] surplus<up>", false},
        {{Int, Float}, "1.5", "[1][.5] glued 0", false},
        {{Int, Int}, "1,2", "[1] invalid<,2> glued 0", false},
        {{Int, Int}, "1 x2 3", "[1] invalid<x2>", false},
        {{Text, Int}, "\"a\"1", "[a][1] glued 0", false},
        {{Text}, "\"a\"1", "[a] surplus<1> glued 0", false},
        {{Int, Text}, "1 \"a b", "[1][a b] open<\"a b>", false},
        {{Int, Text}, "1 a\"b", "[1][a\"b]", false},
        {{Float, Double}, "1e5 nan", "[1e5][nan] nan 1", false},
        {{Float}, "0x1p3", "[0x1p3]", false},
        {{Float}, "-1.25", "[-1.25]", true},
        {{Float}, "1e39", " large<1e39>", false},
        {{Double}, "1e39", "[1e39]", false},
        {{Double}, "5", "[5]", true},
        {{Double}, "5.", "[5.]", true},
        {{Text}, std::string(197, 'a'), "[" + std::string(197, 'a') + "]", true},
        {{Text}, std::string(198, 'a'), "[" + std::string(198, 'a') + "] limit", false},
        {{Text}, std::string(199, 'a'), " long<" + std::string(199, 'a') + ">", false},
        {{Text, Text}, "a " + std::string(199, ' ') + "b", " long<a>", false},
        {{Text, Text}, "a " + x150, "[a][" + x150 + "]", true},
        {{Text, Text}, "\"a\" \"" + x150 + "\"", "[a][" + x150 + "]", true},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(Shown(ScanRow(test.line, test.types)), test.expected) << test.line;
        EXPECT_EQ(IsPlainRow(test.line, test.types), test.is_plain) << test.line;
    }
}

// Whatever stands in a line: the scan goes as far as the reader, finds the same fields, and a plain row is a
// row without a finding.
TEST(RowScan, AgreesWithTheReader) {
    using enum FieldType;
    constexpr FieldType kinds[] = {Int, Unsigned, Int64, Float, Double, Text};
    std::vector<std::string> const pieces{"1",   "-7",   "2147483648", "1.5",  ".5",        "1e400", "nan",
                                          "inf", "0x1F", "\"a\"",      "\"",   "\"a b\"",   "abc",   ";",
                                          ",",   "+",    "-",          " ",    " ",         " ",     "\t",
                                          "  ",  "1 2",  "3 \"x\"",    "\xA0", "9999999999"};
    int plain = 0;
    for (unsigned seed = 1; seed <= 20'000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<FieldType> types;
        for (std::size_t column = 0, count = 1 + random() % 4; column < count; ++column)
            types.push_back(kinds[random() % std::size(kinds)]);
        std::string line;
        bool const is_neat = random() % 3 == 0;
        for (std::size_t piece = 0, count = is_neat ? types.size() : random() % 8; piece < count; ++piece) {
            if (is_neat)
                line += (piece == 0 ? "" : " ") + std::string(types[piece] == Text ? "\"a b\"" : "12");
            else
                line += pieces[random() % pieces.size()];
        }
        while (!line.empty() && IsWhiteSpace(line.back()))
            line.pop_back();
        while (!line.empty() && IsWhiteSpace(line.front()))
            line.erase(0, 1);
        SCOPED_TRACE(line);

        Silence const silence;
        TableDescription const table = TableOf(types);
        RowBuffer whole(table);
        bool const is_read = whole.Read(std::string_view(line));
        RowScan const scan = ScanRow(line, types);
        ASSERT_EQ(scan.fault == RowScan::Fault::None, is_read) << Shown(scan);
        for (std::size_t column = 0; column < scan.fields.size(); ++column) {
            std::string const field(scan.fields[column]);
            // NaN is equal to nothing, and a quote within a text cannot be read alone.
            if (field == "nan" || field == "-nan" || field == "+nan" || field.find('"') != std::string::npos)
                continue;
            TableDescription const one = TableOf({types[column]});
            RowBuffer alone(one);
            std::string const again = types[column] == Text ? '"' + field + '"' : field;
            ASSERT_TRUE(alone.Read(std::string_view(again)));
            EXPECT_TRUE(SameFields(alone.Key(), whole.Columns(column, 1))) << column;
        }
        if (IsPlainRow(line, types)) {
            ++plain;
            EXPECT_TRUE(IsFine(scan, types.size())) << Shown(scan);
        }
    }
    EXPECT_GT(plain, 5'000);
}
