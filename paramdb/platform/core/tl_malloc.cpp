#include <paramdb/platform/core/tl_malloc.h>

#include <new>

namespace {

constexpr std::align_val_t RowAlignment{16};

} // namespace

void* tl_malloc(std::size_t size) noexcept {
    return ::operator new(size, RowAlignment, std::nothrow);
}

void tl_free(void* block) noexcept {
    ::operator delete(block, RowAlignment, std::nothrow);
}
