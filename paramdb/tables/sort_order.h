// Sorting by position, told once for the tables of all row classes.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace paramdb {

// The positions 0 to count - 1 in ascending order of what `less` compares them by. Of several equal ones only
// the lowest stays.
std::vector<std::size_t>
StableUniqueOrder(std::size_t count, std::function<bool(std::size_t left, std::size_t right)> const& less);

} // namespace paramdb
