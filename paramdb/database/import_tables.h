// Parameter data out of a database.
//
//     auto& set = ParamDb::CParameterTableSet::TableSet();
//     if (ParamDb::ImportTables(L"postgresql:host=db1 dbname=bench#gearbox", set,
//                               {.local_copy = L"gearbox.copy"}))
//         CQtParamInstance().ReadTablesFromCandidateLake();
#pragma once

#include <paramdb/database/revision.h>
#include <paramdb/storage/db_table_set.h>

#include <cstddef>

namespace ParamDb {

struct ImportOptions {
    std::chrono::seconds timeout = DatabaseTimeout;
    // Whether a single fault in the data makes the import fail.
    bool strict = false;
    // A file in which a copy of what was imported is kept; none if empty. It is used, with a message, when
    // the database cannot be reached or does not answer in time, and replaced after an import without faults.
    // A copy of another database or set, or of another revision than the one asked for, is not used.
    std::wstring local_copy = {};
};

struct Import {
    Revision revision;
    bool is_local_copy = false;
    std::size_t faults = 0; // each has been reported
};

// Replaces the content of the set by a revision: the one that the connection tells, else the newest of its
// set; and the set may be left out where the database has only one. Rows come in key order, cells have the
// types of their fields. A row with a fault is left out, as is a table that is not there as it should be.
// Without a result the set is as it was.
PARAMDB_DATABASE_API std::optional<Import> ImportTables(std::wstring const& connection, CDbTableSet& set,
                                                        ImportOptions const& options = {});

} // namespace ParamDb
