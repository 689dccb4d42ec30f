// Databases and statements of SQLite, closed by their owners. What fails throws std::runtime_error with the
// message of the database.
#pragma once

#include <memory>
#include <sqlite3.h>
#include <string>

namespace benchmarks {

struct CloseSqlite {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseSqlite>;
using Statement = std::unique_ptr<sqlite3_stmt, CloseSqlite>;

void Demand(bool good, Database const& database);

// The path ":memory:" stands for a database without a file; the flags are those of sqlite3_open_v2.
Database OpenDatabase(std::string const& path, int flags);
void RunSql(Database const& database, std::string const& text);
Statement PrepareSql(Database const& database, std::string const& text);

} // namespace benchmarks
