#include "tools/messages.h"

#include <paramdb/platform/core/utf8.h>

#include <ostream>
#include <utility>

namespace paramdb::tools {

std::uint64_t CountOfStyle(MessageCounts const& counts, int style) {
    std::uint64_t total = 0;
    for (auto const& [kind, count] : counts)
        total += kind.style == style ? count : 0;
    return total;
}

bool HasFindings(MessageCounts const& counts) {
    return CountOfStyle(counts, FaultStyle) + CountOfStyle(counts, RefusalStyle) > 0;
}

MessageCollector::MessageCollector(std::ostream& stream) : m_stream(stream) {
    m_previous = PrWin::SetSink([this](int category, int style, std::wstring const& text) {
        Take({category, style}, text);
    });
}

MessageCollector::~MessageCollector() {
    PrWin::SetSink(std::move(m_previous));
}

MessageCounts MessageCollector::Counts() const {
    std::lock_guard const lock(m_mutex);
    return m_counts;
}

void MessageCollector::Take(MessageKind kind, std::wstring const& text) {
    std::lock_guard const lock(m_mutex);
    ++m_counts[kind];
    m_stream << ToUtf8(text) << std::flush;
}

} // namespace paramdb::tools
