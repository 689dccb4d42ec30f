// The container of most tables: a vector of key and row, sorted by key, with no key twice.
//
// Tables are filled once and read often, mostly from a source in the order of the keys. A row behind all
// others is appended without a search; one that comes between costs a move of the rows behind it. A table
// that is filled from a source of unknown order therefore uses Filler, which puts everything into order once
// at the end.
#pragma once

#include <paramdb/tables/block_sequence.h>
#include <paramdb/tables/sort_order.h>
#include <paramdb/tables/tl_allocator.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

template <class K, class V, class Less = std::less<K>, class Alloc = std::allocator<std::pair<K, V>>>
class CUniqueVectorMap : private std::vector<std::pair<K, V>, Alloc> {
    using Vector = std::vector<std::pair<K, V>, Alloc>;

public:
    using key_type = K;
    using mapped_type = V;
    using typename Vector::const_iterator;
    using typename Vector::const_reference;
    using typename Vector::const_reverse_iterator;
    using typename Vector::difference_type;
    using typename Vector::iterator;
    using typename Vector::reference;
    using typename Vector::reverse_iterator;
    using typename Vector::size_type;
    using typename Vector::value_type;

    using Vector::at;
    using Vector::back;
    using Vector::begin;
    using Vector::capacity;
    using Vector::cbegin;
    using Vector::cend;
    using Vector::crbegin;
    using Vector::crend;
    using Vector::data;
    using Vector::empty;
    using Vector::end;
    using Vector::front;
    using Vector::max_size;
    using Vector::rbegin;
    using Vector::rend;
    using Vector::reserve;
    using Vector::size;
    using Vector::operator[];

    // Inserts at the place of the key and returns it with true. A key that is there already keeps its row;
    // the result is its place with false.
    std::pair<iterator, bool> insert(value_type const& row) { return Insert(row); }
    std::pair<iterator, bool> insert(value_type&& row) { return Insert(std::move(row)); }

    void clear() {
        ++m_revision;
        Vector::clear();
    }
    // Removes one row or a range of them and returns the place behind.
    iterator erase(const_iterator row) { return erase(row, std::next(row)); }
    iterator erase(const_iterator first, const_iterator last) {
        ++m_revision;
        return Vector::erase(first, last);
    }

    // Whether both hold the same rows.
    friend bool operator==(CUniqueVectorMap const& left, CUniqueVectorMap const& right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end());
    }

    // Another number whenever rows have come or gone, for what is derived from them. Changes within a row do
    // not count.
    std::uint64_t Revision() const { return m_revision; }

    // The row of the key, or the end.
    iterator find(K const& key) { return Find(*this, key); }
    const_iterator find(K const& key) const { return Find(*this, key); }

    // The first row whose key is not less than the key, or the end.
    iterator lower_bound(K const& key) { return LowerBound(*this, key); }
    const_iterator lower_bound(K const& key) const { return LowerBound(*this, key); }

    // Takes rows in any order and has them sorted at Finish, with the same result as inserting them one by
    // one: of several rows with one key the first stays. The map must not be used meanwhile.
    class Filler {
    public:
        explicit Filler(CUniqueVectorMap& map) : m_map(&map) {}
        Filler(Filler const&) = delete;
        Filler& operator=(Filler const&) = delete;
        // Without Finish the map is left empty if its rows are out of order or stand elsewhere.
        ~Filler() {
            if (!m_is_sorted || m_one_by_one)
                m_map->clear();
        }

        void Add(K const& key, V const& row) {
            // A key with a NaN differs from itself: its place depends on the rows before it alone.
            if (key != key && !m_one_by_one) { // NOLINT(misc-redundant-expression)
                Finish();
                m_one_by_one = true;
                for (value_type& old : static_cast<Vector&>(*m_map))
                    m_rows.Insert(m_rows.size(), std::move(old));
            }
            if (m_one_by_one) {
                Insert(key, row);
                return;
            }
            Vector& rows = *m_map;
            if (!rows.empty() && !Less()(rows.back().first, key))
                m_is_sorted = false;
            rows.emplace_back(key, row);
            ++m_map->m_revision;
        }

        // Puts the rows into order.
        void Finish() {
            if (m_one_by_one) {
                Vector& rows = *m_map;
                rows.clear();
                rows.reserve(m_rows.size());
                m_rows.Drain([&rows](value_type&& row) { rows.push_back(std::move(row)); });
                m_one_by_one = false;
            }
            if (m_is_sorted)
                return;
            Vector& rows = *m_map;
            paramdb::SortOrder<K, Less> order;
            order.Reserve(rows.size());
            for (value_type const& row : rows)
                order.Add(row.first);
            Vector sorted;
            sorted.reserve(rows.capacity());
            order.ForEach([&](std::size_t position) { sorted.push_back(std::move(rows[position])); });
            rows.swap(sorted);
            m_is_sorted = true;
        }

    private:
        // As the map itself inserts, the same halves looked at.
        void Insert(K const& key, V const& row) {
            ++m_map->m_revision;
            std::size_t place = m_rows.size();
            if (place > 0 && !Less()(m_rows[place - 1].first, key)) {
                place = 0;
                for (std::size_t count = m_rows.size(); count > 0;) {
                    std::size_t const half = count / 2;
                    bool const is_behind = Less()(m_rows[place + half].first, key);
                    place += is_behind ? half + 1 : 0;
                    count = is_behind ? count - half - 1 : half;
                }
                if (place < m_rows.size() && !Less()(key, m_rows[place].first))
                    return;
            }
            m_rows.Insert(place, value_type(key, row));
        }

        CUniqueVectorMap* m_map;
        bool m_is_sorted = true;
        bool m_one_by_one = false;                 // from the first key on that differs from itself
        paramdb::BlockSequence<value_type> m_rows; // all rows from then on
    };

private:
    template <class Map>
    static auto LowerBound(Map& map, K const& key) {
        return std::lower_bound(map.begin(), map.end(), key, [](value_type const& row, K const& sought) {
            return Less()(row.first, sought);
        });
    }
    template <class Map>
    static auto Find(Map& map, K const& key) {
        auto const bound = LowerBound(map, key);
        return bound != map.end() && !Less()(key, bound->first) ? bound : map.end();
    }
    template <class Value>
    std::pair<iterator, bool> Insert(Value&& row) {
        ++m_revision;
        if (empty() || Less()(back().first, row.first)) {
            Vector::push_back(std::forward<Value>(row));
            return {std::prev(end()), true};
        }
        auto const bound = lower_bound(row.first);
        if (bound != end() && !Less()(row.first, bound->first))
            return {bound, false};
        return {Vector::insert(bound, std::forward<Value>(row)), true};
    }

    std::uint64_t m_revision = 0;
};

template <class K, class V, class Less = std::less<K>>
class CDbUniqueMap : public CUniqueVectorMap<K, V, Less, tl_allocator<std::pair<K, V>>> {};
