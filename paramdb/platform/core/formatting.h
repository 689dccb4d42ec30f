// Text from the narrow code page of the host system, such as the texts of exceptions.
#pragma once

#include <paramdb/platform/core/export.h>

#include <string>
#include <string_view>

namespace Formatting {

// Text in code page 1252 as wide text, one unit for each byte. The five bytes that the code page leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) give the control character of the same number. Pure, for any
// thread.
[[nodiscard]] PARAMDB_API std::wstring ansi2unicode(std::string_view text);

} // namespace Formatting
