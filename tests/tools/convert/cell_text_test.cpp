#include "tools/convert/cell_text.h"
#include "tools/rewrite/row_fields.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace paramdb::tools;
using ParamDb::cell_t;
using paramdb::FieldType;

TEST(CellTextTest, NumbersAreAsShortAsTheyCanBe) {
    struct Case {
        cell_t cell;
        std::string text;
    };
    double const nan = std::numeric_limits<double>::quiet_NaN();
    Case const cases[] = {
        {std::numeric_limits<std::int32_t>::min(), "-2147483648"},
        {std::numeric_limits<std::uint32_t>::max(), "4294967295"},
        {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
        {0.1F, "0.1"},
        {0.1, "0.1"},
        {static_cast<double>(0.1F), "0.10000000149011612"},
        {1e20, "1e+20"},
        {100000.0, "1e+05"},
        {123456.0, "123456"},
        {0.0, "0"},
        {-0.0F, "-0"},
        {nan, "nan"},
        {-nan, "-nan"},
        {static_cast<float>(-nan), "-nan"},
        {-std::numeric_limits<float>::infinity(), "-inf"},
        {std::numeric_limits<double>::infinity(), "inf"},
        {std::numeric_limits<float>::max(), "3.4028235e+38"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"},
    };
    for (Case const& test : cases)
        EXPECT_EQ(NumberText(test.cell), test.text);
}

TEST(CellTextTest, RandomNumbersReadBackToTheBit) {
    std::mt19937_64 random(20);
    for (int count = 0; count < 20000; ++count) {
        std::uint64_t const bits = random();
        float const single = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        double const wide = std::bit_cast<double>(bits);
        auto const check = [&](FieldType type, cell_t const& cell) {
            std::string const text = NumberText(cell);
            auto const back = NumberOf(type, std::wstring(text.begin(), text.end()));
            ASSERT_TRUE(back.has_value() && IsSameCell(*back, cell)) << text << " bits " << bits;
        };
        if (!std::isnan(single))
            check(FieldType::Float, single);
        if (!std::isnan(wide))
            check(FieldType::Double, wide);
        check(FieldType::Int, static_cast<std::int32_t>(bits));
        check(FieldType::Unsigned, static_cast<std::uint32_t>(bits));
        check(FieldType::Int64, static_cast<std::int64_t>(bits));
    }
}

TEST(CellTextTest, OnlyAWholeTextIsANumber) {
    EXPECT_EQ(NumberOf(FieldType::Int, L"12"), cell_t(12));
    EXPECT_EQ(NumberOf(FieldType::Float, L"0x1p3"), cell_t(8.0F));
    for (std::wstring_view const text : {L"", L"x", L"1x", L"1 ", L"1.5", L"2147483648"})
        EXPECT_EQ(NumberOf(FieldType::Int, text), std::nullopt);
    EXPECT_EQ(NumberOf(FieldType::Unsigned, L"4294967296"), std::nullopt);
    EXPECT_EQ(NumberOf(FieldType::Int64, L"9223372036854775808"), std::nullopt);
    EXPECT_EQ(NumberOf(FieldType::Float, L"1e39"), std::nullopt);
    EXPECT_EQ(NumberOf(FieldType::Double, L"1,5"), std::nullopt);
    EXPECT_EQ(NumberOf(FieldType::Text, L"1"), std::nullopt);
}

TEST(CellTextTest, TextsHaveTheirLimits) {
    EXPECT_EQ(TextFault(L""), "");
    EXPECT_EQ(TextFault(std::wstring(198, L'x')), "");
    EXPECT_EQ(TextFault(std::wstring(199, L'x')), "a text of 199 characters; 198 are the most");
    EXPECT_EQ(TextFault(std::wstring(1, L'\0')), "a text with a zero in it");
}

TEST(CellTextTest, HalfCharacters) {
    EXPECT_EQ(LoneSurrogate(L""), std::nullopt);
    EXPECT_EQ(LoneSurrogate(L"a\xD83D\xDE00"), std::nullopt);
    EXPECT_EQ(LoneSurrogate(L"a\xD83D"), L'\xD83D');
    EXPECT_EQ(LoneSurrogate(L"\xDE00\xD83D"), L'\xDE00');
    EXPECT_EQ(LoneSurrogate(L"\xD83D\xD83D\xDE00\xDE01"), L'\xD83D');
    EXPECT_EQ(UnitText(L'\xA0'), "U+00A0");
    EXPECT_EQ(UnitText(L'\x20AC'), "U+20AC");
}

TEST(CellTextTest, Places) {
    EXPECT_EQ(RowPlace(0, 2), "<TMode>, row 3");
    EXPECT_EQ(CellPlace(0, 0, 1), "<TMode>, row 1, name");
}
