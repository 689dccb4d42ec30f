// The tables of the catalogue as SQL tables: names, columns, types, references.
//
// A table has the name of its tag without the brackets. Its first column is the id of the revision that a row
// belongs to; then come the key, for the table with several rows to a key the number of the row, and the
// columns of the row, named as in the catalogue.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::database {

struct SqlColumn {
    std::string name;
    FieldType type;
    // The table whose key the column holds, unless it is -1; empty for a column that is no such id.
    std::string referred_table;
};

struct SqlTable {
    std::string name;
    TableDescription const* description;
    std::vector<SqlColumn> columns; // those of the key first
    std::size_t key_size;

    std::wstring Tag() const { return description->tag; }
    bool HasRowNumber() const { return !description->has_unique_keys; }
    // The columns of the primary key, quoted and with commas between.
    std::string PrimaryKey() const;
    // All columns of the catalogue, quoted and with commas between.
    std::string ColumnList() const;
};

inline constexpr char RevisionColumn[] = "revision_id";
inline constexpr char RowNumberColumn[] = "row_number";

// The tables in the order of the catalogue. Any thread.
std::span<SqlTable const> SqlTables();

// The table of that name; null if there is none.
SqlTable const* FindSqlTable(std::string_view name);

// A single value that loads read as a text: its key in a table set and its name in the database.
struct NamedText {
    wchar_t const* key;
    char const* name;
};
std::span<NamedText const> NamedTexts();

inline constexpr wchar_t MajorVersionKey[] = L"<DbDesign.CacheVersion>";
inline constexpr wchar_t MinorVersionKey[] = L"<DbDesign.CacheMinorVersion>";

// "name", for SQL.
std::string Quoted(std::string_view name);

} // namespace paramdb::database
