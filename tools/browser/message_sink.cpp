#include "tools/browser/message_sink.h"

#include <paramdb/views/qt/qt_text.h>

#include <QtCore/QMetaObject>
#include <algorithm>
#include <utility>

namespace paramdb::browser {

MessageSink::MessageSink(Callback callback) : m_callback(std::move(callback)) {
    m_previous = PrWin::SetSink(
        [this](int category, int style, std::wstring const& text) { Take(category, style, text); });
}

MessageSink::~MessageSink() {
    PrWin::SetSink(std::move(m_previous));
}

void MessageSink::Flush() {
    std::vector<Message> messages;
    {
        std::lock_guard const lock(m_mutex);
        messages = std::exchange(m_waiting, {});
        m_scheduled = false;
    }
    if (!messages.empty())
        m_callback(std::move(messages));
}

void MessageSink::Reset() {
    std::lock_guard const lock(m_mutex);
    m_waiting.clear();
    m_counts.clear();
    m_count = 0;
}

std::uint64_t MessageSink::Count() const {
    std::lock_guard const lock(m_mutex);
    return m_count;
}

std::uint64_t MessageSink::CountOfStyle(int style) const {
    std::lock_guard const lock(m_mutex);
    auto const found = std::find_if(m_counts.begin(), m_counts.end(),
                                    [style](auto const& entry) { return entry.first == style; });
    return found == m_counts.end() ? 0 : found->second;
}

void MessageSink::Take(int category, int style, std::wstring const& text) {
    std::lock_guard const lock(m_mutex);
    auto found = std::find_if(m_counts.begin(), m_counts.end(),
                              [style](auto const& entry) { return entry.first == style; });
    if (found == m_counts.end())
        found = m_counts.insert(found, {style, 0});
    ++found->second;
    if (++m_count > Limit)
        return;
    QString line = qt::ToQString(text.c_str());
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    m_waiting.push_back({category, style, std::move(line)});
    if (std::exchange(m_scheduled, true))
        return;
    QMetaObject::invokeMethod(
        this, [this] { Flush(); }, Qt::QueuedConnection);
}

} // namespace paramdb::browser
