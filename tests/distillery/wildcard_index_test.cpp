#include <paramdb/distillery/wildcard_index.h>

#include "derivation_support.h"

#include <algorithm>
#include <numeric>
#include <tests/support/extremes.h>

using derivation::Random;
using paramdb::WildcardIndex;

namespace {

using RowNumbers = std::vector<std::size_t>;

// One row after the other, one element after the other.
RowNumbers MatchingRows(std::vector<QClavis> const& patterns, QClavis const& key) {
    RowNumbers rows;
    for (std::size_t row = 0; row < patterns.size(); ++row) {
        bool matches = true;
        for (std::size_t element = 0; element < 6; ++element)
            if (patterns[row][element] != -1 && patterns[row][element] != key[element])
                matches = false;
        if (matches)
            rows.push_back(row);
    }
    return rows;
}

RowNumbers Found(WildcardIndex& index, QClavis const& key) {
    RowNumbers rows;
    index.Find(key, [&rows](std::size_t row) { rows.push_back(row); });
    return rows;
}

TEST(WildcardIndex, EmptyFindsNothing) {
    WildcardIndex index({});
    EXPECT_EQ(Found(index, {1, 2, 3, 4, 5, 6}), RowNumbers());
    EXPECT_EQ(Found(index, {}), RowNumbers());
}

struct MatchCase {
    QClavis pattern;
    QClavis key;
    bool matches;
};

TEST(WildcardIndex, OnePatternAndOneKey) {
    MatchCase const cases[] = {
        {{1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}, true},
        {{1, 2, 3, 4, 5, 6}, {0, 2, 3, 4, 5, 6}, false},
        {{1, 2, 3, 4, 5, 6}, {1, 0, 3, 4, 5, 6}, false},
        {{1, 2, 3, 4, 5, 6}, {1, 2, 0, 4, 5, 6}, false},
        {{1, 2, 3, 4, 5, 6}, {1, 2, 3, 0, 5, 6}, false},
        {{1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 0, 6}, false},
        {{1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 0}, false},
        {{1, 2, 3, 4, 5, 6}, {2, 1, 3, 4, 5, 6}, false},
        {{-1, -1, -1, -1, -1, -1}, {1, 2, 3, 4, 5, 6}, true},
        {{-1, -1, -1, -1, -1, -1}, {-1, -1, -1, -1, -1, -1}, true},
        {{-1, -1, -1, -1, -1, -1}, {Lowest, Highest, 0, -2, 1, -1}, true},
        {{-1, 2, 3, 4, 5, 6}, {9, 2, 3, 4, 5, 6}, true},
        {{-1, 2, 3, 4, 5, 6}, {9, 9, 3, 4, 5, 6}, false},
        {{1, 2, 3, 4, 5, -1}, {1, 2, 3, 4, 5, 9}, true},
        {{1, 2, 3, 4, 5, -1}, {1, 2, 3, 4, 9, 9}, false},
        {{1, -1, 3, -1, 5, -1}, {1, 7, 3, 8, 5, 9}, true},
        {{1, -1, 3, -1, 5, -1}, {1, 7, 3, 8, 6, 9}, false},
        // -1 in a concrete key is a value like any other.
        {{1, 2, 3, 4, 5, 6}, {-1, 2, 3, 4, 5, 6}, false},
        {{-1, 2, 3, 4, 5, 6}, {-1, 2, 3, 4, 5, 6}, true},
        {{1, 2, 3, 4, 5, 6}, {-1, -1, -1, -1, -1, -1}, false},
        {{1, -1, -1, -1, -1, -1}, {1, -1, -1, -1, -1, -1}, true},
        // Only -1 is a wildcard.
        {{-2, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}, false},
        {{-2, 2, 3, 4, 5, 6}, {-2, 2, 3, 4, 5, 6}, true},
        {{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, true},
        {{Lowest, Highest, Lowest, Highest, Lowest, Highest},
         {Lowest, Highest, Lowest, Highest, Lowest, Highest},
         true},
        {{Lowest, Highest, Lowest, Highest, Lowest, Highest},
         {Highest, Lowest, Lowest, Highest, Lowest, Highest},
         false},
    };
    for (MatchCase const& match : cases) {
        SCOPED_TRACE(testing::PrintToString(match.pattern.elements()) + " for " +
                     testing::PrintToString(match.key.elements()));
        WildcardIndex index({&match.pattern, 1});
        EXPECT_EQ(Found(index, match.key), match.matches ? RowNumbers{0} : RowNumbers());
        EXPECT_EQ(match.pattern.ToClavis().Matches(match.key.ToClavis()), match.matches);
    }
}

TEST(WildcardIndex, RowsComeInTheirOrderWhateverTheirWildcards) {
    std::vector<QClavis> const patterns{{1, 2, 3, 4, 5, 6}, {-1, -1, -1, -1, -1, -1},
                                        {1, 2, 3, 4, 5, 7}, {1, -1, 3, 4, 5, 6},
                                        {1, 2, 3, 4, 5, 6}, {-1, -1, -1, -1, -1, -1}};
    WildcardIndex index(patterns);
    EXPECT_EQ(Found(index, {1, 2, 3, 4, 5, 6}), (RowNumbers{0, 1, 3, 4, 5}));
    EXPECT_EQ(Found(index, {1, 2, 3, 4, 5, 7}), (RowNumbers{1, 2, 5}));
    EXPECT_EQ(Found(index, {1, 0, 3, 4, 5, 6}), (RowNumbers{1, 3, 5}));
    EXPECT_EQ(Found(index, {0, 0, 0, 0, 0, 0}), (RowNumbers{1, 5}));
}

TEST(WildcardIndex, EveryArrangementOfWildcards) {
    QClavis const key(10, 11, 12, 13, 14, 15);
    std::vector<QClavis> patterns;
    for (unsigned wildcards = 0; wildcards < 64; ++wildcards) {
        QClavis pattern = key;
        for (std::size_t element = 0; element < 6; ++element)
            if ((wildcards >> element & 1) != 0)
                pattern[element] = -1;
        patterns.push_back(pattern);
    }
    WildcardIndex index(patterns);
    EXPECT_EQ(Found(index, key).size(), 64u);
    EXPECT_EQ(Found(index, key), MatchingRows(patterns, key));
    for (std::size_t element = 0; element < 6; ++element) {
        QClavis other = key;
        other[element] = 99;
        EXPECT_EQ(Found(index, other).size(), 32u) << element;
        EXPECT_EQ(Found(index, other), MatchingRows(patterns, other)) << element;
    }
    EXPECT_EQ(Found(index, {}), RowNumbers{63});
}

TEST(WildcardIndex, ManyRowsOfOneArrangement) {
    constexpr int count = 5000;
    std::vector<QClavis> patterns;
    for (int row = 0; row < count; ++row)
        patterns.emplace_back(row, -1, row / 2, -1, row % 7, 0);
    WildcardIndex index(patterns);
    for (int row = 0; row < count; ++row) {
        ASSERT_EQ(Found(index, {row, 1, row / 2, 2, row % 7, 0}), RowNumbers{static_cast<std::size_t>(row)});
        ASSERT_EQ(Found(index, {row, 1, row / 2, 2, row % 7, 1}), RowNumbers());
        ASSERT_EQ(Found(index, {row + 1, 1, row / 2 + 1, 2, row % 7, 0}), RowNumbers());
    }
}

TEST(WildcardIndex, OnePatternManyTimes) {
    WildcardIndex index(std::vector<QClavis>(1000, QClavis(4, -1, -1, -1, -1, -1)));
    RowNumbers all(1000);
    std::iota(all.begin(), all.end(), std::size_t{0});
    EXPECT_EQ(Found(index, {4, 0, 0, 0, 0, 0}), all);
    EXPECT_EQ(Found(index, {5, 0, 0, 0, 0, 0}), RowNumbers());
}

// Small ranges make matches frequent, and the full range makes hashes differ in all bits.
TEST(WildcardIndex, RandomTablesAgainstAPlainSearch) {
    std::size_t matches = 0;
    std::size_t several = 0;
    for (unsigned seed = 0; seed < 4000; ++seed) {
        Random random(seed);
        int const highest = random.Between(0, 3);
        bool const wide = random.OneIn(8);
        auto const element = [&] {
            if (wide && random.OneIn(2))
                return random.Between(-3, 3) * 715827882;
            return random.Between(-1, highest);
        };
        auto const random_key = [&] {
            return QClavis(element(), element(), element(), element(), element(), element());
        };
        int const wildcards = random.Between(1, 4);
        std::vector<QClavis> patterns;
        for (int rows = random.Between(0, 40); rows > 0; --rows) {
            QClavis pattern = random_key();
            for (std::size_t place = 0; place < 6; ++place)
                if (random.OneIn(wildcards))
                    pattern[place] = -1;
            patterns.push_back(pattern);
        }
        WildcardIndex index(patterns);
        for (int searches = 0; searches < 30; ++searches) {
            QClavis const key = random_key();
            RowNumbers const expected = MatchingRows(patterns, key);
            ASSERT_EQ(Found(index, key), expected)
                << "seed " << seed << ", key " << testing::PrintToString(key.elements());
            matches += expected.empty() ? 0 : 1;
            several += expected.size() > 1 ? 1 : 0;
        }
    }
    EXPECT_GT(matches, 40000u);
    EXPECT_LT(matches, 110000u);
    EXPECT_GT(several, 20000u);
}

// Keys that have their first elements in common with the one before, in order or not, and tables of every
// size from none to many rows.
TEST(WildcardIndex, KeysInOrderAgainstAPlainSearch) {
    std::size_t matches = 0;
    for (unsigned seed = 0; seed < 600; ++seed) {
        Random random(seed);
        int const highest = random.Between(1, 5);
        auto const element = [&] { return random.Between(-2, highest); };
        auto const random_key = [&] {
            return QClavis(element(), element(), element(), element(), element(), element());
        };
        int const wildcards = random.Between(1, 4);
        std::vector<QClavis> patterns;
        for (int rows = seed < 200 ? static_cast<int>(seed) / 20 : random.Between(0, 300); rows > 0; --rows) {
            QClavis pattern = random_key();
            for (std::size_t place = 0; place < 6; ++place)
                if (random.OneIn(wildcards))
                    pattern[place] = -1;
            patterns.push_back(pattern);
        }
        if (random.OneIn(2))
            std::ranges::sort(patterns);
        std::vector<QClavis> keys;
        while (keys.size() < 120) {
            QClavis key = random_key();
            if (!keys.empty())
                std::copy_n(keys.back().elements().begin(), random.Between(0, 6), &key[0]);
            keys.push_back(key);
        }
        if (random.OneIn(2))
            std::ranges::sort(keys);
        WildcardIndex index(patterns);
        for (QClavis const& key : keys) {
            RowNumbers const expected = MatchingRows(patterns, key);
            ASSERT_EQ(Found(index, key), expected)
                << "seed " << seed << ", key " << testing::PrintToString(key.elements());
            matches += expected.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(matches, 20000u);
    EXPECT_LT(matches, 60000u);
}

} // namespace
