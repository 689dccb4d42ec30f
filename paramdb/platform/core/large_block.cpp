#include <paramdb/platform/core/large_block.h>

#include <algorithm>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace paramdb {
namespace {

#ifdef __linux__
constexpr std::size_t LargePage = std::size_t{2} << 20;

std::byte* Allocate(std::size_t size, std::align_val_t alignment) {
    auto* const memory = static_cast<std::byte*>(::operator new(size, alignment));
    // Whole pages only, so that no memory is held beyond the end. A refusal changes nothing but the speed.
    if (size >= LargePage)
        madvise(memory, size / LargePage * LargePage, MADV_HUGEPAGE);
    return memory;
}
#else
constexpr std::size_t LargePage = std::size_t(-1); // none is asked for

std::byte* Allocate(std::size_t size, std::align_val_t alignment) {
    return static_cast<std::byte*>(::operator new(size, alignment));
}
#endif

} // namespace

LargeBlock::LargeBlock(std::size_t size, std::size_t alignment) {
    Release const release{std::align_val_t{size >= LargePage ? std::max(alignment, LargePage) : alignment}};
    m_memory = {Allocate(size, release.alignment), release};
}

void LargeBlock::Release::operator()(std::byte* memory) const noexcept {
    ::operator delete(memory, alignment);
}

} // namespace paramdb
