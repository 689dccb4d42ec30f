#include <paramdb/storage/db_table_set.h>

#include <cstdint>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace std::string_literals;
using ParamDb::CDbTable;
using ParamDb::CDbTableSet;

namespace {

CDbTable TableOf(std::int32_t number, int type = 0) {
    CDbTable table{{number}};
    table.table_type() = static_cast<CDbTable::table_type_t>(type);
    return table;
}

std::vector<std::wstring> Keys(CDbTableSet const& set) {
    std::vector<std::wstring> keys;
    for (auto const& [key, table] : set)
        keys.push_back(key);
    return keys;
}

} // namespace

TEST(DbTableSet, IsAMapInTheOrderOfCodeUnits) {
    CDbTableSet set;
    EXPECT_TRUE(set.empty());
    for (wchar_t const* const key : {L"b", L"<TMode>", L"B", L"\x20AC", L"a", L"<QType><FBaseName>", L"\xE4"})
        set[key];
    EXPECT_EQ(Keys(set), (std::vector<std::wstring>{L"<QType><FBaseName>", L"<TMode>", L"B", L"a", L"b",
                                                    L"\xE4", L"\x20AC"}));
    EXPECT_EQ(set.erase(L"B"), 1U);
    EXPECT_EQ(set.count(L"b"), 1U);
    EXPECT_EQ(set.find(L"missing"), set.end());
    EXPECT_EQ(set.size(), 6U);
}

TEST(DbTableSet, TheIndexOperatorInsertsAnEmptyTable) {
    CDbTableSet set;
    std::wstring const key = L"<TMode>";
    EXPECT_TRUE(set[key].empty());
    EXPECT_EQ(set.size(), 1U);
    set[key] = TableOf(5);
    EXPECT_EQ(set[key].to_long(), 5);
    std::wstring moved = L"<TMode>";
    EXPECT_EQ(set[std::move(moved)].to_long(), 5);
    EXPECT_TRUE(set[L"<TChannel>"s].empty());
    EXPECT_EQ(set.size(), 2U);
}

TEST(DbTableSet, AtFindsOrThrows) {
    CDbTableSet set;
    set[L"a"] = TableOf(5);
    EXPECT_EQ(&set.at(L"a"), &set[L"a"]);
    EXPECT_EQ(&std::as_const(set).at(L"a"), &set[L"a"]);
    auto const failure = [](auto& target) -> std::string {
        try {
            target.at(L"b");
        } catch (std::out_of_range const& error) {
            return error.what();
        }
        return "nothing";
    };
    EXPECT_EQ(failure(set), "invalid map<K, T> key");
    EXPECT_EQ(failure(std::as_const(set)), "invalid map<K, T> key");
    EXPECT_EQ(set.size(), 1U);
}

TEST(DbTableSet, CopiesAndMoves) {
    CDbTableSet set;
    set[L"a"] = TableOf(5, 2);
    CDbTableSet const copy(set);
    EXPECT_EQ(copy, set);
    EXPECT_EQ(copy.at(L"a").table_type(), static_cast<CDbTable::table_type_t>(2));
    CDbTableSet moved(std::move(set));
    EXPECT_EQ(moved, copy);
    CDbTableSet target;
    target[L"b"];
    target = std::move(moved);
    EXPECT_EQ(target, copy);
    target = CDbTableSet();
    EXPECT_TRUE(target.empty());
}

TEST(DbTableSet, AMergeAddsMissingTablesOnly) {
    CDbTableSet set;
    set[L"a"] = TableOf(1);
    set[L"empty"];
    CDbTableSet other;
    other[L"a"] = TableOf(2);
    other[L"a"].push_back({std::int32_t{3}});
    other[L"b"] = TableOf(4, 7);
    other[L"empty"] = TableOf(5);
    other[L"none"];
    CDbTableSet const before = other;
    set.merge(other);
    EXPECT_EQ(Keys(set), (std::vector<std::wstring>{L"a", L"b", L"empty", L"none"}));
    EXPECT_EQ(set[L"a"], TableOf(1));
    EXPECT_EQ(set[L"b"], TableOf(4));
    EXPECT_EQ(set[L"b"].table_type(), static_cast<CDbTable::table_type_t>(7));
    EXPECT_TRUE(set[L"empty"].empty());
    EXPECT_TRUE(set[L"none"].empty());
    EXPECT_EQ(other, before);
    set[L"b"][0][0] = std::int32_t{8};
    EXPECT_EQ(other, before);
}

TEST(DbTableSet, MergingWithItselfOrNothingChangesNothing) {
    CDbTableSet set;
    set[L"a"] = TableOf(1);
    CDbTableSet const before = set;
    set.merge(set);
    set.merge(CDbTableSet());
    EXPECT_EQ(set, before);
    CDbTableSet empty;
    empty.merge(set);
    EXPECT_EQ(empty, before);
}
