#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/field.h>
#include <paramdb/tables/row.h>

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

using paramdb::ConstFields;
using paramdb::Fields;
using paramdb::FieldType;

namespace {

using OneOfEach = QVRow<QInt<"a">, QUnsigned<"b">, QInt64<"c">, QFloat<"d">, QDouble<"e">, QText<"f">>;

TEST(Field, TypesOfARow) {
    auto const types = paramdb::FieldTypes<OneOfEach>();
    EXPECT_EQ(std::vector<FieldType>(types.begin(), types.end()),
              (std::vector<FieldType>{FieldType::Int, FieldType::Unsigned, FieldType::Int64, FieldType::Float,
                                      FieldType::Double, FieldType::Text}));
    EXPECT_EQ(paramdb::FieldCount<OneOfEach>, 6U);
    EXPECT_EQ(paramdb::FieldCount<QIdx5>, 5U);
    EXPECT_EQ(paramdb::FieldTypes<QIdxIF>(), (std::array{FieldType::Int, FieldType::Float}));
    EXPECT_EQ(paramdb::FieldTypes<QIdxName>(), (std::array{FieldType::Text}));
}

TEST(Field, NamesOfTheTypes) {
    std::pair<FieldType, wchar_t const*> const names[] = {
        {FieldType::Int, L"int"},     {FieldType::Unsigned, L"unsigned int"}, {FieldType::Int64, L"int64"},
        {FieldType::Float, L"float"}, {FieldType::Double, L"double"},         {FieldType::Text, L"text"}};
    for (auto const& [type, name] : names)
        EXPECT_EQ(paramdb::FieldTypeName(type), std::wstring(name));
}

TEST(Field, ReferToTheRow) {
    OneOfEach row(1, 2U, std::int64_t{3}, 4.0F, 5.0, CFixedText(L"six"));
    auto const fields = Fields(row);
    EXPECT_EQ(&fields[0].As<std::int32_t>(), &row.get<"a">());
    EXPECT_EQ(&fields[5].As<CFixedText>(), &row.get<"f">());
    for (auto const& field : fields)
        field.Visit([]<class T>(T& target) {
            if constexpr (std::is_same_v<T, CFixedText>)
                target = CFixedText(L"changed");
            else
                target = static_cast<T>(target + 10);
        });
    EXPECT_EQ(row.tuple(), OneOfEach(11, 12U, std::int64_t{13}, 14.0F, 15.0, CFixedText(L"changed")).tuple());
    auto const constant = ConstFields(row);
    EXPECT_EQ(&constant[3].As<float>(), &row.get<"d">());
    EXPECT_TRUE((std::is_same_v<decltype(constant[3].As<float>()), float const&>));
}

TEST(Field, BytesOfTheTexts) {
    EXPECT_EQ(paramdb::TextBytes({}), 0U);
    EXPECT_EQ(paramdb::TextBytes(ConstFields(QIdx2(1, 2))), 0U);
    EXPECT_EQ(paramdb::TextBytes(ConstFields(QIdxName(L"abc"))), 4 * sizeof(wchar_t));
    QVRow<QText<"a">, QInt<"b">, QText<"c">> const row(CFixedText(L"ab"), 1, CFixedText(L"cdef"));
    EXPECT_EQ(paramdb::TextBytes(ConstFields(row)), 8 * sizeof(wchar_t));
}

TEST(Field, ColumnsOfARowHaveNames) {
    EXPECT_EQ(OneOfEach::ColumnNames, (std::array<std::string_view, 6>{"a", "b", "c", "d", "e", "f"}));
}

} // namespace
