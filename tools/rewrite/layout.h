// The canonical layout of a lake file.
//
//   <TMode>: {
//           1 Idle
//           2 "Warm up"
//   } ; the modes
//
// - A line begins with one tab for each section it stands in, and ends without white space.
// - A key has its colon right behind it and one blank before the value, a comment one blank behind its
//   semicolon, a closing line one blank on either side of it.
// - The fields of a row of a table have one blank between them, and a text has quotes where it needs them:
//   where it is empty, holds white space or one of : ; { }. Numbers stay as they are written.
// - All lines end as most of them did before; a file without a line end gets that of the platform.
//
// Order, comments and blank lines stay, and so do, but for their indent, rows that cannot be read, values of
// keys, and rows of sections that are no table, of whose fields nothing is known. What stands behind a
// closing line of the top level is not read by anyone and stays byte for byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace paramdb::tools {

// Sections deeper than this have no layout: a tab for each level of each line would take more than the file
// itself, a million levels a terabyte.
inline constexpr std::size_t MostLevels = 100;

// Whether the file has a canonical layout.
bool HasLayout(std::string_view bytes);

// The file in its canonical layout, which it must have. The same for a text that is in it already.
std::string CanonicalLayout(std::string_view bytes);

// Whether a text reads as another one that differs from it in layout alone: the same lines, but for the
// values of rows of tables, which must load as the same rows with the same messages.
bool IsSameButForLayout(std::string_view bytes, std::string_view other);

// The number of lines of the text that are not the same in the other one, which has as many.
std::size_t CountChangedLines(std::string_view bytes, std::string_view other);

} // namespace paramdb::tools
