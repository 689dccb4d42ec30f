// Generated rows as tables of the process-wide table set.
#pragma once

#include <paramdb/storage/db_table_set.h>

#include "generate.h"

#include <vector>

namespace benchmarks {

// One table for each of them, cells of the types of the fields, and the tables of the version.
ParamDb::CDbTableSet MakeTableSet(std::vector<TableRows> const& tables);

} // namespace benchmarks
