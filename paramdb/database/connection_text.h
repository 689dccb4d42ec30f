// Where parameter data lie in a database, told by one text in UTF-8.
//
//     sqlite3:bench.db                            a file
//     sqlite3:bench.db#gearbox@12                 a set in it, and a revision of the set
//     postgresql:host=db1 dbname=bench#gearbox    a server; the newest revision of the set
//     postgresql://operator@db1/bench#gearbox     the same
//     odbc:DSN=bench#gearbox                      whatever else SOCI has a backend for, by its name
//
// What the text does not say of a PostgreSQL server comes from the environment (PGHOST, PGUSER, PGPASSWORD,
// ...) and the password file, as for its other programs. A password never stands in the text, which is shown
// in messages and seen by other users of the machine.
#pragma once

#include <paramdb/database/export.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace paramdb::database {

struct ConnectionText {
    std::string backend;    // its name in SOCI
    std::string parameters; // what stands between the name and the set
    std::string set;        // empty if none is told
    std::optional<std::int32_t> revision;

    // The text without the set.
    std::string Place() const { return backend + ":" + parameters; }
};

// Whether a text begins as a connection does, with the name of a backend and a colon; other texts are names
// of files. Any thread.
PARAMDB_DATABASE_API bool IsConnectionText(std::string_view text);

// The parts of such a text, or what is wrong with it. The set stands behind the last #, unless a slash or a
// backslash follows, and its revision behind the last @ of that.
PARAMDB_DATABASE_API std::variant<ConnectionText, std::string> ParseConnectionText(std::string_view text);

// What is wrong with a name as the name of a set; empty if it is one: 1 to 100 bytes, none of them a control
// character or one of #, @, / and backslash.
PARAMDB_DATABASE_API std::string SetNameFault(std::string_view name);

} // namespace paramdb::database
