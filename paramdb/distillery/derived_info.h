// What is derived from the tables once per load, so that queries need not search.
#pragma once

#include <paramdb/distillery/channel_info.h>
#include <paramdb/distillery/grex_info.h>
#include <paramdb/distillery/mode_info.h>
#include <paramdb/distillery/rotor_info.h>
#include <paramdb/distillery/rotor_tables.h>
#include <paramdb/distillery/row_counts.h>
#include <paramdb/distillery/row_names.h>
#include <paramdb/distillery/spec_interval_store.h>
#include <paramdb/distillery/trigger_map.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/system_rows.h>
#include <paramdb/tables/unique_vector_map.h>

class CQtParamStore;

class PARAMDB_API CQtDerivedInfo {
public:
    using CInstrumentCounts = CRowCounts<CDbUniqueMap<QIdx1, QVInstrumentParam>, "instrument">;
    using CChannelTypeCounts = CRowCounts<CDbUniqueMap<QIdx1, QVChannelProperty>, "flags">;

    using CParameterNames = CRowNames<CDbUniqueMap<QIdx1, QVInstrumentParam>>;

    // The store must outlive this object.
    explicit CQtDerivedInfo(CQtParamStore& store);

    // Rebuilds everything from the tables, each structure from empty. False, which ends the load, only if the
    // virtual modes do not fit; everything is built then too.
    bool BuildDerivedInfo();
    // Outputs limit + 1 rows of each derived table at most, or all of them if the limit is 0 (category 8,
    // style 1).
    void DumpTables(int limit);

    CTriggerIdMap const& TriggerIdMap() const { return m_trigger_ids; }
    CQtRotorTables const& RotorTables() const { return m_rotor_tables; }
    CQtSpecIntervalStore const& SpecIntervals() const { return m_spec_intervals; }
    CQtChannelInfo const& ChannelInfo() const { return m_channels; }
    CQtRotorInfo const& RotorInfo() const { return m_rotors; }
    CQtModeInfo& ModeInfo() { return m_modes; }
    CQtModeInfo const& ModeInfo() const { return m_modes; }
    CGrexInfo const& GroupInfo() const { return m_groups; }
    // The instrument parameters of each instrument, and the channels of each type.
    CInstrumentCounts const& InstrumentCounts() const { return m_instrument_counts; }
    CChannelTypeCounts const& ChannelTypeCounts() const { return m_channel_type_counts; }
    // The names of the instrument parameters.
    CParameterNames const& ParameterNames() const { return m_parameter_names; }

private:
    CQtParamStore* m_store;
    CTriggerIdMap m_trigger_ids;
    CQtRotorTables m_rotor_tables;
    CQtSpecIntervalStore m_spec_intervals;
    CQtChannelInfo m_channels;
    CQtRotorInfo m_rotors;
    CQtModeInfo m_modes;
    CGrexInfo m_groups;
    CInstrumentCounts m_instrument_counts;
    CChannelTypeCounts m_channel_type_counts;
    CParameterNames m_parameter_names;
};
