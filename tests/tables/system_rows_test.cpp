#include <paramdb/tables/field.h>
#include <paramdb/tables/system_rows.h>

#include <gtest/gtest.h>
#include <tuple>

namespace {

TEST(SystemRows, AGridParameterStartsWithItsDefaults) {
    QVAutoModeParams const row;
    EXPECT_EQ(row.tuple(), std::make_tuple(0.0F, 10.0F, 1.0F, 1.0F, 0.0F, 1.0F, 1, 1.0F, 1U));
    EXPECT_EQ(row.IntervalBits, 5);
    EXPECT_EQ(paramdb::FieldCount<QVAutoModeParams>, 9U); // the bits stand in no line
}

TEST(SystemRows, OtherRowsStartAtZeroAndEmpty) {
    EXPECT_EQ(QVRefIdx().tuple(), std::make_tuple(0));
    EXPECT_EQ(QVTrigger().tuple(), std::make_tuple(CFixedText(), 0));
    EXPECT_EQ(QVModeProps().tuple(), std::make_tuple(0, 0U, 0, 0));
    EXPECT_EQ(QVRotorSpeeds().tuple(), std::make_tuple(0.0, 0, 0));
    EXPECT_EQ(QVAppSignalProperty().tuple(), std::make_tuple(0, CFixedText(), 0.0F, 0, 0));
}

TEST(SystemRows, TheBitOfAHiddenMode) {
    EXPECT_EQ(QVModeProps::hidden, 1024U);
}

} // namespace
