// Finds the rows whose keys, which may hold wildcards, match a concrete key.
//
// Rows with wildcards in the same places are kept together, by the hash of the elements that are no
// wildcards. A search asks once for each such arrangement in use, 64 at most, instead of once for each row.
#pragma once

#include <paramdb/keys/q_clavis.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace paramdb {

class WildcardIndex {
public:
    // -1 in an element of a pattern matches any value there.
    static constexpr int Wildcard = -1;

    // Adds the pattern of the next row; rows are numbered from 0.
    void Add(QClavis const& pattern);

    // The numbers of the rows that match the key, ascending. Valid until the next call.
    std::vector<std::size_t> const& Find(QClavis const& key);

private:
    using Elements = std::array<int, 6>;

    struct Entry {
        std::uint64_t hash;
        Elements elements;
        std::size_t row;
    };
    // The patterns with wildcards in the same places: bit i of the mask is set where element i counts.
    struct Group {
        unsigned int mask;
        std::vector<Entry> entries;
        std::vector<std::uint32_t> slots; // a hash table of entry numbers plus 1, 0 for a free slot
    };

    using Products = std::array<std::uint64_t, 6>;

    // A hash is a sum of one product for each element that counts, so that a key needs its products only
    // once.
    static Products MakeProducts(Elements const& elements);
    static std::uint64_t Hash(Products const& products, unsigned int mask) {
        std::uint64_t hash = 0;
        for (std::size_t element = 0; element < products.size(); ++element)
            hash += products[element] & (0 - static_cast<std::uint64_t>(mask >> element & 1));
        return hash ^ hash >> 32;
    }
    static bool Matches(Elements const& pattern, Elements const& key, unsigned int mask);
    static void Insert(Group& group, std::size_t entry);
    static void Grow(Group& group);

    std::vector<Group> m_groups;
    std::size_t m_rows = 0;
    std::vector<std::size_t> m_found;
};

} // namespace paramdb
