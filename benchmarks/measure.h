// Measuring time and memory.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace benchmarks {

// A work whose time is taken. Only `run` counts; `prepare` comes before and `tidy` behind each run.
struct Work {
    std::string name;
    std::function<void()> prepare;
    std::function<void()> run;
    std::function<void()> tidy;
    std::size_t most_repeats = std::numeric_limits<std::size_t>::max();
};

// Which time counts. Processor time leaves out what the process waits for, be it other programs that keep the
// processors busy or a server that does the work.
enum class Clock { Wall, Processor };
// Of all measurements from now on; the wall at first.
void UseClock(Clock clock);

// The median time of each work in seconds. The works take turns, so that whatever else the machine does meets
// them all alike, and every run begins with a heap that has given its free memory back.
std::vector<double> MedianSeconds(std::span<Work const> works, std::size_t repeats);

// The bytes of memory that the heap has handed out and not taken back; 0 where that cannot be told.
std::size_t HeapBytes();

// What a work needs beyond the memory in use before it, in bytes. Fields stay 0 where that cannot be told.
struct Memory {
    std::size_t kept = 0; // still in use when the work is done
    std::size_t peak = 0; // the most pages held at any time
    std::size_t part = 0; // what the work itself has measured
};

// Does the work in a process of its own, so that it meets a fresh heap. It may return a part of its memory
// that it has measured itself.
Memory MeasureMemory(std::function<std::size_t()> const& work);

} // namespace benchmarks
