#include <paramdb/platform/numeric/ratio.h>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using numeric::CRatio;

constexpr std::int64_t Most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t Least = std::numeric_limits<std::int64_t>::min();

TEST(Ratio, FractionsAreKeptInLowestTerms) {
    struct {
        std::int64_t over, under, numerator, denominator;
    } const cases[] = {
        {6, 4, 3, 2},     {-6, 4, -3, 2},     {6, -4, -3, 2},       {-6, -4, 3, 2},           {0, -5, 0, 1},
        {37, 11, 37, 11}, {Most, Most, 1, 1}, {Least, Least, 1, 1}, {Least, 2, Least / 2, 1}, {5, 1, 5, 1},
    };
    for (auto const& [over, under, numerator, denominator] : cases) {
        CRatio const ratio(over, under);
        EXPECT_TRUE(ratio.is_exact());
        EXPECT_EQ(ratio.numerator(), numerator);
        EXPECT_EQ(ratio.denominator(), denominator);
        EXPECT_EQ(ratio.value(), static_cast<double>(numerator) / static_cast<double>(denominator));
    }
}

TEST(Ratio, WhatIsNoFraction) {
    EXPECT_FALSE(CRatio().is_exact());
    EXPECT_EQ(CRatio().value(), 0.0);
    EXPECT_FALSE(CRatio(0.5).is_exact());
    EXPECT_EQ(CRatio(0.5).denominator(), 0);
    EXPECT_EQ(CRatio(3, 0), CRatio(0.0));
    EXPECT_FALSE(CRatio(Least, 1).is_exact());
    EXPECT_EQ(CRatio(Least, 1).value(), -9223372036854775808.0);
    EXPECT_FALSE(CRatio(1, Least).is_exact());
}

TEST(Ratio, Quotients) {
    EXPECT_EQ(CRatio(3, 4) / CRatio(9, 8), CRatio(2, 3));
    EXPECT_EQ(CRatio(-3, 4) / CRatio(9, 8), CRatio(-2, 3));
    EXPECT_EQ(CRatio(0, 4) / CRatio(9, 8), CRatio(0, 1));
    EXPECT_EQ(CRatio(3, 4) / CRatio(0, 8), CRatio(0.0));
    EXPECT_EQ(CRatio(3, 4) / CRatio(0.0), CRatio(0.0));
    EXPECT_EQ(CRatio(3, 4) / CRatio(0.5), CRatio(1.5));
    EXPECT_EQ(CRatio(1.5) / CRatio(3, 4), CRatio(2.0));
    EXPECT_EQ(CRatio(Most, 2) / CRatio(Most, 3), CRatio(3, 2));
    CRatio const large = CRatio(Most, 1) / CRatio(1, 2);
    EXPECT_FALSE(large.is_exact());
    EXPECT_EQ(large.value(), static_cast<double>(Most) * 2);
    CRatio const small = CRatio(1, Most) / CRatio(3, 2);
    EXPECT_FALSE(small.is_exact());
    EXPECT_EQ(small.value(), 1 / static_cast<double>(Most) / 1.5);
    // What just fits stays exact.
    EXPECT_EQ(CRatio(Most / 7, 1) / CRatio(1, 7), CRatio(Most, 1)); // the largest is a multiple of 7
    EXPECT_EQ(CRatio(1, Most / 7) / CRatio(-7, 1), CRatio(-1, Most));
}

TEST(Ratio, QuotientsOfSmallFractionsAreExact) {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<std::int64_t> term(-2000, 2000);
    for (int round = 0; round < 20000; ++round) {
        std::int64_t const a = term(random), b = term(random), c = term(random), d = term(random);
        if (b == 0 || c == 0 || d == 0)
            continue;
        EXPECT_EQ(CRatio(a, b) / CRatio(c, d), CRatio(a * d, b * c))
            << a << "/" << b << " / " << c << "/" << d;
    }
}

} // namespace
