// The table set of the process: while it holds a table, the next load reads it instead of the lake.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/storage/db_table_set.h>

namespace ParamDb {

class PARAMDB_API CParameterTableSet {
public:
    // Always the same set, made empty at the first call, which may come from any thread. It has no lock:
    // filling it and loading from it follow one another.
    static CDbTableSet& TableSet();
};

} // namespace ParamDb
