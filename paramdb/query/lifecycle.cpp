// CQtParamInstance: binding, loading and settings.
#include <paramdb/platform/sea/sea_base.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>

namespace {

constexpr wchar_t ShowIdsKey[] = L"ShowIdsInDialogs";

} // namespace

CQtParamInstance::CQtParamInstance(CQtParamDistillery* distillery)
    : m_distillery(distillery != nullptr ? distillery : &CQtParamServer::Object().store()) {}

void CQtParamInstance::SetAutoModeNaming(CQtParamDistillery::AutoModeNaming const& naming) {
    Modes().SetNaming(naming);
}

void CQtParamInstance::DumpTables(int limit) const {
    m_distillery->DumpTables(limit);
    m_distillery->DerivedInfo().DumpTables(limit);
}

void CQtParamInstance::WriteTablesToLocalSeas() const {
    if (Modes().WriteTables())
        m_distillery->WriteTablesToLocalSeas();
}

bool CQtParamInstance::UpdateLocalSeas() {
    return Modes().UpdateLayout();
}

void CQtParamInstance::ShowIdsInDialogs(bool show) {
    CSeaBase::MessagesSea().LookupBool(2, ShowIdsKey, show, 0);
}

bool CQtParamInstance::ShowIdsInDialogs() {
    return CSeaBase::MessagesSea().LookupGetBool(ShowIdsKey, 0, false);
}
