#include <paramdb/tables/packed_keys.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace {

using Key = std::array<int, 3>;

std::vector<std::size_t> SortedPositions(std::vector<Key> const& keys) {
    auto packed = paramdb::PackKeys(std::span(keys));
    EXPECT_EQ(packed.size(), keys.size());
    paramdb::SortPackedKeys(packed);
    std::vector<std::size_t> positions;
    for (paramdb::PackedKey const& key : packed)
        positions.push_back(key.position);
    return positions;
}

TEST(PackedKeys, KeysThatDifferTooMuchAreNotPacked) {
    EXPECT_TRUE(paramdb::PackKeys(std::span<Key const>()).empty());
    // 32 + 32 bits fit, one more does not.
    EXPECT_EQ(SortedPositions({{INT_MAX, 5, INT_MAX}, {INT_MIN, 5, INT_MIN}, {INT_MIN, 5, INT_MAX}}),
              (std::vector<std::size_t>{1, 2, 0}));
    std::vector<Key> const wide = {{INT_MAX, 5, INT_MAX}, {INT_MIN, 6, INT_MIN}};
    EXPECT_TRUE(paramdb::PackKeys(std::span(wide)).empty());
}

TEST(PackedKeys, TheLowestOfThemHasTheNumberZero) {
    std::vector<Key> const keys = {{-1, 0, 7}, {-1, 0, 7}, {-1, 0, 8}, {0, 0, 7}};
    auto const packed = paramdb::PackKeys(std::span(keys));
    std::vector<std::uint64_t> numbers;
    for (paramdb::PackedKey const& key : packed)
        numbers.push_back(key.number);
    EXPECT_EQ(numbers, (std::vector<std::uint64_t>{0, 0, 1, 2}));
}

// Few and many keys, elements of few and of all bits: the order is that of a stable sort of the keys.
TEST(PackedKeys, OrderIsThatOfAStableSort) {
    int packed = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::vector<Key> keys(1 + random() % (seed % 2 == 0 ? 100 : 1500));
        std::array<unsigned, 3> shifts{};
        for (unsigned& shift : shifts)
            shift = random() % 32;
        for (Key& key : keys)
            for (std::size_t element = 0; element < key.size(); ++element)
                key[element] = static_cast<int>(random()) >> shifts[element];
        std::vector<std::size_t> expected(keys.size());
        std::iota(expected.begin(), expected.end(), std::size_t{0});
        std::stable_sort(expected.begin(), expected.end(),
                         [&](std::size_t left, std::size_t right) { return keys[left] < keys[right]; });
        if (!paramdb::PackKeys(std::span(std::as_const(keys))).empty()) {
            ++packed;
            ASSERT_EQ(SortedPositions(keys), expected);
        }
    }
    EXPECT_GT(packed, 200);
}

} // namespace
