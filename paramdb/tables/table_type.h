// Copying into text buffers of fixed size.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstddef>

namespace TableType {

// Copies the text into a buffer of `length` characters, the end included. What does not fit is cut and
// reported (category 1, style 1). True only for a whole copy; false also without a buffer or a text, where
// nothing is copied.
PARAMDB_API bool strcopy(wchar_t* destination, wchar_t const* source, std::size_t length);

} // namespace TableType
