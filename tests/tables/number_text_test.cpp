#include <paramdb/tables/number_text.h>

#include "reader_cases.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <tests/support/text_lines.h>
#include <vector>

using namespace std::string_literals;
using paramdb::NumberFault;
using paramdb::TakeNumber;
using test_support::Widened;

namespace {

// What one text gives; a fault leaves text and target alone.
template <class T>
struct Told {
    std::string text;
    T value;
    std::string rest;
};

template <class T>
void ExpectSame(T value, T expected) {
    if constexpr (std::numeric_limits<T>::is_iec559) {
        EXPECT_EQ(std::isnan(value), std::isnan(expected));
        EXPECT_EQ(std::signbit(value), std::signbit(expected));
    }
    if (expected == expected) {
        EXPECT_EQ(value, expected);
    }
}

template <class T>
void CheckGood(std::vector<Told<T>> const& cases) {
    for (auto const& [text, value, rest] : cases) {
        SCOPED_TRACE(testing::PrintToString(text));
        T target = 77;
        std::string_view bytes = text;
        EXPECT_EQ(TakeNumber(bytes, target), NumberFault::None);
        ExpectSame(target, value);
        EXPECT_EQ(bytes, rest);

        target = 77;
        std::wstring const wide_text = Widened(text);
        std::wstring_view wide = wide_text;
        EXPECT_EQ(TakeNumber(wide, target), NumberFault::None);
        ExpectSame(target, value);
        EXPECT_EQ(wide, Widened(rest));
    }
}

template <class T>
void CheckFault(NumberFault fault, std::vector<std::string> const& texts) {
    for (std::string const& text : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        T target = 77;
        std::string_view bytes = text;
        EXPECT_EQ(TakeNumber(bytes, target), fault);
        EXPECT_EQ(target, T(77));
        EXPECT_EQ(bytes, text);

        std::wstring const wide_text = Widened(text);
        std::wstring_view wide = wide_text;
        EXPECT_EQ(TakeNumber(wide, target), fault);
        EXPECT_EQ(target, T(77));
        EXPECT_EQ(wide, wide_text);
    }
}

// What is no number of any type.
std::vector<std::string> const NoNumbers{""s,
                                         " "s,
                                         "\t\r\n\v\f "s,
                                         "+"s,
                                         "-"s,
                                         "+-1"s,
                                         "--1"s,
                                         "- 1"s,
                                         "+ 1"s,
                                         "x"s,
                                         "\""s,
                                         "\"1\""s,
                                         ",5"s,
                                         "$1"s,
                                         "\x80"s,
                                         "\xB2"s,
                                         "\0"s,
                                         "\0"
                                         "1"s,
                                         "(1)"s,
                                         "_1"s};

std::vector<std::string> const NoIntegers{".5"s, "-.5"s, "inf"s, "nan"s, "e5"s, "a"s, "-a"s};

template <class T>
std::vector<Told<T>> SmallIntegers() {
    return {
        {"0", 0, ""},
        {"7", 7, ""},
        {"+7", 7, ""},
        {"-0", 0, ""},
        {"+0", 0, ""},
        {"007", 7, ""},
        {std::string(5000, '0') + "12", 12, ""},
        {" 5", 5, ""},
        {"\t\n\v\f\r 5", 5, ""},
        {"\x85\xA0 5", 5, ""},
        {"5 ", 5, " "},
        {"5 6 7", 5, " 6 7"},
        {"5.9", 5, ".9"},
        {"5,9", 5, ",9"},
        {"1.000.000", 1, ".000.000"},
        {"1,000", 1, ",000"},
        {"1e3", 1, "e3"},
        {"0x1F", 0, "x1F"},
        {"5-6", 5, "-6"},
        {"5+6", 5, "+6"},
        {"12abc", 12, "abc"},
        {"1\"a\"", 1, "\"a\""},
        {"3\0"
         "4"s,
         3,
         "\0"
         "4"s},
        {"5\xA0"
         "6",
         5,
         "\xA0"
         "6"},
        {"5\xB2", 5, "\xB2"},
    };
}

} // namespace

void reader_cases::CheckIntegerTexts() {
    CheckGood<std::int32_t>(SmallIntegers<std::int32_t>());
    CheckGood<std::uint32_t>(SmallIntegers<std::uint32_t>());
    CheckGood<std::int64_t>(SmallIntegers<std::int64_t>());
    for (auto const* const texts : {&NoNumbers, &NoIntegers}) {
        CheckFault<std::int32_t>(NumberFault::Invalid, *texts);
        CheckFault<std::uint32_t>(NumberFault::Invalid, *texts);
        CheckFault<std::int64_t>(NumberFault::Invalid, *texts);
    }
}

void reader_cases::CheckFloatTexts() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    CheckGood<double>({
        {"0", 0.0, ""},
        {"-0", -0.0, ""},
        {"1.5", 1.5, ""},
        {"+1.5", 1.5, ""},
        {"-1.5 2.5", -1.5, " 2.5"},
        {"1.5,5", 1.5, ",5"},
        {"1,5", 1.0, ",5"},
        {"1,234.5", 1.0, ",234.5"},
        {"1.234.5", 1.234, ".5"},
        {"1.", 1.0, ""},
        {"1. 5", 1.0, " 5"},
        {".5", 0.5, ""},
        {"-.5e1", -5.0, ""},
        {"1e3", 1000.0, ""},
        {"1E+3", 1000.0, ""},
        {"25e-1", 2.5, ""},
        {"1e", 1.0, "e"},
        {"1e+", 1.0, "e+"},
        {"1e-x", 1.0, "e-x"},
        {"1e 5", 1.0, "e 5"},
        {"1e5.5", 100000.0, ".5"},
        {"1d5", 1.0, "d5"},
        {"1p5", 1.0, "p5"},
        {"0x10", 16.0, ""},
        {"-0X1.8P1", -3.0, ""},
        {"0x.8", 0.5, ""},
        {"0xA.", 10.0, ""},
        {"0xap-1", 5.0, ""},
        {"0x1p", 1.0, "p"},
        {"0x1p+", 1.0, "p+"},
        {"0x1e2", 482.0, ""},
        {"0x", 0.0, "x"},
        {"0x.", 0.0, "x."},
        {"0xg", 0.0, "xg"},
        {"-0xp1", -0.0, "xp1"},
        {"inf", infinity, ""},
        {"-INF", -infinity, ""},
        {"Infinity", infinity, ""},
        {"infinit", infinity, "init"},
        {"infinityx", infinity, "x"},
        {"+iNf 1", infinity, " 1"},
        {"nan", nan, ""},
        {"-NaN", -nan, ""},
        {"nan()", nan, ""},
        {"nan(0x7_f)", nan, ""},
        {"nan(", nan, "("},
        {"nan(a b)", nan, "(a b)"},
        {"nan(-1)", nan, "(-1)"},
        {"nan(a{)", nan, "(a{)"},
        {"nan(a`)", nan, "(a`)"},
        {"nan(zAZ9)x", nan, "x"},
        {"nanx", nan, "x"},
        {"1e-400", 0.0, ""},
        {"-1e-400", -0.0, ""},
        {"4.9406564584124654e-324", 4.9406564584124654e-324, ""},
        {"2.2250738585072011e-308", 2.2250738585072011e-308, ""},
        {"1.7976931348623157e308", 1.7976931348623157e308, ""},
        {"1.79769313486231580e308", 1.7976931348623157e308, ""},
        {"0e999999999999999999999", 0.0, ""},
        {"0.0e-999999999999999999999", 0.0, ""},
        {"1e-999999999999999999999", 0.0, ""},
        {"0x0p999999999999999999999", 0.0, ""},
        {"0x1p-1074", 4.9406564584124654e-324, ""},
        {"0x1p-1076", 0.0, ""},
        {"9007199254740993", 9007199254740992.0, ""},
        {"9007199254740993.0000000000000000000000000001", 9007199254740994.0, ""},
        {"\t\v1.5\xA0", 1.5, "\xA0"},
        {"1\0"
         ".5"s,
         1.0,
         "\0"
         ".5"s},
        {"5\xB2", 5.0, "\xB2"},
        {std::string(3000, '0') + "1.25", 1.25, ""},
        {"0." + std::string(3000, '0') + "125e3000", 0.125, ""},
        {"125" + std::string(3000, '0') + "e-3003", 0.125, ""},
        {"0x" + std::string(3000, '0') + "1.8", 1.5, ""},
        {"0x." + std::string(300, '0') + "8p1200", 0.5, ""},
        {"1." + std::string(3000, '0') + "1", 1.0, ""},
        {"0." + std::string(400, '0') + "1", 0.0, ""},
    });
    CheckGood<float>({
        {"1.5", 1.5F, ""},
        {"1,5", 1.0F, ",5"},
        {"0.1", 0.1F, ""},
        {"-0.0", -0.0F, ""},
        {"16777217", 16777216.0F, ""},
        {"16777217.0000001", 16777218.0F, ""},
        {"3.4028234663852886e38", 3.4028234663852886e38F, ""},
        {"3.4028235e38", 3.4028234663852886e38F, ""},
        {"1.4e-45", 1.4e-45F, ""},
        {"7e-46", 0.0F, ""},
        {"8e-46", 1.4e-45F, ""},
        {"-1e-60", -0.0F, ""},
        {"0x1.fffffep127", 3.4028234663852886e38F, ""},
        {"0x1p-149", 1.4e-45F, ""},
        {"-inf", -std::numeric_limits<float>::infinity(), ""},
        {"nan", std::numeric_limits<float>::quiet_NaN(), ""},
        // Rounding to double on the way would give the neighbour.
        {"1.00000017881393432617187499", 1.00000011920928955078125F, ""},
        {"1.00000017881393432617187501", 1.00000023841857910156250F, ""},
    });
    for (auto const& text : NoNumbers) {
        CheckFault<float>(NumberFault::Invalid, {text});
        CheckFault<double>(NumberFault::Invalid, {text});
    }
    std::vector<std::string> const invalid{".", "-.", "e5", ".e5", "in", "na", "i", "p1", "x1", "+in"};
    CheckFault<double>(NumberFault::Invalid, invalid);
    CheckFault<float>(NumberFault::Invalid, invalid);
    std::vector<std::string> const huge{"1e309",
                                        "-1e309",
                                        "1e400 5",
                                        "1.7976931348623159e308",
                                        "0x1p1024",
                                        "-0x1.fffffffffffff8p1023",
                                        "1e999999999999999999999",
                                        "0x1p999999999999999999999",
                                        "1" + std::string(400, '0'),
                                        "0x1" + std::string(300, '0'),
                                        "0." + std::string(400, '0') + "1e800"};
    CheckFault<double>(NumberFault::OutOfRange, huge);
    CheckFault<float>(NumberFault::OutOfRange, huge);
    CheckFault<float>(NumberFault::OutOfRange,
                      {"3.4028236e38", "-3.4028236e38", "1e39", "0x1p128", "0x1.ffffffp127"});
}

namespace {

TEST(NumberText, Integers) {
    reader_cases::CheckIntegerTexts();
}

TEST(NumberText, FloatingNumbers) {
    reader_cases::CheckFloatTexts();
}

TEST(NumberText, LimitsOfInt) {
    CheckGood<std::int32_t>({
        {"2147483647", 2147483647, ""},
        {"-2147483648", -2147483647 - 1, ""},
        {"-2147483647x", -2147483647, "x"},
        {"+0002147483647", 2147483647, ""},
    });
    CheckFault<std::int32_t>(NumberFault::OutOfRange,
                             {"2147483648", "-2147483649", "4294967295", "4294967296", "9223372036854775808",
                              "18446744073709551615", "18446744073709551616", "-18446744073709551617",
                              "36893488147419103232", std::string(100, '9'), " 2147483648 5",
                              "-" + std::string(10000, '1')});
}

TEST(NumberText, LimitsOfUnsigned) {
    CheckGood<std::uint32_t>({
        {"2147483648", 2147483648U, ""},
        {"4294967295", 4294967295U, ""},
        {"-1", 4294967295U, ""},
        {"-2", 4294967294U, ""},
        {"-2147483648", 2147483648U, ""},
        {"-2147483649", 2147483647U, ""},
        {"-4294967295", 1U, ""},
        {" -1 5", 4294967295U, " 5"},
    });
    CheckFault<std::uint32_t>(NumberFault::OutOfRange,
                              {"4294967296", "-4294967296", "18446744073709551615", "-18446744073709551615",
                               "18446744073709551617", std::string(100, '9')});
}

TEST(NumberText, LimitsOf64Bits) {
    CheckGood<std::int64_t>({
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max(), ""},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min(), ""},
        {"-9223372036854775807", -std::numeric_limits<std::int64_t>::max(), ""},
        {"4294967296", 4294967296, ""},
        {"-4294967297x", -4294967297, "x"},
    });
    CheckFault<std::int64_t>(NumberFault::OutOfRange,
                             {"9223372036854775808", "-9223372036854775809", "18446744073709551615",
                              "18446744073709551616", "-18446744073709551616", "27670116110564327424",
                              std::string(100, '1')});
}

TEST(NumberText, WideCharactersBeyondALatinByte) {
    struct {
        std::wstring text;
        std::wstring rest;
    } const cases[] = {
        {L"\x2003\x3000\x1680 5\x20AC", L"\x20AC"}, // white space of other scripts
        {L"\x2028-5\x0665", L"\x0665"},             // a digit of another script
        {L"5\xFF15", L"\xFF15"},
        {L"5\x0135", L"\x0135"}, // its low byte is a digit
    };
    for (auto const& [text, rest] : cases) {
        std::wstring_view integer = text;
        std::int32_t number = 0;
        EXPECT_EQ(TakeNumber(integer, number), NumberFault::None);
        EXPECT_EQ(std::abs(number), 5);
        EXPECT_EQ(integer, rest);
        std::wstring_view floating = text;
        double value = 0;
        EXPECT_EQ(TakeNumber(floating, value), NumberFault::None);
        EXPECT_EQ(std::fabs(value), 5.0);
        EXPECT_EQ(floating, rest);
    }
    for (wchar_t const* const text : {L"\x0665", L"\xFF15", L"\x0135",
                                      L"\x200B"
                                      L"5",
                                      L"\xFEFF"
                                      L"5"}) {
        std::wstring_view rest = text;
        std::int32_t number = 77;
        double value = 77;
        EXPECT_EQ(TakeNumber(rest, number), NumberFault::Invalid);
        EXPECT_EQ(TakeNumber(rest, value), NumberFault::Invalid);
        EXPECT_EQ(rest, text);
        EXPECT_EQ(number, 77);
        EXPECT_EQ(value, 77.0);
    }
}

} // namespace
