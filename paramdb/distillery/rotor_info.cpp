#include <paramdb/distillery/rotor_info.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include <limits>

namespace {

constexpr int Highest = std::numeric_limits<int>::max();

// The end of the entries of a rotor, and of a speed source.
CQtRotorInfo::Table::const_iterator EndOf(CQtRotorInfo::Table const& table, int physical_mode, int source,
                                          int rotor) {
    return rotor == Highest ? table.upper_bound({physical_mode, source, Highest, Highest})
                            : table.lower_bound({physical_mode, source, rotor + 1, 0});
}
CQtRotorInfo::Table::const_iterator EndOf(CQtRotorInfo::Table const& table, int physical_mode, int source) {
    return source == Highest ? table.upper_bound({physical_mode, Highest, Highest, Highest})
                             : table.lower_bound({physical_mode, source + 1, 0, 0});
}

} // namespace

void CQtRotorInfo::BuildRotor2OrderSourcesLookup() {
    m_rotor2OrderSources.PurgeTable();
    m_rotor2OrderReferences.PurgeTable();
    int serial = 0;
    for (auto const& [key, row] : m_store->Tables().OrderSource2Rotor) {
        int const order_source = key[0];
        int const physical_mode = key[1];
        int const rotor = row.get<"referred_id">();
        int source = m_tables->SpeedSource(physical_mode, rotor, false);
        bool is_reference = false;
        if (source == -1) {
            source = m_tables->SpeedSource(physical_mode, rotor, true);
            is_reference = source != -1;
        }
        if (!m_tables->HasBaseOrder(m_tables->PhysicalGear(physical_mode, order_source))) {
            CString message;
            message.Format(
                L"CQtRotorInfo::BuildRotor2OrderSourcesLookup(): Parameter database: No base order for "
                L"RotorId %d in PhysMode %d, skipping entry into m_rotor2OrderSources\n",
                rotor, physical_mode);
            PrWin::Output(8, 1, message.GetString());
            continue;
        }
        Table& table = is_reference ? m_rotor2OrderReferences : m_rotor2OrderSources;
        table.try_emplace(QIdx4(physical_mode, source, rotor, serial++), order_source);
    }
}

CQtRotorInfo::Range CQtRotorInfo::OrderSources(int physical_mode, int mode, int channel, int rotor,
                                               bool reference) const {
    Table const& table = reference ? m_rotor2OrderReferences : m_rotor2OrderSources;
    int const source = m_tables->SpeedSource(physical_mode, rotor, reference);
    int const flags = m_channels->Flags(mode, channel);
    if ((flags & CQtChannelInfo::FlagMix) != 0)
        return {table.lower_bound({physical_mode, source, 0, 0}), EndOf(table, physical_mode, source)};
    if ((flags & CQtChannelInfo::FlagSync) != 0)
        return {table.lower_bound({physical_mode, source, rotor, 0}),
                EndOf(table, physical_mode, source, rotor)};
    return {table.end(), table.end()};
}
