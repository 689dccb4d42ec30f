#include "tools/messages.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/colour.h"
#include "tools/quiet.h"

#include <ostream>
#include <utility>

namespace paramdb::tools {

namespace {

// A quiet stream gets what tells why there is no answer.
bool IsShown(std::ostream& stream, int style) {
    return style == RefusalStyle || !IsQuiet(stream);
}

void Show(std::ostream& stream, int style, std::string const& text) {
    if (style == FaultStyle || style == RefusalStyle)
        stream << Painted(style == FaultStyle ? Tone::Warning : Tone::Error, text);
    else
        stream << text;
    stream.flush();
}

} // namespace

std::uint64_t CountOfStyle(MessageCounts const& counts, int style) {
    std::uint64_t total = 0;
    for (auto const& [kind, count] : counts)
        total += kind.style == style ? count : 0;
    return total;
}

bool HasFindings(MessageCounts const& counts) {
    return CountOfStyle(counts, FaultStyle) + CountOfStyle(counts, RefusalStyle) > 0;
}

MessageCollector::MessageCollector(std::ostream& stream, PrWin::Sink other)
    : m_stream(stream), m_other(std::move(other)) {
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
    if (m_other)
        m_other(kind.category, kind.style, text);
    else if (IsShown(m_stream, kind.style))
        Show(m_stream, kind.style, ToUtf8(text));
}

} // namespace paramdb::tools
