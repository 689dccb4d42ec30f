#include "sqlite.h"

#include <stdexcept>

namespace benchmarks {

void Demand(bool good, Database const& database) {
    if (!good)
        throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(database.get()));
}

Database OpenDatabase(std::string const& path, int flags) {
    sqlite3* database = nullptr;
    int const result = sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
    Database opened(database);
    Demand(result == SQLITE_OK, opened);
    return opened;
}

void RunSql(Database const& database, std::string const& text) {
    Demand(sqlite3_exec(database.get(), text.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, database);
}

Statement PrepareSql(Database const& database, std::string const& text) {
    sqlite3_stmt* statement = nullptr;
    Demand(sqlite3_prepare_v3(database.get(), text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement,
                              nullptr) == SQLITE_OK,
           database);
    return Statement(statement);
}

} // namespace benchmarks
