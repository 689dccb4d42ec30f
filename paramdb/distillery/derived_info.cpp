#include <paramdb/distillery/derived_info.h>
#include <paramdb/service/param_store.h>
#include <paramdb/tables/load_progress.h>

CQtDerivedInfo::CQtDerivedInfo(CQtParamStore& store)
    : m_store(&store), m_rotor_tables(store), m_spec_intervals(store), m_channels(store),
      m_rotors(store, m_rotor_tables, m_channels), m_modes(store), m_groups(store),
      m_instrument_counts(store.Tables().InstrumentParam),
      m_channel_type_counts(store.Tables().ChannelProperty),
      m_parameter_names(store.Tables().InstrumentParam) {}

bool CQtDerivedInfo::BuildDerivedInfo() {
    constexpr std::size_t steps = 6;
    paramdb::BeginProgress(L"derive", steps);
    m_trigger_ids.clear();
    m_groups.Init();
    paramdb::AdvanceProgress(1);
    m_channels.Build();
    paramdb::AdvanceProgress(1);
    m_spec_intervals.Build(CQtSpecIntervalStore::max_orders);
    paramdb::AdvanceProgress(1);
    m_rotors.BuildRotor2OrderSourcesLookup();
    paramdb::AdvanceProgress(1);
    bool const has_room = m_modes.Build();
    paramdb::AdvanceProgress(1);
    m_trigger_ids = BuildTriggerIdMap(m_store->Tables());
    m_instrument_counts.Update();
    m_channel_type_counts.Update();
    paramdb::AdvanceProgress(1);
    return has_room;
}

void CQtDerivedInfo::DumpTables(int limit) {
    m_channels.BaseChannels().DumpTable(limit);
    m_spec_intervals.Intervals().DumpTable(limit);
}
