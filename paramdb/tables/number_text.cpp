#include <paramdb/storage/white_space.h>
#include <paramdb/tables/number_text.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>
#include <type_traits>

namespace paramdb {
namespace {

template <class Character>
std::size_t SkipWhiteSpace(std::basic_string_view<Character> text) {
    std::size_t position = 0;
    while (position < text.size() && IsWhiteSpace(text[position]))
        ++position;
    return position;
}

// Takes a sign from the position; true for a minus.
template <class Character>
bool TakeSign(std::basic_string_view<Character> text, std::size_t& position) {
    if (position == text.size() || (text[position] != Character('-') && text[position] != Character('+')))
        return false;
    return text[position++] == Character('-');
}

template <class Character>
bool IsDigit(Character character) {
    return character >= Character('0') && character <= Character('9');
}

// A decimal integer at the front of the text.
struct IntegerText {
    std::uint64_t magnitude = 0;
    bool negative = false;
    bool overflow = false;  // of the magnitude
    std::size_t length = 0; // 0: there is none

    template <class Character>
    explicit IntegerText(std::basic_string_view<Character> text) {
        std::size_t position = SkipWhiteSpace(text);
        negative = TakeSign(text, position);
        std::size_t const digits = position;
        for (; position < text.size() && IsDigit(text[position]); ++position) {
            auto const digit = static_cast<std::uint64_t>(text[position] - Character('0'));
            constexpr std::uint64_t safe = std::numeric_limits<std::uint64_t>::max() / 10;
            // At the safe limit itself the last digit could still be too large; no field takes such numbers.
            overflow = overflow || magnitude >= safe;
            magnitude = magnitude * 10 + digit;
        }
        if (position > digits)
            length = position;
    }

    // Whether the number lies in the range of T; an unsigned one may be negated.
    template <class T>
    bool Fits() const {
        std::uint64_t limit = std::numeric_limits<T>::max();
        if (std::is_signed_v<T> && negative)
            ++limit;
        return !overflow && magnitude <= limit;
    }
    template <class T>
    T Value() const {
        return static_cast<T>(negative ? 0 - magnitude : magnitude);
    }
};

template <class T, class Character>
NumberFault TakeInteger(std::basic_string_view<Character>& text, T& target) {
    IntegerText const number(text);
    if (number.length == 0)
        return NumberFault::Invalid;
    if (!number.Fits<T>())
        return NumberFault::OutOfRange;
    target = number.Value<T>();
    text.remove_prefix(number.length);
    return NumberFault::None;
}

// The characters of a floating number behind its sign, narrow, so that the standard conversion can take them.
class FloatText {
public:
    enum class Form { None, Decimal, Hexadecimal, Infinity, NotANumber };

    FloatText(FloatText const&) = delete;
    FloatText& operator=(FloatText const&) = delete;
    template <class Character>
    explicit FloatText(std::basic_string_view<Character> text) {
        char const first = text.empty() ? '\0' : Lower(text[0]);
        if (first == 'i')
            ScanInfinity(text);
        else if (first == 'n' && StartsWith(text, "nan"))
            Set(Form::NotANumber, 3 + PayloadLength(text.substr(3)));
        else if (first == '0' && text.size() > 2 && Lower(text[1]) == 'x' && ScanDigits(text, 2, true))
            m_form = Form::Hexadecimal;
        else if (ScanDigits(text, 0, false))
            m_form = Form::Decimal;
    }

    Form form() const { return m_form; }
    // How many characters of the source belong to the number.
    std::size_t size() const { return m_size; }

    // The value; infinite for a number too large, 0 for one too small.
    template <class T>
    T Value() const {
        switch (m_form) {
        case Form::Infinity:
            return std::numeric_limits<T>::infinity();
        case Form::NotANumber:
            return std::numeric_limits<T>::quiet_NaN();
        default:
            break;
        }
        if (T const exact = ExactValue<T>(); exact != 0)
            return exact;
        T value = 0;
        auto const format = m_form == Form::Hexadecimal ? std::chars_format::hex : std::chars_format::general;
        auto const result =
            std::from_chars(m_digits.data(), m_digits.data() + m_digits.size(), value, format);
        if (result.ec == std::errc::result_out_of_range)
            return m_leading_exponent > 0 ? std::numeric_limits<T>::infinity() : T(0);
        return value;
    }

private:
    // The value of a short decimal: an integer and a power of ten that T holds exactly, so that the one
    // operation on them rounds as the number would. 0 for any other.
    template <class T>
    T ExactValue() const {
        constexpr int powers = std::is_same_v<T, float> ? 10 : 22;
        constexpr std::uint64_t largest = std::uint64_t{1} << std::numeric_limits<T>::digits;
        static constexpr auto power_of_ten = [] {
            std::array<T, powers + 1> table{1};
            for (std::size_t power = 1; power < table.size(); ++power)
                table[power] = table[power - 1] * 10;
            return table;
        }();
        long long const exponent = m_exponent - m_digits_behind_point;
        if (m_form != Form::Decimal || m_mantissa > largest || exponent < -powers || exponent > powers)
            return 0;
        auto const mantissa = static_cast<T>(m_mantissa);
        return exponent < 0 ? mantissa / power_of_ten[static_cast<std::size_t>(-exponent)]
                            : mantissa * power_of_ten[static_cast<std::size_t>(exponent)];
    }

    template <class Character>
    static char Narrow(Character character) {
        return character >= Character(0) && character < Character(0x7F) ? static_cast<char>(character) : '\0';
    }
    template <class Character>
    static char Lower(Character character) {
        char const narrow = Narrow(character);
        return narrow >= 'A' && narrow <= 'Z' ? static_cast<char>(narrow - 'A' + 'a') : narrow;
    }
    template <class Character>
    static bool StartsWith(std::basic_string_view<Character> text, std::string_view word) {
        return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                        [](char a, Character b) { return a == Lower(b); });
    }
    template <class Character>
    void ScanInfinity(std::basic_string_view<Character> text) {
        for (std::string_view const word : {"infinity", "inf"}) {
            if (!StartsWith(text, word))
                continue;
            Set(Form::Infinity, word.size());
            return;
        }
    }
    // The length of a parenthesised tail of letters, digits and underscores.
    template <class Character>
    static std::size_t PayloadLength(std::basic_string_view<Character> text) {
        if (text.empty() || Narrow(text[0]) != '(')
            return 0;
        std::size_t position = 1;
        while (position < text.size() && (IsDigit(text[position]) || Narrow(text[position]) == '_' ||
                                          (Lower(text[position]) >= 'a' && Lower(text[position]) <= 'z')))
            ++position;
        return position < text.size() && Narrow(text[position]) == ')' ? position + 1 : 0;
    }
    void Set(Form form, std::size_t size) {
        m_form = form;
        m_size = size;
    }

    // Digits with an optional point and exponent; false without a digit.
    template <class Character>
    bool ScanDigits(std::basic_string_view<Character> text, std::size_t position, bool hexadecimal) {
        std::size_t const begin = position;
        bool has_digit = false;
        bool has_point = false;
        bool has_value = false; // a digit other than 0 has come
        long long before_point = 0;
        for (; position < text.size(); ++position) {
            char const character = Lower(text[position]);
            if (character == '.' && !has_point) {
                has_point = true;
                continue;
            }
            if (!IsDigit(character) && !(hexadecimal && character >= 'a' && character <= 'f'))
                break;
            has_digit = true;
            has_value = has_value || character != '0';
            if (m_mantissa <= LongestMantissa)
                m_mantissa = m_mantissa * 10 + static_cast<std::uint64_t>(character - '0');
            if (has_point)
                ++m_digits_behind_point;
            if (has_value && !has_point)
                ++before_point;
            else if (!has_value && has_point)
                --before_point;
        }
        if (!has_digit)
            return false;
        m_exponent = ScanExponent(text, position, hexadecimal ? 'p' : 'e');
        m_leading_exponent = before_point * (hexadecimal ? 4 : 1) + m_exponent;
        m_size = position;
        auto const digits = text.substr(begin, position - begin);
        if constexpr (std::is_same_v<Character, char>) {
            m_digits = digits;
        } else {
            m_narrowed.resize(digits.size());
            std::transform(digits.begin(), digits.end(), m_narrowed.begin(),
                           [](Character character) { return static_cast<char>(character); });
            m_digits = m_narrowed;
        }
        return true;
    }

    // An exponent at the position, which moves behind it; saturated, 0 if there is none.
    template <class Character>
    static long long ScanExponent(std::basic_string_view<Character> text, std::size_t& position, char mark) {
        if (position == text.size() || Lower(text[position]) != mark)
            return 0;
        std::size_t next = position + 1;
        bool const negative = TakeSign(text, next);
        if (next == text.size() || !IsDigit(text[next]))
            return 0;
        constexpr long long most = 1'000'000'000'000;
        long long exponent = 0;
        for (; next < text.size() && IsDigit(text[next]); ++next)
            exponent = std::min(exponent * 10 + (text[next] - Character('0')), most);
        position = next;
        return negative ? -exponent : exponent;
    }

    Form m_form = Form::None;
    std::size_t m_size = 0;
    std::string_view m_digits; // in the source, or in the narrowed copy of a wide one
    std::string m_narrowed;
    // A mantissa above this takes no further digits, and is too long for ExactValue.
    static constexpr std::uint64_t LongestMantissa = std::uint64_t{1} << 58;
    std::uint64_t m_mantissa = 0; // of a decimal number, all digits without the point
    long long m_digits_behind_point = 0;
    long long m_exponent = 0;         // the one that is written
    long long m_leading_exponent = 0; // above 0 for numbers of 1 and more, about the power of the first digit
};

// A floating number at the front of the text, infinite where it is too large; the length that it takes, or 0.
template <class T, class Character>
std::size_t ParseFloat(std::basic_string_view<Character> text, T& value, bool& overflow) {
    std::size_t position = SkipWhiteSpace(text);
    bool const negative = TakeSign(text, position);
    FloatText const number(text.substr(position));
    if (number.form() == FloatText::Form::None)
        return 0;
    value = number.Value<T>();
    overflow = std::isinf(value) && number.form() != FloatText::Form::Infinity;
    if (negative)
        value = -value;
    return position + number.size();
}

template <class T, class Character>
NumberFault TakeFloat(std::basic_string_view<Character>& text, T& target) {
    T value = 0;
    bool overflow = false;
    std::size_t const length = ParseFloat(text, value, overflow);
    if (length == 0)
        return NumberFault::Invalid;
    if (overflow)
        return NumberFault::OutOfRange;
    target = value;
    text.remove_prefix(length);
    return NumberFault::None;
}

} // namespace

template <class T, class Character>
NumberFault TakeNumber(std::basic_string_view<Character>& text, T& target) {
    if constexpr (std::is_floating_point_v<T>)
        return TakeFloat(text, target);
    else
        return TakeInteger(text, target);
}

double TakeDouble(std::wstring_view& text) {
    double value = 0;
    bool overflow = false;
    text.remove_prefix(ParseFloat(text, value, overflow));
    return value;
}

std::int32_t TakeLong(std::wstring_view& text) {
    IntegerText const number(text);
    text.remove_prefix(number.length);
    if (number.Fits<std::int32_t>())
        return number.Value<std::int32_t>();
    using Limits = std::numeric_limits<std::int32_t>;
    return number.negative ? Limits::min() : Limits::max();
}

template NumberFault TakeNumber(std::string_view&, std::int32_t&);
template NumberFault TakeNumber(std::string_view&, std::uint32_t&);
template NumberFault TakeNumber(std::string_view&, std::int64_t&);
template NumberFault TakeNumber(std::string_view&, float&);
template NumberFault TakeNumber(std::string_view&, double&);
template NumberFault TakeNumber(std::wstring_view&, std::int32_t&);
template NumberFault TakeNumber(std::wstring_view&, std::uint32_t&);
template NumberFault TakeNumber(std::wstring_view&, std::int64_t&);
template NumberFault TakeNumber(std::wstring_view&, float&);
template NumberFault TakeNumber(std::wstring_view&, double&);

} // namespace paramdb
