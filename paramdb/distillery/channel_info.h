// What channels inherit: for each mode and channel the channel at the end of its line of parents, and the
// flags gathered on the way.
#pragma once

#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/row.h>
#include <paramdb/tables/typed_table.h>
#include <paramdb/tables/unique_tree_map.h>

class CQtParamStore;

// Flags are bits of <TChannelProperty>: 1 synchronous, 2 mix, 4 fixed.
class QVRefFlag : public QVRow<QInt<"base_channel">, QInt<"flags">> {
public:
    using QVRow::QVRow;
};

class PARAMDB_API CQtChannelInfo {
public:
    static constexpr int FlagSync = 1;
    static constexpr int FlagMix = 2;

    // Key: mode, channel.
    using Table = CQParamTypedTable<CUniqueTreeMap<QIdx2, QVRefFlag>>;

    // The store must outlive this object.
    explicit CQtChannelInfo(CQtParamStore const& store) : m_store(&store) {}

    // Walks the parents of every channel in every mode. A line of parents that comes back to a channel ends
    // there and is reported once (category 8, style 3).
    void Build();

    // The parent of a channel in a mode: the row for that mode, else the row for any mode, else -1.
    int Parent(int mode, int channel) const;
    // 0 for a pair without entry.
    int BaseChannel(int mode, int channel) const;
    int Flags(int mode, int channel) const;

    Table& BaseChannels() { return m_base_channels; }
    Table const& BaseChannels() const { return m_base_channels; }

private:
    CQtParamStore const* m_store;
    Table m_base_channels{L"<PiBaseChannelId>"};
};
