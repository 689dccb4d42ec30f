#include "tests/tools/fake_rows.h"
#include "tools/table_listing.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace paramdb::tools;
using paramdb::FieldType;

namespace {

using NameRow = QVRow<QText<"name">>;
using Numbers = QVRow<QUnsigned<"flags">, QInt64<"count">, QFloat<"first_level">, QFloat<"second_level">,
                      QDouble<"ratio">>;

// Two tables of which the second has no rows.
class TableListingTest : public testing::Test {
protected:
    TableListingTest()
        : m_names({{1, NameRow(L"Idle")}, {2, NameRow(L"")}}), m_numbers({}),
          m_names_table(FakeTable({{"mode", FieldType::Int}}, {{"name", FieldType::Text}})),
          m_numbers_table(FakeTable({{"physical_mode", FieldType::Int}, {"rotor", FieldType::Int}},
                                    {{"flags", FieldType::Unsigned},
                                     {"count", FieldType::Int64},
                                     {"first_level", FieldType::Float},
                                     {"second_level", FieldType::Float},
                                     {"ratio", FieldType::Double}})) {
        m_numbers_table.tag = L"<TNumbers>";
        m_numbers_table.instrument_class = 1001;
        m_numbers_table.has_unique_keys = false;
    }

    std::string Print(TableChoice choice, ReportFormat format) const {
        paramdb::CatalogueEntry const entries[] = {{&m_names_table, nullptr, &m_names},
                                                   {&m_numbers_table, nullptr, &m_numbers}};
        std::ostringstream out;
        PrintTableListing(out, entries, choice, format);
        return out.str();
    }

    // The container's bytes and the text's.
    static std::size_t NameBytes() { return 200 + CFixedText(L"Idle").HeapBytes(); }

private:
    FakeRows<QIdx1, NameRow> m_names;
    FakeRows<QIdx2, Numbers> m_numbers;
    paramdb::TableDescription m_names_table;
    paramdb::TableDescription m_numbers_table;
};

} // namespace

TEST_F(TableListingTest, Text) {
    std::string const bytes = Grouped(NameBytes());
    ASSERT_EQ(bytes.size(), 3U);
    EXPECT_EQ(Print(TableChoice::All, ReportFormat::Text),
              "Tag               Rows  Bytes  Container  Class  Key | row\n"
              "<TFake>              2    " +
                  bytes +
                  "  CFake             mode:int | name:text\n"
                  "<TNumbers>           0      0  CFake       1001  physical_mode:int, rotor:int | "
                  "flags:unsigned int,\n"
                  "                                                 count:int64, first_level:float, "
                  "second_level:float,\n"
                  "                                                 ratio:double\n"
                  "1 of 2 with rows     2    " +
                  bytes + "\n");
}

TEST_F(TableListingTest, TextOfTablesWithRows) {
    std::string const bytes = Grouped(NameBytes());
    EXPECT_EQ(Print(TableChoice::WithRows, ReportFormat::Text),
              "Tag               Rows  Bytes  Container  Class  Key | row\n"
              "<TFake>              2    " +
                  bytes +
                  "  CFake             mode:int | name:text\n"
                  "1 of 2 with rows     2    " +
                  bytes + "\n");
}

TEST_F(TableListingTest, Json) {
    auto expected = nlohmann::ordered_json::parse(R"([
        {"tag": "<TFake>", "container": "CFake", "key": "QKey", "row": "QRow", "instrument_class": null,
         "unique_keys": true, "key_columns": [{"name": "mode", "type": "int"}],
         "row_columns": [{"name": "name", "type": "text"}], "rows": 2, "bytes": 0},
        {"tag": "<TNumbers>", "container": "CFake", "key": "QKey", "row": "QRow", "instrument_class": 1001,
         "unique_keys": false,
         "key_columns": [{"name": "physical_mode", "type": "int"}, {"name": "rotor", "type": "int"}],
         "row_columns": [{"name": "flags", "type": "unsigned int"}, {"name": "count", "type": "int64"},
                         {"name": "first_level", "type": "float"}, {"name": "second_level", "type": "float"},
                         {"name": "ratio", "type": "double"}],
         "rows": 0, "bytes": 0}
    ])");
    expected[0]["bytes"] = NameBytes();
    std::ostringstream text;
    PrintJson(text, expected);
    EXPECT_EQ(Print(TableChoice::All, ReportFormat::Json), text.str());
    expected.erase(1);
    EXPECT_EQ(nlohmann::ordered_json::parse(Print(TableChoice::WithRows, ReportFormat::Json)), expected);
}
