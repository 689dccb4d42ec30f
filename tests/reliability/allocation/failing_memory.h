// Memory that can be refused: all that the program takes by operator new and mmap.
//
//     failing_memory::Refusal const refusal(3, failing_memory::Extent::One);
//     Load(); // the third request fails
//
// The functions replaced are those of this whole program; each thread counts its own requests and has
// refusals of its own.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <new>

namespace failing_memory {

// What this thread has taken so far and not given back, in bytes. Only differences mean something.
std::ptrdiff_t HeldBytes() noexcept;

// All bytes that it has taken so far, also those given back, and how many requests that were.
struct Taken {
    std::size_t bytes;
    std::size_t requests;
};
Taken TakenSoFar() noexcept;

enum class Extent {
    One,     // the request of that number, and none after it
    AllFrom, // that one and all after it
};

// Counts the requests from 1 while it lives, and refuses the one of that number; 0 refuses none.
class Refusal {
public:
    explicit Refusal(std::size_t number, Extent extent = Extent::One) noexcept;
    Refusal(Refusal const&) = delete;
    Refusal& operator=(Refusal const&) = delete;
    ~Refusal();

    // Whether a request has been refused.
    static bool Happened() noexcept;
    static std::size_t Requests() noexcept;
};

// How an action ended whose request of that number was refused.
struct Ending {
    bool refused;   // false: the action makes fewer requests
    bool bad_alloc; // true: it ended by that exception; false: by itself
};

template <class Action>
Ending Run(std::size_t number, Extent extent, Action const& action) {
    Refusal const refusal(number, extent);
    try {
        action();
    } catch (std::bad_alloc const&) {
        return {Refusal::Happened(), true};
    }
    return {Refusal::Happened(), false};
}

// Refuses each request of the action in turn, or each of a stride, until it makes fewer, in both extents.
// Each time `before` puts things in order and `after` looks at what is left; both get all memory. The result
// is the number of requests that the action makes by itself.
template <class Before, class Action, class After>
std::size_t RefuseEach(Before const& before, Action const& action, After const& after,
                       std::size_t stride = 1) {
    std::size_t requests = 0;
    for (Extent const extent : {Extent::One, Extent::AllFrom})
        for (std::size_t number = 1;; number += stride) {
            before();
            Ending const ending = Run(number, extent, action);
            after(number, ending);
            if (!ending.refused) {
                requests = number;
                break;
            }
        }
    return requests;
}

} // namespace failing_memory
