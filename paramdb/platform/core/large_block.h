// Memory in large pieces, which the system is asked to back by large pages where it knows them: touching a
// fresh piece then costs a page fault for each 2 MB instead of each 4 KB.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstddef>
#include <memory>

namespace paramdb {

// Owns a piece of uninitialised memory.
class PARAMDB_API LargeBlock {
public:
    LargeBlock() = default;
    // A piece of this size and at least this alignment, a power of two up to 4,096. Throws std::bad_alloc.
    explicit LargeBlock(std::size_t size, std::size_t alignment = alignof(std::max_align_t));

    std::byte* data() const { return m_memory.get(); }
    char* chars() const { return reinterpret_cast<char*>(m_memory.get()); }

private:
    struct PARAMDB_API Release {
        std::size_t size;
        std::size_t alignment;
        void operator()(std::byte* memory) const noexcept;
    };
    std::unique_ptr<std::byte, Release> m_memory;
};

// Asks the system for all pages of memory that is about to be written, which costs less at once than page
// fault by page fault. Changes nothing but the speed.
PARAMDB_API void TouchPages(void* memory, std::size_t size) noexcept;

} // namespace paramdb
