// Sorting by key without moving rows: the order in which they are to stand.
#pragma once

#include <paramdb/tables/packed_keys.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

namespace paramdb {

// Keys and their positions, to be sorted. A key of integers is copied, so that comparing touches no row; any
// other stays where it is.
template <class Key, class Less>
class SortOrder {
public:
    void Reserve(std::size_t count) { m_keys.reserve(count); }
    // Adds the key of the next position, counted from 0. It must stay valid.
    void Add(Key const& key) { m_keys.push_back(MakeHandle(key)); }

    // Calls the function with the positions in ascending order of their keys. Of several equal keys only the
    // lowest position is shown.
    template <class Function>
    void ForEach(Function const& function) {
        if constexpr (CopiesKeys) {
            if (auto packed = PackKeys(std::span(std::as_const(m_keys))); !packed.empty()) {
                SortPackedKeys(packed);
                ShowFirsts(packed, function, [](PackedKey const& left, PackedKey const& right) {
                    return left.number == right.number;
                });
                return;
            }
        }
        std::vector<Entry> entries;
        entries.reserve(m_keys.size());
        for (Handle const& key : m_keys)
            entries.push_back({key, entries.size()});
        std::sort(entries.begin(), entries.end(), [](Entry const& left, Entry const& right) {
            if (IsLess(left.key, right.key))
                return true;
            return !IsLess(right.key, left.key) && left.position < right.position;
        });
        ShowFirsts(entries, function,
                   [](Entry const& left, Entry const& right) { return !IsLess(left.key, right.key); });
    }

private:
    static constexpr bool CopiesKeys = std::is_same_v<Less, std::less<Key>> && requires(Key const& key) {
        key.elements();
    };

    static auto MakeHandle(Key const& key) {
        if constexpr (CopiesKeys)
            return key.elements();
        else
            return &key;
    }
    using Handle = decltype(MakeHandle(std::declval<Key const&>()));

    struct Entry {
        Handle key;
        std::size_t position;
    };

    static bool IsLess(Handle const& left, Handle const& right) {
        if constexpr (CopiesKeys)
            return left < right;
        else
            return Less()(*left, *right);
    }

    // The first of equal ones each.
    template <class Sorted, class Function, class IsEqual>
    static void ShowFirsts(Sorted& sorted, Function const& function, IsEqual const& is_equal) {
        sorted.erase(std::unique(sorted.begin(), sorted.end(), is_equal), sorted.end());
        // From here on the function may do with the keys what it likes.
        for (auto const& entry : sorted)
            function(entry.position);
    }

    std::vector<Handle> m_keys;
};

} // namespace paramdb
