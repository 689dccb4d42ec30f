// The whole difference of two loads, without any wording.
#pragma once

#include "tools/diff/row_difference.h"
#include "tools/diff/snapshot.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// A number or text in front of the tables that is not the same.
struct HeaderDifference {
    std::string_view name; // "major_version", "minor_version", "learn_file", ...
    FieldValue a;          // texts are those of the snapshots
    FieldValue b;
};

struct TableDifference {
    std::size_t place; // of the table in the catalogue, or of the topic
    RowTable const* a;
    RowTable const* b;
    std::vector<RowDifference> rows; // in key order
    DifferenceCounts counts;
};

struct Comparison {
    Snapshot const* a;
    Snapshot const* b;
    std::vector<HeaderDifference> header;
    std::vector<TableDifference> tables;  // those that differ, in the order of the catalogue
    std::vector<TableDifference> answers; // topics that differ, in their order
    bool has_answers;                     // whether both loads are complete

    bool IsEqual() const { return header.empty() && tables.empty(); }
    DifferenceCounts Rows() const;
    // Of the tables that hold limits; the rows are among those of all tables.
    DifferenceCounts Limits() const;
};

// The snapshots must outlive the result.
Comparison Compare(Snapshot const& a, Snapshot const& b);

} // namespace paramdb::tools
