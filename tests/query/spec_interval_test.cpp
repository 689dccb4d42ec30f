#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/query/spec_interval.h>

#include "spec_interval_support.h"

#include <gtest/gtest.h>
#include <string>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <tuple>
#include <type_traits>
#include <vector>

namespace {

using namespace spec_interval_support;

// The entry that a definition of one or two positions comes to.
Entry Parse(wchar_t const* text) {
    Position positions[2];
    unsigned int const count = OrderInterpreter::GetSpecPositions(text, positions, 2);
    EXPECT_GT(count, 0u) << text;
    return {positions[0], positions[count - 1]};
}
class SpecInterval : public testing::Test {
protected:
    MessageLog messages;
    Drive drive;
};

TEST_F(SpecInterval, NumbersOfTheResults) {
    EXPECT_EQ(CQtSpecInterval::range_success, 0);
    EXPECT_EQ(CQtSpecInterval::range_beyond_spectrum, 1);
    EXPECT_EQ(CQtSpecInterval::range_no_base_order, 2);
    EXPECT_EQ(CQtSpecInterval::range_no_assembly_ratio, 3);
    EXPECT_EQ(CQtSpecInterval::range_no_line_distance, 4);
    EXPECT_EQ(CQtSpecInterval::range_no_ratio_for_mixed, 5);
    EXPECT_EQ(CQtSpecInterval::range_negative, 6);
    static_assert(std::is_aggregate_v<Interval>);
    auto const [start, stop, first, last] = Interval{1.5f, 2.5f, 3, 4};
    EXPECT_EQ(std::tuple(start, stop, first, last), std::tuple(1.5f, 2.5f, 3u, 4u));
}

TEST_F(SpecInterval, LoadTakesRatioAndBaseOrder) {
    CQtSpecInterval calculation(drive.own.instance());
    EXPECT_EQ(calculation.BaseOrderValue(), 0.0f);
    EXPECT_EQ(calculation.RatioAssembly2SpeedSrc(), 0.0);
    drive.Set(4, -10, 23.5f);
    int const virtual_mode = drive.own.instance().VirtModeGenerateId(Drive::Mode, 3);
    ASSERT_TRUE(drive.own.instance().IsVirtualMode(virtual_mode));
    struct {
        int mode, a, b;
        double ratio;
        float base_order;
    } const cases[] = {
        {Drive::Mode, 100, 200, 2.5, 23.5f},  {5, 100, 200, 0, 0}, // the mode alone has changed
        {virtual_mode, 100, 200, 2.5, 23.5f}, {Drive::Mode, 200, 200, 1, 23.5f},
        {Drive::Mode, 200, 100, 0.4, 0},      {Drive::Mode, -1, 200, 0, 23.5f},
        {Drive::Mode, 200, -1, 0, 0},         {-1, 100, 200, 0, 0},
        {Drive::Mode, 77, 200, 0, 23.5f},     {-1, -1, -1, 0, 0},
    };
    for (auto const& [mode, a, b, ratio, base_order] : cases) {
        SCOPED_TRACE(testing::Message() << mode << ' ' << a << ' ' << b);
        calculation.LoadTransformParams(mode, a, b);
        EXPECT_EQ(calculation.RatioAssembly2SpeedSrc(), ratio);
        EXPECT_EQ(calculation.BaseOrderValue(), base_order);
    }
}

TEST_F(SpecInterval, TheSameParametersReadNothing) {
    int const virtual_mode = drive.own.instance().VirtModeGenerateId(Drive::Mode, 3);
    drive.Set(2, 3);
    CQtSpecInterval calculation = drive.Loaded();
    drive.Set(5, 7);
    for (int const mode : {Drive::Mode, virtual_mode}) {
        calculation.LoadTransformParams(mode, Drive::Generating, Drive::Measured);
        EXPECT_EQ(calculation.RatioAssembly2SpeedSrc(), 2.0);
        EXPECT_EQ(calculation.BaseOrderValue(), 3.0f);
    }
    calculation.LoadTransformParams(Drive::Mode, Drive::Measured, Drive::Measured);
    calculation.LoadTransformParams(Drive::Mode, Drive::Generating, Drive::Measured);
    EXPECT_EQ(calculation.RatioAssembly2SpeedSrc(), 5.0);
    EXPECT_EQ(calculation.BaseOrderValue(), 7.0f);
    calculation.LoadTransformParams(-1, -1, -1);
    EXPECT_EQ(calculation.RatioAssembly2SpeedSrc(), 0.0) << "taken as any other";
    CQtSpecInterval fresh(drive.own.instance());
    fresh.LoadTransformParams(-1, -1, -1);
    EXPECT_EQ(fresh.BaseOrderValue(), 0.0f);
}

// Every failure by its term, and which of several comes first.
TEST_F(SpecInterval, WhatABandNeeds) {
    struct {
        wchar_t const* definition;
        double ratio;
        float base_order;
        int result;
    } const cases[] = {
        {L"H1;H2", 1, 0, 2},  {L"H1;H2", 0, 0, 2},       {L"H1;H2", 0, 5, 3},    {L"H1;H2", 1, 5, 0},
        {L"H0;H2", 1, 0, 2},  {L"H2;H0", 1, 0, 2},       {L"H0;H0", 0, 0, 0},    {L"M1;M2", 0, 0, 3},
        {L"M1;M2", 0, 5, 3},  {L"M1;M2", 1, 0, 0},       {L"M0;M2", 0, 5, 3},    {L"M2;M0", 0, 5, 3},
        {L"M0;M0", 0, 0, 0},  {L"H1-M2;H1+M2", 0, 0, 2}, {L"H1+M2;H2", 0, 5, 3}, {L"O1;O2", 0, 0, 0},
        {L"F1;F2", 0, 0, 0},  {L"F1+O1;F2+O2", 0, 0, 5}, {L"O1;F2", 0, 0, 5},    {L"F1;O2", 0, 0, 5},
        {L"O1;F2", 1, 0, 0},  {L"O0;F2", 0, 0, 0},       {L"F1+O1;H1", 0, 0, 2}, {L"F1+O1;M1", 0, 0, 3},
        {L"L1;L2", 0, 0, 0},  {L"O1+L1;O2+L1", 0, 0, 0}, {L"F1;O1", -1, 0, 0},   {L"F2;F1", 0, 0, 6},
        {L"-F1;F1", 0, 0, 6}, {L"-F2;-F1", 0, 0, 6},     {L"F1;-F2", 0, 0, 6},   {L"O2;O1", 0, 0, 6},
        {L"-H1;H1", 2, 3, 6}, {L"F1", 0, 0, 0},          {L"-F0;F0", 0, 0, 0},
    };
    for (auto const& [definition, ratio, base_order, result] : cases) {
        SCOPED_TRACE(testing::Message() << definition << " ratio " << ratio << " base " << base_order);
        drive.Set(ratio, base_order);
        float lower = -77;
        float upper = -78;
        EXPECT_EQ(drive.Loaded().FrequencyRange(Parse(definition), 1, 1, lower, upper), result);
        bool const written = result == 0 || result == 6;
        EXPECT_EQ(lower != -77.0f, written);
        EXPECT_EQ(upper != -78.0f, written);
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(SpecInterval, Bands) {
    // Ratio 2.5, base order 4, line distance 0.5, speed 10.
    struct {
        Entry entry;
        float lower, upper;
    } const cases[] = {
        {Parse(L"F100;F200"), 100, 200},
        {Parse(L"F100-L2;F200+L2"), 99, 201},
        {Parse(L"L3;L7"), 1.5f, 3.5f},
        {Parse(L"O1;O2"), 1, 2},
        {Parse(L"O1-L1;O2+L1"), 0.5f, 2.5f},
        {Parse(L"H1;H2"), 10, 20},
        {Parse(L"H1-M2;H1+M2"), 5, 15},
        {Parse(L"H1-M2+O0.5;H1+M2-O0.5"), 5.5f, 14.5f},
        {Parse(L"F100+O1;F100+O2"), 110, 120},
        {Parse(L"F100+O1"), 110, 110},
        {Parse(L"O1;F100"), 10, 100},
        {Parse(L"F1;O2"), 1, 20},
        {Parse(L"H1;F300"), 100, 300},
        {Parse(L"L1;O2"), 0.5f, 20},
        {Parse(L"L1;F2"), 0.5f, 2},
        // The domain alone decides, whatever the terms are.
        {{MakePosition(0, 1, 0, 0, 0, 2), MakePosition(0, 2, 0, 0, 0, 1)}, 10, 20},
        {{MakePosition(0, 1, 0, 0, 0, 3), MakePosition(0, 2, 0, 0, 0, 3)}, 10, 20},
        {{MakePosition(0, 1, 0, 0, 0, 0), MakePosition(0, 2, 0, 0, 0, 0)}, 1, 2},
        {{MakePosition(5, 1, 0, 0, 0, 7), MakePosition(6, 2, 0, 0, 0, 7)}, 6, 8},
    };
    drive.Set(2.5, 4);
    CQtSpecInterval const calculation = drive.Loaded();
    for (auto const& [entry, expected_lower, expected_upper] : cases) {
        float lower = -1;
        float upper = -1;
        EXPECT_EQ(calculation.FrequencyRange(entry, 0.5f, 10, lower, upper), 0);
        EXPECT_EQ(lower, expected_lower) << "case " << &entry - &cases[0].entry;
        EXPECT_EQ(upper, expected_upper);
    }
    float lower = 0;
    float upper = 0;
    EXPECT_EQ(calculation.FrequencyRange(Parse(L"F2;F1"), 1, NotANumber, lower, upper), 6);
    EXPECT_EQ(std::tuple(lower, upper), std::tuple(2.0f, 1.0f)) << "written all the same";
}

TEST_F(SpecInterval, FrequenciesNeedNoLoad) {
    CQtSpecInterval const calculation(drive.own.instance());
    for (float const speed : {0.0f, -5.0f, 100.0f, Infinite, NotANumber}) {
        float lower = 0;
        float upper = 0;
        EXPECT_EQ(calculation.FrequencyRange(Parse(L"F100;F200"), 1, speed, lower, upper), 0);
        EXPECT_EQ(std::tuple(lower, upper), std::tuple(100.0f, 200.0f));
    }
    float ignored = 0;
    EXPECT_EQ(calculation.FrequencyRange(Parse(L"H1;H2"), 1, 1, ignored, ignored), 2);
    EXPECT_EQ(calculation.FrequencyRange(Parse(L"M1;M2"), 1, 1, ignored, ignored), 3);
    EXPECT_EQ(calculation.FrequencyRange(Parse(L"F1;O2"), 1, 1, ignored, ignored), 5);
}

// Where float and double differ, each step must be taken in its own.
TEST_F(SpecInterval, RoundingOfTheSteps) {
    drive.Set(1, 1);
    auto const lower_of = [&](Position const& position, float line_distance) {
        float lower = -1;
        float upper = -1;
        EXPECT_EQ(drive.Loaded().FrequencyRange({position, position}, line_distance, 1, lower, upper), 0);
        EXPECT_EQ(lower, upper);
        return lower;
    };
    // 2^24 + 1 is no float: harmonic and modulation add up in float, order and frequency in double.
    EXPECT_EQ(lower_of(MakePosition(0, -16777216, 16777216, 1, 0, 2), 1), 0.0f);
    EXPECT_EQ(lower_of(MakePosition(-16777216, 1, 16777216, 0, 0, 2), 1), 1.0f);
    EXPECT_EQ(lower_of(MakePosition(0, -16777216, 0, 0, 16777217, 2), 1), 0.0f) << "lines count in float";
    // The frequency comes before the lines.
    EXPECT_EQ(lower_of(MakePosition(1e20f, 1, 0, 0, -1, 2), 1e20f), 0.0f);
    // 0.1f times 3 lines is rounded before it is added.
    EXPECT_EQ(lower_of(MakePosition(0, 0, 0, 0, 3, 0), 0.1f), 3.0f * 0.1f);
    // A product that would come out otherwise with a fused multiplication and addition.
    float const factor = 1.0f + 0x1p-12f;
    drive.Set(1, factor);
    EXPECT_EQ(lower_of(MakePosition(0, 0, factor, -1.0f - 0x1p-11f, 0, 2), 1), 0.0f);
    drive.Set(1.0 + 0x1p-27, 1);
    Position const scaled = MakePosition(0, -1, 1, 0, 0, 3);
    EXPECT_EQ(lower_of(scaled, 1), 0x1p-27f);
}

TEST_F(SpecInterval, Lines) {
    struct {
        wchar_t const* definition;
        unsigned int count;
        float distance;
        int result;
        Interval interval;
    } const cases[] = {
        {L"F100;F200", 1000, 1, 0, {100, 200, 100, 200}},
        {L"F100;F200", 1000, 0.5f, 0, {100, 200, 200, 400}},
        {L"F100;F200", 1000, 0, 4, {}},
        {L"F100;F200", 1000, -0.0f, 4, {}},
        {L"F100;F200", 1000, -1, 4, {}},
        {L"F100;F200", 1000, NotANumber, 4, {}},
        {L"F2;F1", 1000, 0, 4, {}},
        {L"H1;H2", 1000, 0, 4, {}},
        {L"H1;H2", 1000, 1, 2, {}},
        {L"F2;F1", 1000, 1, 6, {}},
        // Half a line goes to the even one.
        {L"F0.5;F1.5", 10, 1, 0, {0.5f, 1.5f, 0, 2}},
        {L"F2.5;F3.5", 10, 1, 0, {2.5f, 3.5f, 2, 4}},
        {L"F0.4;F0.6", 10, 1, 0, {0.4f, 0.6f, 0, 1}},
        // The end of the spectrum.
        {L"F100;F200", 201, 1, 0, {100, 200, 100, 200}},
        {L"F100;F200", 200, 1, 0, {100, 199, 100, 199}},
        {L"F100.25;F200", 200, 1, 0, {100.25f, 199, 100, 199}},
        {L"F100;F199.5", 200, 1, 0, {100, 199, 100, 199}},
        {L"F100;F199.25", 200, 1, 0, {100, 199.25f, 100, 199}},
        {L"F100;F200", 101, 1, 0, {100, 100, 100, 100}},
        {L"F100;F200", 100, 1, 1, {}},
        {L"F99.5;F200", 100, 1, 1, {}},
        {L"F99.25;F200", 100, 1, 0, {99.25f, 99, 99, 99}}, // the stop may fall below the start
        {L"F0;F0", 1, 1, 0, {0, 0, 0, 0}},
        {L"F1;F1", 1, 1, 1, {}},
        {L"F100;F200", 1000, 0.1f, 1, {}},
        {L"F50;F200", 1000, 0.1f, 0, {50, 999 * 0.1f, 500, 999}},
        // Without lines the last one is the highest number there is.
        {L"F100;F200", 0, 1, 0, {100, 200, 100, 200}},
        // Lines beyond 32 bits.
        {L"F1e10;F2e10", 0, 1, 0, {1e10f, 2e10f, 2147483647, 2147483647}},
        {L"F1e10;F2e10", HighestLine, 1, 0, {1e10f, 2e10f, 2147483647, 2147483647}},
        {L"F1;F1e9", 16777218, 3, 0, {1, 50331648, 0, 16777217}}, // 16777217 is no float
        {L"F1;F2e10", 2147483647, 1, 0, {1, 2147483646.0f, 1, 2147483646}},
        {L"F2147483520;F2147483648", 0, 1, 0, {2147483520.0f, 2147483648.0f, 2147483520, 2147483647}},
        // No lines of infinite distance are no number.
        {L"F1;F2", 1000, Infinite, 1, {}},
        {L"F1;F2", 0, Infinite, 0, {NotANumber, NotANumber, 2147483648, 2147483648}},
        {L"F0;F1", 1000, Smallest, 0, {0, 999 * Smallest, 0, 999}},
        // What is no number is neither negative nor reversed, and its line counts as the lowest with sign.
        {L"Fnan;F1", 1000, 1, 1, {}},
        {L"Fnan;F1", 0, 1, 0, {NotANumber, 1, 2147483648, 1}},
        {L"F1;Fnan", 1000, 1, 0, {1, 999, 1, 999}},
        {L"F1;Fnan", 0, 1, 0, {1, NotANumber, 1, 2147483648}},
        {L"F1;Finf", 1000, 1, 0, {1, 999, 1, 999}},
        {L"F1;Finf", 0, 1, 0, {1, Infinite, 1, 2147483647}},
    };
    CQtSpecInterval const calculation(drive.own.instance());
    for (auto const& [definition, count, distance, result, expected] : cases) {
        SCOPED_TRACE(testing::Message() << definition << ' ' << count << ' ' << distance);
        Interval const untouched{-1, -2, 3, 4};
        Interval interval = untouched;
        EXPECT_EQ(calculation.IndexRange(Parse(definition), interval, count, distance, 1), result);
        Interval const& wanted = result == 0 ? expected : untouched;
        EXPECT_TRUE(Same(interval.start, wanted.start)) << interval.start;
        EXPECT_TRUE(Same(interval.stop, wanted.stop)) << interval.stop;
        EXPECT_EQ(interval.first, wanted.first);
        EXPECT_EQ(interval.last, wanted.last);
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}
using SpecIntervalLoad = LoadTest;

// From the text of a definition to the lines.
TEST_F(SpecIntervalLoad, FromALake) {
    MessageLog messages;
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
             "<TModeProperty>: {\n 4 1 0 0 0\n}\n<TBaseOrder>: {\n 20 23\n}\n"
             "<TRotorSpeed>: {\n 1 10 2 0 0\n 1 20 -5 0 0\n}\n"
             "<TIpSpectralValue>: {\n 7 -1 -1 0 \"H1-M2;H1+M2;F100;F200\" -1 -1\n}\n");
    CQtParamInstance instance;
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    ASSERT_EQ(messages.Take(), std::vector<Message>());
    CQtSpecInterval calculation(instance);
    calculation.LoadTransformParams(4, 10, 20);
    EXPECT_EQ(calculation.RatioAssembly2SpeedSrc(), 2.5);
    EXPECT_EQ(calculation.BaseOrderValue(), 23.0f);
    std::vector<Interval> intervals;
    for (auto [entry, end] = instance.SpecIntervalRange(7); entry != end; ++entry) {
        Interval interval;
        ASSERT_EQ(calculation.IndexRange(entry->second, interval, 1000, 0.5f, 30),
                  CQtSpecInterval::range_success);
        intervals.push_back(interval);
    }
    EXPECT_EQ(intervals, (std::vector<Interval>{{52.5f, 62.5f, 105, 125}, {100, 200, 200, 400}}));
}

} // namespace
