// White space, the same on every platform and under every locale: the parts of a line are trimmed with it and
// the fields of a row are split by it.
#pragma once

#include <array>

namespace paramdb {

// U+0009 to U+000D, U+0020, U+0085, U+00A0, and beyond U+00FF what Unicode calls white space.
constexpr bool IsWhiteSpace(wchar_t character) {
    auto const code = static_cast<unsigned long>(character);
    if (code <= 0xFF)
        return (code >= 0x09 && code <= 0x0D) || code == 0x20 || code == 0x85 || code == 0xA0;
    return code == 0x1680 || (code >= 0x2000 && code <= 0x200A) || code == 0x2028 || code == 0x2029 ||
           code == 0x202F || code == 0x205F || code == 0x3000;
}

namespace detail {
inline constexpr auto WhiteSpaceBytes = [] {
    std::array<bool, 256> table{};
    for (unsigned code = 0; code < table.size(); ++code)
        table[code] = IsWhiteSpace(static_cast<wchar_t>(code));
    return table;
}();
} // namespace detail

// The same for a byte of a parameter file, which stands for the character of its number.
constexpr bool IsWhiteSpace(char byte) {
    return detail::WhiteSpaceBytes[static_cast<unsigned char>(byte)];
}

} // namespace paramdb
