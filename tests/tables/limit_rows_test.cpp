#include <paramdb/tables/limit_rows.h>

#include <gtest/gtest.h>
#include <tuple>

namespace {

TEST(LimitRows, ClavisOfAUserNameKey) {
    QClavis clavis(90, 91, 92, 93, 94, 95);
    QVClavisUserNames::Clavis(QIdx5(10, 11, 12, 13, 14), clavis);
    EXPECT_EQ(clavis, QClavis(90, 10, 11, 13, 14, 12));
    QVClavisUserNames::Clavis(QIdx5(), clavis);
    EXPECT_EQ(clavis, QClavis(90, -1, -1, -1, -1, -1));
}

TEST(LimitRows, StartAtZeroAndEmpty) {
    QVLearnProcedures const row;
    EXPECT_EQ(row.get<"value_1">(), 0);
    EXPECT_EQ(row.get<"value_2">(), 0U);
    EXPECT_EQ(row.get<"value_3">(), 0.0F);
    EXPECT_EQ(row.get<"name">(), L"");
    EXPECT_EQ(row.get<"value_5">(), 0.0F);
}

TEST(LimitRows, FieldsInLineOrder) {
    QVErrorGroup row(3, 4, CFixedText(L"a"), CFixedText(L"b"));
    EXPECT_EQ(row.tuple(), std::make_tuple(3, 4, CFixedText(L"a"), CFixedText(L"b")));
    std::get<0>(row.tuple()) = 7;
    EXPECT_EQ(row.get<"result_code">(), 7);
}

} // namespace
