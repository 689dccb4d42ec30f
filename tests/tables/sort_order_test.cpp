#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/sort_order.h>

#include <climits>
#include <cstddef>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

namespace {

template <class Key, class Less = std::less<Key>>
std::vector<std::size_t> OrderOf(std::vector<Key> const& keys) {
    paramdb::SortOrder<Key, Less> order;
    order.Reserve(keys.size());
    for (Key const& key : keys)
        order.Add(key);
    std::vector<std::size_t> positions;
    order.ForEach([&](std::size_t position) { positions.push_back(position); });
    return positions;
}

TEST(SortOrder, PositionsInAscendingOrderOfTheirKeys) {
    struct {
        std::vector<int> keys;
        std::vector<std::size_t> order;
    } const cases[] = {
        {{}, {}},
        {{7}, {0}},
        {{1, 2, 3}, {0, 1, 2}},
        {{3, 2, 1}, {2, 1, 0}},
        {{5, 5, 5}, {0}},
        {{5, 1, 5, 1, 5}, {1, 0}},
        {{2, 1, 2, 3, 1}, {1, 0, 3}},
    };
    for (auto const& [keys, order] : cases) {
        EXPECT_EQ(OrderOf(keys), order);
        EXPECT_EQ(OrderOf(std::vector<QIdx1>(keys.begin(), keys.end())), order);
    }
}

TEST(SortOrder, AnotherOrderAndOtherKeys) {
    EXPECT_EQ(OrderOf<QIdx3>({{INT_MAX, 1, INT_MIN}, {INT_MIN, 0, INT_MAX}, {INT_MAX, 1, INT_MIN}}),
              (std::vector<std::size_t>{1, 0})); // further apart than one number tells
    EXPECT_EQ((OrderOf<int, std::greater<int>>({1, 3, 2, 3})), (std::vector<std::size_t>{1, 2, 0}));
    EXPECT_EQ(OrderOf<QIdx2>({{1, 5}, {2, 0}, {1, -1}, {1, 5}}), (std::vector<std::size_t>{2, 0, 1}));
    EXPECT_EQ(OrderOf<QIdxName>({L"b", L"ab", L"", L"a", L"ab"}), (std::vector<std::size_t>{2, 3, 1, 0}));
    EXPECT_EQ(OrderOf<QIdxIF>({{1, 0.5f}, {1, -0.5f}, {0, 9.0f}}), (std::vector<std::size_t>{2, 1, 0}));
}

TEST(SortOrder, OfEqualKeysTheLowestPositionStays) {
    std::mt19937 random(6);
    for (int round = 0; round < 300; ++round) {
        std::vector<QIdx1> keys(random() % 200);
        std::map<int, std::size_t> first;
        for (std::size_t position = 0; position < keys.size(); ++position) {
            keys[position] = static_cast<int>(random() % 50);
            first.try_emplace(keys[position][0], position);
        }
        std::vector<std::size_t> expected;
        for (auto const& [key, position] : first)
            expected.push_back(position);
        ASSERT_EQ(OrderOf(keys), expected);
    }
}

} // namespace
