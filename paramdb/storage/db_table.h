// One table of the table set: rows of cells, and the kind of table that the host gave it.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/storage/cell.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ParamDb {

class CDbTable : public std::vector<row_t> {
public:
    // Carried with the table for the host, which alone knows further values; nothing here depends on it.
    enum table_type_t : std::int32_t { standard = 0 };

    using std::vector<row_t>::vector;

    // Copies cell by cell, so that running out of memory is an exception: a variant of some standard
    // libraries breaks where the copy of its text fails.
    CDbTable() = default;
    PARAMDB_API CDbTable(CDbTable const& other);
    CDbTable(CDbTable&&) = default;
    CDbTable& operator=(CDbTable other) noexcept {
        swap(other);
        m_table_type = other.m_table_type;
        return *this;
    }
    ~CDbTable() = default;

    table_type_t& table_type() { return m_table_type; }
    table_type_t table_type() const { return m_table_type; }

    // The first cell of the first row as a signed 32-bit number. There must be a row.
    std::int32_t to_long() const { return to_long(front()); }
    // The first cell of a row as a signed 32-bit number: an unsigned cell gives its bits, any other numeric
    // cell must hold a whole number in range. Throws std::bad_variant_access else. There must be a cell.
    static std::int32_t to_long(row_t const& row) { return ToInteger<std::int32_t>(row.front()); }

    // The texts of a row's cells, each up to its first NUL, joined by one blank; empty for an empty row.
    // Throws std::bad_variant_access for a cell that is no wide string.
    static PARAMDB_API std::wstring to_wstring(row_t const& row);

private:
    table_type_t m_table_type = standard;
};

} // namespace ParamDb
