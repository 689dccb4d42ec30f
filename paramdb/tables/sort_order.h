// Sorting by key without moving rows: the order in which they are to stand.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

namespace paramdb {

// Keys and their positions, to be sorted. A key of integers is copied, so that comparing touches no row; any
// other stays where it is.
template <class Key, class Less>
class SortOrder {
public:
    void Reserve(std::size_t count) { m_entries.reserve(count); }
    // Adds the key of the next position, counted from 0. It must stay valid.
    void Add(Key const& key) { m_entries.emplace_back(MakeHandle(key), m_entries.size()); }

    // Calls the function with the positions in ascending order of their keys. Of several equal keys only the
    // lowest position is shown.
    template <class Function>
    void ForEach(Function const& function) {
        std::sort(m_entries.begin(), m_entries.end(), [](Entry const& left, Entry const& right) {
            if (IsLess(left.first, right.first))
                return true;
            return !IsLess(right.first, left.first) && left.second < right.second;
        });
        auto const repeated =
            std::unique(m_entries.begin(), m_entries.end(), [](Entry const& left, Entry const& right) {
                return !IsLess(left.first, right.first);
            });
        m_entries.erase(repeated, m_entries.end());
        // From here on the function may do with the keys what it likes.
        for (Entry const& entry : m_entries)
            function(entry.second);
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
    using Entry = std::pair<Handle, std::size_t>;

    static bool IsLess(Handle const& left, Handle const& right) {
        if constexpr (CopiesKeys)
            return left < right;
        else
            return Less()(*left, *right);
    }

    std::vector<Entry> m_entries;
};

} // namespace paramdb
