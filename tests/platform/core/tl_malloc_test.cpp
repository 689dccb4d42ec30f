#include <paramdb/platform/core/tl_malloc.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

namespace {

TEST(TlMalloc, BlocksAreAlignedAndUsable) {
    for (std::size_t const size : {0u, 1u, 7u, 16u, 17u, 4096u, 1000003u}) {
        void* const block = tl_malloc(size);
        ASSERT_NE(block, nullptr) << size;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u) << size;
        std::memset(block, 0x5A, size);
        tl_free(block);
    }
}

TEST(TlMalloc, BlocksOfNoSizeAreDistinct) {
    void* const a = tl_malloc(0);
    void* const b = tl_malloc(0);
    EXPECT_NE(a, b);
    tl_free(a);
    tl_free(b);
}

TEST(TlMalloc, WhatCannotBeHadIsNull) {
    EXPECT_EQ(tl_malloc(std::numeric_limits<std::size_t>::max()), nullptr);
}

// Blocks of every size come and go, and none touches another.
TEST(TlMalloc, BlocksKeepTheirBytesWhileOthersComeAndGo) {
    struct Block {
        unsigned char* memory;
        std::size_t size;
        unsigned char fill;

        bool IsWhole() const {
            return std::all_of(memory, memory + size, [this](unsigned char byte) { return byte == fill; });
        }
    };
    std::mt19937 random(7);
    std::vector<Block> blocks;
    for (int step = 0; step < 600; ++step) {
        if (blocks.size() < 12 && random() % 3 != 0) {
            static constexpr std::size_t sizes[] = {40,      32'736,    32'752,   262'144,
                                                    700'000, 2'100'000, 5'000'000};
            std::size_t const size = sizes[random() % std::size(sizes)] + random() % 100;
            Block const block{static_cast<unsigned char*>(tl_malloc(size)), size,
                              static_cast<unsigned char>(step)};
            ASSERT_NE(block.memory, nullptr);
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(block.memory) % 16, 0u);
            std::memset(block.memory, block.fill, size);
            blocks.push_back(block);
        } else if (!blocks.empty()) {
            std::swap(blocks[random() % blocks.size()], blocks.back());
            ASSERT_TRUE(blocks.back().IsWhole()) << "step " << step;
            tl_free(blocks.back().memory);
            blocks.pop_back();
        }
    }
    for (Block const& block : blocks) {
        EXPECT_TRUE(block.IsWhole());
        tl_free(block.memory);
    }
}

// Three blocks that lie side by side, the last ones of those that it takes to get there.
std::vector<void*> Neighbours(std::size_t size, std::size_t distance) {
    std::vector<void*> blocks;
    auto const are_neighbours = [&](std::size_t place) {
        return reinterpret_cast<std::uintptr_t>(blocks[place + 1]) -
                   reinterpret_cast<std::uintptr_t>(blocks[place]) ==
               distance;
    };
    do
        blocks.push_back(tl_malloc(size));
    while (blocks.size() < 100 &&
           (blocks.size() < 3 || !are_neighbours(blocks.size() - 2) || !are_neighbours(blocks.size() - 3)));
    return blocks;
}

TEST(TlMalloc, NeighboursThatAreFreedMakeRoomTogether) {
    constexpr std::size_t size = 1'200'000;
    constexpr std::size_t distance = size + 16;
    for (bool const in_order : {true, false}) {
        std::vector<void*> blocks = Neighbours(size, distance);
        ASSERT_LT(blocks.size(), 100U);
        // The last one keeps the region.
        auto const pair = blocks.end() - 3;
        void* const first = pair[0];
        tl_free(pair[in_order ? 0 : 1]);
        tl_free(pair[in_order ? 1 : 0]);
        blocks.erase(pair, pair + 2);
        blocks.push_back(tl_malloc(size + distance));
        EXPECT_EQ(blocks.back(), first);
        for (void* const block : blocks)
            tl_free(block);
    }
}

TEST(TlMalloc, NullMayBeFreed) {
    tl_free(nullptr);
}

} // namespace
