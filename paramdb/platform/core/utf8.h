// Conversion between wide text and UTF-8, used only at the edges: files, the terminal, the database, windows.
//
// Wide text holds one UTF-16 code unit in each wchar_t on every platform, also where wchar_t has 32 bits, so
// that lengths, orders and positions are the same everywhere. Both functions are pure and may be called from
// any thread.
#pragma once

#include <paramdb/platform/core/export.h>

#include <string>
#include <string_view>

namespace paramdb {

// Wide text to UTF-8. Surrogate pairs are joined; a single unit above U+FFFF (possible where wchar_t has 32
// bits) is taken as that character. A lone unit U+DC80 to U+DCFF becomes the byte 0x80 to 0xFF it stands for;
// every other lone surrogate, and every unit above U+10FFFF, becomes U+FFFD.
[[nodiscard]] PARAMDB_API std::string ToUtf8(std::wstring_view text);

// UTF-8 to wide text. A byte b that is no part of a well-formed sequence (overlong forms, encoded surrogates
// and characters above U+10FFFF are not) becomes the lone unit U+DC00 + b, so ToUtf8 gives back every input
// byte for byte.
[[nodiscard]] PARAMDB_API std::wstring FromUtf8(std::string_view bytes);

} // namespace paramdb
