#include <paramdb/tables/unique_tree_map.h>

namespace paramdb {

std::pmr::memory_resource& TreeMemory() {
    static std::pmr::unsynchronized_pool_resource pool;
    return pool;
}

} // namespace paramdb
