#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/db_multi_map.h>
#include <paramdb/tables/row.h>
#include <paramdb/tables/table_rows.h>
#include <paramdb/tables/typed_table.h>
#include <paramdb/tables/unique_vector_map.h>

#include "reader_cases.h"
#include "table_support.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

using table_support::Dump;

namespace {

using NamedValue = QVRow<QText<"name">, QFloat<"value">>;
using ValueTable = CQParamTypedTable<CUniqueVectorMap<QIdx2, NamedValue>>;
using NameTable = CQParamTypedTable<CDbMultiMap<QIdx1, QIdxName>>;

// Rows 1 to `count`.
void Fill(ValueTable& table, int count) {
    for (int id = 1; id <= count; ++id)
        table.insert({QIdx2(id, -1), NamedValue(CFixedText(L"two words"), static_cast<float>(id) / 4)});
}

TEST(TableRows, LinesOfADump) {
    ValueTable table(L"<TMode>");
    EXPECT_EQ(table.tag(), std::wstring(L"<TMode>"));
    EXPECT_EQ(Dump(table), L"<-\t<TMode>\n->\t<TMode>\n");
    Fill(table, 2);
    table.insert({QIdx2(-7, 2000000), NamedValue(CFixedText(L""), 1234567.0F)});
    EXPECT_EQ(Dump(table), L"<-\t<TMode>\n"
                           L"   1:\t-7 2000000 |  1.23457e+06\n"
                           L"   2:\t1 -1 | two words 0.25\n"
                           L"   3:\t2 -1 | two words 0.5\n"
                           L"->\t<TMode>\n");
}

TEST(TableRows, ALineIsOneMessage) {
    ValueTable table(L"<T>");
    Fill(table, 2);
    MessageLog messages;
    table.DumpTable(1);
    EXPECT_EQ(messages.Take(), (std::vector<Message>{{8, 1, L"<-\t<T>\n"},
                                                     {8, 1, L"   1:\t1 -1 | two words 0.25\n"},
                                                     {8, 1, L"   2:\t2 -1 | two words 0.5\n"},
                                                     {8, 1, L"... more ...\n"},
                                                     {8, 1, L"->\t<T>\n"}}));
}

TEST(TableRows, LimitsOfADump) {
    constexpr int lowest = std::numeric_limits<int>::min();
    struct {
        int rows;
        int limit;
        int shown;
        bool more;
    } const cases[] = {
        {0, 0, 0, false},  {0, 1, 0, false},
        {0, -1, 0, false}, {1, 0, 1, false},
        {1, 1, 1, false},  {1, 2, 1, false},
        {2, 1, 2, true},   {3, 1, 2, true},
        {2, 2, 2, false},  {3, 2, 3, true},
        {4, 2, 3, true},   {9, 2, 3, true},
        {3, 3, 3, false},  {4, 3, 4, true},
        {9, 0, 9, false},  {9, -1, 9, false},
        {9, -9, 9, false}, {9, lowest, 9, false},
        {9, 8, 9, true},   {9, 9, 9, false},
        {9, 10, 9, false}, {9, std::numeric_limits<int>::max(), 9, false},
    };
    for (auto const& [rows, limit, shown, more] : cases) {
        SCOPED_TRACE(std::to_string(rows) + " rows, limit " + std::to_string(limit));
        ValueTable table(L"<T>");
        Fill(table, rows);
        ValueTable expected(L"<T>");
        Fill(expected, shown);
        std::wstring text = Dump(expected);
        if (more)
            text.insert(text.find(L"->"), L"... more ...\n");
        EXPECT_EQ(Dump(table, limit), text);
    }
}

TEST(TableRows, RowsOfOneKeyInTheirOrder) {
    NameTable table(L"<TSensorGroupList>");
    for (wchar_t const* const name : {L"z", L"a", L"m"})
        table.insert({QIdx1(2), QIdxName(name)});
    table.insert({QIdx1(1), QIdxName(L"last")});
    EXPECT_EQ(Dump(table),
              L"<-\t<TSensorGroupList>\n   1:\t1 | last\n   2:\t2 | z\n   3:\t2 | a\n   4:\t2 | m\n"
              L"->\t<TSensorGroupList>\n");
}

TEST(TableRows, AWalkEndsWhereTheVisitorSays) {
    ValueTable table(L"<T>");
    Fill(table, 5);
    EXPECT_EQ(table.RowCount(), 5U);
    std::vector<int> seen;
    table.VisitRows([&](auto key, auto row) {
        EXPECT_EQ(key.size(), 2U);
        EXPECT_EQ(row.size(), 2U);
        EXPECT_EQ(row[0].type(), paramdb::FieldType::Text);
        seen.push_back(key[0].template As<std::int32_t>());
        return seen.size() < 3;
    });
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3}));
}

TEST(TableRows, BytesOfTheRows) {
    ValueTable table(L"<T>");
    EXPECT_EQ(paramdb::MemoryBytes(table), 0U);
    table.reserve(10);
    std::size_t const reserved = table.capacity() * sizeof(ValueTable::value_type);
    EXPECT_EQ(table.ContainerBytes(), reserved);
    EXPECT_EQ(paramdb::MemoryBytes(table), reserved);
    table.insert({QIdx2(1, 1), NamedValue(CFixedText(L"abc"), 0.0F)});
    table.insert({QIdx2(1, 2), NamedValue(CFixedText(), 0.0F)});
    EXPECT_EQ(paramdb::MemoryBytes(table), reserved + 4 * sizeof(wchar_t));
    NameTable tree(L"<T>");
    EXPECT_EQ(paramdb::MemoryBytes(tree), 0U);
    tree.insert({QIdx1(1), QIdxName(L"abcd")});
    EXPECT_GE(paramdb::MemoryBytes(tree), sizeof(NameTable::value_type) + 5 * sizeof(wchar_t));
}

} // namespace

void reader_cases::CheckDumpCounters() {
    ValueTable table(L"<T>");
    Fill(table, 10001);
    std::wstring const dump = Dump(table);
    // The counter keeps to a width of four until it outgrows it, and knows no grouping of digits.
    for (wchar_t const* const line :
         {L"\n   1:\t1 -1 | two words 0.25\n", L"\n   9:\t9 -1 | two words 2.25\n",
          L"\n  10:\t10 -1 | two words 2.5\n", L"\n 999:\t999 -1 | two words 249.75\n",
          L"\n1000:\t1000 -1 | two words 250\n", L"\n9999:\t9999 -1 | two words 2499.75\n",
          L"\n10000:\t10000 -1 | two words 2500\n", L"\n10001:\t10001 -1 | two words 2500.25\n->\t<T>\n"})
        EXPECT_NE(dump.find(line), std::wstring::npos) << testing::PrintToString(std::wstring(line));
}

namespace {

TEST(TableRows, CountersOfADump) {
    reader_cases::CheckDumpCounters();
}

} // namespace
