#include <paramdb/distillery/wildcard_index.h>

#include <algorithm>
#include <utility>

namespace paramdb {
namespace {

// So many rows are looked at one by one sooner than a node is asked.
constexpr std::size_t FewRows = 4;

bool Matches(std::array<int, QClavis::size()> const& pattern, std::array<int, QClavis::size()> const& key) {
    bool matches = true;
    for (std::size_t element = 0; element < key.size(); ++element)
        matches =
            matches && (pattern[element] == key[element] || pattern[element] == WildcardIndex::Wildcard);
    return matches;
}

} // namespace

WildcardIndex::WildcardIndex(std::span<QClavis const> patterns) : m_branches(16) {
    m_rows.reserve(patterns.size());
    for (QClavis const& pattern : patterns)
        m_rows.push_back({pattern.elements(), m_rows.size()});
    Build(m_rows);
}

std::uint32_t WildcardIndex::Build(std::span<Row> rows) {
    auto const number = static_cast<std::uint32_t>(m_nodes.size());
    std::size_t const element = rows.size() > FewRows ? BestElement(rows) : NoElement;
    auto const first = static_cast<std::uint32_t>(rows.data() - m_rows.data());
    m_nodes.push_back({element, 0, first, first + static_cast<std::uint32_t>(rows.size())});
    if (element == NoElement)
        return number;
    std::ranges::sort(rows, {}, [element](Row const& row) { return row.pattern[element]; });
    for (auto begin = rows.begin(); begin != rows.end();) {
        int const value = begin->pattern[element];
        auto const end =
            std::find_if(begin, rows.end(), [&](Row const& row) { return row.pattern[element] != value; });
        std::uint32_t const child = Build({begin, end});
        if (value == Wildcard)
            m_nodes[number].wildcards = child;
        else
            AddBranch({number, child, value});
        begin = end;
    }
    return number;
}

// The element for which a search is left with the fewest rows, with any value of the rows being as likely;
// none if that is all of them.
std::size_t WildcardIndex::BestElement(std::span<Row const> rows) const {
    std::size_t best = NoElement;
    double best_left = static_cast<double>(rows.size());
    std::vector<int> values;
    for (std::size_t element = 0; element < QClavis::size(); ++element) {
        values.clear();
        for (Row const& row : rows)
            if (row.pattern[element] != Wildcard)
                values.push_back(row.pattern[element]);
        if (values.empty())
            continue;
        std::ranges::sort(values);
        auto const distinct = std::unique(values.begin(), values.end()) - values.begin();
        double const wildcards = static_cast<double>(rows.size() - values.size());
        double const left = wildcards + static_cast<double>(values.size()) / static_cast<double>(distinct);
        if (left < best_left) {
            best = element;
            best_left = left;
        }
    }
    return best;
}

void WildcardIndex::AddBranch(Branch const& branch) {
    if (++m_branch_count * 2 > m_branches.size()) {
        for (Branch const& old : std::exchange(m_branches, std::vector<Branch>(m_branches.size() * 2)))
            if (old.to != 0)
                Place(old);
    }
    Place(branch);
}

void WildcardIndex::Place(Branch const& branch) {
    std::size_t slot = Slot(branch.from, branch.value);
    while (m_branches[slot].to != 0)
        slot = (slot + 1) & (m_branches.size() - 1);
    m_branches[slot] = branch;
}

std::vector<std::size_t> const& WildcardIndex::Find(QClavis const& key) {
    m_found.clear();
    Search(0, key.elements());
    if (m_found.size() > 1)
        std::ranges::sort(m_found);
    return m_found;
}

// No deeper than a key has elements: each element is asked for once on the way.
void WildcardIndex::Search(std::uint32_t number, Elements const& key) {
    Node const& node = m_nodes[number];
    if (node.element == NoElement) {
        for (std::uint32_t row = node.first_row; row != node.last_row; ++row)
            if (Matches(m_rows[row].pattern, key))
                m_found.push_back(m_rows[row].number);
        return;
    }
    if (node.wildcards != 0)
        Search(node.wildcards, key);
    int const value = key[node.element];
    std::size_t slot = Slot(number, value);
    while (m_branches[slot].to != 0 && (m_branches[slot].from != number || m_branches[slot].value != value))
        slot = (slot + 1) & (m_branches.size() - 1);
    if (m_branches[slot].to != 0)
        Search(m_branches[slot].to, key);
}

} // namespace paramdb
