#include "tools/databases.h"

#ifdef PARAMDB_WITH_DATABASE

#include <paramdb/database/connection_text.h>

#include "tools/db/database_options.h"
#include "tools/db/table_sources.h"

namespace paramdb::tools {

std::unique_ptr<Verb> MakeDbVerb();

bool IsConnection(std::string const& name) {
    return database::IsConnectionText(name);
}

void AddDatabaseOptions(CLI::App& verb) {
    db::AddHiddenOptions(verb);
}

std::optional<Sources> ReadTableSources(std::vector<std::string> const& names, std::ostream& err) {
    return db::ReadTableSources(names, err);
}

std::optional<std::string> ReadRevisionAsLake(std::string const& connection, std::ostream& err) {
    return db::ReadRevisionAsLake(connection, err);
}

std::unique_ptr<Verb> MakeDatabaseVerb() {
    return MakeDbVerb();
}

} // namespace paramdb::tools

#else

namespace paramdb::tools {

bool IsConnection(std::string const&) {
    return false;
}

void AddDatabaseOptions(CLI::App&) {}

std::optional<Sources> ReadTableSources(std::vector<std::string> const&, std::ostream&) {
    return std::nullopt;
}

std::optional<std::string> ReadRevisionAsLake(std::string const&, std::ostream&) {
    return std::nullopt;
}

std::unique_ptr<Verb> MakeDatabaseVerb() {
    return nullptr;
}

} // namespace paramdb::tools

#endif
