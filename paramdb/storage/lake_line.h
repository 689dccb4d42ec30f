// The grammar of one line of a parameter file: key, value and comment.
//
//   key: value        everything behind the first colon is the value
//   value             a row of a table, or a bracket
//   } ; comment       a closing line
//   ; comment
//
// A double quote hides colons and semicolons up to the next one, and is kept as a character of the text.
#pragma once

#include <paramdb/platform/core/export.h>

#include <string_view>

namespace paramdb {

// The three texts of a line, trimmed, as views of the bytes they were split from.
struct LakeLine {
    std::string_view key;
    std::string_view value;
    std::string_view comment;
};

// Splits the line that begins at `begin`, and moves `begin` behind its line end (or to `end`, where the last
// line has none). At least one byte must be left.
PARAMDB_API LakeLine TakeLine(char const*& begin, char const* end);

} // namespace paramdb
