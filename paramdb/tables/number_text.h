// Numbers at the front of a text: the same ranges, forms and faults on every platform and under every locale.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstdint>
#include <string_view>

namespace paramdb {

enum class NumberFault { None, Invalid, OutOfRange };

// Takes a number from the front of the text, behind leading white space, and cuts what it took. A fault
// leaves text and target as they are.
//
// Integers are decimal with an optional sign. An unsigned one may have a minus: its magnitude is negated in
// 32 bits. Floating numbers are decimal, hexadecimal (0x1.8p3), infinities or NaNs; one too large for its
// type is out of range, one too small becomes 0 or loses digits. T is a 32-bit or signed 64-bit integer,
// float or double; Character is char or wchar_t.
template <class T, class Character>
PARAMDB_API NumberFault TakeNumber(std::basic_string_view<Character>& text, T& target);

// The same in the manner of the C library: without a number nothing is taken and the result is 0; what is too
// large gives an infinity or the limit of 32 bits.
PARAMDB_API double TakeDouble(std::wstring_view& text);
PARAMDB_API std::int32_t TakeLong(std::wstring_view& text);

} // namespace paramdb
