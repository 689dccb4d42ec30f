// In a source of its own, so that no compiler puts the call into the caller.
#include "counted_work.h"

namespace benchmarks {

void CountedWork(std::function<void()> const& work) {
    work();
}

} // namespace benchmarks
