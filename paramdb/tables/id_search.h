// Finds a row by its id in a sorted table of many rows.
//
// Halving looks at a row for each doubling of the number of rows, each somewhere else in memory. Ids are
// mostly spread evenly, so the search begins where the id would then stand and widens from there: one or two
// rows are looked at, and with ids that are spread in any other way twice as many as by halving at most.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace paramdb {

// The place of an id among that many ids that ascend, or their number if it is not there. `id_at` gives the
// id at a place.
template <class IdAt>
std::size_t PlaceOfId(std::size_t size, int id, IdAt const& id_at) {
    if (size == 0)
        return size;
    std::int64_t const above = std::int64_t{id} - id_at(0);
    std::int64_t const width = std::int64_t{id_at(size - 1)} - id_at(0);
    if (above < 0 || above > width)
        return size;
    auto const last = static_cast<std::int64_t>(size - 1);
    if (width == last) // no id is missing
        return static_cast<std::size_t>(above);
    // The nearest place, so that ids that are spread evenly are met whichever way the quotient was rounded.
    double const part = static_cast<double>(above) / static_cast<double>(width);
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): a place beside it does as well
    auto low = static_cast<std::size_t>(part * static_cast<double>(last) + 0.5);
    if (id_at(low) == id)
        return low;

    // The id stands from low on and before high.
    std::size_t high = low + 1;
    for (std::size_t step = 1; id_at(low) > id; step *= 2) {
        high = low;
        low -= std::min(step, low);
    }
    for (std::size_t step = 1; high < size && id_at(high) <= id; step *= 2) {
        low = high;
        high += std::min(step, size - high);
    }
    while (high - low > 1) {
        std::size_t const middle = low + (high - low) / 2;
        (id_at(middle) <= id ? low : high) = middle;
    }
    return id_at(low) == id ? low : size;
}

// The row of an id in a table whose keys are single numbers (a CUniqueVectorMap of QIdx1), or the end.
template <class Table>
typename Table::const_iterator FindById(Table const& table, int id) {
    std::size_t const place =
        PlaceOfId(table.size(), id, [&table](std::size_t row) { return table[row].first[0]; });
    return table.begin() + static_cast<std::ptrdiff_t>(place);
}

} // namespace paramdb
