#include <paramdb/tables/catalogue.h>

#include <algorithm>
#include <tuple>

CParamTables::CParamTables()
    : NonCopyable()
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) , accessor(tag)
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns) , accessor(tag)
#include <paramdb/tables/catalogue.def>
{
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row) map.try_emplace(instrument_class, tag);
#include <paramdb/tables/catalogue.def>
}

CParamTables::~CParamTables() = default;

namespace paramdb {
namespace {

// The columns of a key or row class, named by a list of words.
template <class Fields>
std::vector<ColumnDescription> Columns(std::string_view names) {
    std::vector<ColumnDescription> columns;
    for (FieldType const type : FieldTypes<Fields>()) {
        std::size_t const end = std::min(names.find(' '), names.size());
        columns.push_back({names.substr(0, end), type});
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return columns;
}

// The columns of a row class that knows their names itself.
template <class Row>
std::vector<ColumnDescription> OwnColumns() {
    std::vector<ColumnDescription> columns;
    auto const types = FieldTypes<Row>();
    for (std::size_t column = 0; column < types.size(); ++column)
        columns.push_back({Row::ColumnNames[column], types[column]});
    return columns;
}

template <class Row>
std::vector<ColumnDescription> RowColumns(std::string_view names) {
    if constexpr (requires { Row::ColumnNames; })
        if (names.empty())
            return OwnColumns<Row>();
    return Columns<Row>(names);
}

struct Place {
    int place;
    TableDescription description;
};

std::vector<TableDescription> MakeCatalogue() {
    Place places[] = {
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column)                                                 \
    {place,                                                                                                  \
     {tag, #accessor, "CDynNameIdTable", "QIdx1", "QIdxName", -1, true, Columns<QIdx1>(key_column),          \
      Columns<QIdxName>("name")}},
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    {place,                                                                                                  \
     {tag, #accessor, #container, #key, #row, -1, std::string_view(#container) != "CDbMultiMap",             \
      Columns<key>(key_columns), RowColumns<row>(row_columns)}},
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row)                                          \
    {place,                                                                                                  \
     {tag, #map, "CDbUniqueMap", "QIdx1", #row, instrument_class, true, Columns<QIdx1>("parameter"),         \
      RowColumns<row>("")}},
#include <paramdb/tables/catalogue.def>
    };
    std::ranges::sort(places, {}, &Place::place);
    std::vector<TableDescription> descriptions;
    for (Place& place : places)
        descriptions.push_back(std::move(place.description));
    return descriptions;
}

} // namespace

std::span<TableDescription const> Catalogue() {
    static std::vector<TableDescription> const catalogue = MakeCatalogue();
    return catalogue;
}

std::vector<CatalogueEntry> CatalogueEntries(CParamTables& tables) {
    std::vector<CatalogueEntry> entries(Catalogue().size());
    auto const add = [&](std::size_t place, auto& table) {
        entries[place - 1] = {&Catalogue()[place - 1], &table, &table};
    };
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) add(place, tables.accessor);
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    add(place, tables.accessor);
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row)                                          \
    add(place, tables.map.at(instrument_class));
#include <paramdb/tables/catalogue.def>
    return entries;
}

} // namespace paramdb
