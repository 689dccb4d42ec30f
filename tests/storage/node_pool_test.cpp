#include <paramdb/storage/node_pool.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

using paramdb::NodePool;

namespace {

std::vector<void*> Take(NodePool& pool, std::size_t count) {
    std::vector<void*> slots;
    for (std::size_t index = 0; index < count; ++index)
        slots.push_back(pool.Allocate());
    return slots;
}

} // namespace

TEST(NodePool, SlotsAreAlignedAndDoNotOverlap) {
    for (std::size_t const size :
         {std::size_t{1}, std::size_t{7}, std::size_t{8}, std::size_t{80}, std::size_t{200}}) {
        NodePool pool(size);
        std::vector<void*> slots = Take(pool, 50000);
        for (std::size_t index = 0; index < slots.size(); ++index)
            std::memset(slots[index], static_cast<int>(index % 251), size);
        for (std::size_t index = 0; index < slots.size(); ++index) {
            auto const* const bytes = static_cast<unsigned char const*>(slots[index]);
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % alignof(std::max_align_t), 0U);
            ASSERT_EQ(std::count(bytes, bytes + size, index % 251), static_cast<std::ptrdiff_t>(size));
        }
        std::sort(slots.begin(), slots.end());
        EXPECT_EQ(std::adjacent_find(slots.begin(), slots.end()), slots.end());
        for (void* const slot : slots)
            pool.Free(slot);
    }
}

TEST(NodePool, AFreedSlotIsTheNextOneTaken) {
    NodePool pool(40);
    std::vector<void*> const slots = Take(pool, 100);
    pool.Free(slots[10]);
    pool.Free(slots[90]);
    EXPECT_EQ(pool.Allocate(), slots[90]);
    EXPECT_EQ(pool.Allocate(), slots[10]);
    void* const fresh = pool.Allocate();
    EXPECT_EQ(std::find(slots.begin(), slots.end(), fresh), slots.end());
}

TEST(NodePool, AnEmptiedPoolBeginsAnew) {
    NodePool pool(40);
    std::vector<void*> const first = Take(pool, 1000);
    for (void* const slot : first)
        pool.Free(slot);
    EXPECT_EQ(pool.Allocate(), first.front());
    std::vector<void*> second = Take(pool, 1000);
    second.push_back(first.front());
    std::sort(second.begin(), second.end());
    EXPECT_EQ(std::adjacent_find(second.begin(), second.end()), second.end());
}

TEST(NodePool, EverySlotTellsTheOwnerOfItsPool) {
    int first_owner = 0;
    int second_owner = 0;
    NodePool first(40, 8, &first_owner);
    NodePool second(4000, 16, &second_owner);
    NodePool nobodys(1);
    for (int round = 0; round < 2; ++round) {
        auto const of_first = Take(first, 30000);
        auto const of_second = Take(second, 1000);
        for (void const* const slot : of_first)
            ASSERT_EQ(NodePool::Owner(slot), &first_owner);
        for (void const* const slot : of_second)
            ASSERT_EQ(NodePool::Owner(slot), &second_owner);
        EXPECT_EQ(NodePool::Owner(nobodys.Allocate()), nullptr);
        for (void* const slot : of_first)
            first.Free(slot);
        for (void* const slot : of_second)
            second.Free(slot);
    }
}

TEST(NodePool, SlotsOfSmallAlignmentStandSideBySide) {
    NodePool pool(40, 8);
    auto* const first = static_cast<std::byte*>(pool.Allocate());
    EXPECT_EQ(pool.Allocate(), first + 40);
    EXPECT_EQ(pool.Allocate(), first + 80);
}

// Free slots hold the link to the next one.
TEST(NodePool, SlotsAreAlignedForALinkWhateverTheyHold) {
    constexpr std::size_t link = sizeof(void*);
    struct Case {
        std::size_t size, alignment, distance;
    };
    for (auto const& [size, alignment, distance] :
         {Case{1, 1, link}, Case{link, 1, link}, Case{link + 1, 1, 2 * link}, Case{link + 2, 2, 2 * link}}) {
        NodePool pool(size, alignment);
        auto* const first = static_cast<std::byte*>(pool.Allocate());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % link, 0U) << size;
        EXPECT_EQ(pool.Allocate(), first + distance) << size;
        EXPECT_EQ(pool.Allocate(), first + 2 * distance) << size;
    }
}

TEST(NodePool, WhatIsExpectedComesInOnePiece) {
    constexpr std::size_t size = 40;
    constexpr std::size_t count = 20000;
    int owner = 0;
    NodePool pool(size, 8, &owner);
    pool.Expect(size * count);
    std::vector<void*> slots = Take(pool, count);
    // All but those of the small first block and the last ones, for which notes in between left no room.
    auto const* const second = static_cast<std::byte*>(slots[200]);
    auto const* const late = static_cast<std::byte*>(slots[count - 300]);
    EXPECT_GT(late, second);
    EXPECT_LE(static_cast<std::size_t>(late - second), size * count);
    for (void const* const slot : slots)
        ASSERT_EQ(NodePool::Owner(slot), &owner);
    std::ranges::sort(slots);
    EXPECT_EQ(std::ranges::adjacent_find(slots), slots.end());
    for (void* const slot : slots)
        pool.Free(slot);
}
