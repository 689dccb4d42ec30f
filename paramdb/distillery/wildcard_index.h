// Finds the rows whose keys, which may hold wildcards, match a concrete key.
//
// The rows form a search tree. A node asks for one element of the key: a branch for each value that its rows
// have there, and one for those with a wildcard. The element is the one that leaves the fewest rows behind
// each branch, so that a search comes down to a few rows after one or two questions.
#pragma once

#include <paramdb/keys/q_clavis.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace paramdb {

class WildcardIndex {
public:
    // -1 in an element of a pattern matches any value there.
    static constexpr int Wildcard = -1;

    // The patterns of the rows, which are numbered from 0.
    explicit WildcardIndex(std::span<QClavis const> patterns);

    // The numbers of the rows that match the key, ascending. Valid until the next call.
    std::vector<std::size_t> const& Find(QClavis const& key);

private:
    using Elements = std::array<int, QClavis::size()>;

    struct Row {
        Elements pattern;
        std::size_t number;
    };
    // A leaf holds rows; any other node has branches in m_branches.
    struct Node {
        std::size_t element;     // NoElement: a leaf
        std::uint32_t wildcards; // the node of the rows with a wildcard there, 0 for none
        std::uint32_t first_row;
        std::uint32_t last_row;
    };
    // A slot of the hash table of all branches; node 0, which is the root, marks a free one.
    struct Branch {
        std::uint32_t from;
        std::uint32_t to;
        int value;
    };

    static constexpr std::size_t NoElement = QClavis::size();

    std::uint32_t Build(std::span<Row> rows);
    std::size_t BestElement(std::span<Row const> rows) const;
    void AddBranch(Branch const& branch);
    void Place(Branch const& branch);
    std::size_t Slot(std::uint32_t from, int value) const {
        std::uint64_t const key = static_cast<std::uint64_t>(from) << 32 | static_cast<std::uint32_t>(value);
        return static_cast<std::size_t>(key * 0x9E3779B97F4A7C15 >> 32) & (m_branches.size() - 1);
    }
    void Search(std::uint32_t node, Elements const& key);

    std::vector<Row> m_rows;
    std::vector<Node> m_nodes;
    std::vector<Branch> m_branches;
    std::size_t m_branch_count = 0;
    std::vector<std::size_t> m_found;
};

} // namespace paramdb
