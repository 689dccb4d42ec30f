// The text of a single value of a lake, such as a file name.
#pragma once

#include <paramdb/platform/core/export.h>

#include <string>
#include <string_view>

namespace paramdb {

// What stands between a leading double quote and the next one, or the end. Without a leading quote, the text
// from its very start, leading blanks included, to the white space behind its first word.
PARAMDB_API std::wstring Unquote(std::wstring_view text);

} // namespace paramdb
