#include "tools/check/row_lines.h"

#include <string>
#include <unordered_set>

namespace paramdb::tools::check {

void VisitRowLines(CheckedTable const& table,
                   std::function<void(CLakeNode const& line, RowBuffer const& row)> const& visitor) {
    if (table.Section() == nullptr)
        return;
    Silence const silence;
    RowBuffer row(table.Description());
    CLakeNode const& section = *table.Section();
    // With as many rows as lines no key is there twice.
    bool const has_duplicates = section.unnamed_size() != table.RowCount();
    std::unordered_set<std::string> seen;
    std::string packed;
    for (auto line = section.begin_unnamed(); line != section.end_unnamed(); ++line) {
        if (!row.Read((*line)->value_text()))
            continue;
        if (has_duplicates && table.Description().has_unique_keys) {
            PackFields(row.Key(), packed);
            if (!seen.insert(packed).second)
                continue;
        }
        visitor(**line, row);
    }
}

} // namespace paramdb::tools::check
