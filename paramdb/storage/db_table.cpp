#include <paramdb/storage/db_table.h>

namespace ParamDb {

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
