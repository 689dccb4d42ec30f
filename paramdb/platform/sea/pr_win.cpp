#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/pr_win.h>

#include <cstdio>
#include <memory>
#include <mutex>
#include <utility>

namespace PrWin {
namespace {

struct State {
    std::mutex mutex;
    std::shared_ptr<Sink const> sink;
};

// Never destroyed: process-wide objects may report while the process ends.
State& TheState() {
    static State& state = *new State;
    return state;
}

} // namespace

Sink SetSink(Sink sink) {
    auto next = sink ? std::make_shared<Sink const>(std::move(sink)) : nullptr;
    {
        State& state = TheState();
        std::lock_guard const lock(state.mutex);
        state.sink.swap(next);
    }
    return next ? *next : Sink();
}

void Output(int category, int style, std::wstring const& text) {
    std::shared_ptr<Sink const> sink;
    {
        State& state = TheState();
        std::lock_guard const lock(state.mutex);
        sink = state.sink;
    }
    // Called outside of the lock, so that a sink may come back here.
    if (sink) {
        (*sink)(category, style, text);
        return;
    }
    std::string const bytes = paramdb::ToUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

} // namespace PrWin
