#include <paramdb/tables/block_sequence.h>

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

namespace {

using paramdb::BlockSequence;

std::vector<int> Drained(BlockSequence<int>& sequence) {
    std::vector<int> rows;
    sequence.Drain([&rows](int row) { rows.push_back(row); });
    return rows;
}

TEST(BlockSequence, EmptyAtFirstAndAfterDraining) {
    BlockSequence<int> sequence;
    EXPECT_EQ(sequence.size(), 0U);
    EXPECT_EQ(Drained(sequence), std::vector<int>());
    sequence.Insert(0, 7);
    sequence.Insert(0, 5);
    sequence.Insert(1, 6);
    EXPECT_EQ(sequence.size(), 3U);
    EXPECT_EQ(sequence[1], 6);
    EXPECT_EQ(Drained(sequence), (std::vector<int>{5, 6, 7}));
    EXPECT_EQ(sequence.size(), 0U);
    sequence.Insert(0, 1);
    EXPECT_EQ(sequence[0], 1);
}

TEST(BlockSequence, KeepsRowsThatCanOnlyBeMoved) {
    BlockSequence<std::unique_ptr<int>> sequence;
    for (int row = 0; row < 5000; ++row)
        sequence.Insert(sequence.size(), std::make_unique<int>(row));
    int next = 0;
    sequence.Drain([&next](std::unique_ptr<int> row) { ASSERT_EQ(*row, next++); });
    EXPECT_EQ(next, 5000);
}

// Against a plain vector, through many splits of blocks: at the front, at the end, and anywhere.
TEST(BlockSequence, RandomPlaces) {
    for (unsigned seed = 1; seed <= 9; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        BlockSequence<int> sequence;
        std::vector<int> rows;
        for (int row = 0; row < 6000; ++row) {
            std::size_t const place = seed == 1 ? 0 : seed == 2 ? rows.size() : random() % (rows.size() + 1);
            sequence.Insert(place, row);
            rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(place), row);
            std::size_t const looked_at = random() % rows.size();
            ASSERT_EQ(sequence[looked_at], rows[looked_at]) << row;
        }
        ASSERT_EQ(sequence.size(), rows.size());
        EXPECT_EQ(Drained(sequence), rows);
    }
}

} // namespace
