// Formatting of wide text by a format with conversions, the same on every platform and under every locale.
//
// A conversion is %[flags][width][.precision][size]type, with
//   flags      - + blank 0, and # for o, x and X
//   width      a number or * (an int; below 0 means left-aligned)
//   precision  a number or * (an int; below 0 means none)
//   size       h hh l ll I32 I64 j z t w
//   type       d i u x X o    integers: an int; 64 bits with ll, I64, j; std::size_t with z; ptrdiff_t with t
//              f F e E g G    double; the decimal point is always '.', not finite values are inf and nan
//              s              wide text, whatever the size says; null gives "(null)"
//              c              one unit, passed as int
//              p              an address, in upper case hexadecimal digits of full width
//              %              the percent sign
// A size of l or h means int as well: pass std::int32_t for %ld, never a native long. From a conversion that
// is none of these on, the rest of the format is copied as it stands, since the types of the remaining
// arguments are unknown.
#pragma once

#include <cstdarg>
#include <string>

namespace paramdb {

// The formatted text; a null format gives an empty one. The state of `arguments` afterwards is indeterminate.
// Any thread.
[[nodiscard]] std::wstring FormatTextV(wchar_t const* format, std::va_list arguments);

} // namespace paramdb
