// Finds the rows whose keys, which may hold wildcards, match a concrete key.
//
// The rows form a tree that asks for one element of the key after the other: a node has a child for each
// value that its rows have there, the one for those with a wildcard first. A search follows the value and the
// wildcard, so it stands at several nodes of a depth, until few rows are left, which are looked at one by
// one.
//
// Keys mostly come in order, as they stand in a table, and have their first elements in common with the key
// before. The search goes on from where it stood there: mostly with the few rows that were left.
#pragma once

#include <paramdb/keys/q_clavis.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace paramdb {

class WildcardIndex {
public:
    // -1 in an element of a pattern matches any value there.
    static constexpr int Wildcard = -1;

    // The patterns of the rows, which are numbered from 0.
    explicit WildcardIndex(std::span<QClavis const> patterns);

    // Calls `take` with the number of each row that matches the key, ascending.
    template <class Take>
    void Find(QClavis const& key, Take const& take) {
        Words const words(key.elements());
        if (!words.Agree(m_words, m_prefix))
            SearchAgain(key.elements());
        for (Row const& row : m_left)
            if (words.Agree(row.elements, row.mask))
                take(row.number);
    }

private:
    static constexpr std::size_t Depth = QClavis::size();

    // The elements of a key as they lie in memory, two in a word.
    static_assert(Depth * sizeof(int) == 3 * sizeof(std::uint64_t));
    struct Words {
        std::uint64_t first = 0;
        std::uint64_t second = 0;
        std::uint64_t third = 0;

        Words() = default;
        explicit Words(std::array<int, Depth> const& elements) {
            std::memcpy(&first, &elements[0], sizeof first);
            std::memcpy(&second, &elements[2], sizeof second);
            std::memcpy(&third, &elements[4], sizeof third);
        }
        // Whether both are the same in what the mask selects.
        bool Agree(Words const& other, Words const& mask) const {
            return (((first ^ other.first) & mask.first) | ((second ^ other.second) & mask.second) |
                    ((third ^ other.third) & mask.third)) == 0;
        }
    };

    struct Row {
        Words elements;
        Words mask; // selects the elements without wildcard
        std::size_t number;
    };
    // The elements as unsigned numbers among which the wildcard is the lowest.
    using Branches = std::array<std::uint32_t, Depth>;
    // The nodes of a depth stand together, the children of one behind those of the one before, and those of
    // the next depth follow. The children of a node end where those of the next one begin.
    struct Node {
        std::uint32_t branch; // the value that leads here
        std::uint32_t first_child;
        std::uint32_t first_row;
        std::uint32_t row_count;
    };

    void AddNodes(std::span<Branches const> rows);
    void SearchAgain(std::array<int, Depth> const& key);
    void Search(std::size_t depth);
    std::uint32_t* Follow(std::uint32_t node, std::uint32_t branch, std::uint32_t* reached) const;
    // The nodes at which the search stands: one at depth 0, at most twice as many with each further one.
    std::uint32_t* Reached(std::size_t depth) { return m_reached.data() + (std::size_t{1} << depth) - 1; }

    std::vector<Row> m_rows; // in the order of the tree
    std::vector<Node> m_nodes;

    // The last search.
    std::array<int, Depth> m_key{};
    Words m_words{};         // of the key
    Words m_prefix{};        // selects the elements that were asked for
    std::size_t m_depth = 0; // their number
    std::array<std::uint32_t, (std::size_t{2} << Depth) - 1> m_reached{};
    std::array<std::size_t, Depth + 1> m_reached_count{1};
    std::vector<Row> m_left;
};

} // namespace paramdb
