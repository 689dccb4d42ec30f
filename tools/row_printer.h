// Printing rows with the names of their columns.
//
// Numbers have the shortest form from which the same number can be read again; what is no number or infinite
// is nan, inf or -inf. As text the columns are aligned, with a bar between key and row. JSON is an array with
// one object for each row, in which nan and infinities are texts. CSV begins with the column names, has lines
// that end with CR LF, and quotes where it must.
//
// With origins, each row is followed by the place it was read from: FILE:LINE as text, "origin": {"file",
// "line"} or null in JSON, two columns in CSV.
#pragma once

#include "tools/key_pattern.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace paramdb::tools {

enum class RowFormat { Text, Json, Csv };

// Where a row was read from; none for a row that was not read but made.
struct RowOrigin {
    std::string file; // as it was given
    std::size_t line; // from 1
};
// The origin of the row at that place in key order.
using RowOriginOf = std::function<std::optional<RowOrigin>(std::size_t row)>;

// Prints the rows whose keys match, in key order, and returns how many they are. Without any, JSON has an
// empty array, CSV the column names, and text nothing.
std::size_t PrintRows(std::ostream& out, TableDescription const& table, CQParamTableRows const& rows,
                      KeyPattern const& pattern, RowFormat format, RowOriginOf const& origin = {});

} // namespace paramdb::tools
