#include <paramdb/distillery/derived_info.h>
#include <paramdb/service/param_store.h>

CQtDerivedInfo::CQtDerivedInfo(CQtParamStore& store)
    : m_store(&store), m_rotor_tables(store), m_spec_intervals(store), m_channels(store),
      m_rotors(store, m_rotor_tables, m_channels), m_modes(store), m_groups(store) {}

bool CQtDerivedInfo::BuildDerivedInfo() {
    m_trigger_ids.clear();
    m_groups.Init();
    m_channels.Build();
    m_spec_intervals.Build(CQtSpecIntervalStore::max_orders);
    m_rotors.BuildRotor2OrderSourcesLookup();
    bool const has_room = m_modes.Build();
    m_trigger_ids = BuildTriggerIdMap(m_store->Tables());
    return has_room;
}

void CQtDerivedInfo::DumpTables(int limit) {
    m_channels.BaseChannels().DumpTable(limit);
    m_spec_intervals.Intervals().DumpTable(limit);
}
