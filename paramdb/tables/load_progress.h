// How far a load has come, for a host that wants to show it.
//
// The store puts a ProgressScope around a load on the thread that loads; whoever works through rows meanwhile
// calls AdvanceProgress. Without a callback that costs next to nothing.
#pragma once

#include <paramdb/platform/core/export.h>

#include <chrono>
#include <cstddef>
#include <functional>

namespace paramdb {

// Told the step of the load ("read" or "derive"), how much of it is done, and the whole; a few times each
// second, on the thread that loads. It may use the query object for nothing yet.
using LoadProgress = std::function<void(wchar_t const* step, std::size_t done, std::size_t total)>;

// Makes the callback the one of this thread's load until the end of the scope. An empty callback is not
// called.
class PARAMDB_API ProgressScope {
public:
    explicit ProgressScope(LoadProgress const& progress);
    ProgressScope(ProgressScope const&) = delete;
    ProgressScope& operator=(ProgressScope const&) = delete;
    ~ProgressScope();

private:
    friend PARAMDB_API void BeginProgress(wchar_t const* step, std::size_t total);
    friend PARAMDB_API void AdvanceProgress(std::size_t count);

    LoadProgress const* m_progress;
    ProgressScope* m_outer;
    wchar_t const* m_step = L"";
    std::size_t m_done = 0;
    std::size_t m_total = 0;
    std::chrono::steady_clock::time_point m_last_call = std::chrono::steady_clock::now();
};

// Begins a step of the present load, if there is one, with nothing done yet.
PARAMDB_API void BeginProgress(wchar_t const* step, std::size_t total);
// Adds to what is done, and calls the callback if the last call is long enough ago. Not meant for every
// single row.
PARAMDB_API void AdvanceProgress(std::size_t count);

// Counts rows for AdvanceProgress, many at a time.
class RowProgress {
public:
    RowProgress() = default;
    RowProgress(RowProgress const&) = delete;
    RowProgress& operator=(RowProgress const&) = delete;
    ~RowProgress() { AdvanceProgress(m_rows); }

    void AddRow() {
        constexpr std::size_t rows_for_a_look = 1024;
        if (++m_rows < rows_for_a_look)
            return;
        AdvanceProgress(m_rows);
        m_rows = 0;
    }

private:
    std::size_t m_rows = 0;
};

} // namespace paramdb
