#include <paramdb/tables/parameter_rows.h>

#include <gtest/gtest.h>
#include <tuple>
#include <type_traits>
#include <utility>

namespace {

// A row class that hosts use themselves: its version, its fields, and what a value can do.
template <class Row, class... Fields>
void CheckExportedRow() {
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Row&>().tuple()), std::tuple<Fields&...>>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<Row const&>().tuple()), std::tuple<Fields const&...>>));
    EXPECT_TRUE((std::is_base_of_v<QValueBase, Row>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Row>);
    EXPECT_TRUE((std::is_same_v<decltype(Row::s_version), unsigned int const>));
    EXPECT_EQ(unsigned{Row::s_version}, 1U);

    Row const start;
    EXPECT_EQ(start.tuple(), std::tuple<Fields...>());
    Row filled;
    std::apply(
        [number = 0](auto&... fields) mutable {
            ((fields = static_cast<std::remove_reference_t<decltype(fields)>>(++number)), ...);
        },
        filled.tuple());
    EXPECT_NE(filled.tuple(), start.tuple());
    Row copy(filled);
    EXPECT_EQ(copy.tuple(), filled.tuple());
    Row const moved(std::move(copy));
    EXPECT_EQ(moved.tuple(), filled.tuple());
    copy = start;
    EXPECT_EQ(copy.tuple(), start.tuple());
    copy = Row(moved);
    EXPECT_EQ(copy.tuple(), filled.tuple());
}

TEST(ParameterRows, RowsThatHostsUse) {
    CheckExportedRow<QVIpCurvePolygon, int, int, int, int, float, float>();
    CheckExportedRow<QVIpSvCurve, int, int>();
    CheckExportedRow<QVIpTrackTransform, int, int, int, int>();
    CheckExportedRow<QVIpTrackRegression, int, int, int, int, int, int>();
    CheckExportedRow<QVIpTrackPolygon, int, int, int, int, float, int, float, float, float, float>();
}

TEST(ParameterRows, NamedFields) {
    QVIpSvCurve const curve(ParamDb::calc_position_minimum, 42);
    EXPECT_EQ(curve.interpretation(), ParamDb::calc_position_minimum);
    EXPECT_EQ(curve.src_instrument_param(), 42);
    EXPECT_EQ(static_cast<int>(QVIpSvCurve(-99, 0).interpretation()), -99); // a file may hold any number
    EXPECT_EQ(QVIpTrackTransform(1, 2, 3, 4).trigger(), 4);
}

TEST(ParameterRows, NumbersOfTheCalculations) {
    EXPECT_EQ(ParamDb::calc_not_defined, 0);
    EXPECT_EQ(ParamDb::calc_minimum, 1);
    EXPECT_EQ(ParamDb::calc_maximum, 2);
    EXPECT_EQ(ParamDb::calc_average, 3);
    EXPECT_EQ(ParamDb::calc_log_average, 4);
    EXPECT_EQ(ParamDb::calc_sum, 5);
    EXPECT_EQ(ParamDb::calc_log_sum, 6);
    EXPECT_EQ(ParamDb::calc_position_maximum, 7);
    EXPECT_EQ(ParamDb::calc_position_minimum, 8);
    EXPECT_EQ(ParamDb::accumulation_maximum, 20);
    EXPECT_EQ(ParamDb::accumulation_average, 21);
    EXPECT_EQ(ParamDb::accumulation_last, 22);
}

} // namespace
