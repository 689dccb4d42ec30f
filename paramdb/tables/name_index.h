// Finds ids by name and names by id: hash tables that lie flat in memory, and an array for low ids.
//
// A lookup costs one place of a table, and for a name one comparison of texts, whatever the number of rows.
// A tree asks a row for each doubling of their number, and each of them may be anywhere in memory.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace paramdb {

class PARAMDB_API NameIndex {
public:
    // Adds a row. The id must be new; of several rows with one name the first is found. The name ends with a
    // zero behind its last character, holds none before, and must stay where it is.
    void Add(int id, std::wstring_view name);
    // Forgets all rows; the memory stays for the next ones.
    void Clear();

    // The id of a name, which ends as above, or -1.
    int Id(std::wstring_view name) const;
    // The name of an id, or null.
    wchar_t const* Name(int id) const;
    // The same with its length, which for low ids is kept; the data are null if there is none.
    std::wstring_view NameText(int id) const;

private:
    // A row. It stands at the place that its hash gives, or the first free one behind.
    struct Place {
        wchar_t const* name = nullptr; // null: free
        std::uint32_t hash = 0;
        int id = 0;
    };

    // At most four of five places are taken: a search ends soon, and the table stays in the cache for long.
    class Table {
    public:
        // The row with that hash that fits, or the free place that ends the search. The table must not be
        // empty.
        template <class Fits>
        Place const& Find(std::uint32_t hash, Fits const& fits) const;
        // Adds a row that is not there.
        void Add(Place const& row);
        void Clear();
        bool IsEmpty() const { return m_count == 0; }

    private:
        void Grow();
        // The top bits of the hash.
        std::size_t First(std::uint32_t hash) const { return hash >> m_shift; }
        std::size_t Next(std::size_t place) const { return place + 1 < m_places.size() ? place + 1 : 0; }
        void Insert(Place const& row);

        std::vector<Place> m_places; // their number is a power of two
        std::size_t m_count = 0;
        int m_shift = 32;
    };

    static constexpr std::uint8_t MeasuredLength = 255;

    Place const* Find(std::wstring_view name, std::uint32_t hash) const;

    std::size_t m_rows = 0;
    Table m_names;
    // Names by id, null where there is none. Most ids are near 0 and stand here, all others in m_ids.
    std::vector<wchar_t const*> m_low_ids;
    std::vector<std::uint8_t> m_low_lengths; // MeasuredLength: too long to be kept
    Table m_ids;
};

} // namespace paramdb
