#include <paramdb/storage/node_pool.h>

#include <algorithm>
#include <new>

namespace paramdb {
namespace {

// The first block is one group, each further one is twice as large or as large as expected, up to a large
// page.
constexpr std::size_t LargestBlock = std::size_t{2} << 20;

} // namespace

NodePool::NodePool(std::size_t slot_size, std::size_t alignment, void* owner) : m_owner(owner) {
    alignment = std::max(alignment, alignof(FreeSlot));
    m_slot_size = (std::max(slot_size, sizeof(FreeSlot)) + alignment - 1) / alignment * alignment;
}

void NodePool::Free(void* slot) noexcept {
    m_free = ::new (slot) FreeSlot{m_free};
    if (--m_used > 0)
        return;
    m_free = nullptr;
    m_expected = 0;
    m_blocks.resize(1);
    m_next_group = m_blocks.front().data();
    m_block_end = m_next_group + GroupSize;
    m_next = m_group_end = nullptr;
}

void* NodePool::Reuse() noexcept {
    FreeSlot* const slot = m_free;
    m_free = slot->next;
    ++m_used;
    return slot;
}

void NodePool::BeginGroup() {
    if (m_next_group == m_block_end) {
        std::size_t const doublings = std::min<std::size_t>(m_blocks.size(), 16);
        std::size_t const expected = m_blocks.empty() ? 0 : m_expected / GroupSize * GroupSize;
        std::size_t const size = std::min(std::max(GroupSize << doublings, expected), LargestBlock);
        m_blocks.reserve(m_blocks.size() + 1);
        m_next_group = m_blocks.emplace_back(size, GroupSize).data();
        m_block_end = m_next_group + size;
    }
    auto* const slots = reinterpret_cast<std::byte*>(::new (m_next_group) Group{m_owner} + 1);
    m_next = slots;
    m_group_end = slots + (GroupSize - sizeof(Group)) / m_slot_size * m_slot_size;
    m_next_group += GroupSize;
}

} // namespace paramdb
