// A copy of a revision in a SQLite file of its own, for the time when its database is away.
#pragma once

#include <paramdb/database/revision_rows.h>
#include <paramdb/storage/db_table_set.h>

#include <chrono>
#include <optional>
#include <string>

namespace paramdb::database {

// Makes the file the copy of a revision; does nothing if it is that already. The file changes in one step.
// Throws DatabaseFault.
void WriteLocalCopy(std::string const& file, ConnectionText const& original,
                    ParamDb::Revision const& revision, ParamDb::CDbTableSet const& set,
                    std::chrono::seconds timeout);

struct LocalCopy {
    ParamDb::Revision revision;
    std::string copied; // when
    ParamDb::CDbTableSet set;
};

// Reads the copy if it is one of what the connection asks for. Throws DatabaseFault if not.
LocalCopy ReadLocalCopy(std::string const& file, ConnectionText const& original, std::chrono::seconds timeout,
                        Report& report);

} // namespace paramdb::database
