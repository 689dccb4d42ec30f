// All tables with lines and rows that are short or faulty in each of their columns.
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/tables/catalogue.h>

#include "layouts.h"
#include "table_data.h"
#include "table_support.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <variant>
#include <vector>

using layouts::Layout;
using table_data::DumpOf;
using table_data::PlainRow;
using table_data::Row;
using table_data::Table;
using table_support::CellError;
using table_support::ConversionError;
using table_support::Dump;
using table_support::LakeOf;
using table_support::LineError;

namespace {

class AllTablesLines : public testing::Test {
protected:
    // Calls the function for each table with its layout, and tells in failures which one it was.
    template <class Function>
    void ForEachTable(Function function) {
        for (auto const& entry : paramdb::CatalogueEntries(tables)) {
            Layout const* const end = layouts::All().data() + layouts::All().size();
            Layout const* const layout =
                std::find_if(layouts::All().data(), end, [&](Layout const& candidate) {
                    return candidate.tag == entry.description->tag;
                });
            ASSERT_NE(layout, end);
            SCOPED_TRACE(std::string(layout->tag.begin(), layout->tag.end()));
            function(*layout, *entry.table);
        }
    }

    CParamTables tables;
    MessageLog messages;
};

std::string Narrow(std::wstring const& text) {
    return {text.begin(), text.end()};
}

std::string Section(Layout const& layout, std::vector<std::wstring> const& lines) {
    std::wstring text = std::wstring(layout.tag) + L": {\n";
    for (auto const& line : lines)
        text += line + L"\n";
    return Narrow(text + L"}\n");
}

// The first fields of a row as a line.
std::wstring LineOf(Row const& row, std::size_t count) {
    return table_data::PlainLine({row.begin(), row.begin() + static_cast<std::ptrdiff_t>(count)});
}

ParamDb::row_t CellsOf(Row const& row) {
    ParamDb::row_t cells;
    for (auto const& value : row)
        cells.push_back(table_data::OwnCell(value));
    return cells;
}

// The word for the conversion of a field, and a number too large for it.
std::pair<std::wstring, std::wstring> ConversionOf(char type) {
    switch (type) {
    case 'i':
        return {L"stoi", L"2147483648"};
    case 'u':
        return {L"stoul", L"4294967296"};
    case 'q':
        return {L"stoll", L"9223372036854775808"};
    case 'f':
        return {L"stof", L"3.5e38"};
    default:
        return {L"stod", L"2e308"};
    }
}

TEST_F(AllTablesLines, ShortLinesKeepTheValuesOfTheLineBefore) {
    ForEachTable([&](Layout const& layout, CQParamSeaTable& table) {
        std::size_t const size = layout.fields().size();
        Table expected{&layout, {}};
        std::vector<std::wstring> lines;
        Row current = PlainRow(layout, 1);
        for (std::size_t missing = 0; missing <= size; ++missing) {
            Row const next = PlainRow(layout, static_cast<int>(missing) + 1);
            std::size_t const given = size - missing;
            for (std::size_t field = 0; field < size; ++field) {
                if (field < given)
                    current[field] = next[field];
                else if (layout.fields()[field] == 't')
                    current[field] = std::wstring();
            }
            lines.push_back(LineOf(next, given));
            expected.rows.push_back(current);
        }
        LakeOf lake(Section(layout, lines));
        EXPECT_TRUE(table.ReadTable(lake.lake));
        EXPECT_EQ(Dump(table), DumpOf(expected));
        CResourceSea sea;
        sea.MakeList(layout.tag) = lines;
        EXPECT_TRUE(table.ReadTable(&sea));
        EXPECT_EQ(Dump(table), DumpOf(expected));
        EXPECT_EQ(messages.Take(), std::vector<Message>());
    });
}

TEST_F(AllTablesLines, AFirstLineWithoutFieldsIsTheRowThatATableStartsWith) {
    ForEachTable([&](Layout const& layout, CQParamSeaTable& table) {
        std::wstring key;
        for (std::size_t field = 0; field < layout.key.size(); ++field) {
            key += field > 0 ? L" " : L"";
            key += layout.key[field] == 'i' ? L"-1" : layout.key[field] == 'f' ? L"0" : L"";
        }
        std::wstring const tag(layout.tag);
        LakeOf lake(Section(layout, {L""}));
        EXPECT_TRUE(table.ReadTable(lake.lake));
        EXPECT_EQ(Dump(table),
                  L"<-\t" + tag + L"\n   1:\t" + key + L" | " + DefaultRow(layout) + L"\n->\t" + tag + L"\n");
    });
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(AllTablesLines, EachColumnOfALakeRefusesWhatItMustRefuse) {
    ForEachTable([&](Layout const& layout, CQParamSeaTable& table) {
        std::string const fields = layout.fields();
        std::vector<std::wstring> lines{LineOf(PlainRow(layout, 1), fields.size())};
        std::vector<Message> expected;
        for (std::size_t column = 0; column < fields.size(); ++column) {
            Row const row = PlainRow(layout, 50 + static_cast<int>(column));
            std::wstring const before = LineOf(row, column);
            std::wstring const blank = column > 0 ? L" " : L"";
            std::wstring const behind =
                L" " + table_data::PlainLine({row.begin() + static_cast<std::ptrdiff_t>(column), row.end()});
            if (fields[column] == 't') {
                // 199 characters are left where the text begins.
                std::wstring const rest =
                    blank + std::wstring(199 - blank.size() - behind.size(), L'y') + behind;
                ASSERT_EQ(rest.size(), 199U);
                lines.push_back(before + rest);
                expected.push_back(LineError(std::wstring(layout.tag), lines.back()));
                continue;
            }
            auto const [conversion, too_large] = ConversionOf(fields[column]);
            for (auto const& [reason, text] :
                 {std::pair<std::wstring, std::wstring>{L"invalid " + conversion + L" argument", L"x"},
                  {conversion + L" argument out of range", too_large}}) {
                std::wstring const rest = blank + text + behind;
                lines.push_back(before + rest);
                expected.push_back(ConversionError(reason, rest));
                expected.push_back(LineError(std::wstring(layout.tag), lines.back()));
            }
        }
        lines.push_back(LineOf(PlainRow(layout, 2), fields.size()));
        LakeOf lake(Section(layout, lines));
        EXPECT_FALSE(table.ReadTable(lake.lake));
        EXPECT_EQ(messages.Take(), expected);
        EXPECT_EQ(Dump(table), DumpOf(Table{&layout, {PlainRow(layout, 1), PlainRow(layout, 2)}}));
    });
}

TEST_F(AllTablesLines, TheLongestLineThatEachTextTakes) {
    ForEachTable([&](Layout const& layout, CQParamSeaTable& table) {
        std::string const fields = layout.fields();
        std::size_t const first = fields.find('t');
        if (first == std::string::npos)
            return;
        // The last text fills the line up to 198 characters from the first text on.
        std::size_t const last = fields.rfind('t');
        Row row = PlainRow(layout, 7);
        std::size_t const used =
            LineOf(row, fields.size()).size() - (first > 0 ? LineOf(row, first).size() : 0);
        std::get<std::wstring>(row[last]).append(198 - used, L'z');
        LakeOf lake(Section(layout, {LineOf(row, fields.size())}));
        EXPECT_TRUE(table.ReadTable(lake.lake));
        EXPECT_EQ(Dump(table), DumpOf(Table{&layout, {row}}));
    });
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(AllTablesLines, EachColumnOfATableSetRefusesWhatItMustRefuse) {
    ForEachTable([&](Layout const& layout, CQParamSeaTable& table) {
        std::string const fields = layout.fields();
        std::wstring const tag(layout.tag);
        ParamDb::CDbTableSet set;
        auto& rows = set[tag];
        std::vector<Message> expected;
        rows.push_back(CellsOf(PlainRow(layout, 1)));
        // Puts a cell into the column of another row.
        auto const add = [&](std::size_t column, ParamDb::cell_t cell, Message const& message) {
            rows.push_back(CellsOf(PlainRow(layout, 50)));
            rows.back()[column] = std::move(cell);
            expected.push_back(message);
        };
        for (std::size_t column = 0; column < fields.size(); ++column) {
            Message const bad_cell = CellError(tag, fields.size() - column);
            if (fields[column] == 't') {
                add(column, 5, bad_cell);
                add(column, 0.5, bad_cell);
                add(column, std::wstring(199, L'x'), LineError(tag, L"<variants>"));
                continue;
            }
            add(column, L"5", bad_cell);
            if (fields[column] != 'f' && fields[column] != 'd') {
                add(column, 0.5F, bad_cell);
                add(column, 1e30, bad_cell);
            }
            if (fields[column] == 'i' || fields[column] == 'u')
                add(column, std::int64_t{1} << 32, bad_cell);
        }
        rows.push_back(CellsOf(PlainRow(layout, 2)));
        EXPECT_EQ(table.ReadTable(set), fields.find('t') == std::string::npos);
        EXPECT_EQ(messages.Take(), expected);
        EXPECT_EQ(Dump(table), DumpOf(Table{&layout, {PlainRow(layout, 1), PlainRow(layout, 2)}}));
    });
}

TEST_F(AllTablesLines, RowsOfATableSetWithTooFewCells) {
    ForEachTable([&](Layout const& layout, CQParamSeaTable& table) {
        ParamDb::CDbTableSet set;
        auto& rows = set[std::wstring(layout.tag)];
        rows.push_back(CellsOf(PlainRow(layout, 1)));
        std::size_t const size = layout.fields().size();
        for (std::size_t count = 0; count < size; ++count) {
            rows.push_back(CellsOf(PlainRow(layout, 50)));
            rows.back().resize(count);
        }
        rows.push_back(CellsOf(PlainRow(layout, 2)));
        EXPECT_FALSE(table.ReadTable(set));
        EXPECT_EQ(messages.Take(),
                  std::vector<Message>(size, LineError(std::wstring(layout.tag), L"<variants>")));
        EXPECT_EQ(Dump(table), DumpOf(Table{&layout, {PlainRow(layout, 1), PlainRow(layout, 2)}}));
    });
}

} // namespace
