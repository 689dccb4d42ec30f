#include <paramdb/distillery/param_distillery.h>
#include <paramdb/distillery/refinement.h>
#include <paramdb/platform/sea/pr_win.h>

#include <algorithm>

int CQtParamDistillery::s_time_signal_id = -1;

CQtParamDistillery::CQtParamDistillery() : m_derived_info(std::make_unique<CQtDerivedInfo>(*this)) {}

bool CQtParamDistillery::ReadTablesFromCandidateLake() {
    paramdb::ProgressScope const scope(m_progress);
    if (!CQtParamStore::ReadTablesFromCandidateLake() || !CheckIntegrity())
        return false;
    s_time_signal_id = FindTimeSignal();
    if (!m_derived_info->BuildDerivedInfo() || !RefineDatabaseTables())
        return false;
    m_initialized = true;
    return true;
}

bool CQtParamDistillery::CheckIntegrity() const {
    auto const same_id = [](auto const& signal, auto const& property) {
        return signal.first == property.first;
    };
    if (std::ranges::equal(Tables().ApplicationSignal, Tables().AppSignalProperty, same_id))
        return true;
    PrWin::Output(
        8, 3,
        L"CQtParamDistillery::CheckIntegrity(): Tables 'ApplicationSignal' and 'AppSignalProperty' are "
        L"incongruent\n");
    return false;
}

int CQtParamDistillery::FindTimeSignal() const {
    constexpr int time_signal_type = 4;
    for (auto const& [signal, property] : Tables().AppSignalProperty)
        if (property.get<"signal_type">() == time_signal_type)
            return signal[0];
    return -1;
}

bool CQtParamDistillery::RefineDatabaseTables() {
    return RefineTables(Tables());
}
