#include "tools/loading.h"

#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "tools/databases.h"
#include "tools/progress_bar.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace paramdb::tools {
namespace {

// Leaves nothing of an earlier load. A table set would be read in place of the lake.
void ForgetLastLoad() {
    ParamDb::CParameterTableSet::TableSet().clear();
    CQtParamInstance().PurgeTables();
    CQtParamServer::Object().Clear();
}

// Of the table set if that is read, else of the lake; 0 for one that is missing.
std::int32_t VersionPart(wchar_t const* key) {
    auto const& set = ParamDb::CParameterTableSet::TableSet();
    if (set.empty())
        return CParameterLake::Lake()[key].number();
    auto const table = set.find(key);
    return table == set.end() || table->second.empty() ? 0 : table->second.to_long();
}

LoadResult ResultOf(bool complete, MessageCounts const& messages) {
    if (complete)
        return LoadResult::Complete;
    return CountOfStyle(messages, RefusalStyle) > 0 ? LoadResult::Refused : LoadResult::Incomplete;
}

TableTotals CountRows(CQtParamInstance const& parameters) {
    TableTotals totals;
    for (CatalogueEntry const& table : parameters.Entries()) {
        std::size_t const rows = table.rows->RowCount();
        totals.tables += rows > 0 ? 1 : 0;
        totals.rows += rows;
        ++totals.all_tables;
    }
    return totals;
}

} // namespace

std::optional<Load> LoadFiles(std::vector<std::string> const& files, std::ostream& err, PrWin::Sink sink) {
    ForgetLastLoad();
    MessageCollector const messages(err, std::move(sink));
    bool const has_connection = std::any_of(files.begin(), files.end(), IsConnection);
    auto sources = has_connection ? ReadTableSources(files, err) : ReadSources(files, err);
    if (!sources)
        return std::nullopt;

    Load load;
    load.sources = std::move(*sources);
    load.major = VersionPart(L"<DbDesign.CacheVersion>");
    load.minor = VersionPart(L"<DbDesign.CacheMinorVersion>");

    CQtParamInstance parameters;
    LoadProgressBar const bar(err);
    auto const start = std::chrono::steady_clock::now();
    bool const complete = parameters.ReadTablesFromCandidateLake();
    load.load_seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    load.messages = messages.Counts();
    load.result = ResultOf(complete, load.messages);
    load.texts.learn_file = parameters.LearnFileName();
    load.texts.calib_file = parameters.CalibFileName();
    load.texts.base_type = parameters.BaseType();
    load.texts.alias_type = parameters.AliasType();
    if (load.result != LoadResult::Refused)
        load.tables = CountRows(parameters);
    return load;
}

ExitCode ExitCodeOf(Load const& load) {
    if (load.result == LoadResult::Refused)
        return ExitCode::NoLoad;
    bool const clean = load.result == LoadResult::Complete && !HasFindings(load.messages);
    return clean ? ExitCode::Clean : ExitCode::Findings;
}

} // namespace paramdb::tools
