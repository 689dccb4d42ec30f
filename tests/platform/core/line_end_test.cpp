#include <paramdb/platform/core/line_end.h>

#include <gtest/gtest.h>
#include <string_view>

namespace {

TEST(LineEnd, IsThatOfThePlatform) {
#ifdef _WIN32
    EXPECT_EQ(std::string_view(paramdb::LineEnd), "\r\n");
#else
    EXPECT_EQ(std::string_view(paramdb::LineEnd), "\n");
#endif
}

} // namespace
