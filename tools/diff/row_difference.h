// What differs between the rows of a table on two sides, A and B.
#pragma once

#include "tools/diff/row_table.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace paramdb::tools {

enum class RowChange { Removed, Added, Changed };

struct RowDifference {
    RowChange change;
    std::size_t row_a;     // of no use for an added row
    std::size_t row_b;     // of no use for a removed row
    std::uint32_t columns; // of a changed row: bit i for column i
};

struct DifferenceCounts {
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t changed = 0;

    std::size_t All() const { return added + removed + changed; }
    DifferenceCounts& operator+=(DifferenceCounts const& other);
};

DifferenceCounts CountsOf(std::vector<RowDifference> const& rows);

// The differences in key order. Both tables have the same columns, 32 at most, and are in key order.
//
// Where a key has several rows on a side, their order does not count: equal rows pair up first. If one row of
// the key is left on both sides then, it has changed; else those left over in A are removed and those in B
// are added.
std::vector<RowDifference> CompareTables(RowTable const& a, RowTable const& b);

} // namespace paramdb::tools
