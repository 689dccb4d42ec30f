#include "failing_memory.h"

#include <algorithm>
#include <cstdlib>
#include <sys/mman.h>

namespace {

thread_local bool is_counting = false;
thread_local std::size_t requests_made = 0;
thread_local std::size_t refused_number = 0;
thread_local failing_memory::Extent refused_extent = failing_memory::Extent::One;
thread_local bool has_refused = false;
thread_local std::ptrdiff_t bytes_held = 0;
thread_local failing_memory::Taken memory_taken{0, 0};

bool Refuses() noexcept {
    if (!is_counting)
        return false;
    ++requests_made;
    bool const refuses =
        refused_number != 0 &&
        (requests_made == refused_number ||
         (requests_made > refused_number && refused_extent == failing_memory::Extent::AllFrom));
    has_refused = has_refused || refuses;
    return refuses;
}

void Count(std::size_t size) noexcept {
    bytes_held += static_cast<std::ptrdiff_t>(size);
    memory_taken.bytes += size;
    ++memory_taken.requests;
}

// Its size stands before each block.
constexpr std::size_t Least = alignof(std::max_align_t);

void* Begin(void* base, std::size_t alignment, std::size_t size) noexcept {
    Count(size);
    std::byte* const memory = static_cast<std::byte*>(base) + alignment;
    ::new (memory - sizeof size) std::size_t(size);
    return memory;
}

void* Allocate(std::size_t size) noexcept {
    if (Refuses())
        return nullptr;
    void* const base = std::malloc(size + Least);
    return base != nullptr ? Begin(base, Least, size) : nullptr;
}

void* AllocateOrThrow(std::size_t size) {
    if (void* const memory = Allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* AllocateOrThrow(std::size_t size, std::align_val_t alignment) {
    std::size_t const step = std::max(Least, static_cast<std::size_t>(alignment));
    void* base = nullptr;
    if (Refuses() || posix_memalign(&base, step, size + step) != 0)
        throw std::bad_alloc();
    return Begin(base, step, size);
}

void Free(void* memory, std::align_val_t alignment = std::align_val_t{Least}) noexcept {
    if (memory == nullptr)
        return;
    auto* const begin = static_cast<std::byte*>(memory);
    bytes_held -= static_cast<std::ptrdiff_t>(*std::launder(reinterpret_cast<std::size_t*>(begin) - 1));
    std::free(begin - std::max(Least, static_cast<std::size_t>(alignment)));
}

} // namespace

// The linker leads the calls in this program's own objects here.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
void* __real_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t offset);
int __real_munmap(void* address, std::size_t size);

void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file, off_t offset) {
    if (Refuses())
        return MAP_FAILED;
    void* const memory = __real_mmap(address, size, protection, flags, file, offset);
    if (memory != MAP_FAILED)
        Count(size);
    return memory;
}
int __wrap_munmap(void* address, std::size_t size) {
    bytes_held -= static_cast<std::ptrdiff_t>(size);
    return __real_munmap(address, size);
}
// NOLINTEND(bugprone-reserved-identifier)
}

void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return AllocateOrThrow(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return AllocateOrThrow(size, alignment);
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::nothrow_t const&) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::nothrow_t const&) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::align_val_t alignment) noexcept {
    Free(memory, alignment);
}
void operator delete[](void* memory, std::align_val_t alignment) noexcept {
    Free(memory, alignment);
}
void operator delete(void* memory, std::size_t, std::align_val_t alignment) noexcept {
    Free(memory, alignment);
}
void operator delete[](void* memory, std::size_t, std::align_val_t alignment) noexcept {
    Free(memory, alignment);
}

namespace failing_memory {

std::ptrdiff_t HeldBytes() noexcept {
    return bytes_held;
}

Taken TakenSoFar() noexcept {
    return memory_taken;
}

Refusal::Refusal(std::size_t number, Extent extent) noexcept {
    requests_made = 0;
    refused_number = number;
    refused_extent = extent;
    has_refused = false;
    is_counting = true;
}

Refusal::~Refusal() {
    is_counting = false;
}

bool Refusal::Happened() noexcept {
    return has_refused;
}

std::size_t Refusal::Requests() noexcept {
    return requests_made;
}

} // namespace failing_memory
