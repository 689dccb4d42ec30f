// Tables from each of their sources.
#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/tables/db_multi_map.h>
#include <paramdb/tables/row.h>
#include <paramdb/tables/sea_typed_table.h>

#include "table_support.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <vector>

using table_support::CellError;
using table_support::ConversionError;
using table_support::Dump;
using table_support::LakeOf;
using table_support::LineError;

namespace {

// id, another id: number, name, ratio
using SeaRow = QVRow<QInt<"number">, QText<"name">, QDouble<"ratio">>;
using VectorTable = CQParamSeaTypedTable<CDbUniqueMap<QIdx2, SeaRow>>;
using TreeTable = CQParamSeaTypedTable<CUniqueTreeMap<QIdx2, SeaRow>>;
using MultiTable = CQParamSeaTypedTable<CDbMultiMap<QIdx2, SeaRow>>;

constexpr wchar_t Tag[] = L"<TTable>";
std::wstring const Name = Tag;

// The rows of a dump.
std::wstring RowLines(CQParamBaseTableInterface& table) {
    std::wstring const text = Dump(table);
    std::wstring const first = L"<-\t" + Name + L"\n";
    std::wstring const last = L"->\t" + Name + L"\n";
    EXPECT_EQ(text.substr(0, first.size()), first);
    EXPECT_EQ(text.substr(text.size() - last.size()), last);
    return text.substr(first.size(), text.size() - first.size() - last.size());
}

CResourceSea SeaOf(CResourceSea::LineList const& lines) {
    CResourceSea sea;
    sea.MakeList(Name) = lines;
    return sea;
}

template <class Table>
class SeaTypedTable : public testing::Test {
protected:
    Table table{Tag};
    MessageLog messages;
};

using Tables = testing::Types<VectorTable, TreeTable, MultiTable>;
TYPED_TEST_SUITE(SeaTypedTable, Tables, );

TYPED_TEST(SeaTypedTable, ReadsALake) {
    LakeOf lake(
        "a: 1\n<TTable>: {\n\t3 1 5 \"two words\" 0.5\n1 1 -7 one 1e3 rest\n  2 0 0 \"\" 0\n}\nb: 2\n");
    EXPECT_TRUE(this->table.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(this->table),
              L"   1:\t1 1 | -7 one 1000\n   2:\t2 0 | 0  0\n   3:\t3 1 | 5 two words 0.5\n");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, ReadsATableSet) {
    ParamDb::CDbTableSet set;
    set[Name] = {
        {{3, 1, 5, L"two words", 0.5}}, {{1.0, 1U, -7, L"one", 1000, L"rest"}}, {{2, 0, 0, L"", 0.0F}}};
    EXPECT_TRUE(this->table.ReadTable(set));
    EXPECT_EQ(RowLines(this->table),
              L"   1:\t1 1 | -7 one 1000\n   2:\t2 0 | 0  0\n   3:\t3 1 | 5 two words 0.5\n");
    EXPECT_EQ(set[Name].size(), 3U);
    EXPECT_EQ(set[Name][0].size(), 5U);
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, ReadsASea) {
    CResourceSea sea = SeaOf({L"3 1 5 \"two words\" 0.5", L"1 1 -7 \x20AC 1e3 rest", L"2 0 0 \"\" 0"});
    EXPECT_TRUE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table),
              L"   1:\t1 1 | -7 \x20AC 1000\n   2:\t2 0 | 0  0\n   3:\t3 1 | 5 two words 0.5\n");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, AnEmptyTableIsRead) {
    this->table.insert({QIdx2(1, 1), SeaRow()});
    LakeOf lake("<TTable>: {\n}\n");
    EXPECT_TRUE(this->table.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(this->table), L"");
    ParamDb::CDbTableSet set;
    set[Name];
    this->table.insert({QIdx2(1, 1), SeaRow()});
    EXPECT_TRUE(this->table.ReadTable(set));
    EXPECT_EQ(RowLines(this->table), L"");
    CResourceSea sea = SeaOf({});
    this->table.insert({QIdx2(1, 1), SeaRow()});
    EXPECT_TRUE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table), L"");
}

TYPED_TEST(SeaTypedTable, AMissingTableIsEmptyAndReportsNothing) {
    LakeOf empty_lake("");
    LakeOf other_lake("<TOther>: {\n1 1 1 a 1\n}\nx: {\n<TTable>: {\n1 1 1 a 1\n}\n}\n");
    ParamDb::CDbTableSet set;
    set[L"<TOther>"] = {{{1, 1, 1, L"a", 1.0}}};
    CResourceSea sea;
    sea.MakeList(L"<TOther>") = {L"1 1 1 a 1"};
    std::function<bool()> const reads[] = {
        [&] { return this->table.ReadTable(nullptr); },
        [&] { return this->table.ReadTable(&sea); },
        [&] { return this->table.ReadTable(set); },
        [&] { return this->table.ReadTable(empty_lake.lake); },
        [&] { return this->table.ReadTable(other_lake.lake); },
    };
    for (auto const& read : reads) {
        this->table.insert({QIdx2(1, 1), SeaRow()});
        EXPECT_FALSE(read());
        EXPECT_EQ(RowLines(this->table), L"");
    }
    EXPECT_EQ(set.size(), 1U);
    EXPECT_EQ(sea.Lists().size(), 1U);
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, ANodeThatIsNoSectionIsNotTheLocalSea) {
    CResourceSea sea = SeaOf({L"1 1 1 a 1"});
    TypeParam local(Tag, &sea);
    local.insert({QIdx2(5, 5), SeaRow()});
    LakeOf lake("<TTable>: 1 1 1 a 1\n");
    EXPECT_FALSE(local.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(local), L"");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, FallsBackToTheLocalSea) {
    CResourceSea local_sea = SeaOf({L"9 9 9 local 9"});
    TypeParam local(Tag, &local_sea);
    LakeOf lake("<TOther>: {\n}\n");
    ParamDb::CDbTableSet set;
    CResourceSea other;
    std::wstring const rows = L"   1:\t9 9 | 9 local 9\n";
    EXPECT_TRUE(local.ReadTable(nullptr));
    EXPECT_EQ(RowLines(local), rows);
    EXPECT_TRUE(local.ReadTable(&other));
    EXPECT_EQ(RowLines(local), rows);
    EXPECT_TRUE(local.ReadTable(set));
    EXPECT_EQ(RowLines(local), rows);
    EXPECT_TRUE(local.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(local), rows);
    // A sea that has the table comes first.
    other.MakeList(Name) = {L"1 1 1 other 1"};
    EXPECT_TRUE(local.ReadTable(&other));
    EXPECT_EQ(RowLines(local), L"   1:\t1 1 | 1 other 1\n");
    // The result of the local sea is the result.
    local_sea.MakeList(Name) = {L"x"};
    EXPECT_FALSE(local.ReadTable(set));
    EXPECT_EQ(this->messages.Take(),
              (std::vector<Message>{ConversionError(L"invalid stoi argument", L"x"), LineError(Name, L"x")}));
}

TYPED_TEST(SeaTypedTable, ALocalSeaWithoutTheTableIsNoSource) {
    CResourceSea sea;
    sea.MakeList(L"<TOther>") = {L"1 1 1 a 1"};
    TypeParam local(Tag, &sea);
    local.insert({QIdx2(1, 1), SeaRow()});
    EXPECT_FALSE(local.ReadTable(nullptr));
    EXPECT_EQ(local.RowCount(), 0U);
    CResourceSea other;
    EXPECT_FALSE(local.ReadTable(&other));
    ParamDb::CDbTableSet set;
    EXPECT_FALSE(local.ReadTable(set));
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, ClearForgetsTheLocalSeaAndPurgeKeepsIt) {
    CResourceSea sea = SeaOf({L"1 1 1 a 1"});
    TypeParam local(Tag, &sea);
    EXPECT_TRUE(local.ReadTable(nullptr));
    local.PurgeTable();
    EXPECT_EQ(RowLines(local), L"");
    EXPECT_TRUE(local.ReadTable(nullptr));
    EXPECT_EQ(RowLines(local), L"   1:\t1 1 | 1 a 1\n");
    local.Clear();
    EXPECT_EQ(RowLines(local), L"");
    EXPECT_FALSE(local.ReadTable(nullptr));
    EXPECT_FALSE(local.WriteTable(nullptr));
    EXPECT_EQ(RowLines(local), L"");
    EXPECT_EQ(sea.FindList(Name)->size(), 1U);
}

TYPED_TEST(SeaTypedTable, ShortLinesKeepTheValuesOfTheLineBefore) {
    std::vector<std::string> const lines{"1 1 5 first 0.5", "2", "3 3", "4 4 6", "5 5 7 second", "6"};
    std::wstring const rows = L"   1:\t1 1 | 5 first 0.5\n   2:\t2 1 | 5  0.5\n   3:\t3 3 | 5  0.5\n"
                              L"   4:\t4 4 | 6  0.5\n   5:\t5 5 | 7 second 0.5\n   6:\t6 5 | 7  0.5\n";
    std::string text = "<TTable>: {\n";
    CResourceSea sea;
    for (auto const& line : lines) {
        text += line + "\n";
        sea.MakeList(Name).emplace_back(line.begin(), line.end());
    }
    LakeOf lake(text + "}\n");
    EXPECT_TRUE(this->table.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(this->table), rows);
    EXPECT_TRUE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table), rows);
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, ValuesOfAnotherReadAreNotKept) {
    CResourceSea sea = SeaOf({L"7 7 7 seven 7"});
    EXPECT_TRUE(this->table.ReadTable(&sea));
    sea.MakeList(Name) = {L"8"};
    EXPECT_TRUE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table), L"   1:\t8 -1 | 0  0\n");
    sea.MakeList(Name) = {L""};
    EXPECT_TRUE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table), L"   1:\t-1 -1 | 0  0\n");
}

TYPED_TEST(SeaTypedTable, AFailedLineOfALakeIsLeftOutAndStillHandsOnItsValues) {
    LakeOf lake("<TTable>: {\n1 1 5 first 0.5\n2 2 9 failed x\n3\n4 y\n5\n}\n");
    EXPECT_FALSE(this->table.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(this->table), L"   1:\t1 1 | 5 first 0.5\n   2:\t3 2 | 9  0.5\n   3:\t5 2 | 9  0.5\n");
    EXPECT_EQ(this->messages.Take(), (std::vector<Message>{ConversionError(L"invalid stod argument", L" x"),
                                                           LineError(Name, L"2 2 9 failed x"),
                                                           ConversionError(L"invalid stoi argument", L" y"),
                                                           LineError(Name, L"4 y")}));
}

TYPED_TEST(SeaTypedTable, AFailedLineOfASeaIsInsertedAsFarAsItWasRead) {
    CResourceSea sea = SeaOf({L"1 1 5 first 0.5", L"2 2 9 failed x", L"3", L"4 y 1", L"5 "});
    EXPECT_FALSE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table),
              L"   1:\t1 1 | 5 first 0.5\n   2:\t2 2 | 9 failed 0.5\n   3:\t3 2 | 9  0.5\n"
              L"   4:\t4 2 | 9  0.5\n   5:\t5 2 | 9  0.5\n");
    EXPECT_EQ(
        this->messages.Take(),
        (std::vector<Message>{ConversionError(L"invalid stod argument", L" x"), LineError(Name, L" x"),
                              ConversionError(L"invalid stoi argument", L" y 1"), LineError(Name, L" y 1"),
                              ConversionError(L"invalid stoi argument", L" "), LineError(Name, L" ")}));
}

TYPED_TEST(SeaTypedTable, ATextOnALongLineIsRefused) {
    std::string const blanks(190, ' ');
    std::string const line = "1 1 5 name" + blanks + "0.5";
    std::wstring const rest = L" name" + std::wstring(190, L' ') + L"0.5";
    ASSERT_EQ(rest.size(), 198U);
    LakeOf lake("<TTable>: {\n" + line + "\n2 " + line.substr(2) + "1\n}\n");
    EXPECT_FALSE(this->table.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(this->table), L"   1:\t1 1 | 5 name 0.5\n");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>{LineError(Name, L"2 1 5" + rest + L"1")});
    CResourceSea sea = SeaOf({L"3 3 3 old 3", L"4 4 4" + rest + L"1"});
    EXPECT_FALSE(this->table.ReadTable(&sea));
    EXPECT_EQ(RowLines(this->table), L"   1:\t3 3 | 3 old 3\n   2:\t4 4 | 4 old 3\n");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>{LineError(Name, rest + L"1")});
}

TYPED_TEST(SeaTypedTable, FaultyRowsOfATableSetAreLeftOut) {
    ParamDb::CDbTableSet set;
    set[Name] = {
        {{1, 1, 1, L"good", 1.0}},
        {{2, 2, 2, L"short"}},                     // too few cells
        {ParamDb::row_t()},                        // none
        {{3, 3, 3, std::wstring(199, L'x'), 3.0}}, // a text too long
        {{4, 4, 4, std::wstring(198, L'y'), 4.0}}, // one that fits
    };
    EXPECT_FALSE(this->table.ReadTable(set));
    EXPECT_EQ(RowLines(this->table),
              L"   1:\t1 1 | 1 good 1\n   2:\t4 4 | 4 " + std::wstring(198, L'y') + L" 4\n");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>(3, LineError(Name, L"<variants>")));
}

TYPED_TEST(SeaTypedTable, CellsOfAnotherTypeAreReportedAndDoNotSpoilTheResult) {
    ParamDb::CDbTableSet set;
    set[Name] = {
        {{1, 1, 1, L"good", 1.0}},
        {{L"2", 2, 2, L"a", 2.0}},
        {{3, 0.5, 3, L"a", 3.0}},
        {{4, 4, 4, 4, 4.0}},
        {{5, 5, 5, L"a", L"5"}},
        {{6, 6, 6, L"a", L"6", 7, 8}},
        {{7, L"7"}},
        {{8, 8, 8, L"also good", 8.0}},
    };
    EXPECT_TRUE(this->table.ReadTable(set));
    EXPECT_EQ(RowLines(this->table), L"   1:\t1 1 | 1 good 1\n   2:\t8 8 | 8 also good 8\n");
    EXPECT_EQ(this->messages.Take(),
              (std::vector<Message>{CellError(Name, 5), CellError(Name, 4), CellError(Name, 2),
                                    CellError(Name, 1), CellError(Name, 3), CellError(Name, 1)}));
}

TYPED_TEST(SeaTypedTable, BlankAndCommentLinesOfASectionAreRows) {
    LakeOf lake("<TTable>: {\n\n; remark\n1 1 1 a 1\nkey: 2 2 2 b 2\n}\n");
    EXPECT_TRUE(this->table.ReadTable(lake.lake));
    std::wstring const blank = L"-1 -1 | 0  0\n";
    bool const keeps_all = std::is_same_v<TypeParam, MultiTable>;
    EXPECT_EQ(RowLines(this->table), keeps_all
                                         ? L"   1:\t" + blank + L"   2:\t" + blank + L"   3:\t1 1 | 1 a 1\n"
                                         : L"   1:\t" + blank + L"   2:\t1 1 | 1 a 1\n");
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TYPED_TEST(SeaTypedTable, WritesAndReadsBack) {
    CResourceSea source = SeaOf({L"3 1 5 \x20AC 0.5", L"1 1 -7 one 1e10", L"2 0 0 two -inf"});
    EXPECT_TRUE(this->table.ReadTable(&source));
    std::wstring const rows = RowLines(this->table);
    CResourceSea target = SeaOf({L"old", L"lines"});
    EXPECT_TRUE(this->table.WriteTable(&target));
    EXPECT_EQ(*target.FindList(Name),
              (CResourceSea::LineList{L"1 1 -7 one 1e+10", L"2 0 0 two -inf", L"3 1 5 \x20AC 0.5"}));
    TypeParam local(Tag, &target);
    EXPECT_TRUE(local.ReadTable(nullptr));
    EXPECT_EQ(RowLines(local), rows);
    local.PurgeTable();
    local.insert({QIdx2(4, 4), SeaRow(4, CFixedText(L"two words"), 0.25)});
    EXPECT_TRUE(local.WriteTable(nullptr));
    EXPECT_EQ(*target.FindList(Name), (CResourceSea::LineList{L"4 4 4 two words 0.25"})); // without quotes
    local.PurgeTable();
    EXPECT_TRUE(local.WriteTable(nullptr));
    ASSERT_TRUE(target.IsListEntry(Tag));
    EXPECT_TRUE(target.FindList(Name)->empty());
    EXPECT_FALSE(this->table.WriteTable(nullptr));
    EXPECT_EQ(this->messages.Take(), std::vector<Message>());
}

TEST(SeaTypedTables, DuplicateKeysAreDroppedSilentlyUnlessTheTableKeepsThem) {
    MessageLog messages;
    LakeOf lake("<TTable>: {\n2 2 1 first 1\n1 1 2 x 2\n2 2 3 second 3\n2 2 1 first 1\n}\n");
    std::wstring const unique = L"   1:\t1 1 | 2 x 2\n   2:\t2 2 | 1 first 1\n";
    VectorTable vector(Tag);
    EXPECT_TRUE(vector.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(vector), unique);
    TreeTable tree(Tag);
    EXPECT_TRUE(tree.ReadTable(lake.lake));
    EXPECT_EQ(RowLines(tree), unique);
    MultiTable multi(Tag);
    EXPECT_TRUE(multi.ReadTable(lake.lake));
    EXPECT_EQ(
        RowLines(multi),
        L"   1:\t1 1 | 2 x 2\n   2:\t2 2 | 1 first 1\n   3:\t2 2 | 3 second 3\n   4:\t2 2 | 1 first 1\n");
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST(SeaTypedTables, AVectorReservesOnceAndKeepsItsMemory) {
    std::string text = "<TTable>: {\n";
    for (int id = 1000; id > 0; --id)
        text += std::to_string(id) + " 0 1 a 1\n";
    LakeOf lake(text + "}\n");
    VectorTable table(Tag);
    EXPECT_TRUE(table.ReadTable(lake.lake));
    EXPECT_EQ(table.size(), 1000U);
    EXPECT_EQ(table.capacity(), 1000U);
    table.PurgeTable();
    EXPECT_EQ(table.capacity(), 1000U);
    table.Clear();
    EXPECT_EQ(table.capacity(), 1000U);
    LakeOf small("<TTable>: {\n2 2 2 a 2\n1 1 1 a 1\n}\n");
    EXPECT_TRUE(table.ReadTable(small.lake));
    EXPECT_EQ(table.size(), 2U);
    EXPECT_EQ(table.capacity(), 1000U);
}

TEST(TypedTable, StandsAloneWithoutASea) {
    CQParamTypedTable<CDbUniqueMap<QIdx2, SeaRow>> table(Tag);
    EXPECT_STREQ(table.tag(), Tag);
    table.insert({QIdx2(1, 1), SeaRow()});
    EXPECT_EQ(RowLines(table), L"   1:\t1 1 | 0  0\n");
    table.Clear();
    EXPECT_EQ(table.RowCount(), 0U);
    table.insert({QIdx2(2, 1), SeaRow()});
    table.PurgeTable();
    EXPECT_EQ(RowLines(table), L"");
}

} // namespace
