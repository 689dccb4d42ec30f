// Memory for the many equal nodes of a lake, taken from the heap in large blocks.
//
// A slot that is given back is used again for a later node. When the last slot in use has been given back,
// all blocks but the small first one go back to the heap, so that taking one slot from an emptied pool cannot
// fail.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/core/large_block.h>

#include <cstddef>
#include <vector>

namespace paramdb {

class PARAMDB_API NodePool {
public:
    // A pool of slots of this size, which suits any object with an alignment of at most that of
    // std::max_align_t.
    explicit NodePool(std::size_t slot_size);
    NodePool(NodePool const&) = delete;
    NodePool& operator=(NodePool const&) = delete;

    // Room for one node. Throws std::bad_alloc.
    void* Allocate() {
        if (m_free != nullptr)
            return Reuse();
        if (m_next == m_block_end)
            AddBlock();
        void* const slot = m_next;
        m_next += m_slot_size;
        ++m_used;
        return slot;
    }

    // Takes back a slot that Allocate gave.
    void Free(void* slot) noexcept;

private:
    struct FreeSlot {
        FreeSlot* next;
    };

    void* Reuse() noexcept;
    void AddBlock();

    std::size_t m_slot_size;
    std::size_t m_used = 0;
    FreeSlot* m_free = nullptr;
    std::byte* m_next = nullptr;
    std::byte* m_block_end = nullptr;
    std::vector<LargeBlock> m_blocks;
};

} // namespace paramdb
