#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/table_manager.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>
#include <paramdb/tables/load_progress.h>

namespace {

constexpr wchar_t MajorKey[] = L"<DbDesign.CacheVersion>";
constexpr wchar_t MinorKey[] = L"<DbDesign.CacheMinorVersion>";

// From this major version on an outdated database gets the refusal twice; hosts compare the text as a whole.
constexpr std::int32_t OldFormatBand = 202;

bool AcceptVersion(std::int32_t major, std::int32_t minor) {
    constexpr std::int32_t required_major = CQTableManager::RequiredMajor;
    constexpr std::int32_t required_minor = CQTableManager::RequiredMinor;
    if (major == required_major && minor >= required_minor)
        return true;
    CString message;
    message.Format(L"CQTableManager::ReadTablesFromCandidateLake(): Loading parameter data base failed:\n"
                   L"\tTable version %d.%d ",
                   major, minor);
    if (major > required_major) {
        message.AppendFormat(L"is greater than the supported major version %d\t"
                             L"Please contact Brelix for a software update.\n",
                             required_major);
    } else {
        int const times = major >= OldFormatBand ? 2 : 1;
        for (int time = 0; time < times; ++time)
            message.AppendFormat(L"is less than the supported version %d.%d\n"
                                 L"\tPlease contact Brelix for a parameter database update.\n",
                                 required_major, required_minor);
    }
    PrWin::Output(8, 4, message.GetString());
    return false;
}

std::int32_t Version(ParamDb::CDbTableSet const& set, wchar_t const* key) {
    auto const table = set.find(key);
    if (table == set.end() || table->second.empty() || table->second.front().empty())
        return -1;
    return table->second.to_long();
}

} // namespace

std::uint64_t CQTableManager::RegisterTable(CQParamSeaTable& table) {
    m_tables.push_back(&table);
    return m_tables.size();
}

CQParamSeaTable const* CQTableManager::Table(std::uint64_t index) const {
    return index < m_tables.size() ? m_tables[index] : nullptr;
}

bool CQTableManager::ReadTables() {
    auto& set = ParamDb::CParameterTableSet::TableSet();
    if (set.empty())
        return false;
    std::int32_t const major = Version(set, MajorKey);
    std::int32_t const minor = Version(set, MinorKey);
    if (!AcceptVersion(major, minor))
        return false;
    std::size_t rows = 0;
    for (auto const& [key, table] : set)
        rows += table.size();
    paramdb::BeginProgress(L"read", rows);
    for (CQParamSeaTable* const table : m_tables)
        table->ReadTable(set);
    return true;
}

bool CQTableManager::ReadTablesFromCandidateLake() {
    CLake& lake = CParameterLake::Lake();
    if (lake.empty())
        return false;
    if (!AcceptVersion(lake[MajorKey].number(), lake[MinorKey].number()))
        return false;
    paramdb::BeginProgress(L"read", lake.size());
    for (CQParamSeaTable* const table : m_tables)
        table->ReadTable(lake);
    return true;
}

void CQTableManager::Clear() {
    for (CQParamSeaTable* const table : m_tables)
        table->Clear();
}

void CQTableManager::PurgeTables() {
    for (CQParamSeaTable* const table : m_tables)
        table->PurgeTable();
}

void CQTableManager::DumpTables(int limit) {
    for (CQParamSeaTable* const table : m_tables)
        table->DumpTable(limit);
}

void CQTableManager::WriteTablesToLocalSeas() {
    for (CQParamSeaTable* const table : m_tables)
        table->WriteTable(nullptr);
}
