#include <paramdb/platform/numeric/round.h>

#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using numeric::Round;

TEST(Round, HalvesGoAwayFromZero) {
    constexpr float infinite = std::numeric_limits<float>::infinity();
    struct {
        float value, rounded;
    } const cases[] = {
        {0, 0},
        {0.5f, 1},
        {-0.5f, -1},
        {1.5f, 2},
        {2.5f, 3},
        {-2.5f, -3},
        {0.49999997f, 0}, // the last one below a half
        {0.50000006f, 1},
        {-0.49999997f, 0},
        {8388607.5f, 8388608},
        {8388609, 8388609}, // where adding a half would be inexact
        {-8388609, -8388609},
        {16777216, 16777216},
        {std::numeric_limits<float>::max(), std::numeric_limits<float>::max()},
        {std::numeric_limits<float>::denorm_min(), 0},
        {infinite, infinite},
        {-infinite, -infinite},
    };
    for (auto const& [value, rounded] : cases)
        EXPECT_EQ(Round(value), rounded) << value;
    EXPECT_TRUE(std::isnan(Round(std::numeric_limits<float>::quiet_NaN())));
    EXPECT_TRUE(std::signbit(Round(-0.25f)));
    EXPECT_FALSE(std::signbit(Round(0.25f)));
}

// In double precision adding a half is exact for every float.
TEST(Round, RandomNumbersAsDoublePrecisionHasThem) {
    constexpr std::uint32_t seed = 61;
    std::mt19937 random(seed);
    for (int round = 0; round < 100000; ++round) {
        auto const value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (!std::isfinite(value) || std::fabs(value) > 1e9f)
            continue;
        double const expected = std::floor(std::fabs(static_cast<double>(value)) + 0.5);
        ASSERT_EQ(static_cast<double>(Round(value)), std::copysign(expected, static_cast<double>(value)))
            << "seed " << seed << " round " << round << " " << value;
    }
}

} // namespace
