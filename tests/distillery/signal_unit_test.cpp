#include <paramdb/distillery/signal_unit.h>

#include <gtest/gtest.h>
#include <string>

namespace {

using paramdb::UnitOf;
using paramdb::UnitTextOf;

QVAppSignalProperty RowOf(int code, int prefix, wchar_t const* text) {
    QVAppSignalProperty row;
    row.get<"unit_code">() = code;
    row.get<"unit_prefix">() = prefix;
    row.get<"unit">() = CFixedText(text);
    return row;
}

TEST(SignalUnit, TheTextFollowsTheCodeOfACommonUnit) {
    for (int code = -2; code <= 32; ++code) {
        for (int const prefix : {-9, -6, -3, -1, 0, 1, 2, 3, 6, 77}) {
            SCOPED_TRACE(std::to_string(code) + " with prefix " + std::to_string(prefix));
            bool const is_common = code == 0 || (code >= 2 && code <= 30);
            int const power = prefix == 1 || prefix == -1 ? 0 : prefix;
            std::wstring const common = CMeasuringUnit(code, power).prefixunit(false).GetString();
            QVAppSignalProperty row = RowOf(code, prefix, L"old");
            EXPECT_EQ(UnitTextOf(row).view(), is_common ? common : L"old");
            EXPECT_EQ(row.get<"unit">().view(), is_common ? common : L"old");
            row.get<"unit">() = CFixedText(L"kHz");
            CMeasuringUnit const unit = UnitOf(row);
            if (is_common) {
                EXPECT_EQ(unit.unit(), code);
                EXPECT_EQ(unit.prefix(), CMeasuringUnit(code, power).prefix());
                EXPECT_EQ(row.get<"unit">().view(), common);
            } else {
                EXPECT_STREQ(unit.prefixunit(false), L"kHz");
                EXPECT_EQ(unit.prefix(), 3);
            }
        }
    }
}

TEST(SignalUnit, FourDashesAreNoUnit) {
    QVAppSignalProperty row = RowOf(1, 0, L"----");
    EXPECT_EQ(UnitTextOf(row).view(), L"----");
    EXPECT_EQ(UnitOf(row).unit(), 0);
    EXPECT_STREQ(UnitOf(row).prefixunit(true), L"");
    EXPECT_EQ(row.get<"unit">().view(), L"----");
}

// Prefixes may be garbage; however many there are, each gives its own text.
TEST(SignalUnit, ThousandsOfPrefixes) {
    std::wstring const hertz = CMeasuringUnit(7, 0).prefixunit(false).GetString();
    for (int round = 0; round < 2; ++round) {
        for (int prefix = -1500; prefix <= 1500; ++prefix) {
            QVAppSignalProperty row = RowOf(7, prefix, L"");
            int const power = prefix == 1 || prefix == -1 ? 0 : prefix;
            ASSERT_EQ(UnitTextOf(row).view(), CMeasuringUnit(7, power).prefixunit(false).GetString())
                << prefix;
        }
    }
    QVAppSignalProperty row = RowOf(7, 0, L"");
    EXPECT_EQ(UnitTextOf(row).view(), hertz);
}

} // namespace
