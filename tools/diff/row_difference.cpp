#include "tools/diff/row_difference.h"

#include <algorithm>
#include <numeric>

namespace paramdb::tools {
namespace {

// The rows of one key on one side.
struct Rows {
    std::size_t first;
    std::size_t last; // behind the last one

    std::size_t size() const { return last - first; }
};

class Comparer {
public:
    Comparer(RowTable const& a, RowTable const& b) : m_a(a), m_b(b) {}

    std::vector<RowDifference> Compare() {
        Rows a = RowsFrom(m_a, 0);
        Rows b = RowsFrom(m_b, 0);
        while (a.size() > 0 || b.size() > 0) {
            bool const only_b = a.size() == 0;
            bool const only_a = b.size() == 0;
            auto const order = only_b   ? std::weak_ordering::greater
                               : only_a ? std::weak_ordering::less
                                        : RowTable::CompareKeys(m_a, a.first, m_b, b.first);
            if (order < 0)
                Remove(a.first, a.last);
            else if (order > 0)
                Add(b.first, b.last);
            else if (a.size() == 1 && b.size() == 1)
                Change(a.first, b.first);
            else
                CompareGroups(a, b);
            if (order <= 0)
                a = RowsFrom(m_a, a.last);
            if (order >= 0)
                b = RowsFrom(m_b, b.last);
        }
        return std::move(m_result);
    }

private:
    static Rows RowsFrom(RowTable const& table, std::size_t first) {
        std::size_t last = std::min(first + 1, table.size());
        while (last < table.size() && RowTable::CompareKeys(table, first, table, last) == 0)
            ++last;
        return {first, last};
    }

    void Remove(std::size_t first, std::size_t last) {
        for (; first < last; ++first)
            m_result.push_back({RowChange::Removed, first, 0, 0});
    }
    void Add(std::size_t first, std::size_t last) {
        for (; first < last; ++first)
            m_result.push_back({RowChange::Added, 0, first, 0});
    }
    void Change(std::size_t row_a, std::size_t row_b) {
        std::uint32_t columns = 0;
        for (std::size_t column = m_a.columns().key_columns; column < m_a.columns().columns.size(); ++column)
            if (RowTable::Compare(m_a, row_a, m_b, row_b, column) != 0)
                columns |= std::uint32_t{1} << column;
        if (columns != 0)
            m_result.push_back({RowChange::Changed, row_a, row_b, columns});
    }

    // Rows by their content, then by their place.
    static std::vector<std::size_t> Ordered(RowTable const& table, Rows rows) {
        std::vector<std::size_t> order(rows.size());
        std::iota(order.begin(), order.end(), rows.first);
        std::stable_sort(order.begin(), order.end(), [&table](std::size_t left, std::size_t right) {
            return RowTable::CompareRows(table, left, table, right) < 0;
        });
        return order;
    }

    void CompareGroups(Rows a, Rows b) {
        auto const in_a = Ordered(m_a, a);
        auto const in_b = Ordered(m_b, b);
        std::vector<std::size_t> left_in_a;
        std::vector<std::size_t> left_in_b;
        auto row_a = in_a.begin();
        auto row_b = in_b.begin();
        while (row_a != in_a.end() && row_b != in_b.end()) {
            auto const order = RowTable::CompareRows(m_a, *row_a, m_b, *row_b);
            if (order < 0)
                left_in_a.push_back(*row_a);
            else if (order > 0)
                left_in_b.push_back(*row_b);
            row_a += order <= 0 ? 1 : 0;
            row_b += order >= 0 ? 1 : 0;
        }
        left_in_a.insert(left_in_a.end(), row_a, in_a.end());
        left_in_b.insert(left_in_b.end(), row_b, in_b.end());
        if (left_in_a.size() == 1 && left_in_b.size() == 1) {
            Change(left_in_a.front(), left_in_b.front());
            return;
        }
        for (std::size_t const row : left_in_a)
            Remove(row, row + 1);
        for (std::size_t const row : left_in_b)
            Add(row, row + 1);
    }

    RowTable const& m_a;
    RowTable const& m_b;
    std::vector<RowDifference> m_result;
};

} // namespace

DifferenceCounts& DifferenceCounts::operator+=(DifferenceCounts const& other) {
    added += other.added;
    removed += other.removed;
    changed += other.changed;
    return *this;
}

DifferenceCounts CountsOf(std::vector<RowDifference> const& rows) {
    DifferenceCounts counts;
    for (RowDifference const& row : rows) {
        counts.added += row.change == RowChange::Added ? 1 : 0;
        counts.removed += row.change == RowChange::Removed ? 1 : 0;
        counts.changed += row.change == RowChange::Changed ? 1 : 0;
    }
    return counts;
}

std::vector<RowDifference> CompareTables(RowTable const& a, RowTable const& b) {
    return Comparer(a, b).Compare();
}

} // namespace paramdb::tools
