#include "tools/short_number.h"

#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

using namespace paramdb::tools;

TEST(ShortNumberTest, HasTheFewestDigits) {
    EXPECT_EQ(ShortNumber(0.1F), "0.1");
    EXPECT_EQ(ShortNumber(0.1), "0.1");
    EXPECT_EQ(ShortNumber(-100.0F), "-100");
    EXPECT_EQ(ShortNumber(0.2826086956521739), "0.2826086956521739");
    EXPECT_EQ(ShortNumber(1e30F), "1e+30");
    EXPECT_EQ(ShortNumber(-std::numeric_limits<float>::infinity()), "-inf");
    EXPECT_EQ(ShortNumber(-std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(ShortNumberTest, IsANumberInJson) {
    EXPECT_EQ(JsonNumber(0.1F).dump(), "0.1");
    EXPECT_EQ(JsonNumber(0.1).dump(), "0.1");
    EXPECT_EQ(JsonNumber(-2.5F).dump(), "-2.5");
    EXPECT_EQ(JsonNumber(std::numeric_limits<float>::max()).dump(), "3.4028235e+38");
    EXPECT_EQ(JsonNumber(std::numeric_limits<float>::infinity()).dump(), "\"inf\"");
    EXPECT_EQ(JsonNumber(std::numeric_limits<double>::quiet_NaN()).dump(), "\"nan\"");
}
