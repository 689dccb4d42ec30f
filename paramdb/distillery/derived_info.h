// What is derived from the tables once per load, so that queries need not search.
#pragma once

#include <paramdb/distillery/channel_info.h>
#include <paramdb/distillery/grex_info.h>
#include <paramdb/distillery/mode_info.h>
#include <paramdb/distillery/rotor_info.h>
#include <paramdb/distillery/rotor_tables.h>
#include <paramdb/distillery/spec_interval_store.h>
#include <paramdb/distillery/trigger_map.h>

class CQtParamStore;

class CQtDerivedInfo {
public:
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

private:
    CQtParamStore* m_store;
    CTriggerIdMap m_trigger_ids;
    CQtRotorTables m_rotor_tables;
    CQtSpecIntervalStore m_spec_intervals;
    CQtChannelInfo m_channels;
    CQtRotorInfo m_rotors;
    CQtModeInfo m_modes;
    CGrexInfo m_groups;
};
