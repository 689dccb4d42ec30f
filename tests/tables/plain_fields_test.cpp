#include <paramdb/tables/number_text.h>
#include <paramdb/tables/plain_fields.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

using paramdb::NumberFault;
using paramdb::PlainFields;

// The bits of a number, so that the zeros differ.
template <class T>
auto Bits(T value) {
    if constexpr (std::is_same_v<T, float>)
        return std::bit_cast<std::uint32_t>(value);
    else if constexpr (std::is_same_v<T, double>)
        return std::bit_cast<std::uint64_t>(value);
    else
        return value;
}

// Whatever is taken must be what the careful reader takes; what is not taken must be left alone.
template <class T>
void ExpectSame(PlainFields& plain, std::size_t& taken) {
    std::string_view const before = plain.Rest();
    std::string_view rest = before;
    T expected = 77;
    NumberFault const fault = paramdb::TakeNumber(rest, expected);
    T value = 77;
    if (plain.Take(value)) {
        ++taken;
        ASSERT_EQ(fault, NumberFault::None) << before;
        ASSERT_EQ(Bits(value), Bits(expected)) << before;
        ASSERT_EQ(plain.Rest().data(), rest.data()) << before;
        ASSERT_EQ(plain.Rest().size(), rest.size()) << before;
        return;
    }
    ASSERT_EQ(Bits(value), Bits(T(77))) << before;
    ASSERT_EQ(plain.Rest().data(), before.data());
    // The reader goes on behind what it has taken in its careful way, or behind the character at fault.
    if (fault != NumberFault::None)
        rest.remove_prefix(std::min<std::size_t>(rest.size(), 1));
    plain.SetRest(rest);
}

std::string RandomNumber(std::mt19937& random) {
    static constexpr char const* odd[] = {"",
                                          "-",
                                          ".",
                                          "-.",
                                          "1.2.3",
                                          "0x1F",
                                          "1e5",
                                          "1e-3",
                                          "inf",
                                          "nan",
                                          "+7",
                                          "16777217",
                                          "16777219.0",
                                          "9007199254740993",
                                          "2147483648",
                                          "4294967295",
                                          "-2147483648",
                                          "99999999",
                                          "100000000",
                                          "999999999",
                                          "1000000000",
                                          "12x",
                                          "\"text\"",
                                          "\xA0"
                                          "5",
                                          "\x0B"
                                          "5",
                                          "1654108300000",
                                          "-0",
                                          "-0.0",
                                          "000000000012"};
    if (random() % 8 == 0)
        return odd[random() % std::size(odd)];
    std::string text = random() % 4 == 0 ? "-" : "";
    for (auto digits = 1 + random() % (random() % 4 == 0 ? 18 : 7); digits > 0; --digits)
        text += static_cast<char>('0' + random() % 10);
    if (random() % 2 == 0)
        text.insert(random() % (text.size() + 1), ".");
    return text;
}

TEST(PlainFields, TakesTheSameAsTheCarefulReader) {
    static constexpr char const* blanks[] = {" ", "\t", "  ", " \t "};
    std::mt19937 random(11);
    std::size_t taken = 0;
    std::size_t fields = 0;
    for (int line = 0; line < 30000; ++line) {
        std::string text = random() % 3 == 0 ? " " : "";
        for (auto count = random() % 20; count > 0; --count)
            text += RandomNumber(random) + (random() % 5 == 0 ? blanks[random() % std::size(blanks)] : " ");
        if (!text.empty() && random() % 2 == 0)
            text.pop_back();
        // A copy of its own size, so that a sanitizer sees what is read behind it.
        std::vector<char> const exact(text.begin(), text.end());
        SCOPED_TRACE("line " + std::to_string(line) + ": '" + text + "'");
        PlainFields plain(std::string_view(exact.data(), exact.size()));
        for (; !plain.empty() && !HasFatalFailure(); ++fields)
            switch (random() % 5) {
            case 0:
                ExpectSame<std::uint32_t>(plain, taken);
                break;
            case 1:
                ExpectSame<std::int64_t>(plain, taken);
                break;
            case 2:
                ExpectSame<float>(plain, taken);
                break;
            case 3:
                ExpectSame<double>(plain, taken);
                break;
            default:
                ExpectSame<std::int32_t>(plain, taken);
            }
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(taken, fields / 3);
}

// Where the nearest double lies in the middle of two floats, the text decides which of them is nearer.
TEST(PlainFields, FloatsBesideTheMiddleOfTwo) {
    std::mt19937 random(13);
    std::size_t taken = 0;
    for (int i = 0; i < 5000; ++i) {
        float const lower = 0.1F + static_cast<float>(random() % 0x800000) / 0x1000000;
        double const middle = (static_cast<double>(lower) + std::nextafter(lower, 1.0F)) / 2;
        char digits[32];
        char const* const end =
            std::to_chars(digits, std::end(digits), middle, std::chars_format::fixed, 15).ptr;
        std::string_view const text(digits + 1,
                                    end); // without the zero in front, which would be a digit too many
        PlainFields plain(text);
        ExpectSame<float>(plain, taken);
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(taken, 3000U);
    EXPECT_LT(taken, 5000U);
}

TEST(PlainFields, TakesTheNumbersOfALongLine) {
    std::string text;
    for (int number = 0; number < 200; ++number)
        text += std::to_string(number * 7919) + '\t';
    PlainFields plain(text);
    for (int number = 0; number < 200; ++number) {
        int value = -1;
        ASSERT_TRUE(plain.Take(value)) << number;
        ASSERT_EQ(value, number * 7919);
    }
    EXPECT_EQ(plain.Rest(), "\t");
}

TEST(PlainFields, LeavesFieldsThatAreTooLongToTheCarefulReader) {
    std::string const text = std::string(80, '1') + " 5";
    PlainFields plain(text);
    int value = -1;
    EXPECT_FALSE(plain.Take(value));
    EXPECT_EQ(plain.Rest(), text);
}

} // namespace
