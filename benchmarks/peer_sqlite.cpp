// SQLite: a database file with one table for each tag, whose rows stand in the order of the keys and are
// selected in that order, without a sort and without an index in between.
#include "peers.h"
#include "sqlite.h"

#include <limits>
#include <string>
#include <tuple>
#include <type_traits>

namespace benchmarks {
namespace {

// Creates the table and fills it; the column types turn the texts of numbers into numbers.
void WriteTable(Database const& database, TableRows const& table) {
    std::string columns;
    std::string places;
    auto const types = table.FieldTypes();
    for (std::size_t column = 0; column < types.size(); ++column) {
        bool const real =
            types[column] == paramdb::FieldType::Float || types[column] == paramdb::FieldType::Double;
        char const* const type = types[column] == paramdb::FieldType::Text ? " TEXT"
                                 : real                                    ? " REAL"
                                                                           : " INTEGER";
        columns += (column == 0 ? "c" : ", c") + std::to_string(column) + type;
        places += column == 0 ? "?" : ", ?";
    }
    std::string const name = '"' + table.Tag() + '"';
    RunSql(database, "CREATE TABLE " + name + " (" + columns + ")");
    Statement const insert = PrepareSql(database, "INSERT INTO " + name + " VALUES (" + places + ")");
    for (std::string const& row : table.rows) {
        RowFields fields(row);
        for (std::size_t column = 0; column < types.size(); ++column) {
            std::string_view const field = fields.Next();
            sqlite3_bind_text(insert.get(), static_cast<int>(column) + 1, field.data(),
                              static_cast<int>(field.size()), nullptr);
        }
        Demand(sqlite3_step(insert.get()) == SQLITE_DONE, database);
        sqlite3_reset(insert.get());
    }
}

void Write(std::vector<TableRows> const& tables, std::filesystem::path const& path) {
    Database const database = OpenDatabase(path.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    RunSql(database, "PRAGMA synchronous = OFF");
    RunSql(database, "BEGIN");
    for (TableRows const& table : tables)
        WriteTable(database, table);
    RunSql(database, "COMMIT");
}

template <class T>
void Take(sqlite3_stmt* row, int column, T& field) {
    if constexpr (std::is_same_v<T, CFixedText>) {
        auto const* const text = reinterpret_cast<char const*>(sqlite3_column_text(row, column));
        AssignText(field, {text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))});
    } else if constexpr (std::is_floating_point_v<T>) {
        field = static_cast<T>(sqlite3_column_double(row, column));
    } else {
        field = static_cast<T>(sqlite3_column_int64(row, column));
    }
}

// The number of rows, which have the numbers from 1 on.
std::size_t CountRows(Database const& database, std::string const& name) {
    Statement const last = PrepareSql(database, "SELECT max(rowid) FROM " + name);
    Demand(sqlite3_step(last.get()) == SQLITE_ROW, database);
    return static_cast<std::size_t>(sqlite3_column_int64(last.get(), 0));
}

template <class Rows>
void Fill(Database const& database, wchar_t const* tag, Rows& rows) {
    std::string const name = '"' + NarrowTag(tag) + '"';
    rows.reserve(CountRows(database, name));
    Statement const select = PrepareSql(database, "SELECT * FROM " + name);
    int result;
    while ((result = sqlite3_step(select.get())) == SQLITE_ROW) {
        auto& [key, row] = rows.emplace_back();
        int column = 0;
        auto const take = [&](auto&... targets) { (Take(select.get(), column++, targets), ...); };
        std::apply(take, key.tuple());
        std::apply(take, row.tuple());
    }
    Demand(result == SQLITE_DONE, database);
}

void Load(std::filesystem::path const& path, PlainTables& tables) {
    Database const database = OpenDatabase(path.string(), SQLITE_OPEN_READONLY);
    ForEachTable(tables, [&database](wchar_t const* tag, auto& rows) { Fill(database, tag, rows); });
}

} // namespace

Peer SqlitePeer() {
    constexpr std::size_t any = std::numeric_limits<std::size_t>::max();
    return {"SQLite", "rows.db", Write, Load, any, any};
}

} // namespace benchmarks
