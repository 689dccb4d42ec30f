// Reading the fields of a row from a line of text or from the cells of a table-set row.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/storage/cell.h>
#include <paramdb/tables/field.h>

#include <cstddef>
#include <span>
#include <string_view>

namespace paramdb {

// Reads the fields one after the other from the front of the line, and cuts what was read. False at the first
// that cannot be read. A number that cannot be converted is reported (category 8, style 3); a text is refused
// when 199 or more characters of the line remain before it. On an exhausted line a number keeps its value and
// a text becomes empty. The narrow line is one of a parameter file.
PARAMDB_API bool ReadLine(std::string_view& line, std::span<Field const> fields);
PARAMDB_API bool ReadLine(std::wstring_view& line, std::span<Field const> fields);

// Reads the fields from the cells in order; `taken` counts the cells that were converted. False where the
// cells run out or a text has 199 or more characters. Throws std::bad_variant_access for a cell of another
// type.
PARAMDB_API bool ReadCells(std::span<ParamDb::cell_t const> cells, std::span<Field const> fields,
                           std::size_t& taken);

} // namespace paramdb
