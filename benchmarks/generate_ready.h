// Rows that fit together, so that everything can be derived from them without a fault: lines of parents
// without circles, polygons judged by wildcards without ambiguity, a grid of virtual modes that has room.
#pragma once

#include "generate.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace benchmarks {

// As GenerateRows, in the order of the keys. Of a million rows 387,000 are concrete keys and 3,086 rows with
// wildcards; there are a thousand modes and a thousand channels.
std::vector<TableRows> GenerateReadyRows(std::size_t rows, std::uint64_t seed = 1);

} // namespace benchmarks
