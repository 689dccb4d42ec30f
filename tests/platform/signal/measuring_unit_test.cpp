#include <paramdb/platform/signal/measuring_unit.h>

#include <gtest/gtest.h>
#include <string>

namespace {

std::wstring Text(CMeasuringUnit const& unit, bool with_brackets = false) {
    return unit.prefixunit(with_brackets).GetString();
}

TEST(MeasuringUnit, Texts) {
    struct {
        int unit, prefix;
        wchar_t const* text;
    } const cases[] = {
        {0, 0, L""},          {0, 3, L""},    {1, 0, L""},           {2, 0, L"m/s\u00B2"}, {6, 3, L"kHz"},
        {4, -6, L"\u00B5Pa"}, {20, 0, L"kW"}, {30, 0, L"K"},         {31, 0, L""},         {-1, 0, L""},
        {6, 5, L"Hz"},        {6, 6, L"MHz"}, {-2147483647, 7, L""},
    };
    for (auto const& [unit, prefix, text] : cases)
        EXPECT_EQ(Text(CMeasuringUnit(unit, prefix)), text) << unit << " " << prefix;
    EXPECT_EQ(Text(CMeasuringUnit()), L"");
    EXPECT_EQ(Text(CMeasuringUnit(6, 3), true), L"[kHz]");
    EXPECT_EQ(Text(CMeasuringUnit(0, 0), true), L"");
}

TEST(MeasuringUnit, RecognisesWhatItWrites) {
    for (int code = 2; code <= 30; ++code) {
        for (int const power : {0, 12, 9, 6, 3, 2, -2, -3, -6, -9, -12}) {
            std::wstring const text = Text(CMeasuringUnit(code, power));
            CMeasuringUnit unit;
            unit.set(text.c_str());
            EXPECT_EQ(Text(unit), text);
            EXPECT_NE(unit.unit(), -1);
        }
    }
    CMeasuringUnit unit;
    unit.set(L"mm");
    EXPECT_EQ(unit.unit(), 13);
    EXPECT_EQ(unit.prefix(), 0);
    unit.set(L"kHz");
    EXPECT_EQ(unit.unit(), 6);
    EXPECT_EQ(unit.prefix(), 3);
    EXPECT_EQ(unit.value(), 1);
}

TEST(MeasuringUnit, SettingIsConstructingAnew) {
    CMeasuringUnit unit(6, 3, 5, 2.5, 7);
    unit.set(4, -6);
    EXPECT_EQ(unit.unit(), 4);
    EXPECT_EQ(unit.prefix(), -6);
    EXPECT_EQ(unit.value(), 1);
    EXPECT_EQ(unit.factor(), 1.0);
    EXPECT_EQ(unit.flags(), 0U);
}

TEST(MeasuringUnit, KeepsAnyOtherText) {
    CMeasuringUnit unit;
    for (wchar_t const* const text : {L"counts", L"k", L" Hz", L"[Hz]"}) {
        unit.set(text);
        EXPECT_EQ(unit.unit(), -1);
        EXPECT_EQ(Text(unit), text);
    }
    unit.set(L"");
    EXPECT_EQ(unit.unit(), 0);
    unit.set(L"counts");
    unit.set(nullptr);
    EXPECT_EQ(Text(unit), L"");
}

} // namespace
