// The messages of the library during a run of the command: shown as they come, and counted.
#pragma once

#include <paramdb/platform/sea/pr_win.h>

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <mutex>

namespace paramdb::tools {

// The styles of messages that the command tells apart.
inline constexpr int PlainStyle = 1;
inline constexpr int FaultStyle = 3;
inline constexpr int RefusalStyle = 4;

struct MessageKind {
    int category;
    int style;
    auto operator<=>(MessageKind const&) const = default;
};

// How many messages of each kind came, in the order of category and style.
using MessageCounts = std::map<MessageKind, std::uint64_t>;

// The number of messages of that style, in all categories.
std::uint64_t CountOfStyle(MessageCounts const& counts, int style);
// Whether there is one that tells of a fault in the data or of a refusal.
bool HasFindings(MessageCounts const& counts);

// Is the library's message sink while it lives. Every message goes to the stream at once, in UTF-8 and
// otherwise as it is, or to the other sink if there is one. Messages may come from any thread, and go on one
// after the other.
class MessageCollector {
public:
    explicit MessageCollector(std::ostream& stream, PrWin::Sink other = {});
    MessageCollector(MessageCollector const&) = delete;
    MessageCollector& operator=(MessageCollector const&) = delete;
    // Brings back the sink that was there before.
    ~MessageCollector();

    MessageCounts Counts() const;

private:
    void Take(MessageKind kind, std::wstring const& text);

    std::ostream& m_stream;
    PrWin::Sink m_other;
    mutable std::mutex m_mutex;
    MessageCounts m_counts;
    PrWin::Sink m_previous;
};

} // namespace paramdb::tools
