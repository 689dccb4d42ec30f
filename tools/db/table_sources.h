// Table sets out of parameter files and databases.
#pragma once

#include <paramdb/storage/db_table_set.h>
#include <paramdb/storage/lake.h>

#include "tools/sources.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace paramdb::tools::db {

// The tables of a lake that are sections, as a load reads them, and its version and named texts. Rows that
// cannot be read are reported as by a load.
ParamDb::CDbTableSet TableSetOf(CLake& lake);

// See tools/databases.h.
std::optional<Sources> ReadTableSources(std::vector<std::string> const& names, std::ostream& err);
std::optional<std::string> ReadRevisionAsLake(std::string const& connection, std::ostream& err);

} // namespace paramdb::tools::db
