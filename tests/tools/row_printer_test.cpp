#include "tests/tools/fake_rows.h"
#include "tools/row_printer.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <sstream>

using namespace paramdb::tools;
using paramdb::FieldType;

namespace {

using AllTypes = QVRow<QUnsigned<"flags">, QInt64<"count">, QFloat<"level">, QDouble<"ratio">, QText<"note">>;
using Rows = FakeRows<QIdx2, AllTypes>;
using Real = QVRow<QFloat<"single">, QDouble<"double">>;
using Reals = FakeRows<QIdx1, Real>;
using TextRow = QVRow<QText<"text">, QInt<"number">>;
using TextRows = FakeRows<QIdxName, TextRow>;

template <class Key, class Row>
std::string Print(FakeRows<Key, Row> const& rows, paramdb::TableDescription const& table, RowFormat format,
                  std::wstring const& key = L"") {
    std::ostringstream out;
    auto const pattern = std::get<KeyPattern>(KeyPattern::Parse(key, table.key_columns));
    std::size_t const count = PrintRows(out, table, rows, pattern, format);
    std::size_t expected = 0;
    rows.VisitRows([&](auto fields, auto) {
        expected += pattern.Matches(fields) ? 1 : 0;
        return true;
    });
    EXPECT_EQ(count, expected);
    return out.str();
}

paramdb::TableDescription const AllTypesTable =
    FakeTable({{"mode", FieldType::Int}, {"rotor", FieldType::Int}}, {{"flags", FieldType::Unsigned},
                                                                      {"count", FieldType::Int64},
                                                                      {"level", FieldType::Float},
                                                                      {"ratio", FieldType::Double},
                                                                      {"note", FieldType::Text}});
paramdb::TableDescription const RealsTable =
    FakeTable({{"id", FieldType::Int}}, {{"single", FieldType::Float}, {"double", FieldType::Double}});
paramdb::TableDescription const TextsTable =
    FakeTable({{"name", FieldType::Text}}, {{"text", FieldType::Text}, {"number", FieldType::Int}});

Rows const TwoRows({{{1, -1}, AllTypes(4294967295U, -5000000000, 0.1F, 0.2826086956521739, L"first")},
                    {{100, 2}, AllTypes(0, 7, 1000000, 1, L"")}});

TextRows const OddTexts({{L"plain", TextRow(L"with, comma", 1)},
                         {L"say \"hi\"", TextRow(L"two\nlines", 2)},
                         {L"tab\there", TextRow(L"r\u00E9sum\u00E9 \xD83D\xDE00", 3)},
                         {L"", TextRow(L"\x1B[31m\\/\r", -4)}});

} // namespace

TEST(RowPrinterText, AlignsColumns) {
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Text),
              "mode  rotor |      flags        count  level               ratio  note\n"
              "   1     -1 | 4294967295  -5000000000    0.1  0.2826086956521739  first\n"
              " 100      2 |          0            7  1e+06                   1\n");
}

TEST(RowPrinterText, MeasuresTheRowsShownAlone) {
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Text, L"100"),
              "mode  rotor | flags  count  level  ratio  note\n"
              " 100      2 |     0      7  1e+06      1\n");
}

TEST(RowPrinterText, HidesControlCharactersAndCountsCharacters) {
    EXPECT_EQ(Print(OddTexts, TextsTable, RowFormat::Text),
              "name     | text         number\n"
              "plain    | with, comma       1\n"
              "say \"hi\" | two\xEF\xBF\xBDlines         2\n"
              "tab\xEF\xBF\xBDhere | r\xC3\xA9sum\xC3\xA9 \xF0\x9F\x98\x80          3\n"
              "         | \xEF\xBF\xBD[31m\\/\xEF\xBF\xBD         -4\n");
}

TEST(RowPrinterJson, HasAnObjectForEachRow) {
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Json),
              "[\n"
              "  {\"mode\": 1, \"rotor\": -1, \"flags\": 4294967295, \"count\": -5000000000, \"level\": 0.1, "
              "\"ratio\": 0.2826086956521739, \"note\": \"first\"},\n"
              "  {\"mode\": 100, \"rotor\": 2, \"flags\": 0, \"count\": 7, \"level\": 1e+06, \"ratio\": 1, "
              "\"note\": \"\"}\n"
              "]\n");
}

TEST(RowPrinterJson, KeepsEveryText) {
    auto const json = nlohmann::json::parse(Print(OddTexts, TextsTable, RowFormat::Json));
    ASSERT_EQ(json.size(), 4U);
    EXPECT_EQ(json[1]["name"], "say \"hi\"");
    EXPECT_EQ(json[1]["text"], "two\nlines");
    EXPECT_EQ(json[2]["name"], "tab\there");
    EXPECT_EQ(json[2]["text"], "r\u00E9sum\u00E9 \xF0\x9F\x98\x80");
    EXPECT_EQ(json[3]["text"], "\x1B[31m\\/\r");
    EXPECT_EQ(json[3]["number"], -4);
    TextRows const no_utf8({{L"\xDC80", TextRow(L"\xD800", 0)}});
    auto const replaced = nlohmann::json::parse(Print(no_utf8, TextsTable, RowFormat::Json));
    EXPECT_EQ(replaced[0]["name"], "\uFFFD");
    EXPECT_EQ(replaced[0]["text"], "\uFFFD");
}

TEST(RowPrinterCsv, QuotesWhereItMust) {
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Csv),
              "mode,rotor,flags,count,level,ratio,note\r\n"
              "1,-1,4294967295,-5000000000,0.1,0.2826086956521739,first\r\n"
              "100,2,0,7,1e+06,1,\r\n");
    EXPECT_EQ(Print(OddTexts, TextsTable, RowFormat::Csv), "name,text,number\r\n"
                                                           "plain,\"with, comma\",1\r\n"
                                                           "\"say \"\"hi\"\"\",\"two\nlines\",2\r\n"
                                                           "tab\there,r\u00E9sum\u00E9 \xF0\x9F\x98\x80,3\r\n"
                                                           ",\"\x1B[31m\\/\r\",-4\r\n");
}

TEST(RowPrinter, WithoutAMatch) {
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Text, L"9"), "");
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Json, L"9"), "[]\n");
    EXPECT_EQ(Print(TwoRows, AllTypesTable, RowFormat::Csv, L"9"),
              "mode,rotor,flags,count,level,ratio,note\r\n");
    EXPECT_EQ(Print(Rows(Rows::List()), AllTypesTable, RowFormat::Text), "");
}

TEST(RowPrinter, NumbersThatAreNotFinite) {
    float const infinity = std::numeric_limits<float>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    Reals const rows(
        {{1, Real(infinity, -HUGE_VAL)}, {2, Real(static_cast<float>(nan), std::copysign(nan, -1.0))}});
    EXPECT_EQ(Print(rows, RealsTable, RowFormat::Text), "id | single  double\n"
                                                        " 1 |    inf    -inf\n"
                                                        " 2 |    nan     nan\n");
    EXPECT_EQ(Print(rows, RealsTable, RowFormat::Json),
              "[\n"
              "  {\"id\": 1, \"single\": \"inf\", \"double\": \"-inf\"},\n"
              "  {\"id\": 2, \"single\": \"nan\", \"double\": \"nan\"}\n"
              "]\n");
    EXPECT_EQ(Print(rows, RealsTable, RowFormat::Csv), "id,single,double\r\n"
                                                       "1,inf,-inf\r\n"
                                                       "2,nan,nan\r\n");
}

TEST(RowPrinter, NumbersAreShortAndPlain) {
    struct Case {
        double number;
        std::string text;
    };
    Case const cases[] = {
        {0, "0"},           {-0.0, "-0"},       {1, "1"},
        {-2.5, "-2.5"},     {0.1, "0.1"},       {0.0001, "0.0001"},
        {0.00001, "1e-05"}, {1500, "1500"},     {100000, "100000"},
        {1e21, "1e+21"},    {5e-324, "5e-324"}, {1.7976931348623157e308, "1.7976931348623157e+308"},
    };
    for (Case const& test : cases) {
        Reals const rows({{1, Real(0, test.number)}});
        EXPECT_EQ(Print(rows, RealsTable, RowFormat::Csv), "id,single,double\r\n1,0," + test.text + "\r\n");
    }
}

TEST(RowPrinter, RandomNumbersComeBack) {
    std::mt19937_64 random(4711);
    for (int round = 0; round < 2000; ++round) {
        auto const single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        auto const number = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        if (!std::isfinite(single) || !std::isfinite(number))
            continue;
        Reals const rows({{round, Real(single, number)}});
        auto const json = nlohmann::json::parse(Print(rows, RealsTable, RowFormat::Json));
        std::string const csv = Print(rows, RealsTable, RowFormat::Csv);
        std::size_t const comma = csv.find(',', csv.find('\n'));
        float read = 0;
        std::from_chars(csv.data() + comma + 1, csv.data() + csv.size(), read);
        EXPECT_EQ(read, single) << csv;
        EXPECT_EQ(json[0]["double"].get<double>(), number) << csv;
    }
}

TEST(RowPrinter, IsTheSameUnderEveryLocale) {
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Commas));
    std::string const csv = Print(Reals({{12345, Real(0.5F, 1234.5)}}), RealsTable, RowFormat::Csv);
    std::locale::global(before);
    EXPECT_EQ(csv, "id,single,double\r\n12345,0.5,1234.5\r\n");
}

// Objects and headers would lose a column otherwise.
TEST(RowPrinter, NoTableHasTwoColumnsOfOneName) {
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        std::set<std::string_view> names;
        for (auto const* const columns : {&table.key_columns, &table.row_columns})
            for (paramdb::ColumnDescription const& column : *columns) {
                EXPECT_TRUE(names.insert(column.name).second) << table.accessor << ' ' << column.name;
                EXPECT_EQ(column.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789"),
                          std::string_view::npos)
                    << column.name;
                EXPECT_FALSE(column.name.empty()) << table.accessor;
            }
    }
}
