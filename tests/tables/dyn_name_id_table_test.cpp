#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/tables/dyn_name_id_table.h>

#include "table_support.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

using table_support::Dump;
using table_support::LakeOf;
using table_support::LineError;

namespace {

class DynNameIdTable : public testing::Test {
protected:
    std::wstring Name(int id) const { return table.Name(id); }

    CDynNameIdTable table{L"<TMode>"};
    MessageLog messages;
};

TEST_F(DynNameIdTable, AnEmptyTableKnowsNothing) {
    EXPECT_EQ(table.Idx(L"idle"), -1);
    EXPECT_EQ(table.Idx(L""), -1);
    EXPECT_EQ(Name(1), L"");
    EXPECT_EQ(Name(-1), L"");
    EXPECT_FALSE(table.IsValidId(-1));
    EXPECT_EQ(table.Name(1), table.Name(2)); // one text for all misses
}

TEST_F(DynNameIdTable, BothDirectionsFollowALake) {
    LakeOf lake("<TMode>: {\n5 idle\n-3 \"run up\"\n7 \"\"\n-1 none\n0 M\xF6"
                "de\n}\n");
    EXPECT_TRUE(table.ReadTable(lake.lake));
    struct {
        int id;
        wchar_t const* name;
    } const cases[] = {{5, L"idle"},
                       {-3, L"run up"},
                       {7, L""},
                       {-1, L"none"},
                       {0, L"M\xF6"
                           L"de"}};
    for (auto const& [id, name] : cases) {
        EXPECT_EQ(table.Idx(name), id);
        EXPECT_EQ(Name(id), name);
        EXPECT_TRUE(table.IsValidId(id));
    }
    EXPECT_FALSE(table.IsValidId(1));
    for (wchar_t const* const name : {L"Idle", L"idle ", L"run", L"i", L"5"})
        EXPECT_EQ(table.Idx(name), -1);
    EXPECT_EQ(Dump(table), L"<-\t<TMode>\n   1:\t-3 | run up\n   2:\t-1 | none\n   3:\t0 | M\xF6"
                           L"de\n   4:\t5 | idle\n   5:\t7 | \n->\t<TMode>\n");
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(DynNameIdTable, EachReadReplacesBothDirections) {
    LakeOf lake("<TMode>: {\n1 from_lake\n2 both\n}\n");
    EXPECT_TRUE(table.ReadTable(lake.lake));
    ParamDb::CDbTableSet set;
    set[L"<TMode>"] = {{{1, L"from set"}}, {{3, L"both"}}};
    EXPECT_TRUE(table.ReadTable(set));
    EXPECT_EQ(table.Idx(L"from_lake"), -1);
    EXPECT_EQ(table.Idx(L"from set"), 1);
    EXPECT_EQ(table.Idx(L"both"), 3);
    EXPECT_EQ(Name(2), L"");
    CResourceSea sea;
    sea.MakeList(L"<TMode>") = {L"4 \x20AC"};
    EXPECT_TRUE(table.ReadTable(&sea));
    EXPECT_EQ(table.Idx(L"\x20AC"), 4);
    EXPECT_EQ(table.Idx(L"both"), -1);
    EXPECT_FALSE(table.ReadTable(nullptr));
    EXPECT_EQ(table.Idx(L"\x20AC"), -1);
    EXPECT_EQ(Name(4), L"");
}

TEST_F(DynNameIdTable, ClearAndPurgeEmptyBothDirections) {
    CResourceSea sea;
    sea.MakeList(L"<TMode>") = {L"1 idle"};
    EXPECT_TRUE(table.ReadTable(&sea));
    table.PurgeTable();
    EXPECT_EQ(table.Idx(L"idle"), -1);
    EXPECT_EQ(Name(1), L"");
    EXPECT_TRUE(table.ReadTable(&sea));
    EXPECT_EQ(table.Idx(L"idle"), 1);
    table.Clear();
    EXPECT_EQ(table.Idx(L"idle"), -1);
    EXPECT_EQ(Name(1), L"");
}

TEST_F(DynNameIdTable, TheFirstRowOfAnIdStays) {
    LakeOf lake("<TMode>: {\n1 first\n1 second\n2 third\n}\n");
    EXPECT_TRUE(table.ReadTable(lake.lake));
    EXPECT_EQ(Name(1), L"first");
    EXPECT_EQ(table.Idx(L"first"), 1);
    EXPECT_EQ(table.Idx(L"second"), -1);
    EXPECT_EQ(table.size(), 2U);
}

TEST_F(DynNameIdTable, OfOneNameTwiceTheFirstInReadingOrderCounts) {
    LakeOf lake("<TMode>: {\n9 same\n2 other\n1 same\n}\n");
    EXPECT_TRUE(table.ReadTable(lake.lake));
    EXPECT_EQ(table.Idx(L"same"), 9);
    EXPECT_EQ(Name(1), L"same");
    EXPECT_EQ(Name(9), L"same");
    EXPECT_EQ(table.size(), 3U);
}

TEST_F(DynNameIdTable, AFaultyLineIsInNeitherDirection) {
    LakeOf lake("<TMode>: {\n1 one\n2 " + std::string(198, 'x') + "\n3 three\n}\n");
    EXPECT_FALSE(table.ReadTable(lake.lake));
    EXPECT_EQ(Name(2), L"");
    EXPECT_EQ(table.Idx(std::wstring(198, L'x').c_str()), -1);
    EXPECT_EQ(table.Idx(L"three"), 3);
    EXPECT_EQ(messages.Take(), std::vector<Message>{LineError(L"<TMode>", L"2 " + std::wstring(198, L'x'))});
}

TEST_F(DynNameIdTable, AddKeepsWhatIsThere) {
    EXPECT_TRUE(table.Add(1, L"one"));
    EXPECT_FALSE(table.Add(1, L"uno"));
    EXPECT_TRUE(table.Add(2, L"one"));
    EXPECT_TRUE(table.Add(-1, L""));
    EXPECT_EQ(Name(1), L"one");
    EXPECT_EQ(Name(2), L"one");
    EXPECT_EQ(table.Idx(L"one"), 1);
    EXPECT_EQ(table.Idx(L"uno"), -1);
    EXPECT_EQ(table.Idx(L""), -1);
    EXPECT_TRUE(table.IsValidId(-1));
    EXPECT_EQ(table.size(), 3U);
}

TEST_F(DynNameIdTable, ALongNameIsCutAndReported) {
    std::wstring const longest(199, L'n');
    std::wstring const longer = longest + L"!";
    EXPECT_TRUE(table.Add(4, longer.c_str()));
    EXPECT_EQ(Name(4), longest);
    EXPECT_EQ(table.Idx(longest.c_str()), 4);
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    EXPECT_EQ(table.Idx(longer.c_str()), 4);
    EXPECT_EQ(table.Idx((std::wstring(L"x") + longer).c_str()), -1);
    std::wstring const beginning =
        L"TableType::strcopy(): copy truncated because destination string with length 200 can't take '";
    EXPECT_EQ(messages.Take(), (std::vector<Message>{{1, 1, beginning + longer + L"'\n"},
                                                     {1, 1, beginning + L"x" + longer + L"'\n"}}));
}

TEST_F(DynNameIdTable, RandomRowsInBothDirections) {
    std::mt19937 random(41);
    for (int round = 0; round < 200; ++round) {
        CResourceSea sea;
        std::map<int, std::wstring> names;
        std::map<std::wstring, int> ids;
        for (std::size_t count = random() % 60; count > 0; --count) {
            int const id = static_cast<int>(random() % 40) - 5;
            std::wstring const name = L"n" + std::to_wstring(random() % 40);
            sea.MakeList(L"<TMode>").push_back(std::to_wstring(id) + L" " + name);
            if (names.try_emplace(id, name).second)
                ids.try_emplace(name, id);
        }
        ASSERT_EQ(table.ReadTable(&sea), sea.IsListEntry(L"<TMode>"));
        for (int id = -6; id < 36; ++id)
            ASSERT_EQ(Name(id), names.contains(id) ? names[id] : L"");
        for (int number = 0; number < 40; ++number) {
            std::wstring const name = L"n" + std::to_wstring(number);
            ASSERT_EQ(table.Idx(name.c_str()), ids.contains(name) ? ids[name] : -1);
        }
    }
}

} // namespace
