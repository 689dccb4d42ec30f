#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>
#include <paramdb/storage/unquote.h>

namespace {

// The joined cells of the first row; the set holds a table of that key afterwards.
std::wstring NamedText(ParamDb::CDbTableSet& set, std::wstring const& key) {
    auto const& table = set[key];
    if (table.empty())
        return {};
    try {
        return ParamDb::CDbTable::to_wstring(table.front());
    } catch (std::bad_variant_access const&) {
        PrWin::Output(8, 3,
                      L"CQtParamStore::ReadTablesFromCandidateLake(): Value of '" + key + L"' is no text\n");
        return {};
    }
}

std::wstring NamedText(CLake const& lake, std::wstring const& key) {
    auto const node = lake[key];
    return node.found() ? paramdb::Unquote(node.text()) : std::wstring();
}

} // namespace

CQtParamStore::CQtParamStore()
    : m_entries(paramdb::CatalogueEntries(m_tables)), m_manager(std::make_unique<CQTableManager>()) {
    for (paramdb::CatalogueEntry const& entry : m_entries)
        m_manager->RegisterTable(*entry.table);
}

template <class Source>
void CQtParamStore::ReadNamedTexts(Source& source) {
    m_learn_file_name = NamedText(source, L"<QLearn><FLearnArcName>");
    m_calib_file_name = NamedText(source, L"<QCalib><FCalibFileName>");
    m_base_type = NamedText(source, L"<QType><FBaseName>");
    m_alias_type = NamedText(source, L"<QType><FAliasName>");
}

bool CQtParamStore::ReadTablesFromCandidateLake() {
    if (auto& set = ParamDb::CParameterTableSet::TableSet(); !set.empty()) {
        if (!m_manager->ReadTables())
            return false;
        ReadNamedTexts(set);
        return true;
    }
    if (!m_manager->ReadTablesFromCandidateLake())
        return false;
    ReadNamedTexts(CParameterLake::Lake());
    return true;
}

void CQtParamStore::Clear() {
    m_manager->Clear();
}

void CQtParamStore::PurgeTables() {
    m_manager->PurgeTables();
    m_learn_file_name.Empty();
    m_calib_file_name.Empty();
    m_base_type.Empty();
    m_alias_type.Empty();
}

void CQtParamStore::DumpTables(int limit) const {
    m_manager->DumpTables(limit);
}

void CQtParamStore::WriteTablesToLocalSeas() const {
    m_manager->WriteTablesToLocalSeas();
}
