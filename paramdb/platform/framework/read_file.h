// Reading files to their end, also those that have none: a device that gives bytes for ever, a pipe whose
// writer does not stop, a file that grows faster than it is read.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cfile.h>

#include <cstdint>
#include <string>

namespace paramdb {

// The most bytes that a file without a known length is read for: 256 MB.
inline constexpr std::uint64_t MostUnforeseenBytes = std::uint64_t{1} << 28;

// The most bytes that may be expected of a file: its length, but never less than MostUnforeseenBytes, since
// pipes and devices have no length and other programs may write on.
[[nodiscard]] PARAMDB_API std::uint64_t MostBytesOf(CFile const& file);

// All bytes from the present position on. Throws CFileException where reading fails, and where there are more
// than MostBytesOf. Waits for whoever writes a pipe, as every reader does.
[[nodiscard]] PARAMDB_API std::string ReadToEnd(CFile& file);

} // namespace paramdb
