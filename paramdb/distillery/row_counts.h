// How many rows of a table hold each value of one column.
//
// The counts follow the table: they are made anew by the first question after rows have come or gone. Several
// threads may ask at once while nobody changes the table.
#pragma once

#include <paramdb/tables/row.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

template <class Table, paramdb::ColumnName Column>
class CRowCounts {
public:
    // The table must outlive this object.
    explicit CRowCounts(Table const& table) : m_table(&table) {}

    // The number of rows with that value.
    template <class Value>
    std::size_t Count(Value value) const {
        Update();
        return m_places.empty() ? 0 : m_places[PlaceOf(static_cast<std::int64_t>(value))].count;
    }

    // Counts anew if the table has changed since.
    void Update() const {
        std::uint64_t const wanted = m_table->Revision() + 1; // 0 is before the first counting
        if (m_counted.load(std::memory_order_acquire) == wanted)
            return;
        std::lock_guard const lock(m_counting);
        if (m_counted.load(std::memory_order_relaxed) == wanted)
            return;
        m_places.clear();
        m_values = 0;
        for (auto const& [key, row] : *m_table)
            Add(static_cast<std::int64_t>(row.template get<Column>()), 1);
        m_counted.store(wanted, std::memory_order_release);
    }

private:
    // A value stands at the place that its hash gives, or the first free one behind.
    struct Place {
        std::int64_t value = 0;
        std::size_t count = 0; // 0: free
    };

    // The place of the value, or the free one where it belongs.
    std::size_t PlaceOf(std::int64_t value) const {
        auto place =
            static_cast<std::size_t>(static_cast<std::uint64_t>(value) * 0x9E3779B97F4A7C15 >> m_shift);
        while (m_places[place].count != 0 && m_places[place].value != value)
            place = place + 1 < m_places.size() ? place + 1 : 0;
        return place;
    }
    void Add(std::int64_t value, std::size_t count) const {
        if (m_values * 4 >= m_places.size())
            Grow();
        Place& place = m_places[PlaceOf(value)];
        m_values += place.count == 0 ? 1 : 0;
        place = {value, place.count + count};
    }
    // At most one place of four is taken, so that few values meet.
    void Grow() const {
        std::vector<Place> const old =
            std::exchange(m_places, std::vector<Place>(std::max<std::size_t>(16, m_places.size() * 2)));
        m_shift = std::countl_zero(std::uint64_t{m_places.size()}) + 1;
        for (Place const& place : old)
            if (place.count != 0)
                m_places[PlaceOf(place.value)] = place;
    }

    Table const* m_table;
    mutable std::mutex m_counting;
    mutable std::atomic<std::uint64_t> m_counted{0};
    mutable std::vector<Place> m_places; // their number is a power of two
    mutable std::size_t m_values = 0;
    mutable int m_shift = 64; // leaves of a hash as many bits as a place has
};
