// Storage for the rows of the tables. An allocator without state is laid over the two functions.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstddef>

// At least `size` bytes, aligned to 16, or nullptr when there is no memory. A size of 0 gives a block of its
// own that is freed like any other. The caller owns the block. Any thread.
[[nodiscard]] PARAMDB_API void* tl_malloc(std::size_t size) noexcept;

// Frees a block of tl_malloc; nullptr is allowed. Any thread, also another than the one that took the block.
PARAMDB_API void tl_free(void* block) noexcept;
