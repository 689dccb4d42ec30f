// The rows of a table as their lines have them, before the load corrects what is wrong with them.
#pragma once

#include "tools/check/checked_table.h"
#include "tools/row_buffer.h"

#include <functional>

namespace paramdb::tools::check {

// Shows each line of the table that can be read as a row, in the order of the file, with its fields. A line
// whose key is there already is left out.
void VisitRowLines(CheckedTable const& table,
                   std::function<void(CLakeNode const& line, RowBuffer const& row)> const& visitor);

} // namespace paramdb::tools::check
