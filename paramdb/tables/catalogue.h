// The tables of the store, and their description for listings, exports and checks.
#pragma once

#include <paramdb/keys/q_clavis.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/storage/checked_map.h>
#include <paramdb/tables/db_multi_map.h>
#include <paramdb/tables/dyn_name_id_table.h>
#include <paramdb/tables/limit_rows.h>
#include <paramdb/tables/parameter_rows.h>
#include <paramdb/tables/sea_typed_table.h>
#include <paramdb/tables/system_rows.h>

#include <span>
#include <string_view>
#include <vector>

// A family of tables with one row class, by instrument class. All tables are there from the start, so a
// lookup of a class that the family lacks is a bounds failure: at() throws std::out_of_range("invalid map<K,
// T> key").
template <class Row>
using CClassTables = paramdb::CheckedMap<QIdx1, CQParamSeaTypedTable<CDbUniqueMap<QIdx1, Row>>>;

namespace paramdb {

class NonCopyable {
protected:
    NonCopyable() = default;
    NonCopyable(NonCopyable const&) = delete;
    NonCopyable& operator=(NonCopyable const&) = delete;
    ~NonCopyable() = default;
};

} // namespace paramdb

// All tables, each with its tag and no local sea.
struct PARAMDB_API CParamTables : private paramdb::NonCopyable {
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) CDynNameIdTable accessor;
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    CQParamSeaTypedTable<container<key, row>> accessor;
#define PARAMDB_CLASS_MAP(accessor, row) CClassTables<row> accessor;
#include <paramdb/tables/catalogue.def>

    CParamTables();
    ~CParamTables();
};

namespace paramdb {

struct ColumnDescription {
    std::string_view name;
    FieldType type;
};

struct TableDescription {
    wchar_t const* tag;
    std::string_view accessor;  // of the query object; of the map, for a table of a family
    std::string_view container; // class name
    std::string_view key;       // class name
    std::string_view row;       // class name
    int instrument_class;       // in its family; -1 for a single table
    bool has_unique_keys;
    std::vector<ColumnDescription> key_columns;
    std::vector<ColumnDescription> row_columns;
};

// A table of a store with what is to be known of it.
struct CatalogueEntry {
    TableDescription const* description;
    CQParamSeaTable* table;
    CQParamTableRows const* rows;
};

// The descriptions of all tables in the order of registration.
PARAMDB_API std::span<TableDescription const> Catalogue();

// The tables in the order of registration.
PARAMDB_API std::vector<CatalogueEntry> CatalogueEntries(CParamTables& tables);

} // namespace paramdb
