// The floor of reading a text file: reading its bytes into a buffer and finding the end of every line.
#pragma once

#include <cstddef>
#include <filesystem>

namespace benchmarks {

// The number of line ends in the file, which is read whole into a new buffer.
std::size_t CountLines(std::filesystem::path const& path);

} // namespace benchmarks
