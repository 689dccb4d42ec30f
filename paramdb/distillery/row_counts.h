// How many rows of a table hold each value of one column.
//
// The counts follow the table: they are made anew by the first question after rows have come or gone. Several
// threads may ask at once while nobody changes the table.
#pragma once

#include <paramdb/tables/row.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_map>

template <class Table, paramdb::ColumnName Column>
class CRowCounts {
public:
    // The table must outlive this object.
    explicit CRowCounts(Table const& table) : m_table(&table) {}

    // The number of rows with that value.
    template <class Value>
    std::size_t Count(Value value) const {
        Update();
        auto const entry = m_counts.find(static_cast<std::int64_t>(value));
        return entry != m_counts.end() ? entry->second : 0;
    }

    // Counts anew if the table has changed since.
    void Update() const {
        std::uint64_t const wanted = m_table->Revision() + 1; // 0 is before the first counting
        if (m_counted.load(std::memory_order_acquire) == wanted)
            return;
        std::lock_guard const lock(m_counting);
        if (m_counted.load(std::memory_order_relaxed) == wanted)
            return;
        m_counts.clear();
        for (auto const& [key, row] : *m_table)
            ++m_counts[static_cast<std::int64_t>(row.template get<Column>())];
        m_counted.store(wanted, std::memory_order_release);
    }

private:
    Table const* m_table;
    mutable std::mutex m_counting;
    mutable std::atomic<std::uint64_t> m_counted{0};
    mutable std::unordered_map<std::int64_t, std::size_t> m_counts;
};
