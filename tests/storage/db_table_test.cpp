#include <paramdb/storage/db_table.h>

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <variant>
#include <vector>

using namespace std::string_literals;
using ParamDb::CDbTable;
using ParamDb::cell_t;
using ParamDb::row_t;

namespace {

constexpr auto Other = static_cast<CDbTable::table_type_t>(3);

CDbTable TwoRows() {
    CDbTable table{{std::int32_t{1}, L"a"s}, {2.0}};
    table.table_type() = Other;
    return table;
}

} // namespace

TEST(DbTable, IsAVectorOfRowsWithAType) {
    CDbTable table;
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(table.table_type(), static_cast<CDbTable::table_type_t>(0));
    table.push_back({std::int32_t{1}});
    table.emplace_back().emplace_back(L"x"s);
    EXPECT_EQ(table.size(), 2U);
    EXPECT_EQ(table[1][0], cell_t(L"x"s));
    table.table_type() = Other;
    EXPECT_EQ(std::as_const(table).table_type(), Other);
    static_assert(std::is_same_v<decltype(table.table_type()), CDbTable::table_type_t&>);
    static_assert(std::is_same_v<decltype(std::as_const(table).table_type()), CDbTable::table_type_t>);
    static_assert(sizeof(CDbTable::table_type_t) == 4);
}

TEST(DbTable, CopiesCarryRowsAndType) {
    CDbTable const table = TwoRows();
    CDbTable const copy(table);
    CDbTable assigned;
    assigned = table;
    for (CDbTable const* const same : {&copy, &std::as_const(assigned)}) {
        EXPECT_EQ(*same, table);
        EXPECT_EQ(same->table_type(), Other);
    }
    EXPECT_EQ(table.size(), 2U);
}

TEST(DbTable, AMovedTableKeepsItsTypeWithoutRows) {
    CDbTable source = TwoRows();
    CDbTable moved(std::move(source));
    EXPECT_EQ(moved, TwoRows());
    EXPECT_EQ(moved.table_type(), Other);
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(source.table_type(), Other);
    CDbTable target{{std::int32_t{9}}};
    target = std::move(moved);
    EXPECT_EQ(target, TwoRows());
    EXPECT_EQ(target.table_type(), Other);
    EXPECT_TRUE(moved.empty());
    EXPECT_EQ(moved.table_type(), Other);
}

TEST(DbTable, ToLongTakesTheFirstCell) {
    struct Case {
        cell_t cell;
        std::int32_t number;
    };
    for (Case const& test : {Case{std::int32_t{216}, 216},
                             {std::uint32_t{4294967295U}, -1},
                             {std::int64_t{-3}, -3},
                             {std::uint64_t{7}, 7},
                             {8.0F, 8},
                             {2.0, 2}}) {
        row_t const row{test.cell, L"x"s};
        EXPECT_EQ(CDbTable::to_long(row), test.number);
        EXPECT_EQ((CDbTable{row, {std::int32_t{1}}}).to_long(), test.number);
    }
    for (cell_t const& cell : {cell_t(2.5), cell_t(std::int64_t{4294967296}), cell_t(L"2"s)}) {
        EXPECT_THROW(CDbTable::to_long(row_t{cell}), std::bad_variant_access);
        EXPECT_THROW(CDbTable{row_t{cell}}.to_long(), std::bad_variant_access);
    }
    static_assert(std::is_same_v<decltype(CDbTable().to_long()), std::int32_t>);
}

TEST(DbTable, ToWstringJoinsTexts) {
    struct Case {
        row_t row;
        std::wstring text;
    };
    Case const cases[] = {
        {{}, L""},
        {{L"a"s}, L"a"},
        {{L"a"s, L"b c"s}, L"a b c"},
        {{L""s, L""s}, L" "},
        {{L"a"s, L""s, L"b"s}, L"a  b"},
        {{L" a "s, L"b"s}, L" a  b"},
        {{L"a\0b"s, L"c"s}, L"a c"},
        {{L"\0a"s}, L""},
        {{L"C:\\data\\\x20AC.arc"s}, L"C:\\data\\\x20AC.arc"},
    };
    for (Case const& test : cases)
        EXPECT_EQ(CDbTable::to_wstring(test.row), test.text);
}

TEST(DbTable, ToWstringWantsTextsAlone) {
    for (cell_t const& cell : {cell_t(std::int32_t{1}), cell_t(std::uint32_t{1}), cell_t(std::int64_t{1}),
                               cell_t(std::uint64_t{1}), cell_t(1.0F), cell_t(1.0)}) {
        EXPECT_THROW(CDbTable::to_wstring({cell}), std::bad_variant_access);
        EXPECT_THROW(CDbTable::to_wstring({L"a"s, cell}), std::bad_variant_access);
    }
}
