#include <paramdb/storage/db_table.h>

#include <utility>
#include <variant>

namespace ParamDb {

// The rows are copied below, and g++ warns where a copy leaves its base out.
// NOLINTNEXTLINE(bugprone-copy-constructor-init, readability-redundant-member-init)
CDbTable::CDbTable(CDbTable const& other) : std::vector<row_t>(), m_table_type(other.m_table_type) {
    reserve(other.size());
    for (row_t const& row : other) {
        row_t& copy = emplace_back();
        copy.reserve(row.size());
        for (cell_t const& cell : row)
            copy.push_back(std::visit([](auto value) { return cell_t(std::move(value)); }, cell));
    }
}

std::wstring CDbTable::to_wstring(row_t const& row) {
    std::wstring result;
    for (cell_t const& cell : row) {
        if (&cell != &row.front())
            result += L' ';
        result += ToText(cell).c_str();
    }
    return result;
}

} // namespace ParamDb
