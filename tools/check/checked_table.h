// A loaded table with the line that each of its rows came from.
#pragma once

#include <paramdb/storage/lake.h>
#include <paramdb/tables/catalogue.h>

#include "tools/check/finding.h"
#include "tools/row_origins.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace paramdb::tools::check {

class CheckContext;
class CheckedTable;

// A row of a table. Columns are counted from 0, those of the key first.
class CheckedRow {
public:
    CheckedRow(CheckedTable const& table, std::size_t index, CQParamTableRows::ConstFields key,
               CQParamTableRows::ConstFields row)
        : m_table(table), m_index(index), m_key(key), m_row(row) {}

    // The place of the row in key order.
    std::size_t Index() const { return m_index; }
    ConstField Field(std::size_t column) const {
        return column < m_key.size() ? m_key[column] : m_row[column - m_key.size()];
    }
    // A field as an integer, a number or a text; it must be one: int, unsigned or int64 for the first, any of
    // these, float or double for the second.
    std::int64_t Integer(std::size_t column) const;
    double Number(std::size_t column) const;
    std::wstring_view Text(std::size_t column) const;

    // Where the field stands; the end of the line if the line is too short to have it. A row that was not
    // read from a line, but derived, stands where its table begins.
    Place At(std::size_t column) const;
    // Where the whole row stands.
    Place Whole() const;

private:
    CheckedTable const& m_table;
    std::size_t m_index;
    CQParamTableRows::ConstFields m_key;
    CQParamTableRows::ConstFields m_row;
};

class CheckedTable {
public:
    // The context must outlive the table.
    CheckedTable(CheckContext const& context, CatalogueEntry const& entry, CLake const& lake);

    TableDescription const& Description() const { return *m_entry->description; }
    // "<TMode>".
    std::string Tag() const;
    // The line that names the section the table is read from; null if there is none.
    CLakeNode const* Section() const { return m_section; }
    std::size_t RowCount() const { return m_entry->rows->RowCount(); }

    // The column of that name, those of the key counted first. Throws std::logic_error if there is none.
    std::size_t Column(std::string_view name) const;

    // Shows the rows in key order.
    void VisitRows(std::function<void(CheckedRow const&)> const& visitor) const;

    // The line that the row of that place in key order was read from; null for none. The first question
    // reads all lines of the table again.
    CLakeNode const* Line(std::size_t row) const;

    // Where the row, or a field of it, stands.
    Place PlaceOf(std::size_t row) const;
    Place PlaceOf(std::size_t row, std::size_t column) const;
    // Where a field stands in a line of this table.
    Place FieldPlace(CLakeNode const& line, std::size_t column) const;

private:
    CheckContext const* m_context;
    CatalogueEntry const* m_entry;
    CLakeNode const* m_section = nullptr;
    mutable std::unique_ptr<RowOrigins> m_origins;
};

} // namespace paramdb::tools::check
