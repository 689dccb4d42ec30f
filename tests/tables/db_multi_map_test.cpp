#include <paramdb/tables/db_multi_map.h>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Rows = std::vector<std::pair<int, std::string>>;

TEST(DbMultiMap, RowsOfOneKeyStayInTheOrderOfArrival) {
    CDbMultiMap<int, std::string> map;
    for (auto const& [key, row] : Rows{{2, "first"}, {1, "a"}, {2, "second"}, {3, "c"}, {2, "first"}})
        map.insert({key, row});
    EXPECT_EQ(Rows(map.begin(), map.end()),
              (Rows{{1, "a"}, {2, "first"}, {2, "second"}, {2, "first"}, {3, "c"}}));
    EXPECT_EQ(map.count(2), 3U);
    auto const [begin, end] = map.equal_range(2);
    EXPECT_EQ(Rows(begin, end), (Rows{{2, "first"}, {2, "second"}, {2, "first"}}));
    EXPECT_EQ(map.find(4), map.end());
}

TEST(DbMultiMap, AnotherOrder) {
    CDbMultiMap<int, std::string, std::greater<int>> map;
    for (int const key : {1, 3, 2, 3})
        map.insert({key, std::to_string(map.size())});
    EXPECT_EQ(Rows(map.begin(), map.end()), (Rows{{3, "1"}, {3, "3"}, {2, "2"}, {1, "0"}}));
}

TEST(DbMultiMap, RandomRowsAgainstAStableSort) {
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        Rows rows;
        for (std::size_t count = random() % 100; count > 0; --count)
            rows.emplace_back(static_cast<int>(random() % 10), std::to_string(rows.size()));
        CDbMultiMap<int, std::string> map;
        for (auto const& row : rows)
            map.insert(row);
        std::ranges::stable_sort(rows, {}, &Rows::value_type::first);
        ASSERT_EQ(Rows(map.begin(), map.end()), rows);
    }
}

} // namespace
