#include "tools/loading.h"

#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "tools/progress_bar.h"

#include <chrono>

namespace paramdb::tools {
namespace {

// Leaves nothing of an earlier load. A table set would be read in place of the lake.
void ForgetLastLoad() {
    ParamDb::CParameterTableSet::TableSet().clear();
    CQtParamInstance().PurgeTables();
    CQtParamServer::Object().Clear();
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

std::optional<Load> LoadFiles(std::vector<std::string> const& files, std::ostream& err) {
    ForgetLastLoad();
    auto sources = ReadSources(files, err);
    if (!sources)
        return std::nullopt;

    Load load;
    load.sources = std::move(*sources);
    CLake const& lake = CParameterLake::Lake();
    load.major = lake[L"<DbDesign.CacheVersion>"].number();
    load.minor = lake[L"<DbDesign.CacheMinorVersion>"].number();

    CQtParamInstance parameters;
    MessageCollector const messages(err);
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
