// The fields of a row of any table, read as the tables themselves read them.
//
// A table has a class for its rows; here a row is what the catalogue tells of it, so that one piece of code
// serves all 103 tables.
#pragma once

#include <paramdb/storage/cell.h>
#include <paramdb/tables/catalogue.h>
#include <paramdb/tables/line_reader.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace paramdb::tools {

// One key and row, which serve for every line of a table: a field that a line does not reach keeps its value.
class RowFields {
public:
    // The fields as a table has them before its first line.
    explicit RowFields(TableDescription const& table);
    RowFields(RowFields const&) = delete;
    RowFields& operator=(RowFields const&) = delete;

    // The fields in line order, the key first.
    std::span<Field const> All() const { return m_fields; }
    std::size_t size() const { return m_fields.size(); }

    // Reads a line, and cuts from it what was read. False for a line that its table leaves out.
    template <class Character>
    bool Read(std::basic_string_view<Character>& line) {
        return ReadLine(line, std::span<Field const>(m_fields));
    }

    ParamDb::row_t Cells() const;
    // Takes a row of cells of the columns' own types.
    void Assign(ParamDb::row_t const& cells);
    // Takes the fields of another row of the same table.
    void Assign(RowFields const& other) { m_values = other.m_values; }

    // Whether both hold the same, numbers to the bit.
    bool operator==(RowFields const& other) const;

private:
    using Value = std::variant<std::int32_t, std::uint32_t, std::int64_t, float, double, CFixedText>;
    std::vector<Value> m_values; // each keeps its type and its place
    std::vector<Field> m_fields; // refer to the values
};

// The columns of a table in line order, the key first.
std::vector<ColumnDescription> ColumnsOf(TableDescription const& table);

// The table with exactly this tag; null if there is none.
TableDescription const* TableOfTag(std::wstring_view tag);

// Whether two cells are of one type and hold the same, numbers to the bit.
bool IsSameCell(ParamDb::cell_t const& left, ParamDb::cell_t const& right);

} // namespace paramdb::tools
