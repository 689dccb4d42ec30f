// SQL databases for the rest of the command. A build without them has these functions too: nothing is a
// connection then, and there is no `paramdb db`.
#pragma once

#include "tools/sources.h"
#include "tools/verb.h"

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace paramdb::tools {

// Whether a FILE is no file but a revision in a database, such as "sqlite3:bench.db#gearbox@3".
bool IsConnection(std::string const& name);

// Adds --cache and --timeout to a verb that takes files. They hold for the run of the command, and do not
// show in the help of the verb: `paramdb db import --help` tells of them.
void AddDatabaseOptions(CLI::App& verb);

// Fills the process-wide table set with the tables of files and revisions; those of a later one replace those
// of an earlier one, while single values stay with the first that has them. If any is at fault the reason
// goes to `err`, or to the message sink for a database, the set is left empty and the result is none. The
// process-wide lake is empty afterwards.
std::optional<Sources> ReadTableSources(std::vector<std::string> const& names, std::ostream& err);

// A revision as the text of a lake, for verbs that work on lines. None, with the reason on `err`, if it
// cannot be read.
std::optional<std::string> ReadRevisionAsLake(std::string const& connection, std::ostream& err);

// The verb `paramdb db`; null in a build without databases.
std::unique_ptr<Verb> MakeDatabaseVerb();

} // namespace paramdb::tools
