#include <paramdb/database/layout.h>
#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <array>

namespace paramdb::database {
namespace {

// Columns that hold the key of another table, wherever they stand.
struct Reference {
    std::string_view column;
    std::string_view table;
};
constexpr Reference References[] = {
    {"mode", "TMode"},
    {"channel", "TChannel"},
    {"parent_channel", "TChannel"},
    {"location", "TLocation"},
    {"source_location", "TLocation"},
    {"instrument", "TInstrument"},
    {"source_instrument", "TInstrument"},
    {"second_source_instrument", "TInstrument"},
    {"parameter", "TInstrumentParam"},
    {"source_parameter", "TInstrumentParam"},
    {"second_source_parameter", "TInstrumentParam"},
    {"signal", "TApplicationSignal"},
    {"trigger", "TTrigger"},
    {"polygon", "TIpPolygon"},
    {"second_polygon", "TIpPolygon"},
    {"physical_mode", "TPhysMode"},
    {"bench", "TAliasBench"},
    {"job", "TResamplingGroup"},
    {"set", "TProcessingUnit"},
    {"configuration", "TTpSensorConfig"},
};

std::string ReferredTable(std::string_view table, std::string_view column) {
    auto const found = std::ranges::find(References, column, &Reference::column);
    return found == std::end(References) || found->table == table ? "" : std::string(found->table);
}

std::vector<SqlTable> MakeTables() {
    std::vector<SqlTable> tables;
    for (TableDescription const& description : Catalogue()) {
        std::string const tag = ToUtf8(description.tag);
        SqlTable table{tag.substr(1, tag.size() - 2), &description, {}, description.key_columns.size()};
        for (auto const* columns : {&description.key_columns, &description.row_columns})
            for (ColumnDescription const& column : *columns)
                table.columns.push_back(
                    {std::string(column.name), column.type, ReferredTable(table.name, column.name)});
        tables.push_back(std::move(table));
    }
    return tables;
}

} // namespace

std::string Quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

std::string SqlTable::PrimaryKey() const {
    std::string list = Quoted(RevisionColumn);
    for (std::size_t column = 0; column < key_size; ++column)
        list += ", " + Quoted(columns[column].name);
    if (HasRowNumber())
        list += ", " + Quoted(RowNumberColumn);
    return list;
}

std::string SqlTable::ColumnList() const {
    std::string list;
    for (SqlColumn const& column : columns)
        list += (list.empty() ? "" : ", ") + Quoted(column.name);
    return list;
}

std::span<SqlTable const> SqlTables() {
    static std::vector<SqlTable> const tables = MakeTables();
    return tables;
}

SqlTable const* FindSqlTable(std::string_view name) {
    auto const tables = SqlTables();
    auto const found = std::find_if(tables.begin(), tables.end(),
                                    [name](SqlTable const& table) { return table.name == name; });
    return found == tables.end() ? nullptr : &*found;
}

std::span<NamedText const> NamedTexts() {
    static constexpr std::array<NamedText, 4> texts{{{L"<QLearn><FLearnArcName>", "learn_file"},
                                                     {L"<QCalib><FCalibFileName>", "calib_file"},
                                                     {L"<QType><FBaseName>", "base_type"},
                                                     {L"<QType><FAliasName>", "alias_type"}}};
    return texts;
}

} // namespace paramdb::database
