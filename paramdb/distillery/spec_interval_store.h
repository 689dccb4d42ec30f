// The spectral intervals of the instrument parameters, made from their order definitions once per load.
#pragma once

#include <paramdb/distillery/spec_interval_entry.h>
#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/typed_table.h>

#include <map>
#include <utility>

class CQtParamStore;
class QVIpSvOfSpec;

class PARAMDB_API CQtSpecIntervalStore {
public:
    // The most positions that a definition can have.
    static constexpr unsigned int max_orders = 32;

    // Key: instrument parameter, index of the lower position.
    using Table = CQParamTypedTable<std::map<QIdx2, QVSpecIntervalEntry>>;
    using Range_t = std::pair<Table::const_iterator, Table::const_iterator>;

    // The store must outlive this object.
    explicit CQtSpecIntervalStore(CQtParamStore const& store) : m_store(&store) {}

    // Fills the table from the definitions of spectral values and spectral tracks; residual tracks take no
    // part. Bad, odd and deprecated definitions are reported (category 8) and do no further harm. A request
    // above max_orders is reported and leaves the table empty.
    void Build(unsigned int orders);

    // The entries of an instrument parameter.
    Range_t Entries(unsigned int parameter) const;

    // Parses a definition into min(max, max_orders) positions at most, pairs them and returns how many pairs
    // there are. The pair of positions i - 1 and i stands in out[i], so `out` needs as many elements as there
    // are positions; the others stay as they are. A last odd position is ignored.
    static unsigned int Range(wchar_t const* text, QVSpecIntervalEntry* out, unsigned int max);

    Table& Intervals() { return m_intervals; }
    Table const& Intervals() const { return m_intervals; }

private:
    void ProcessRow(int parameter, QVIpSvOfSpec const& row);
    void ProcessTables(int parameter, wchar_t const* text);

    CQtParamStore const* m_store;
    Table m_intervals{L"<PiSpecIntervalStore>"};
};
