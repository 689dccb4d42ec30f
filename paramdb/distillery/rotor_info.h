// Which order sources belong to a rotor and its speed source, listed once per load.
#pragma once

#include <paramdb/distillery/channel_info.h>
#include <paramdb/distillery/rotor_tables.h>
#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/system_rows.h>
#include <paramdb/tables/typed_table.h>
#include <paramdb/tables/unique_tree_map.h>

#include <utility>

class PARAMDB_API CQtRotorInfo {
public:
    // Key: physical mode, speed source, rotor, serial number; value: order source. The serial numbers count
    // the entries of both tables together.
    using Table = CQParamTypedTable<CUniqueTreeMap<QIdx4, QVRefIdx>>;
    using Range = std::pair<Table::const_iterator, Table::const_iterator>;

    // All must outlive this object.
    CQtRotorInfo(CQtParamStore const& store, CQtRotorTables const& tables, CQtChannelInfo const& channels)
        : m_store(&store), m_tables(&tables), m_channels(&channels) {}

    // Lists the rows of <TOrderSource2Rotor>. One whose gear has no base order is left out and reported
    // (category 8, style 1).
    void BuildRotor2OrderSourcesLookup();

    // The order sources that a channel follows: those of the rotor in a synchronous one, those of all rotors
    // of its speed source in a mixed one, none in any other.
    Range OrderSources(int physical_mode, int mode, int channel, int rotor, bool reference) const;

    Table const& Rotor2OrderSources() const { return m_rotor2OrderSources; }
    Table const& Rotor2OrderReferences() const { return m_rotor2OrderReferences; }

private:
    CQtParamStore const* m_store;
    CQtRotorTables const* m_tables;
    CQtChannelInfo const* m_channels;
    Table m_rotor2OrderSources{L"<PiRotor2OrderSources>"};
    Table m_rotor2OrderReferences{L"<PiRotor2OrderReferences>"};
};
