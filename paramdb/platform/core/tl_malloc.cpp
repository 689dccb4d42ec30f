#include <paramdb/platform/core/large_block.h>
#include <paramdb/platform/core/tl_malloc.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace {

// The rows of a table take a block of some ten or hundred kilobytes, which is too small for large pages. So
// such blocks are cut from regions, next to each other. A region goes back to the system with its last block.
class Region {
public:
    explicit Region(std::size_t size) : m_memory(size), m_gaps{{0, size}} {}

    // Room in the first gap that is large enough; null if there is none.
    std::byte* Allocate(std::size_t size) {
        m_gaps.reserve(m_blocks + 2); // so that Free needs no memory
        auto const gap =
            std::find_if(m_gaps.begin(), m_gaps.end(), [size](Gap const& any) { return any.size >= size; });
        if (gap == m_gaps.end())
            return nullptr;
        std::size_t const place = gap->begin;
        gap->begin += size;
        gap->size -= size;
        ++m_blocks;
        return m_memory.data() + place;
    }

    void Free(std::byte* memory, std::size_t size) noexcept {
        auto const begin = static_cast<std::size_t>(memory - m_memory.data());
        auto const next =
            std::find_if(m_gaps.begin(), m_gaps.end(), [begin](Gap const& any) { return any.begin > begin; });
        auto gap = m_gaps.insert(next, {begin, size});
        if (auto const behind = gap + 1; behind != m_gaps.end() && behind->begin == gap->begin + gap->size) {
            gap->size += behind->size;
            m_gaps.erase(behind);
        }
        if (gap != m_gaps.begin() && (gap - 1)->begin + (gap - 1)->size == gap->begin) {
            (gap - 1)->size += gap->size;
            m_gaps.erase(gap);
        }
        --m_blocks;
    }

    bool empty() const { return m_blocks == 0; }

private:
    struct Gap {
        std::size_t begin;
        std::size_t size;
    };

    paramdb::LargeBlock m_memory;
    std::vector<Gap> m_gaps; // in their order, none beside another
    std::size_t m_blocks = 0;
};

// Stands before every block.
struct alignas(16) Header {
    Region* region; // null: the block is one of the heap
    std::size_t size;
};

constexpr std::size_t LeastToTouch = std::size_t{1} << 13; // a few pages
constexpr std::size_t LeastInRegion = std::size_t{1} << 15;
constexpr std::size_t AlwaysInRegion = std::size_t{1} << 18;
constexpr std::size_t RegionSize = std::size_t{1} << 22;

class Regions {
public:
    void* Allocate(std::size_t size) {
        std::scoped_lock const lock(m_mutex);
        for (auto const& region : m_regions)
            if (std::byte* const memory = region->Allocate(size))
                return ::new (memory) Header{region.get(), size} + 1;
        auto region = std::make_unique<Region>(size > RegionSize / 2 ? size : RegionSize);
        m_regions.reserve(m_regions.size() + 1);
        std::byte* const memory = region->Allocate(size);
        m_regions.push_back(std::move(region));
        return ::new (memory) Header{m_regions.back().get(), size} + 1;
    }

    void Free(Header* header) noexcept {
        std::scoped_lock const lock(m_mutex);
        Region* const region = header->region;
        region->Free(reinterpret_cast<std::byte*>(header), header->size);
        if (region->empty())
            std::erase_if(m_regions, [region](auto const& other) { return other.get() == region; });
    }

private:
    std::mutex m_mutex;
    std::vector<std::unique_ptr<Region>> m_regions;
};

// Lives as long as the process, as blocks may.
Regions& AllRegions() {
    static Regions* const regions = new Regions;
    return *regions;
}

// Smaller blocks go to regions when there are many: a few would leave most of a large page unused.
constexpr std::size_t ManyInHeap = std::size_t{1} << 20;
std::atomic<std::size_t> in_heap{0}; // bytes of blocks of the heap that could be in a region

bool GoesToRegion(std::size_t size) noexcept {
    return size >= AlwaysInRegion || (size >= LeastInRegion && in_heap >= ManyInHeap);
}

} // namespace

void* tl_malloc(std::size_t size) noexcept {
    constexpr std::size_t unit = sizeof(Header);
    if (size > std::size_t(-1) / 2)
        return nullptr;
    size = (size + unit - 1) / unit * unit + unit;
    try {
        if (GoesToRegion(size))
            return AllRegions().Allocate(size);
        void* const memory = ::operator new (size, std::align_val_t{unit});
        if (size >= LeastToTouch)
            paramdb::TouchPages(memory, size);
        if (size >= LeastInRegion)
            in_heap += size;
        return ::new (memory) Header{nullptr, size} + 1;
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

void tl_free(void* block) noexcept {
    if (block == nullptr)
        return;
    Header* const header = static_cast<Header*>(block) - 1;
    if (header->region != nullptr) {
        AllRegions().Free(header);
        return;
    }
    if (header->size >= LeastInRegion)
        in_heap -= header->size;
    ::operator delete (header, std::align_val_t{alignof(Header)});
}
