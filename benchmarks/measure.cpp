#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace benchmarks {
namespace {

Clock UsedClock = Clock::Wall;

double Now() {
    if (UsedClock == Clock::Processor)
        return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double Seconds(Work const& work) {
    if (work.prepare)
        work.prepare();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    double const start = Now();
    work.run();
    double const elapsed = Now() - start;
    if (work.tidy)
        work.tidy();
    return elapsed;
}

double Median(std::vector<double>& values) {
    std::ranges::sort(values);
    std::size_t const middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// A line of the kernel's account of this process, such as "VmHWM", in bytes.
std::size_t ProcessBytes(char const* name) {
    std::FILE* const file = std::fopen("/proc/self/status", "r");
    if (file == nullptr)
        return 0;
    std::size_t const length = std::strlen(name);
    std::size_t kilobytes = 0;
    char line[256];
    while (std::fgets(line, sizeof line, file) != nullptr)
        if (std::strncmp(line, name, length) == 0 && line[length] == ':')
            kilobytes = std::strtoul(line + length + 1, nullptr, 10);
    std::fclose(file);
    return kilobytes * 1024;
}

std::size_t Difference(std::size_t after, std::size_t before) {
    return after > before ? after - before : 0;
}

Memory MeasureHere(std::function<std::size_t()> const& work) {
    std::size_t const pages = ProcessBytes("VmRSS");
    std::size_t const heap = HeapBytes();
    std::size_t const part = work();
    return {Difference(HeapBytes(), heap), Difference(ProcessBytes("VmHWM"), pages), part};
}

// Writes nothing if the work fails.
void MeasureInto(int pipe_end, std::function<std::size_t()> const& work) {
    try {
        Memory const memory = MeasureHere(work);
        if (write(pipe_end, &memory, sizeof memory) != sizeof memory)
            std::perror("pipe");
    } catch (std::exception const& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
}

} // namespace

void UseClock(Clock clock) {
    UsedClock = clock;
}

std::vector<double> MedianSeconds(std::span<Work const> works, std::size_t repeats) {
    std::vector<std::vector<double>> times(works.size());
    for (std::size_t repeat = 0; repeat < repeats; ++repeat)
        for (std::size_t work = 0; work < works.size(); ++work)
            if (repeat < works[work].most_repeats)
                times[work].push_back(Seconds(works[work]));
    std::vector<double> medians;
    for (std::vector<double>& work : times)
        medians.push_back(Median(work));
    return medians;
}

std::size_t HeapBytes() {
#ifdef __GLIBC__
    // All memory of the process that is its own and can be written, without what the heap has free.
    return ProcessBytes("VmData") - mallinfo2().fordblks;
#else
    return 0;
#endif
}

Memory MeasureMemory(std::function<std::size_t()> const& work) {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(nullptr);
    pid_t const child = fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child == 0) {
        MeasureInto(ends[1], work);
        _exit(0);
    }
    close(ends[1]);
    Memory memory;
    bool const complete = read(ends[0], &memory, sizeof memory) == sizeof memory;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!complete)
        throw std::runtime_error("the work whose memory is measured has failed");
    return memory;
}

} // namespace benchmarks
