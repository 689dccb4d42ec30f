// Parameter data in SQL databases: sets with a name, and of each set revisions with a number.
//
// A database keeps many sets, and of each every revision that was ever exported. ExportTables adds one,
// ImportTables fetches one, Revisions lists them. Where a database lies, and of what set and revision, is
// told by a connection (connection_text.h): "postgresql:host=db1 dbname=bench#gearbox@12".
//
// Nothing here throws because of a database: what fails is reported (PrWin::Output, category 8) and shows in
// the result. Style 3 tells of a fault in the data, with table, column, key and value; style 4 of an
// operation that was given up; style 1 of what one should know. No message holds a password. Nothing waits
// for ever; a backend other than those of SQLite and PostgreSQL keeps the times of its own driver.
//
// Any thread may call, as long as no two work on the same table set.
#pragma once

#include <paramdb/database/export.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ParamDb {

// How long to wait for the server to accept a connection, for a lock to be given free, and for the answer to
// each statement.
inline constexpr std::chrono::seconds DatabaseTimeout(10);

struct Revision {
    std::wstring set;
    std::int32_t number = 0; // from 1 on
    std::wstring who;        // as the exporter told, such as "operator@bench7"
    std::wstring when;       // by the clock of the server, in UTC: "2024-05-17T08:30:00Z"
    std::wstring remark;
    std::uint64_t tables = 0; // how many it has
    std::uint64_t rows = 0;   // in all of them

    bool operator==(Revision const&) const = default;
};

// The revisions of the set that the connection tells, or of all sets, in the order of names and numbers. None
// after a failure.
PARAMDB_DATABASE_API std::optional<std::vector<Revision>>
Revisions(std::wstring const& connection, std::chrono::seconds timeout = DatabaseTimeout);

} // namespace ParamDb
