// Numbers at the front of random texts, as the C library reads them in its own locale.
#include <paramdb/tables/number_text.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>

using paramdb::NumberFault;
using paramdb::TakeNumber;

namespace {

struct Expected {
    NumberFault fault;
    std::size_t taken;
};

// What the C library's conversion says, in a form that compares by bits.
template <class T>
Expected Reference(std::string const& text, T& value) {
    char* end = nullptr;
    errno = 0;
    if constexpr (std::is_same_v<T, float>) {
        value = std::strtof(text.c_str(), &end);
    } else if constexpr (std::is_same_v<T, double>) {
        value = std::strtod(text.c_str(), &end);
    } else {
        auto const wide = std::strtoll(text.c_str(), &end, 10);
        value = static_cast<T>(wide);
        // 32 bits of an unsigned number take a minus, as its own conversion does for its own width.
        bool const fits = std::is_same_v<T, std::uint32_t>
                              ? wide >= -std::int64_t{4294967295} && wide <= std::int64_t{4294967295}
                              : wide == static_cast<std::int64_t>(value);
        if (!fits)
            errno = ERANGE;
    }
    auto const taken = static_cast<std::size_t>(end - text.c_str());
    if (taken == 0)
        return {NumberFault::Invalid, 0};
    bool out_of_range = errno == ERANGE;
    if constexpr (std::numeric_limits<T>::is_iec559)
        out_of_range = out_of_range && std::isinf(value); // and not merely too small
    return out_of_range ? Expected{NumberFault::OutOfRange, 0} : Expected{NumberFault::None, taken};
}

template <class T>
bool SameBits(T left, T right) {
    if (left != left || right != right)
        return left != left && right != right;
    return std::memcmp(&left, &right, sizeof(T)) == 0;
}

template <class T>
void Compare(std::string const& text) {
    T expected_value = 0;
    auto const [fault, taken] = Reference(text, expected_value);
    if (fault != NumberFault::None)
        expected_value = 77;
    T value = 77;
    std::string_view rest = text;
    ASSERT_EQ(TakeNumber(rest, value), fault) << testing::PrintToString(text);
    ASSERT_EQ(text.size() - rest.size(), taken) << testing::PrintToString(text);
    ASSERT_TRUE(SameBits(value, expected_value)) << testing::PrintToString(text) << ' ' << value;

    std::wstring const wide(text.begin(), text.end());
    std::wstring_view wide_rest = wide;
    T wide_value = 77;
    ASSERT_EQ(TakeNumber(wide_rest, wide_value), fault) << testing::PrintToString(text);
    ASSERT_EQ(wide.size() - wide_rest.size(), taken) << testing::PrintToString(text);
    ASSERT_TRUE(SameBits(value, wide_value)) << testing::PrintToString(text) << ' ' << wide_value;
}

void CompareAll(std::string const& text) {
    Compare<std::int32_t>(text);
    Compare<std::uint32_t>(text);
    Compare<std::int64_t>(text);
    Compare<float>(text);
    Compare<double>(text);
}

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(m_engine()) % limit; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    std::uint64_t Bits() { return m_engine(); }
    std::string Digits(std::size_t most, bool hexadecimal = false) {
        std::string digits;
        bool const plain = OneIn(4); // one digit again and again: limits of rounding
        char const digit = OneIn(2) ? '0' : '9';
        for (std::size_t count = Below(most + 1); count > 0; --count)
            digits += plain ? digit : "0123456789abcdefABCDEF"[Below(hexadecimal ? 22 : 10)];
        return digits;
    }
    std::string Of(std::initializer_list<char const*> choices) {
        return choices.begin()[Below(choices.size())];
    }

private:
    std::mt19937_64 m_engine;
};

constexpr int Rounds = 60000;

TEST(NumberTextRandom, AnyCharacters) {
    constexpr std::string_view alphabet = "0123456789019+-..eExXpPaAfFiInNtTyY()_ \t\n,;\"z";
    Random random(21);
    for (int round = 0; round < Rounds; ++round) {
        std::string text;
        for (std::size_t count = random.Below(12); count > 0; --count)
            text += alphabet[random.Below(alphabet.size())];
        CompareAll(text);
        if (HasFatalFailure())
            return;
    }
}

TEST(NumberTextRandom, NumbersOfEveryForm) {
    Random random(22);
    for (int round = 0; round < Rounds; ++round) {
        bool const hexadecimal = random.OneIn(3);
        std::size_t const most = random.OneIn(30) ? 800 : random.OneIn(3) ? 25 : 6;
        std::string text = random.Of({"", "", "", " ", "\t \n"}) + random.Of({"", "", "+", "-"});
        if (random.OneIn(20)) {
            text += random.Of({"inf", "INFINITY", "nan", "nan(1)", "NaN(_a", "infinit"});
        } else {
            text += hexadecimal ? random.Of({"0x", "0X"}) : "";
            text += random.Digits(most, hexadecimal);
            if (!random.OneIn(3))
                text += "." + random.Digits(most, hexadecimal);
            if (!random.OneIn(3))
                text += random.Of(hexadecimal ? std::initializer_list<char const*>{"p", "P"}
                                              : std::initializer_list<char const*>{"e", "E"}) +
                        random.Of({"", "+", "-", "-"}) + random.Digits(random.OneIn(10) ? 12 : 3);
        }
        text += random.Of({"", "", " ", " 5", "x", ".", "-1", "e"});
        CompareAll(text);
        if (HasFatalFailure())
            return;
    }
}

TEST(NumberTextRandom, FloatsOfAllMagnitudesInAllPrecisions) {
    Random random(23);
    char buffer[512];
    for (int round = 0; round < Rounds; ++round) {
        std::uint64_t const bits = random.Bits();
        double value;
        if (round % 2 == 0) {
            std::memcpy(&value, &bits, sizeof value);
        } else {
            float narrow;
            auto const low = static_cast<std::uint32_t>(bits);
            std::memcpy(&narrow, &low, sizeof narrow);
            // Midway between two floats, and next to it.
            value = static_cast<double>(narrow) +
                    (static_cast<double>(std::nextafter(narrow, 1e38F)) - static_cast<double>(narrow)) / 2;
            if (random.OneIn(2))
                value = std::nextafter(value, random.OneIn(2) ? -1e300 : 1e300);
        }
        char const* const form = std::array{"%.*e", "%.*g", "%.*a"}[random.Below(3)];
        std::snprintf(buffer, sizeof buffer, form, static_cast<int>(random.Below(30)), value);
        Compare<float>(buffer);
        Compare<double>(buffer);
        if (HasFatalFailure())
            return;
    }
}

TEST(NumberTextRandom, IntegersAroundEveryPowerOfTwo) {
    for (unsigned power = 0; power < 64; ++power)
        for (int offset = -2; offset <= 2; ++offset) {
            std::uint64_t const magnitude = (std::uint64_t{1} << power) + static_cast<std::uint64_t>(offset);
            for (char const* const sign : {"", "-", "+"})
                for (char const* const tail : {"", "0", " 1"})
                    CompareAll(sign + std::to_string(magnitude) + tail);
            if (HasFatalFailure())
                return;
        }
}

} // namespace
