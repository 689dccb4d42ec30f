#include <paramdb/platform/core/large_block.h>

#include <new>

// The address sanitizer looks for what still is in use in the memory of the heap only.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define PARAMDB_HEAP_ONLY
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define PARAMDB_HEAP_ONLY
#endif

#ifdef __linux__
#include <cstdint>
#include <sys/mman.h>
#ifndef PARAMDB_HEAP_ONLY
#define PARAMDB_HAS_LARGE_PAGES
#endif
#endif

namespace paramdb {
namespace {

#ifdef PARAMDB_HAS_LARGE_PAGES
constexpr std::size_t LargePage = std::size_t{2} << 20;

// What is mapped for a size: whole pages of any size that processors have, large ones where what is left over
// fills half of one.
constexpr std::size_t Mapped(std::size_t size) {
    std::size_t const page = size % LargePage < LargePage / 2 ? std::size_t{1} << 16 : LargePage;
    return (size + page - 1) / page * page;
}

// The heap would take a large page more to find one that begins where it must, and keep it.
std::byte* Map(std::size_t size) {
    if (size > SIZE_MAX / 2)
        throw std::bad_alloc();
    void* const mapped =
        mmap(nullptr, Mapped(size) + LargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        throw std::bad_alloc();
    auto* const begin = static_cast<std::byte*>(mapped);
    std::size_t const behind = reinterpret_cast<std::uintptr_t>(begin) % LargePage;
    std::byte* const memory = begin + (LargePage - behind);
    munmap(begin, LargePage - behind);
    if (behind > 0)
        munmap(memory + Mapped(size), behind);
    // Whole pages only, so that no memory is held beyond the end. A refusal changes nothing but the speed.
    madvise(memory, Mapped(size) / LargePage * LargePage, MADV_HUGEPAGE);
    return memory;
}
#endif

std::byte* Allocate(std::size_t size, std::size_t alignment) {
#ifdef PARAMDB_HAS_LARGE_PAGES
    if (size >= LargePage)
        return Map(size);
#endif
    return static_cast<std::byte*>(::operator new (size, std::align_val_t{alignment}));
}

} // namespace

LargeBlock::LargeBlock(std::size_t size, std::size_t alignment)
    : m_memory(Allocate(size, alignment), Release{size, alignment}) {}

void LargeBlock::Release::operator()(std::byte* memory) const noexcept {
#ifdef PARAMDB_HAS_LARGE_PAGES
    if (size >= LargePage) {
        munmap(memory, Mapped(size));
        return;
    }
#endif
    ::operator delete (memory, std::align_val_t{alignment});
}

void TouchPages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef __linux__
    constexpr int populate_write = 23; // newer than the headers of some systems
    constexpr std::uintptr_t page = 4096;
    auto const begin = reinterpret_cast<std::uintptr_t>(memory);
    std::uintptr_t const before = (page - begin % page) % page;
    if (size > before + page)
        madvise(static_cast<std::byte*>(memory) + before, (size - before) / page * page, populate_write);
#endif
}

} // namespace paramdb
