#include "tests/tools/diff/row_samples.h"

#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <random>
#include <set>
#include <stdexcept>

using namespace paramdb::tools;

namespace {

constexpr float Nan = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

std::vector<FieldValue> RowOf(RowTable const& table, std::size_t row) {
    std::vector<FieldValue> fields;
    for (std::size_t column = 0; column < table.columns().columns.size(); ++column)
        fields.push_back(table.Value(row, column));
    return fields;
}

// -1, 0 or 1 for a column of two rows of one table.
int Order(SampleRow const& left, SampleRow const& right, std::size_t column) {
    RowTable table(SampleColumns());
    table.Add(left.Fields());
    table.Add(right.Fields());
    auto const order = RowTable::Compare(table, 0, table, 1, column);
    auto const back = RowTable::Compare(table, 1, table, 0, column);
    EXPECT_EQ(order<0, back> 0);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace

TEST(RowTableTest, HoldsTheFieldsOfAllTypes) {
    std::vector<SampleRow> const rows{
        {-2147483647 - 1, L"", 4294967295U, std::numeric_limits<std::int64_t>::min(), -Infinity, 1e-310,
         L"a"},
        {-1, L"x", 0, -1, -0.0f, 0.1, L"a"},
        {2147483647, L"", 1, std::numeric_limits<std::int64_t>::max(), Infinity, -1e308, L""},
        {2147483647, L"\xD83D\xDE00", 2, 0, 3.5f, 0, std::wstring(300, L'z')},
    };
    RowTable const table = SampleTable(rows);
    ASSERT_EQ(table.size(), rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        EXPECT_EQ(RowOf(table, row), rows[row].Fields()) << row;
}

TEST(RowTableTest, KeepsANan) {
    RowTable const table = SampleTable({{.width = Nan, .ratio = Nan}});
    EXPECT_TRUE(std::isnan(std::get<float>(table.Value(0, 4))));
    EXPECT_TRUE(std::isnan(std::get<double>(table.Value(0, 5))));
}

TEST(RowTableTest, TakesTheRowsOfATable) {
    auto const table_of = [](wchar_t const* tag) -> paramdb::TableDescription const& {
        for (auto const& table : paramdb::Catalogue())
            if (std::wstring_view(table.tag) == tag)
                return table;
        throw std::invalid_argument("no such table");
    };
    RowColumns const columns = RowColumnsOf(table_of(L"<TIpPolygonValue>"));
    ASSERT_EQ(columns.columns.size(), 3U);
    EXPECT_EQ(columns.key_columns, 2U);
    EXPECT_EQ(columns.columns[0].name, "polygon");
    EXPECT_EQ(columns.columns[1].name, "x");
    EXPECT_EQ(columns.columns[2].name, "y");

    RowTable table(columns);
    QIdxIF const key(3, 0.5f);
    QVIpY row;
    row.get<"y">() = 70;
    table.Add(paramdb::ConstFields(key), paramdb::ConstFields(row));
    EXPECT_EQ(RowOf(table, 0), (std::vector<FieldValue>{3, 0.5f, 70.0f}));
}

TEST(RowTableTest, SortsByKeyAndKeepsTheOrderOfEqualOnes) {
    RowTable const table = SampleTable({{2, L"b", 1},
                                        {2, L"a", 2},
                                        {-1, L"z", 3},
                                        {2, L"a", 4},
                                        {-1, L"", 5},
                                        {2, L"\xD800", 6},
                                        {2, L"\xE000", 7},
                                        {2, L"ab", 8}});
    std::vector<unsigned int> order;
    for (std::size_t row = 0; row < table.size(); ++row)
        order.push_back(std::get<std::uint32_t>(table.Value(row, 2)));
    EXPECT_EQ(order, (std::vector<unsigned int>{5, 3, 2, 4, 8, 1, 6, 7}));
}

TEST(RowTableTest, OrdersFields) {
    struct Case {
        SampleRow left;
        SampleRow right;
        std::size_t column;
        int order;
    };
    for (Case const& sample : std::vector<Case>{
             {{.id = -1}, {.id = 0}, 0, -1},
             {{.part = L"a"}, {.part = L"ab"}, 1, -1},
             {{.part = L"B"}, {.part = L"a"}, 1, -1},
             {{.part = L"a"}, {.part = L"a"}, 1, 0},
             {{.count = 4294967295U}, {.count = 0}, 2, 1},
             {{.total = -1}, {.total = 4294967295}, 3, -1},
             {{.width = -0.0f}, {.width = 0.0f}, 4, 0},
             {{.width = -2}, {.width = -1}, 4, -1},
             {{.width = Nan}, {.width = -Nan}, 4, 0},
             {{.width = Nan}, {.width = Infinity}, 4, 1},
             {{.width = -Infinity}, {.width = Nan}, 4, -1},
             {{.ratio = -0.0}, {.ratio = 0.0}, 5, 0},
             {{.ratio = Nan}, {.ratio = Nan}, 5, 0},
             {{.ratio = 1}, {.ratio = Nan}, 5, -1},
             {{.ratio = 1e300}, {.ratio = 1e-300}, 5, 1},
         })
        EXPECT_EQ(Order(sample.left, sample.right, sample.column), sample.order) << sample.column;
}

TEST(RowTableTest, ComparesKeysAndRows) {
    RowTable const a = SampleTable({{1, L"x", 7, 0, 0, 0, L"old"}});
    RowTable const b = SampleTable({{1, L"x", 7, 0, 0, 0, L"new"}, {1, L"y", 0}});
    EXPECT_TRUE(RowTable::CompareKeys(a, 0, b, 0) == 0);
    EXPECT_TRUE(RowTable::CompareRows(a, 0, b, 0) > 0);
    EXPECT_TRUE(RowTable::CompareKeys(a, 0, b, 1) < 0);
    EXPECT_TRUE(RowTable::CompareRows(a, 0, b, 1) < 0);
    EXPECT_TRUE(RowTable::CompareRows(a, 0, a, 0) == 0);
}

TEST(RowTableTest, FindsIds) {
    RowTable table({{{"id", paramdb::FieldType::Int}, {"name", paramdb::FieldType::Text}}, 1});
    EXPECT_EQ(table.Find(0), 0U);
    std::mt19937 random(1);
    std::set<int> ids;
    while (ids.size() < 200)
        ids.insert(static_cast<int>(random() % 1000) - 500);
    for (int const id : ids)
        table.Add(std::vector<FieldValue>{id, std::wstring_view(L"name")});
    for (int id = -501; id <= 501; ++id) {
        auto const found = ids.find(id);
        EXPECT_EQ(table.Find(id), found == ids.end()
                                      ? table.size()
                                      : static_cast<std::size_t>(std::distance(ids.begin(), found)))
            << id;
    }
}
