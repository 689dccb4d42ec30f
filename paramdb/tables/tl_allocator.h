// A standard allocator over the row storage of the core library.
#pragma once

#include <paramdb/platform/core/tl_malloc.h>

#include <cstddef>
#include <limits>
#include <new>

// Has no state; all instances are equal. Serves types of at most the alignment of std::max_align_t.
template <class T>
class tl_allocator {
public:
    using value_type = T;

    tl_allocator() = default;
    template <class Other>
    tl_allocator(tl_allocator<Other> const&) {}

    T* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T))
            throw std::bad_array_new_length();
        void* const memory = tl_malloc(count * sizeof(T));
        if (memory == nullptr)
            throw std::bad_alloc();
        return static_cast<T*>(memory);
    }
    void deallocate(T* memory, std::size_t) { tl_free(memory); }

    friend bool operator==(tl_allocator const&, tl_allocator const&) { return true; }
};
