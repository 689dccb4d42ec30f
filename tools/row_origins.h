// The line of a lake that each row of a table was read from.
//
// Tables keep no such thing; the lines are read again to tell, so this is for the few who ask. Rows that a
// load or a program added without a line have none.
#pragma once

#include <paramdb/storage/lake.h>
#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <vector>

namespace paramdb::tools {

class RowOrigins {
public:
    // The table has been read from this lake, and neither has changed since.
    RowOrigins(CatalogueEntry const& table, CLake const& lake);

    // The line of the row at that place in key order; null for none.
    CLakeNode const* Line(std::size_t row) const { return m_lines[row]; }

private:
    std::vector<CLakeNode const*> m_lines;
};

} // namespace paramdb::tools
