// The short numbers that nearly every field of a parameter file holds, taken without the care that the others
// need.
//
// A reader that goes through a line character by character waits at each number for its length. So the places
// where fields begin and end are found for many characters at once, and a number of up to eight characters is
// converted as one word.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

// Every 64-bit processor of this kind has it.
#if defined(__SSE2__) || defined(_M_X64)
#define PARAMDB_HAS_SSE2
#include <emmintrin.h>
#endif

namespace paramdb {

// Takes plain numbers from the front of a line: an optional minus, digits and, for a floating number, a point
// among them, between blanks or tabs.
class PlainFields {
public:
    explicit PlainFields(std::string_view line) { SetRest(line); }

    // What is left of the line.
    std::string_view Rest() const { return {m_next, static_cast<std::size_t>(m_end - m_next)}; }
    bool empty() const { return m_next == m_end; }

    // Goes on with another text.
    void SetRest(std::string_view rest) {
        m_next = rest.data();
        m_end = rest.data() + rest.size();
        FindFields();
    }

    // Does what TakeNumber does with the rest if a plain number of a usual length comes next. Otherwise takes
    // nothing; the result is false.
    template <class T>
    bool Take(T& target) {
        if (m_field_ends == 0 && !Refill())
            return false;
        char const* begin = m_window + std::countr_zero(m_field_begins);
        char const* const end = m_window + std::countr_zero(m_field_ends);
        bool const is_negative = *begin == '-';
        begin += is_negative ? 1 : 0;
        std::uint64_t number = 0;
        int decimals = 0;
        if (!(end - begin == 1        ? TakeDigit(*begin, number)
              : std::is_integral_v<T> ? TakeDigits<T>(begin, end, number)
                                      : TakeDecimal(begin, end, number, decimals)))
            return false;
        if constexpr (std::is_integral_v<T>) {
            target = static_cast<T>(is_negative ? 0 - number : number);
        } else {
            // One operation on exact numbers rounds as the text would. Rounding its result once more goes
            // wrong where it lies halfway alone.
            double const value = static_cast<double>(number) / PowersOfTen[decimals];
            if (std::is_same_v<T, float> && IsHalfway(value))
                return false;
            target = static_cast<T>(is_negative ? -value : value);
        }
        m_next = end;
        m_field_begins &= m_field_begins - 1;
        m_field_ends &= m_field_ends - 1;
        return true;
    }

private:
    static constexpr std::ptrdiff_t WindowSize = 64;
    static constexpr std::ptrdiff_t WordSize = 8;
    // All of them are exact.
    static constexpr double PowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

    // A byte in every place of a word.
    static constexpr std::uint64_t Everywhere(char byte) {
        return 0x0101010101010101U * static_cast<unsigned char>(byte);
    }

    // Whether the value lies halfway between two neighbouring floats, as far as a double can tell.
    static bool IsHalfway(double value) {
        constexpr std::uint64_t behind_float = (std::uint64_t{1} << 29) - 1;
        return (std::bit_cast<std::uint64_t>(value) & behind_float) == std::uint64_t{1} << 28;
    }

    // Where blanks are: one bit for each character of the window, and for all behind the end of the line.
    std::uint64_t Blanks() const {
        std::ptrdiff_t const size = m_end - m_window;
        std::uint64_t blanks = 0;
        std::ptrdiff_t place = 0;
#ifdef PARAMDB_HAS_SSE2
        constexpr std::ptrdiff_t step = 16;
        auto const blanks_at = [this](std::ptrdiff_t begin) {
            __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(m_window + begin));
            __m128i const are_blank = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')),
                                                   _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
            return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(are_blank)));
        };
        for (; place < WindowSize && size - place >= step; place += step)
            blanks |= blanks_at(place) << place;
        if (place > 0 && place < WindowSize && place < size) { // the last 16 of the line hold what is left
            blanks |= blanks_at(size - step) >> (place - (size - step)) << place;
            place = size;
        }
#endif
        for (; place < WindowSize && place < size; ++place) {
            bool const is_blank = m_window[place] == ' ' || m_window[place] == '\t';
            blanks |= std::uint64_t{is_blank} << place;
        }
        return size < WindowSize ? blanks | ~std::uint64_t{0} << size : blanks;
    }

    void FindFields() {
        m_window = m_next;
        std::uint64_t const blanks = Blanks();
        m_field_begins = ~blanks & (blanks << 1 | 1);
        m_field_ends = blanks & ~blanks << 1;
    }

    // Moves the window on; false if it holds no whole field.
    bool Refill() {
        if (m_end - m_window < WindowSize || m_next == m_window)
            return false;
        FindFields();
        return m_field_ends != 0;
    }

    // The number that digits make, the first one lowest, zeros in front; each is a byte from 0 to 9.
    static std::uint64_t NumberOf(std::uint64_t digits) {
        constexpr std::uint64_t pairs = 0x000000FF000000FFU;
        digits = digits * 10 + (digits >> 8);
        return ((digits & pairs) * 0x000F424000000064U + ((digits >> 16) & pairs) * 0x0000271000000001U) >>
               32;
    }
    static bool AreDigits(std::uint64_t digits) {
        return (((digits + Everywhere(0x76)) | digits) & Everywhere('\x80')) == 0;
    }

    // Up to eight characters as the last bytes of a word, and zeros before them; false if there are none or
    // more.
    bool TakeWord(char const* begin, char const* end, std::uint64_t& word) const {
        std::ptrdiff_t const size = end - begin;
        if (size < 1 || size > WordSize || std::endian::native != std::endian::little)
            return false;
        auto const before = static_cast<unsigned>(8 * (WordSize - size));
        if (end - m_window >= WordSize) {
            std::memcpy(&word, end - WordSize, WordSize);
            word = word >> before << before;
        } else if (m_end - begin >= WordSize) {
            std::memcpy(&word, begin, WordSize);
            word <<= before;
        } else {
            return false;
        }
        return true;
    }

    // Every other number is this one.
    static bool TakeDigit(char digit, std::uint64_t& number) {
        number = static_cast<unsigned char>(digit - '0');
        return number <= 9;
    }

    template <class T>
    bool TakeDigits(char const* begin, char const* end, std::uint64_t& number) const {
        std::uint64_t above = 0;
        if (sizeof(T) > sizeof(std::uint32_t) && end - begin > WordSize) {
            // The last eight digits are a word of their own.
            if (!TakeDigits<std::uint32_t>(begin, end - WordSize, above))
                return false;
            begin = end - WordSize;
        }
        std::uint64_t word = 0;
        if (!TakeWord(begin, end, word))
            return false;
        std::uint64_t const digits = WithoutZeros(word, end - begin);
        number = above * 100'000'000 + NumberOf(digits);
        return AreDigits(digits);
    }

    bool TakeDecimal(char const* begin, char const* end, std::uint64_t& number, int& decimals) const {
        std::uint64_t word = 0;
        if (!TakeWord(begin, end, word))
            return TakeLongDecimal(begin, end, number, decimals);
        // The highest bit of each byte that is a point; a byte behind the first one may have it by chance.
        std::uint64_t const points = word ^ Everywhere('.');
        std::uint64_t const found = (points - Everywhere(1)) & ~points & Everywhere('\x80');
        std::ptrdiff_t size = end - begin;
        if (found != 0) {
            // What stands before the point moves up by one byte, over it.
            auto const place = static_cast<unsigned>(std::countr_zero(found)) / 8;
            std::uint64_t const before = (std::uint64_t{1} << (8 * place)) - 1;
            std::uint64_t const behind = place == 7 ? 0 : ~std::uint64_t{0} << (8 * place + 8);
            word = (word & behind) | (word & before) << 8;
            decimals = 7 - static_cast<int>(place);
            --size;
        }
        std::uint64_t const digits = WithoutZeros(word, size);
        number = NumberOf(digits);
        return size > 0 && AreDigits(digits);
    }

    // The characters as values, where `size` of them stand at the end of the word.
    static std::uint64_t WithoutZeros(std::uint64_t word, std::ptrdiff_t size) {
        auto const before = static_cast<unsigned>(8 * (WordSize - size)) & 63;
        return word ^ Everywhere('0') >> before << before;
    }

    static bool TakeLongDecimal(char const* begin, char const* end, std::uint64_t& number, int& decimals) {
        constexpr std::ptrdiff_t most_digits = 15; // a double holds each number of that many
        char const* point = end;
        if (end - begin > most_digits + 1)
            return false;
        for (char const* place = begin; place != end; ++place) {
            auto const digit = static_cast<unsigned char>(*place - '0');
            if (digit <= 9)
                number = number * 10 + digit;
            else if (*place == '.' && point == end)
                point = place;
            else
                return false;
        }
        std::ptrdiff_t const digits = end - begin - (point == end ? 0 : 1);
        decimals = point == end ? 0 : static_cast<int>(end - point) - 1;
        return digits > 0 && digits <= most_digits;
    }

    char const* m_next = nullptr; // behind the last field that was taken
    char const* m_end = nullptr;
    char const* m_window = nullptr;   // what the bits below belong to
    std::uint64_t m_field_begins = 0; // of fields that were not taken yet
    std::uint64_t m_field_ends = 0;   // the places behind them
};

} // namespace paramdb
