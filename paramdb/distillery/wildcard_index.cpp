#include <paramdb/distillery/wildcard_index.h>

#include <algorithm>
#include <utility>

namespace paramdb {
namespace {

// So many rows are looked at one by one sooner than a node is asked.
constexpr std::size_t FewRows = 4;

// Values as unsigned numbers among which the wildcard is the lowest.
constexpr std::uint32_t WildcardBranch = 0;
std::uint32_t ToBranch(int value) {
    return static_cast<std::uint32_t>(value) - static_cast<std::uint32_t>(WildcardIndex::Wildcard);
}

} // namespace

WildcardIndex::WildcardIndex(std::span<QClavis const> patterns) {
    std::vector<std::pair<Branches, std::size_t>> rows(patterns.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        std::ranges::transform(patterns[row].elements(), rows[row].first.begin(), ToBranch);
        rows[row].second = row;
    }
    // Rows of a table are in order, unless they hold numbers below the wildcard.
    if (!std::ranges::is_sorted(rows))
        std::ranges::sort(rows);

    std::vector<Branches> branches;
    branches.reserve(rows.size());
    m_rows.reserve(rows.size());
    for (auto const& [row_branches, number] : rows) {
        branches.push_back(row_branches);
        std::array<int, Depth> const& elements = patterns[number].elements();
        std::array<int, Depth> mask;
        std::ranges::transform(elements, mask.begin(), [](int value) { return value == Wildcard ? 0 : -1; });
        m_rows.push_back({Words(elements), Words(mask), number});
    }
    AddNodes(branches);
    Search(0);
}

void WildcardIndex::AddNodes(std::span<Branches const> rows) {
    auto const number = [](std::size_t size) { return static_cast<std::uint32_t>(size); };
    m_nodes.push_back({0, 0, 0, number(rows.size())});
    std::size_t begin = 0; // the nodes of a depth
    for (std::size_t depth = 0; depth < Depth; ++depth) {
        std::size_t const end = m_nodes.size();
        for (std::size_t node = begin; node < end; ++node) {
            m_nodes[node].first_child = number(m_nodes.size());
            std::uint32_t row = m_nodes[node].first_row;
            std::uint32_t const rows_end = row + m_nodes[node].row_count;
            while (row < rows_end) {
                std::uint32_t const first = row;
                std::uint32_t const value = rows[row][depth];
                while (row < rows_end && rows[row][depth] == value)
                    ++row;
                m_nodes.push_back({value, 0, first, row - first});
            }
        }
        begin = end;
    }
    if (!rows.empty())
        m_nodes[begin].first_child = number(m_nodes.size());
}

void WildcardIndex::SearchAgain(std::array<int, Depth> const& key) {
    auto const change = std::ranges::mismatch(m_key, key).in1;
    auto const depth = static_cast<std::size_t>(change - m_key.begin());
    m_key = key;
    m_words = Words(key);
    Search(depth);
}

// Goes on at that depth, where the nodes are known.
void WildcardIndex::Search(std::size_t depth) {
    for (;; ++depth) {
        std::span<std::uint32_t const> const nodes(Reached(depth), m_reached_count[depth]);
        std::size_t rows = 0;
        for (std::uint32_t const node : nodes)
            rows += m_nodes[node].row_count;
        if (rows <= FewRows || depth == Depth)
            break;
        std::uint32_t* reached = Reached(depth + 1);
        for (std::uint32_t const node : nodes)
            reached = Follow(node, ToBranch(m_key[depth]), reached);
        m_reached_count[depth + 1] = static_cast<std::size_t>(reached - Reached(depth + 1));
    }
    if (depth != m_depth) {
        m_depth = depth;
        std::array<int, Depth> prefix{};
        std::fill_n(prefix.begin(), depth, -1);
        m_prefix = Words(prefix);
    }
    m_left.clear();
    for (std::size_t place = 0; place < m_reached_count[depth]; ++place) {
        Node const& node = m_nodes[Reached(depth)[place]];
        for (std::uint32_t row = 0; row < node.row_count; ++row)
            m_left.push_back(m_rows[node.first_row + row]);
    }
    if (m_left.size() > 1)
        std::ranges::sort(m_left, {}, &Row::number);
}

// Writes the children that fit and returns the end of what is written.
std::uint32_t* WildcardIndex::Follow(std::uint32_t node, std::uint32_t branch, std::uint32_t* reached) const {
    constexpr std::uint32_t few = 4;
    std::uint32_t child = m_nodes[node].first_child;
    std::uint32_t count = m_nodes[node + 1].first_child - child;
    if (m_nodes[child].branch == WildcardBranch) {
        *reached++ = child;
        if (branch == WildcardBranch)
            return reached;
    }
    while (count > few) {
        std::uint32_t const half = count / 2;
        child = m_nodes[child + half].branch <= branch ? child + half : child;
        count -= half;
    }
    for (; count > 0; --count, ++child)
        if (m_nodes[child].branch == branch)
            *reached++ = child;
    return reached;
}

} // namespace paramdb
