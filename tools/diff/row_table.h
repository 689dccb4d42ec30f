// Rows of a table held by value and in key order, so that they outlive the load that they came from and can
// be compared with those of another one.
//
// A field takes 8 bytes, a text its characters besides. A text that the row before has in the same column is
// held once.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace paramdb::tools {

// The columns of a table, those of the key first.
struct RowColumns {
    std::vector<ColumnDescription> columns;
    std::size_t key_columns = 0;
};

// The columns of a table of the catalogue.
RowColumns RowColumnsOf(TableDescription const& table);

// A field as its type; the order of the types is that of FieldType.
using FieldValue = std::variant<std::int32_t, std::uint32_t, std::int64_t, float, double, std::wstring_view>;

class RowTable {
public:
    explicit RowTable(RowColumns columns);

    RowColumns const& columns() const { return m_columns; }
    std::size_t size() const { return m_rows; }
    void Reserve(std::size_t rows) { m_cells.reserve(rows * m_columns.columns.size()); }

    // Adds a row, whose fields have the types of the columns.
    void Add(CQParamTableRows::ConstFields key, CQParamTableRows::ConstFields row);
    void Add(std::span<FieldValue const> fields);
    // To be called behind the last row: brings the rows into key order. Those of one key stay as they came.
    void Sort();

    // The text of a field is valid until the next row is added.
    FieldValue Value(std::size_t row, std::size_t column) const;

    // The row whose key is that number; size() if there is none. For a table with one int as its key.
    std::size_t Find(std::int32_t id) const;

    // The order of the fields of a column in two tables with the same columns, or in one: that of numbers,
    // and of code units. A nan equals itself and comes behind every number, and 0 equals -0.
    static std::weak_ordering Compare(RowTable const& left, std::size_t left_row, RowTable const& right,
                                      std::size_t right_row, std::size_t column);
    // The same for keys, and for whole rows.
    static std::weak_ordering CompareKeys(RowTable const& left, std::size_t left_row, RowTable const& right,
                                          std::size_t right_row);
    static std::weak_ordering CompareRows(RowTable const& left, std::size_t left_row, RowTable const& right,
                                          std::size_t right_row);

private:
    // A number by its bits, a text by its place.
    using Cell = std::uint64_t;

    FieldType TypeOf(std::size_t column) const { return m_columns.columns[column].type; }
    Cell CellOf(FieldValue const& value, std::size_t column);
    Cell TextCell(std::wstring_view text, std::size_t column);
    std::wstring_view Text(Cell cell) const;
    void EndRow();
    static std::weak_ordering CompareFirst(std::size_t columns, RowTable const& left, std::size_t left_row,
                                           RowTable const& right, std::size_t right_row);

    RowColumns m_columns;
    std::size_t m_rows = 0;
    bool m_is_sorted = true;
    std::vector<Cell> m_cells;
    std::wstring m_characters;
    std::vector<std::size_t> m_text_ends{0}; // of text i in m_characters, behind the one before; 0 is empty
};

} // namespace paramdb::tools
