#include <paramdb/storage/lake_line.h>
#include <paramdb/storage/white_space.h>

#include <array>
#include <bit>
#include <cstring>

// Every 64-bit processor of this kind has it.
#if defined(__SSE2__) || defined(_M_X64)
#define PARAMDB_HAS_SSE2
#include <emmintrin.h>
#endif

namespace paramdb {
namespace {

constexpr auto IsMark = [] {
    std::array<bool, 256> table{};
    for (char const mark : {'\n', '"', ':', ';'})
        table[static_cast<unsigned char>(mark)] = true;
    return table;
}();

// The first line end, quote, colon or semicolon, or the end.
char const* FindMark(char const* begin, char const* end) {
#ifdef PARAMDB_HAS_SSE2
    for (; end - begin >= 16; begin += 16) {
        __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(begin));
        auto const equals = [bytes](char mark) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(mark)); };
        __m128i const marks =
            _mm_or_si128(_mm_or_si128(equals('\n'), equals('"')), _mm_or_si128(equals(':'), equals(';')));
        if (int const found = _mm_movemask_epi8(marks); found != 0)
            return begin + std::countr_zero(static_cast<unsigned>(found));
    }
#endif
    while (begin != end && !IsMark[static_cast<unsigned char>(*begin)])
        ++begin;
    return begin;
}

char const* FindByte(char const* begin, char const* end, char byte) {
    if (begin == end || *begin == byte)
        return begin;
    auto const found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<char const*>(found) : end;
}

std::string_view Trim(char const* begin, char const* end) {
    while (begin != end && IsWhiteSpace(*begin))
        ++begin;
    while (begin != end && IsWhiteSpace(end[-1]))
        --end;
    return {begin, static_cast<std::size_t>(end - begin)};
}

// The first colon or semicolon outside quotes, or the end of the line.
char const* FindSeparator(char const* begin, char const* end) {
    bool quoted = false;
    for (;; ++begin) {
        begin = FindMark(begin, end);
        if (begin == end || *begin == '\n')
            return begin;
        if (*begin == '"')
            quoted = !quoted;
        else if (!quoted)
            return begin;
    }
}

} // namespace

LakeLine TakeLine(char const*& begin, char const* end) {
    char const* const line = begin;
    char const* const separator = FindSeparator(line, end);
    char const* const line_end = FindByte(separator, end, '\n');
    begin = line_end == end ? end : line_end + 1;

    if (separator != line_end && *separator == ':')
        return {Trim(line, separator), Trim(separator + 1, line_end), {}};
    std::string_view const whole = Trim(line, line_end);
    // A semicolon opens a comment only on a line of nothing else or on a closing line.
    if (separator != line_end && (whole.front() == ';' || whole.front() == '}'))
        return {{}, Trim(line, separator), Trim(separator + 1, line_end)};
    return {{}, whole, {}};
}

} // namespace paramdb
