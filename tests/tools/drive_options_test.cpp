#include "tools/drive_options.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

// Whether the arguments can be taken.
bool Parse(std::vector<std::string> arguments, DriveOptions& options) {
    CLI::App app;
    AddDriveOptions(app, options);
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(arguments);
        return true;
    } catch (CLI::ParseError const&) {
        return false;
    }
}

} // namespace

TEST(DriveOptionsTest, StoresWhatIsGiven) {
    DriveOptions options;
    ASSERT_TRUE(Parse({"--mode", "11", "-r", "1", "--gear=90", "--speed", "12.5", "-d", "0.5"}, options));
    EXPECT_EQ(options.mode, 11);
    EXPECT_EQ(options.rotor, 1);
    EXPECT_EQ(options.gear, 90);
    EXPECT_EQ(options.speed, 12.5f);
    EXPECT_EQ(options.line_distance, 0.5f);
    DriveOptions turns;
    ASSERT_TRUE(Parse({"--rpm", "3000"}, turns));
    EXPECT_EQ(turns.speed, 50.0f);
    EXPECT_FALSE(turns.mode);
    EXPECT_FALSE(turns.line_distance);
    DriveOptions thirds;
    ASSERT_TRUE(Parse({"--rpm", "1000", "--line-distance=-1"}, thirds));
    EXPECT_EQ(thirds.speed, static_cast<float>(1000.0 / 60));
    EXPECT_EQ(thirds.line_distance, -1.0f);
}

TEST(DriveOptionsTest, RefusesWhatIsNoNumber) {
    for (char const* const text : {"x", "", "1,5", "nan", "inf", "-inf", "1e99", "0x10", "1 ", "5Hz"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FiniteNumber(text), std::nullopt);
        for (char const* const name : {"--speed=", "--rpm=", "--line-distance="}) {
            DriveOptions options;
            EXPECT_FALSE(Parse({std::string(name) + text}, options)) << name;
        }
    }
    DriveOptions options;
    EXPECT_FALSE(Parse({"--mode", "x"}, options));
    EXPECT_FALSE(Parse({"--speed", "1", "--rpm", "60"}, options));
}

TEST(DriveOptionsTest, ReadsNumbers) {
    EXPECT_EQ(FiniteNumber("-1.5e3"), -1500.0f);
    EXPECT_EQ(FiniteNumber(".5"), 0.5f);
    EXPECT_EQ(FiniteNumber("0.1"), 0.1f);
}
