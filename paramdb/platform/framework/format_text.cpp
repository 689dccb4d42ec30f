#include <paramdb/platform/framework/format_text.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace paramdb {
namespace {

enum class Size { plain, byte, word, wide64, size, difference };

// One conversion between the percent sign and its type.
struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zeros = false;
    int width = 0;
    int precision = -1; // -1: none
    Size size = Size::plain;
};

// The arguments still to be taken. A struct, since a va_list may be an array and could not be passed on by
// reference.
struct Arguments {
    std::va_list list;
};

// Widths and precisions beyond this are an error in the format, not a wish; the limit keeps them from filling
// the memory.
constexpr int MaximumCount = 1'000'000;

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

int ReadCount(wchar_t const*& format) {
    int count = 0;
    for (; IsDigit(*format); ++format)
        count = std::min(count * 10 + static_cast<int>(*format - L'0'), MaximumCount);
    return count;
}

void ReadFlags(wchar_t const*& format, Conversion& conversion) {
    for (;; ++format) {
        switch (*format) {
        case L'-':
            conversion.left = true;
            break;
        case L'+':
            conversion.plus = true;
            break;
        case L' ':
            conversion.blank = true;
            break;
        case L'#':
            conversion.alternate = true;
            break;
        case L'0':
            conversion.zeros = true;
            break;
        default:
            return;
        }
    }
}

void ReadWidth(wchar_t const*& format, Conversion& conversion, Arguments& arguments) {
    if (*format != L'*') {
        conversion.width = ReadCount(format);
        return;
    }
    ++format;
    int const width = va_arg(arguments.list, int);
    conversion.left = conversion.left || width < 0;
    conversion.width = width < -MaximumCount ? MaximumCount : std::min(std::abs(width), MaximumCount);
}

void ReadPrecision(wchar_t const*& format, Conversion& conversion, Arguments& arguments) {
    if (*format != L'.')
        return;
    ++format;
    if (*format != L'*') {
        conversion.precision = ReadCount(format);
        return;
    }
    ++format;
    conversion.precision = std::clamp(va_arg(arguments.list, int), -1, MaximumCount);
}

void ReadSize(wchar_t const*& format, Conversion& conversion) {
    struct Name {
        std::wstring_view text;
        Size size;
    };
    static constexpr Name Names[] = {
        {L"I64", Size::wide64},   {L"I32", Size::plain}, {L"ll", Size::wide64}, {L"hh", Size::byte},
        {L"l", Size::plain},      {L"h", Size::word},    {L"j", Size::wide64},  {L"z", Size::size},
        {L"t", Size::difference}, {L"w", Size::plain},
    };
    for (Name const& name : Names) {
        std::size_t matched = 0;
        while (matched < name.text.size() && format[matched] == name.text[matched])
            ++matched;
        if (matched == name.text.size()) {
            conversion.size = name.size;
            format += name.text.size();
            return;
        }
    }
}

// Adds prefix (sign or base) and digits, filled up to the width.
void AppendPadded(std::wstring& text, Conversion const& conversion, std::wstring_view prefix,
                  std::wstring_view body, bool zeros) {
    auto const width = static_cast<std::size_t>(conversion.width);
    std::size_t const length = prefix.size() + body.size();
    std::size_t const fill = width > length ? width - length : 0;
    bool const zero_fill = zeros && !conversion.left;
    if (!conversion.left && !zero_fill)
        text.append(fill, L' ');
    text += prefix;
    if (zero_fill)
        text.append(fill, L'0');
    text += body;
    if (conversion.left)
        text.append(fill, L' ');
}

std::wstring_view Sign(Conversion const& conversion, bool negative) {
    return negative ? L"-" : conversion.plus ? L"+" : conversion.blank ? L" " : L"";
}

std::wstring Widen(char const* first, char const* last, bool upper) {
    std::wstring text(first, last);
    if (upper)
        std::transform(text.begin(), text.end(), text.begin(),
                       [](wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c; });
    return text;
}

void AppendInteger(std::wstring& text, Conversion const& conversion, std::uint64_t value,
                   std::wstring_view prefix, int base, bool upper) {
    std::array<char, 32> buffer;
    char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, base).ptr;
    std::wstring digits = Widen(buffer.data(), end, upper);
    if (conversion.precision == 0 && value == 0)
        digits.clear();
    auto const least = static_cast<std::size_t>(std::max(conversion.precision, 0));
    if (digits.size() < least)
        digits.insert(0, least - digits.size(), L'0');
    if (base == 8 && conversion.alternate && (digits.empty() || digits.front() != L'0'))
        digits.insert(0, 1, L'0');
    if (base == 16 && conversion.alternate && value != 0)
        prefix = upper ? L"0X" : L"0x";
    // A precision says how many zeros are wanted, the flag then has no say.
    AppendPadded(text, conversion, prefix, digits, conversion.zeros && conversion.precision < 0);
}

std::int64_t TakeSigned(Size size, Arguments& arguments) {
    switch (size) {
    case Size::wide64:
        return va_arg(arguments.list, long long);
    case Size::size:
    case Size::difference:
        return va_arg(arguments.list, std::ptrdiff_t);
    case Size::byte:
        return static_cast<signed char>(va_arg(arguments.list, int));
    case Size::word:
        return static_cast<short>(va_arg(arguments.list, int));
    case Size::plain:
        break;
    }
    return va_arg(arguments.list, int);
}

std::uint64_t TakeUnsigned(Size size, Arguments& arguments) {
    switch (size) {
    case Size::wide64:
        return va_arg(arguments.list, unsigned long long);
    case Size::size:
    case Size::difference:
        return va_arg(arguments.list, std::size_t);
    case Size::byte:
        return static_cast<unsigned char>(va_arg(arguments.list, unsigned));
    case Size::word:
        return static_cast<unsigned short>(va_arg(arguments.list, unsigned));
    case Size::plain:
        break;
    }
    return va_arg(arguments.list, unsigned);
}

void AppendFloating(std::wstring& text, Conversion const& conversion, double value, wchar_t type) {
    bool const upper = type == L'F' || type == L'E' || type == L'G';
    std::wstring_view const sign = Sign(conversion, std::signbit(value));
    if (!std::isfinite(value)) {
        std::wstring_view const word =
            std::isnan(value) ? (upper ? L"NAN" : L"nan") : (upper ? L"INF" : L"inf");
        AppendPadded(text, conversion, sign, word, false);
        return;
    }
    std::chars_format const form = type == L'f' || type == L'F'   ? std::chars_format::fixed
                                   : type == L'e' || type == L'E' ? std::chars_format::scientific
                                                                  : std::chars_format::general;
    int const precision = conversion.precision < 0 ? 6 : conversion.precision;
    // The largest double has 309 digits before the point.
    std::string buffer(static_cast<std::size_t>(precision) + 350, '\0');
    char* const first = buffer.data();
    char* const last = std::to_chars(first, first + buffer.size(), std::fabs(value), form, precision).ptr;
    AppendPadded(text, conversion, sign, Widen(first, last, upper), conversion.zeros);
}

void AppendText(std::wstring& text, Conversion const& conversion, wchar_t const* argument) {
    if (!argument)
        argument = L"(null)";
    std::size_t length = 0;
    // With a precision the text need not be terminated.
    while ((conversion.precision < 0 || length < static_cast<std::size_t>(conversion.precision)) &&
           argument[length] != L'\0')
        ++length;
    AppendPadded(text, conversion, {}, {argument, length}, false);
}

// Adds what one conversion makes of its argument; false for a type that is unknown.
bool AppendConversion(std::wstring& text, Conversion const& conversion, wchar_t type, Arguments& arguments) {
    switch (type) {
    case L'd':
    case L'i': {
        std::int64_t const value = TakeSigned(conversion.size, arguments);
        auto const magnitude =
            value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
        AppendInteger(text, conversion, magnitude, Sign(conversion, value < 0), 10, false);
        return true;
    }
    case L'u':
        AppendInteger(text, conversion, TakeUnsigned(conversion.size, arguments), {}, 10, false);
        return true;
    case L'o':
        AppendInteger(text, conversion, TakeUnsigned(conversion.size, arguments), {}, 8, false);
        return true;
    case L'x':
    case L'X':
        AppendInteger(text, conversion, TakeUnsigned(conversion.size, arguments), {}, 16, type == L'X');
        return true;
    case L'f':
    case L'F':
    case L'e':
    case L'E':
    case L'g':
    case L'G':
        AppendFloating(text, conversion, va_arg(arguments.list, double), type);
        return true;
    case L's':
        AppendText(text, conversion, va_arg(arguments.list, wchar_t const*));
        return true;
    case L'c': {
        auto const unit = static_cast<wchar_t>(va_arg(arguments.list, int));
        AppendPadded(text, conversion, {}, {&unit, 1}, false);
        return true;
    }
    case L'p': {
        Conversion full = conversion;
        full.precision = static_cast<int>(2 * sizeof(void*));
        full.alternate = false;
        AppendInteger(text, full, reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void*)), {}, 16,
                      true);
        return true;
    }
    case L'%':
        text += L'%';
        return true;
    default:
        return false;
    }
}

} // namespace

std::wstring FormatTextV(wchar_t const* format, std::va_list arguments) {
    std::wstring text;
    if (!format)
        return text;
    Arguments rest;
    va_copy(rest.list, arguments);
    while (*format != L'\0') {
        if (*format != L'%') {
            text += *format++;
            continue;
        }
        wchar_t const* const start = format++;
        Conversion conversion;
        ReadFlags(format, conversion);
        ReadWidth(format, conversion, rest);
        ReadPrecision(format, conversion, rest);
        ReadSize(format, conversion);
        if (!AppendConversion(text, conversion, *format, rest)) {
            text += start;
            break;
        }
        ++format;
    }
    va_end(rest.list);
    return text;
}

} // namespace paramdb
