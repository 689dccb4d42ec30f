// The messages of the tables.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstddef>
#include <string_view>

namespace DynTables {

// Reports a line that a table could not read (category 8, style 3).
PARAMDB_API void log_error(std::wstring_view function, std::wstring_view tag, std::wstring_view line);

} // namespace DynTables

namespace paramdb {

// Reports a table-set row with a cell of another type than its field; `left` counts the cells from that one
// on. The number stands where a reader looks for a line, and the quote is not opened: hosts know the text as
// it is.
PARAMDB_API void LogBadCell(std::wstring_view tag, std::size_t left);

} // namespace paramdb
