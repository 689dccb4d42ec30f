#include "tools/db/table_sources.h"

#include <paramdb/database/connection_text.h>
#include <paramdb/database/import_tables.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>
#include <paramdb/storage/unquote.h>
#include <paramdb/tables/catalogue.h>

#include "tools/databases.h"
#include "tools/db/database_options.h"
#include "tools/db/set_file.h"
#include "tools/messages.h"

#include <chrono>
#include <memory>

namespace paramdb::tools::db {
namespace {

using ParamDb::CDbTable;
using ParamDb::CDbTableSet;

constexpr wchar_t const* VersionKeys[] = {L"<DbDesign.CacheVersion>", L"<DbDesign.CacheMinorVersion>"};
constexpr wchar_t const* TextKeys[] = {L"<QLearn><FLearnArcName>", L"<QCalib><FCalibFileName>",
                                       L"<QType><FBaseName>", L"<QType><FAliasName>"};

void AddRows(CDbTable& table, CQParamTableRows const& rows) {
    table.reserve(rows.RowCount());
    rows.VisitRows([&table](auto key, auto row) {
        ParamDb::row_t& cells = table.emplace_back();
        cells.reserve(key.size() + row.size());
        for (auto const fields : {key, row})
            for (ConstField const& field : fields)
                field.Visit([&cells]<class Value>(Value const& value) {
                    if constexpr (std::is_same_v<Value, CFixedText>)
                        cells.emplace_back(std::wstring(value.view()));
                    else
                        cells.emplace_back(value);
                });
        return true;
    });
}

bool IsSingleValue(std::wstring const& key) {
    auto const is_key = [&key](wchar_t const* other) { return key == other; };
    return std::any_of(std::begin(VersionKeys), std::end(VersionKeys), is_key) ||
           std::any_of(std::begin(TextKeys), std::end(TextKeys), is_key);
}

// Adds the tables of a later source.
void Merge(CDbTableSet& set, CDbTableSet later) {
    for (auto& [key, table] : later) {
        if (IsSingleValue(key))
            set.try_emplace(key, std::move(table));
        else
            set.insert_or_assign(key, std::move(table));
    }
}

// "gearbox.db, revision 3 of set 'gearbox'"
std::string NameOf(std::string const& connection, ParamDb::Import const& import) {
    auto const parsed = database::ParseConnectionText(connection);
    auto const& place = std::get<database::ConnectionText>(parsed);
    return place.Place() + "#" + ToUtf8(import.revision.set) + "@" + std::to_string(import.revision.number) +
           (import.is_local_copy ? " (local copy)" : "");
}

bool ReadRevision(std::string const& connection, CDbTableSet& set, Sources& sources, std::ostream& err) {
    DatabaseOptions const& options = OptionsOfRun();
    auto const start = std::chrono::steady_clock::now();
    auto const import = ParamDb::ImportTables(
        FromUtf8(connection), set, {.timeout = options.timeout, .local_copy = FromUtf8(options.local_copy)});
    sources.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (!import)
        return false;
    SourceFile& source = sources.files.emplace_back();
    source.name = NameOf(connection, *import);
    source.lines = import->revision.rows;
    source.sections = import->revision.tables;
    if (set.empty())
        err << "paramdb: " << source.name << ": the revision holds no table\n";
    return !set.empty();
}

bool ReadFile(std::string const& name, CDbTableSet& set, Sources& sources, std::ostream& err) {
    auto const read = ReadSources({name}, err);
    if (!read)
        return false;
    sources.files.push_back(read->files.front());
    sources.seconds += read->seconds;
    set = TableSetOf(CParameterLake::Lake());
    return true;
}

} // namespace

CDbTableSet TableSetOf(CLake& lake) {
    CDbTableSet set;
    auto const tables = std::make_unique<CParamTables>();
    for (CatalogueEntry const& entry : CatalogueEntries(*tables)) {
        std::wstring const tag = entry.description->tag;
        auto const node = lake[tag];
        if (!node.found() || !node.position->is_section())
            continue;
        entry.table->ReadTable(lake);
        AddRows(set[tag], *entry.rows);
    }
    for (wchar_t const* const key : VersionKeys)
        if (auto const node = lake[key]; node.found())
            set[key].push_back({node.number()});
    for (wchar_t const* const key : TextKeys)
        if (auto const node = lake[key]; node.found())
            set[key].push_back({Unquote(node.text())});
    return set;
}

std::optional<Sources> ReadTableSources(std::vector<std::string> const& names, std::ostream& err) {
    Sources sources;
    CDbTableSet all;
    bool at_fault = false;
    for (std::string const& name : names) {
        CDbTableSet set;
        bool const is_good =
            IsConnection(name) ? ReadRevision(name, set, sources, err) : ReadFile(name, set, sources, err);
        at_fault = at_fault || !is_good;
        if (!at_fault)
            Merge(all, std::move(set));
    }
    CParameterLake::Lake().clear();
    ParamDb::CParameterTableSet::TableSet() = at_fault ? CDbTableSet() : std::move(all);
    return at_fault ? std::nullopt : std::optional(std::move(sources));
}

std::optional<std::string> ReadRevisionAsLake(std::string const& connection, std::ostream& err) {
    MessageCollector const messages(err);
    Sources sources;
    CDbTableSet set;
    if (!ReadRevision(connection, set, sources, err))
        return std::nullopt;
    return LakeOf(connection, set, err);
}

} // namespace paramdb::tools::db
