#include <paramdb/distillery/rotor_tables.h>
#include <paramdb/service/param_store.h>

namespace {

// The row of a key, or null.
template <class Table>
auto const* FindRow(Table const& table, typename Table::key_type const& key) {
    auto const row = table.find(key);
    return row != table.end() ? &row->second : nullptr;
}

// The id that a key refers to, or the fallback.
template <class Table>
int Referred(Table const& table, typename Table::key_type const& key, int fallback) {
    QVRefIdx const* const row = FindRow(table, key);
    return row != nullptr ? row->get<"referred_id">() : fallback;
}

} // namespace

int CQtRotorTables::PhysicalGear(int physical_mode, int gear) const {
    if (physical_mode == -1 || gear == -1)
        return -1;
    return Referred(m_store->Tables().Virtual2PhysGear, {physical_mode, gear}, gear);
}

int CQtRotorTables::Rotor(int physical_mode, int source) const {
    if (physical_mode == -1 || source == -1)
        return -1;
    return Referred(m_store->Tables().OrderSource2Rotor, {source, physical_mode}, source);
}

float CQtRotorTables::BaseOrder(int physical_gear) const {
    auto const* const row = FindRow(m_store->Tables().BaseOrder, physical_gear);
    return row != nullptr ? row->get<"base_order">() : 0.0f;
}

float CQtRotorTables::GearDiameter(int physical_gear) const {
    auto const* const row = FindRow(m_store->Tables().GearDiameter, physical_gear);
    return row != nullptr ? row->get<"diameter">() : 0.0f;
}

bool CQtRotorTables::HasBaseOrder(int physical_gear) const {
    return FindRow(m_store->Tables().BaseOrder, physical_gear) != nullptr;
}

int CQtRotorTables::SpeedSource(int physical_mode, int rotor, bool reference) const {
    QIdx2 const key(physical_mode, rotor);
    if (auto const* const row = FindRow(m_store->Tables().RotorSpeedSource, key))
        return row->get<"referred_id">();
    return reference ? Referred(m_store->Tables().RotorSpeedReference, key, -1) : -1;
}

int CQtRotorTables::SpeedSourceSignal(int speed_source) const {
    return speed_source == -1 ? -1 : Referred(m_store->Tables().SpeedSource, speed_source, -1);
}

int CQtRotorTables::SpeedSourceOfSignal(int signal) const {
    for (auto const& [source, row] : m_store->Tables().SpeedSource)
        if (row.get<"referred_id">() == signal)
            return source[0];
    return -1;
}

double CQtRotorTables::Speed(int physical_mode, int rotor) const {
    QVRotorSpeeds const* const row = SpeedRow(physical_mode, rotor);
    return row != nullptr ? row->get<"ratio">() : 0.0;
}

numeric::CRatio CQtRotorTables::SpeedRatio(int physical_mode, int rotor) const {
    QVRotorSpeeds const* const row = SpeedRow(physical_mode, rotor);
    if (row == nullptr)
        return numeric::CRatio(0.0);
    int const denominator = row->get<"denominator">();
    return denominator == 0 ? numeric::CRatio(row->get<"ratio">())
                            : numeric::CRatio(row->get<"numerator">(), denominator);
}

QVRotorSpeeds const* CQtRotorTables::SpeedRow(int physical_mode, int rotor) const {
    if (rotor == -1)
        return nullptr;
    auto const& speeds = m_store->Tables().RotorSpeed;
    int const gear = PhysicalGear(physical_mode, rotor);
    auto const* const row = FindRow(speeds, {physical_mode, Rotor(physical_mode, gear)});
    return row != nullptr ? row : FindRow(speeds, {physical_mode, Rotor(physical_mode, rotor)});
}
