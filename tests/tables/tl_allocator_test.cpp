#include <paramdb/tables/tl_allocator.h>

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <vector>

namespace {

TEST(TlAllocator, AllInstancesAreEqual) {
    tl_allocator<int> const first;
    tl_allocator<int> const second;
    tl_allocator<double> const other(first);
    EXPECT_TRUE(first == second);
    EXPECT_TRUE(tl_allocator<int>(other) == first);
}

TEST(TlAllocator, GivesAlignedMemoryForAVector) {
    std::vector<std::max_align_t, tl_allocator<std::max_align_t>> vector(1000);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(vector.data()) % alignof(std::max_align_t), 0U);
    std::vector<int, tl_allocator<int>> numbers;
    for (int number = 0; number < 10000; ++number)
        numbers.push_back(number);
    auto const copy = numbers;
    for (int number = 0; number < 10000; ++number)
        ASSERT_EQ(copy[static_cast<std::size_t>(number)], number);
}

TEST(TlAllocator, ACountBeyondAllMemoryThrows) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    EXPECT_THROW(static_cast<void>(tl_allocator<int>().allocate(most)), std::bad_array_new_length);
    EXPECT_THROW(static_cast<void>(tl_allocator<int>().allocate(most / sizeof(int) + 1)),
                 std::bad_array_new_length);
}

} // namespace
