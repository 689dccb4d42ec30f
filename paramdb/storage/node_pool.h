// Memory for the many equal nodes of a lake, taken from the heap in large blocks.
//
// A slot that is given back is used again for a later node. When the last slot in use has been given back,
// all blocks but the small first one go back to the heap, so that taking one slot from an emptied pool cannot
// fail.
//
// Blocks are cut into groups, each of which begins with a note of whom its pool serves, at an address from
// which no slot is far. So a node knows its list without a pointer of its own.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/core/large_block.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace paramdb {

class PARAMDB_API NodePool {
public:
    // A pool of slots of this size, at most 4,000 bytes, that suit objects of this alignment, at most that of
    // std::max_align_t. Owner() tells the owner.
    explicit NodePool(std::size_t slot_size, std::size_t alignment = alignof(std::max_align_t),
                      void* owner = nullptr);
    NodePool(NodePool const&) = delete;
    NodePool& operator=(NodePool const&) = delete;

    // Room for one node. Throws std::bad_alloc.
    void* Allocate() {
        if (m_free != nullptr)
            return Reuse();
        if (m_next == m_group_end)
            BeginGroup();
        void* const slot = m_next;
        m_next += m_slot_size;
        ++m_used;
        return slot;
    }

    // Slots of about so many bytes are going to be taken: the next blocks are of that size, as far as blocks
    // go.
    void Expect(std::size_t bytes) { m_expected = bytes; }

    // Takes back a slot that Allocate gave.
    void Free(void* slot) noexcept;

    // The owner of the pool that a slot is of.
    static void* Owner(void const* slot) {
        auto const* const byte = static_cast<std::byte const*>(slot);
        auto const* const group = byte - reinterpret_cast<std::uintptr_t>(slot) % GroupSize;
        return reinterpret_cast<Group const*>(group)->owner;
    }

private:
    static constexpr std::size_t GroupSize = 4096; // and the alignment of a group

    struct alignas(std::max_align_t) Group {
        void* owner; // the slots stand behind it
    };
    struct FreeSlot {
        FreeSlot* next;
    };

    void* Reuse() noexcept;
    void BeginGroup();

    std::size_t m_slot_size;
    void* m_owner;
    std::size_t m_used = 0;
    std::size_t m_expected = 0; // bytes
    FreeSlot* m_free = nullptr;
    std::byte* m_next = nullptr;
    std::byte* m_group_end = nullptr;  // behind the last slot of the group
    std::byte* m_next_group = nullptr; // of the same block
    std::byte* m_block_end = nullptr;
    std::vector<LargeBlock> m_blocks;
};

} // namespace paramdb
