#include <paramdb/distillery/param_distillery.h>

int CQtParamDistillery::s_time_signal_id = -1;

CQtParamDistillery::CQtParamDistillery() : m_derived_info(std::make_unique<CQtDerivedInfo>(*this)) {}

bool CQtParamDistillery::ReadTablesFromCandidateLake() {
    if (!CQtParamStore::ReadTablesFromCandidateLake() || !CheckIntegrity())
        return false;
    if (!m_derived_info->BuildDerivedInfo() || !RefineDatabaseTables())
        return false;
    m_initialized = true;
    return true;
}

bool CQtParamDistillery::CheckIntegrity() const { return true; }

bool CQtParamDistillery::RefineDatabaseTables() { return true; }
