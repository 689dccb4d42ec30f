#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/unique_vector_map.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Map = CUniqueVectorMap<int, std::string>;
using Rows = std::vector<std::pair<int, std::string>>;

template <class AnyMap>
auto RowsOf(AnyMap const& map) {
    return std::vector<std::pair<typename AnyMap::key_type, typename AnyMap::mapped_type>>(map.begin(),
                                                                                           map.end());
}

Map MapOf(Rows const& rows) {
    Map map;
    for (auto const& row : rows)
        map.insert(row);
    return map;
}

TEST(UniqueVectorMap, KeysThatComeInAnyOrderAreSorted) {
    EXPECT_EQ(RowsOf(MapOf({{3, "c"}, {1, "a"}, {2, "b"}})), (Rows{{1, "a"}, {2, "b"}, {3, "c"}}));
    EXPECT_EQ(RowsOf(MapOf({{1, "a"}, {2, "b"}, {3, "c"}})), (Rows{{1, "a"}, {2, "b"}, {3, "c"}}));
    EXPECT_EQ(RowsOf(MapOf({{3, "c"}, {2, "b"}, {1, "a"}})), (Rows{{1, "a"}, {2, "b"}, {3, "c"}}));
    EXPECT_EQ(RowsOf(MapOf({})), Rows());
}

TEST(UniqueVectorMap, TheFirstRowOfAKeyStays) {
    Map map;
    auto const [first, is_new] = map.insert({2, "first"});
    EXPECT_TRUE(is_new);
    EXPECT_EQ(first, map.begin());
    auto const [same, is_new_again] = map.insert({2, "second"});
    EXPECT_FALSE(is_new_again);
    EXPECT_EQ(same, map.begin());
    EXPECT_EQ(RowsOf(map), (Rows{{2, "first"}}));

    std::pair<int, std::string> const between{1, "one"};
    struct {
        std::pair<int, std::string> row;
        bool is_new;
        int place;
    } const cases[] = {
        {between, true, 0}, {{1, "other"}, false, 0}, {{3, "three"}, true, 2}, {{2, "third"}, false, 1}};
    for (auto const& [row, inserted, place] : cases) {
        auto const result = map.insert(row);
        EXPECT_EQ(result.second, inserted);
        EXPECT_EQ(result.first - map.begin(), place);
    }
    EXPECT_EQ(RowsOf(map), (Rows{{1, "one"}, {2, "first"}, {3, "three"}}));
}

TEST(UniqueVectorMap, Lookups) {
    Map map;
    EXPECT_EQ(map.find(1), map.end());
    EXPECT_EQ(map.lower_bound(1), map.end());
    EXPECT_EQ(std::as_const(map).find(1), map.cend());
    map = MapOf({{10, "a"}, {20, "b"}, {30, "c"}});
    Map const& constant = map;
    struct {
        int key;
        int bound; // index
        bool found;
    } const cases[] = {{-1, 0, false}, {9, 0, false}, {10, 0, true},  {11, 1, false}, {20, 1, true},
                       {29, 2, false}, {30, 2, true}, {31, 3, false}, {99, 3, false}};
    for (auto const& [key, bound, found] : cases) {
        SCOPED_TRACE(key);
        EXPECT_EQ(map.lower_bound(key), map.begin() + bound);
        EXPECT_EQ(constant.lower_bound(key), constant.begin() + bound);
        EXPECT_EQ(map.find(key), found ? map.begin() + bound : map.end());
        EXPECT_EQ(constant.find(key), found ? constant.begin() + bound : constant.end());
    }
    EXPECT_EQ(map.size(), 3U);
    map.find(20)->second = "changed";
    EXPECT_EQ(map[1].second, "changed");
}

TEST(UniqueVectorMap, KeepsTheReadInterfaceOfAVector) {
    Map map = MapOf({{2, "b"}, {1, "a"}, {3, "c"}});
    EXPECT_EQ(map.size(), 3U);
    EXPECT_FALSE(map.empty());
    EXPECT_EQ(map.front().second, "a");
    EXPECT_EQ(map.back().second, "c");
    EXPECT_EQ(map.at(1).second, "b");
    EXPECT_THROW(static_cast<void>(map.at(3)), std::out_of_range);
    EXPECT_EQ(map.data(), &map[0]);
    EXPECT_EQ(map.rbegin()->first, 3);
    map.erase(map.begin() + 1);
    EXPECT_EQ(RowsOf(map), (Rows{{1, "a"}, {3, "c"}}));
    map.reserve(50);
    std::size_t const capacity = map.capacity();
    EXPECT_GE(capacity, 50U);
    map.clear();
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.capacity(), capacity);
}

TEST(UniqueVectorMap, AnotherOrder) {
    CUniqueVectorMap<int, char, std::greater<int>> map;
    for (int const key : {2, 5, 1, 5, 9})
        map.insert({key, static_cast<char>('a' + key)});
    EXPECT_EQ(RowsOf(map), (std::vector<std::pair<int, char>>{{9, 'j'}, {5, 'f'}, {2, 'c'}, {1, 'b'}}));
    EXPECT_EQ(map.find(5), map.begin() + 1);
    EXPECT_EQ(map.find(3), map.end());
    EXPECT_EQ(map.lower_bound(3), map.begin() + 2);
}

TEST(UniqueVectorMap, TableMemoryComesFromTheRowStorage) {
    using DbMap = CDbUniqueMap<QIdx1, QIdxName>;
    using Base =
        CUniqueVectorMap<QIdx1, QIdxName, std::less<QIdx1>, tl_allocator<std::pair<QIdx1, QIdxName>>>;
    EXPECT_TRUE((std::is_base_of_v<Base, DbMap>));
    DbMap map;
    for (int id = 500; id > 0; --id)
        map.insert({QIdx1(id), QIdxName(std::to_wstring(id).c_str())});
    ASSERT_EQ(map.size(), 500U);
    for (int id = 1; id <= 500; ++id)
        EXPECT_EQ(map.find(QIdx1(id))->second.name().view(), std::to_wstring(id));
}

TEST(UniqueVectorMap, RandomSequencesAgainstATree) {
    std::mt19937 random(1);
    for (int round = 0; round < 400; ++round) {
        Map map;
        std::map<int, std::string> model;
        int const range = 1 + static_cast<int>(random() % 60);
        bool const mostly_ascending = round % 3 == 0;
        for (int step = 0; step < 80; ++step) {
            int const key = mostly_ascending && random() % 8 != 0
                                ? step
                                : static_cast<int>(random() % static_cast<unsigned>(range));
            if (random() % 16 == 0) {
                auto const row = map.find(key);
                ASSERT_EQ(row != map.end(), model.erase(key) == 1);
                if (row != map.end())
                    map.erase(row);
                continue;
            }
            auto const expected = model.insert({key, std::to_string(step)});
            auto const [position, is_new] = map.insert({key, std::to_string(step)});
            ASSERT_EQ(is_new, expected.second);
            ASSERT_EQ(position - map.begin(), std::distance(model.begin(), expected.first));
        }
        ASSERT_EQ(RowsOf(map), (Rows(model.begin(), model.end())));
        for (int key = -1; key <= range; ++key) {
            ASSERT_EQ(map.lower_bound(key) - map.begin(),
                      std::distance(model.begin(), model.lower_bound(key)));
            ASSERT_EQ(map.find(key) != map.end(), model.contains(key));
        }
    }
}

// Fills a map through the filler.
template <class AnyMap, class AnyRows>
void Fill(AnyMap& map, AnyRows const& rows) {
    typename AnyMap::Filler filler(map);
    for (auto const& [key, row] : rows)
        filler.Add(key, row);
    filler.Finish();
}

TEST(UniqueVectorMap, TheFillerSortsAndKeepsTheFirst) {
    struct {
        Rows source;
        Rows rows;
    } const cases[] = {
        {{}, {}},
        {{{1, "a"}}, {{1, "a"}}},
        {{{3, "c"}, {1, "a"}, {2, "b"}}, {{1, "a"}, {2, "b"}, {3, "c"}}},
        {{{1, "a"}, {1, "b"}, {1, "c"}}, {{1, "a"}}},
        {{{2, "a"}, {1, "b"}, {2, "c"}, {1, "d"}, {2, "e"}}, {{1, "b"}, {2, "a"}}},
        {{{1, "a"}, {2, "b"}, {3, "c"}, {1, "d"}}, {{1, "a"}, {2, "b"}, {3, "c"}}},
    };
    for (auto const& [source, rows] : cases) {
        Map map;
        Fill(map, source);
        EXPECT_EQ(RowsOf(map), rows);
    }
}

TEST(UniqueVectorMap, TheFillerKeepsRowsThatAreThere) {
    Map map = MapOf({{5, "old 5"}, {1, "old 1"}});
    Fill(map, Rows{{5, "new 5"}, {3, "new 3"}, {9, "new 9"}, {1, "new 1"}});
    EXPECT_EQ(RowsOf(map), (Rows{{1, "old 1"}, {3, "new 3"}, {5, "old 5"}, {9, "new 9"}}));
}

TEST(UniqueVectorMap, TheFillerLeavesNothingOutOfOrder) {
    Map map;
    {
        Map::Filler filler(map);
        filler.Add(2, "b");
        filler.Add(1, "a");
    }
    EXPECT_TRUE(map.empty());
    {
        Map::Filler filler(map);
        filler.Add(1, "a");
        filler.Add(2, "b");
    }
    EXPECT_EQ(RowsOf(map), (Rows{{1, "a"}, {2, "b"}}));
}

TEST(UniqueVectorMap, TheFillerKeepsTheCapacity) {
    Map map;
    map.reserve(100);
    std::size_t const capacity = map.capacity();
    Fill(map, Rows{{2, "b"}, {1, "a"}, {1, "c"}});
    EXPECT_EQ(map.size(), 2U);
    EXPECT_EQ(map.capacity(), capacity);
}

TEST(UniqueVectorMap, TheFillerDoesAsInsertingOneByOne) {
    std::mt19937 random(2);
    for (int round = 0; round < 600; ++round) {
        Rows rows;
        auto const range = 1 + random() % 300;
        for (std::size_t count = random() % 200; count > 0; --count)
            rows.emplace_back(static_cast<int>(random() % range), std::to_string(rows.size()));
        if (round % 4 == 0)
            std::sort(rows.begin(), rows.end());
        Map filled;
        Fill(filled, rows);
        ASSERT_EQ(RowsOf(filled), RowsOf(MapOf(rows)));
    }
}

// Positions that are no number: where such a row goes depends on the rows that are there.
using PointMap = CUniqueVectorMap<QIdxIF, int>;

// Point by point, as the container tells it: behind the last one if that is less, else at the lower bound
// unless the row there is neither less nor greater.
std::vector<std::pair<QIdxIF, int>> OneByOne(std::vector<std::pair<QIdxIF, int>> const& source) {
    std::vector<std::pair<QIdxIF, int>> rows;
    auto const less = [](QIdxIF const& left, QIdxIF const& right) {
        return left.number() < right.number() ||
               (left.number() == right.number() && left.position() < right.position());
    };
    for (auto const& row : source) {
        if (rows.empty() || less(rows.back().first, row.first)) {
            rows.push_back(row);
            continue;
        }
        std::size_t first = 0;
        for (std::size_t count = rows.size(); count > 0;) {
            std::size_t const half = count / 2;
            if (less(rows[first + half].first, row.first)) {
                first += half + 1;
                count -= half + 1;
            } else {
                count = half;
            }
        }
        if (first == rows.size() || less(row.first, rows[first].first))
            rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(first), row);
    }
    return rows;
}

// The rows as text, since a NaN differs from itself.
template <class AnyRows>
std::string Listed(AnyRows const& rows) {
    std::string text;
    for (auto const& [key, row] : rows)
        text += std::to_string(key.number()) + "/" +
                (std::isnan(key.position()) ? "nan" : std::to_string(key.position())) + "=" +
                std::to_string(row) + " ";
    return text;
}

TEST(UniqueVectorMap, PositionsThatAreNoNumber) {
    float const nan = std::nanf("");
    PointMap map;
    map.insert({QIdxIF(1, 2.0F), 0});
    map.insert({QIdxIF(1, nan), 1}); // neither less nor greater than the last row, as an equal key would be
    map.insert({QIdxIF(2, nan), 2});
    map.insert({QIdxIF(2, 1.0F), 3});
    map.insert({QIdxIF(3, 1.0F), 4});
    EXPECT_EQ(Listed(map), "1/2.000000=0 2/nan=2 3/1.000000=4 ");
}

TEST(UniqueVectorMap, RandomSequencesWithPositionsThatAreNoNumber) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::pair<QIdxIF, int>> rows;
        auto const nan_rate = 2 + random() % 12;
        for (std::size_t count = random() % 40; count > 0; --count) {
            float const position =
                random() % nan_rate == 0 ? std::nanf("") : static_cast<float>(random() % 12) / 2;
            rows.emplace_back(QIdxIF(static_cast<int>(random() % 3), position),
                              static_cast<int>(rows.size()));
        }
        PointMap inserted;
        for (auto const& row : rows)
            inserted.insert(row);
        PointMap filled;
        Fill(filled, rows);
        std::string const expected = Listed(OneByOne(rows));
        ASSERT_EQ(Listed(inserted), expected) << Listed(rows);
        ASSERT_EQ(Listed(filled), expected) << Listed(rows);
    }
}

} // namespace
