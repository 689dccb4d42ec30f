#include <paramdb/platform/core/large_block.h>

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <new>
#include <utility>
#include <vector>

namespace {

TEST(LargeBlock, EveryByteCanBeUsed) {
    for (std::size_t const size :
         {std::size_t{0}, std::size_t{1}, std::size_t{4096}, (std::size_t{2} << 20) - 1, std::size_t{2} << 20,
          (std::size_t{5} << 20) + 7, (std::size_t{7} << 19) + 7}) {
        paramdb::LargeBlock const block(size);
        ASSERT_NE(block.data(), nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.data()) % alignof(std::max_align_t), 0u);
        std::memset(block.data(), 0x5A, size);
        if (size > 0) {
            EXPECT_EQ(block.chars()[size - 1], 0x5A);
        }
    }
}

TEST(LargeBlock, HasTheAlignmentAskedFor) {
    for (std::size_t const size : {std::size_t{1}, std::size_t{4096}, std::size_t{5} << 20})
        for (std::size_t const alignment : {std::size_t{16}, std::size_t{4096}}) {
            paramdb::LargeBlock const block(size, alignment);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.data()) % alignment, 0u);
            std::memset(block.data(), 0x5A, size);
        }
}

TEST(TouchPages, LeavesWhatIsThere) {
    std::vector<unsigned char> bytes(100000);
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<unsigned char>(index % 251);
    auto const before = bytes;
    for (std::size_t const size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, std::size_t{99999}})
        paramdb::TouchPages(bytes.data() + 1, size);
    EXPECT_EQ(bytes, before);
}

TEST(LargeBlock, MovesItsMemory) {
    paramdb::LargeBlock block(10);
    std::byte* const memory = block.data();
    paramdb::LargeBlock const other = std::move(block);
    EXPECT_EQ(other.data(), memory);
    EXPECT_EQ(paramdb::LargeBlock().data(), nullptr);
}

} // namespace
