// A door that instruction counting watches: what runs behind it counts, all else does not.
#pragma once

#include <functional>

namespace benchmarks {

// Calls the function. scripts/compare-instructions knows this name.
void CountedWork(std::function<void()> const& work);

} // namespace benchmarks
