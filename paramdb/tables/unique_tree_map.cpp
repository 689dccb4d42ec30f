#include <paramdb/storage/node_pool.h>
#include <paramdb/tables/unique_tree_map.h>

#include <cstddef>
#include <iterator>

namespace paramdb {
namespace {

// Keeps the nodes of each size together, in the order in which they are asked for. Trees are emptied from
// their last row to their first, so that the next rows come into order again.
class TreePools final : public std::pmr::memory_resource {
    static constexpr std::size_t Step = alignof(std::max_align_t);

    NodePool* PoolOf(std::size_t size, std::size_t alignment) {
        std::size_t const pool = (size + Step - 1) / Step;
        return pool > 0 && pool <= std::size(m_pools) && alignment <= Step ? &m_pools[pool - 1] : nullptr;
    }
    void* do_allocate(std::size_t size, std::size_t alignment) override {
        NodePool* const pool = PoolOf(size, alignment);
        return pool != nullptr ? pool->Allocate()
                               : std::pmr::new_delete_resource()->allocate(size, alignment);
    }
    void do_deallocate(void* memory, std::size_t size, std::size_t alignment) override {
        if (NodePool* const pool = PoolOf(size, alignment))
            pool->Free(memory);
        else
            std::pmr::new_delete_resource()->deallocate(memory, size, alignment);
    }
    bool do_is_equal(std::pmr::memory_resource const& other) const noexcept override {
        return this == &other;
    }

    // For slots of one step, two steps and so on.
    NodePool m_pools[10]{NodePool(Step),     NodePool(Step * 2), NodePool(Step * 3), NodePool(Step * 4),
                         NodePool(Step * 5), NodePool(Step * 6), NodePool(Step * 7), NodePool(Step * 8),
                         NodePool(Step * 9), NodePool(Step * 10)};
};

} // namespace

std::pmr::memory_resource& TreeMemory() {
    static TreePools pools;
    return pools;
}

} // namespace paramdb
