#include <paramdb/platform/core/large_block.h>

#include <cstdlib>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace paramdb {
namespace {

#ifdef __linux__
constexpr std::size_t LargePage = std::size_t{2} << 20;

void* Allocate(std::size_t size) {
    if (size < LargePage)
        return std::malloc(size);
    void* memory = nullptr;
    if (posix_memalign(&memory, LargePage, size) != 0)
        return nullptr;
    // Whole pages only, so that no memory is held beyond the end. A refusal changes nothing but the speed.
    madvise(memory, size / LargePage * LargePage, MADV_HUGEPAGE);
    return memory;
}
#else
void* Allocate(std::size_t size) {
    return std::malloc(size);
}
#endif

} // namespace

LargeBlock::LargeBlock(std::size_t size) : m_memory(static_cast<std::byte*>(Allocate(size > 0 ? size : 1))) {
    if (!m_memory)
        throw std::bad_alloc();
}

void LargeBlock::Release::operator()(std::byte* memory) const noexcept {
    std::free(memory);
}

} // namespace paramdb
