// Numbers in the manner of the C library: what is missing is 0, what is too large is a limit.
#include <paramdb/tables/number_text.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <tests/support/extremes.h>

using paramdb::TakeDouble;
using paramdb::TakeLong;

namespace {

constexpr double Endless = std::numeric_limits<double>::infinity();

TEST(NumberTextCStyle, Doubles) {
    struct {
        wchar_t const* text;
        double value;
        wchar_t const* rest;
    } const cases[] = {
        {L"", 0, L""},
        {L"  ", 0, L"  "},
        {L"x5", 0, L"x5"},
        {L" +", 0, L" +"},
        {L"1.5x", 1.5, L"x"},
        {L" -2,5", -2, L",5"},
        {L"1e400;", Endless, L";"},
        {L"-1e400 1", -Endless, L" 1"},
        {L"1e-400", 0, L""},
        {L"inf", Endless, L""},
        {L"\x20AC", 0, L"\x20AC"},
    };
    for (auto const& [text, value, rest] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        std::wstring_view line = text;
        EXPECT_EQ(TakeDouble(line), value);
        EXPECT_EQ(line, rest);
    }
}

TEST(NumberTextCStyle, Longs) {
    struct {
        wchar_t const* text;
        std::int32_t value;
        wchar_t const* rest;
    } const cases[] = {
        {L"", 0, L""},
        {L"\t", 0, L"\t"},
        {L"a1", 0, L"a1"},
        {L" -", 0, L" -"},
        {L"12.5", 12, L".5"},
        {L" +7 8", 7, L" 8"},
        {L"2147483647", Highest, L""},
        {L"2147483648x", Highest, L"x"},
        {L"-2147483648", Lowest, L""},
        {L"-2147483649 ", Lowest, L" "},
        {L"99999999999999999999999", Highest, L""},
        {L"-99999999999999999999999", Lowest, L""},
    };
    for (auto const& [text, value, rest] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        std::wstring_view line = text;
        EXPECT_EQ(TakeLong(line), value);
        EXPECT_EQ(line, rest);
    }
}

TEST(NumberTextCStyle, RandomTextsAsTheCLibraryReadsThem) {
    constexpr std::wstring_view alphabet = L"0123456789012345678999+-..eExXpPaAfFiInN() \tz";
    std::mt19937 random(24);
    for (int round = 0; round < 40000; ++round) {
        std::wstring text;
        for (std::size_t count = random() % 14; count > 0; --count)
            text += alphabet[random() % alphabet.size()];
        SCOPED_TRACE(testing::PrintToString(text));
        wchar_t* end = nullptr;
        double expected = std::wcstod(text.c_str(), &end);
        if (end == text.c_str()) // some make -0 of a sign without a number
            expected = 0;
        std::wstring_view rest = text;
        double const value = TakeDouble(rest);
        ASSERT_EQ(rest.data(), end);
        ASSERT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected)));
        ASSERT_EQ(std::signbit(value), std::signbit(expected));

        long long const wide = std::wcstoll(text.c_str(), &end, 10);
        rest = text;
        ASSERT_EQ(TakeLong(rest), std::clamp<long long>(wide, Lowest, Highest));
        ASSERT_EQ(rest.data(), end);
    }
}

} // namespace
