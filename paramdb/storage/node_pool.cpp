#include <paramdb/storage/node_pool.h>

#include <algorithm>
#include <new>

namespace paramdb {
namespace {

constexpr std::size_t FirstBlockSlots = 16;
constexpr std::size_t LargestBlockSlots = 65536;

} // namespace

NodePool::NodePool(std::size_t slot_size) : m_slot_size(slot_size) {
    constexpr std::size_t alignment = alignof(std::max_align_t);
    m_slot_size = (std::max(m_slot_size, sizeof(FreeSlot)) + alignment - 1) / alignment * alignment;
}

void NodePool::Free(void* slot) noexcept {
    m_free = ::new (slot) FreeSlot{m_free};
    if (--m_used > 0)
        return;
    m_free = nullptr;
    m_blocks.resize(1);
    m_next = m_blocks.front().data();
    m_block_end = m_next + FirstBlockSlots * m_slot_size;
}

void* NodePool::Reuse() noexcept {
    FreeSlot* const slot = m_free;
    m_free = slot->next;
    ++m_used;
    return slot;
}

void NodePool::AddBlock() {
    std::size_t const doublings = std::min<std::size_t>(m_blocks.size(), 16);
    std::size_t const size = std::min(FirstBlockSlots << doublings, LargestBlockSlots) * m_slot_size;
    m_blocks.reserve(m_blocks.size() + 1);
    m_next = m_blocks.emplace_back(size).data();
    m_block_end = m_next + size;
}

} // namespace paramdb
