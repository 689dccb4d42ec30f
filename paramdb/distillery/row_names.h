// The names in the rows of a table once more, close together, for texts that show many of them.
//
// A row is wide and its name lies somewhere else in memory; with some thousand rows both have left the cache
// when they are asked for again. Here an id takes eight bytes and a name its characters.
//
// The names follow the table: they are copied by the first question and by the first one after rows have come
// or gone. Several threads may ask at once while nobody changes the table.
#pragma once

#include <paramdb/tables/id_search.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string_view>
#include <vector>

// The keys of the table are single ids; its rows have a column "name".
template <class Table>
class CRowNames {
public:
    // The table must outlive this object.
    explicit CRowNames(Table const& table) : m_table(&table) {}

    // The name in the row of that id, empty without a row. Valid until the next question after a change.
    std::wstring_view Name(int id) const {
        Update();
        std::size_t const place =
            paramdb::PlaceOfId(m_rows.size() - 1, id, [this](std::size_t row) { return m_rows[row].id; });
        if (place == m_rows.size() - 1)
            return {};
        std::size_t const begin = m_rows[place].begin;
        return {m_units.data() + begin, m_rows[place + 1].begin - begin};
    }

private:
    struct Row {
        int id;
        std::uint32_t begin; // of the name in m_units; it ends where the next one begins
    };

    void Update() const {
        std::uint64_t const wanted = m_table->Revision() + 1; // 0 is before the first copy
        if (m_copied.load(std::memory_order_acquire) != wanted)
            Copy(wanted);
    }
    void Copy(std::uint64_t wanted) const {
        std::lock_guard const lock(m_copying);
        if (m_copied.load(std::memory_order_relaxed) == wanted)
            return;
        std::size_t units = 0;
        for (auto const& [key, row] : *m_table)
            units += row.template get<"name">().view().size();
        m_rows.clear();
        m_units.clear();
        m_rows.reserve(m_table->size() + 1);
        m_units.reserve(units);
        for (auto const& [key, row] : *m_table) {
            std::wstring_view const name = row.template get<"name">().view();
            m_rows.push_back({key[0], static_cast<std::uint32_t>(m_units.size())});
            m_units.insert(m_units.end(), name.begin(), name.end());
        }
        m_rows.push_back({0, static_cast<std::uint32_t>(m_units.size())});
        m_copied.store(wanted, std::memory_order_release);
    }

    Table const* m_table;
    mutable std::mutex m_copying;
    mutable std::atomic<std::uint64_t> m_copied{0};
    mutable std::vector<Row> m_rows; // and the end of the last name
    mutable std::vector<wchar_t> m_units;
};
