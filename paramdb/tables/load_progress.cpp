#include <paramdb/tables/load_progress.h>

#include <algorithm>

namespace paramdb {
namespace {

constexpr std::chrono::milliseconds TimeBetweenCalls(150);

thread_local ProgressScope* current_scope = nullptr;

} // namespace

ProgressScope::ProgressScope(LoadProgress const& progress) : m_progress(&progress), m_outer(current_scope) {
    current_scope = this;
}

ProgressScope::~ProgressScope() {
    current_scope = m_outer;
}

void BeginProgress(wchar_t const* step, std::size_t total) {
    if (current_scope == nullptr)
        return;
    current_scope->m_step = step;
    current_scope->m_done = 0;
    current_scope->m_total = total;
}

void AdvanceProgress(std::size_t count) {
    ProgressScope* const scope = current_scope;
    if (scope == nullptr || !*scope->m_progress)
        return;
    scope->m_done = std::min(scope->m_done + count, scope->m_total);
    auto const now = std::chrono::steady_clock::now();
    if (now - scope->m_last_call < TimeBetweenCalls)
        return;
    scope->m_last_call = now;
    (*scope->m_progress)(scope->m_step, scope->m_done, scope->m_total);
}

} // namespace paramdb
