// Reading all rows of a table from each of the three sources, and writing them to a sea.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table.h>
#include <paramdb/storage/lake.h>
#include <paramdb/tables/table_rows.h>

#include <functional>
#include <span>

namespace paramdb {

// Inserts copies of the key and row that stand in the fields.
using AddRow = std::function<void()>;

// Reads the rows of a source. The fields are those of one key and one row that serve for every line, so that
// a short line keeps the values of the line before; after each good line `add` is called. The result tells
// whether every row was read without fault.
using RowReader = std::function<bool(std::span<Field const> fields, AddRow const& add)>;

// The readers of the three sources. Faulty rows are reported and left out, except that a row of a sea is
// added as far as it was read. The source must outlive the reader.
PARAMDB_API RowReader RowsOf(CLake::CNode const& section, wchar_t const* tag);
PARAMDB_API RowReader RowsOf(ParamDb::CDbTable const& table, wchar_t const* tag);
PARAMDB_API RowReader RowsOf(CResourceSea& sea, wchar_t const* tag);

// Replaces the lines of the list named by the tag by the rows of the table, fields separated by one blank.
PARAMDB_API void WriteRows(CQParamTableRows const& table, CResourceSea& sea, wchar_t const* tag);

} // namespace paramdb
