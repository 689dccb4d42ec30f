#include <paramdb/platform/core/tl_malloc.h>

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

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

TEST(TlMalloc, NullMayBeFreed) {
    tl_free(nullptr);
}

} // namespace
