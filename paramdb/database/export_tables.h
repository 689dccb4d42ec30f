// Parameter data into a database, as a new revision of a set.
#pragma once

#include <paramdb/database/revision.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/service/table_manager.h>
#include <paramdb/storage/db_table_set.h>

namespace ParamDb {

struct ExportOptions {
    std::chrono::seconds timeout = DatabaseTimeout;
    std::wstring who = {}; // the user and the host if empty
    std::wstring remark = {};
    // Whether each id must be that of a row, unless it is -1. A database that is made by this export checks
    // that for all later ones too.
    bool foreign_keys = false;
};

// Writes a revision of the set that the connection tells, of "default" if it tells none, and makes the tables
// of the database if there are none. It takes the next number of the set and never changes a revision that is
// there; of exporters that come at the same time each gets its own. Everything goes in one transaction: with
// a result the revision is there as a whole; without one, and also after a crash, there is no trace of it.
//
// What a load of the set would refuse, a text with a zero character, and a position in a key that is no
// number are faults, and nothing is exported. A row whose key an earlier row has is left out, as a load
// would, and so is what is no table of parameter data; both are reported.
PARAMDB_DATABASE_API std::optional<Revision>
ExportTables(CDbTableSet const& set, std::wstring const& connection, ExportOptions const& options = {});

// The same for the tables as they have been loaded, with what the load added to them: virtual modes. Their
// version is the one that loads ask for. Tables without a row are left out.
PARAMDB_DATABASE_API std::optional<Revision> ExportTables(CQtParamInstance const& parameters,
                                                          std::wstring const& connection,
                                                          ExportOptions const& options = {});

} // namespace ParamDb
