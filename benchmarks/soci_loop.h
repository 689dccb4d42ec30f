// What importing through SOCI alone would cost at least.
#pragma once

#include <filesystem>

namespace benchmarks {

// Reads every value of revision 1 through SOCI's vectors and returns their sum, that of a text being the
// codes of its first and last byte.
double SociLoop(std::filesystem::path const& file);

} // namespace benchmarks
