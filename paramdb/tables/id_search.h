// Finds a row by its id in a sorted table of many rows.
//
// Halving looks at a row for each doubling of the number of rows, each somewhere else in memory. Ids are
// mostly spread evenly, so the search begins where the id would then stand and widens from there: one or two
// rows are looked at, and with ids that are spread in any other way twice as many as by halving at most.
#pragma once

#include <algorithm>
#include <cstddef>

namespace paramdb {

// The row of an id in a table whose keys are single numbers (a CUniqueVectorMap of QIdx1), or the end.
template <class Table>
typename Table::const_iterator FindById(Table const& table, int id) {
    auto const id_at = [&table](std::size_t place) { return table[place].first[0]; };
    if (table.empty() || id < id_at(0) || id > id_at(table.size() - 1))
        return table.end();
    double const first = id_at(0);
    double const width = id_at(table.size() - 1) - first;
    double const part = width > 0 ? (id - first) / width : 0.0;

    // The row lies from low on and before high.
    auto low = static_cast<std::size_t>(part * static_cast<double>(table.size() - 1));
    std::size_t high = low + 1;
    for (std::size_t step = 1; id_at(low) > id; step *= 2) {
        high = low;
        low -= std::min(step, low);
    }
    for (std::size_t step = 1; high < table.size() && id_at(high) <= id; step *= 2) {
        low = high;
        high += std::min(step, table.size() - high);
    }
    auto const end = table.begin() + static_cast<std::ptrdiff_t>(high);
    auto const row = std::lower_bound(table.begin() + static_cast<std::ptrdiff_t>(low), end, id,
                                      [](auto const& entry, int sought) { return entry.first[0] < sought; });
    return row != end && row->first[0] == id ? row : table.end();
}

} // namespace paramdb
