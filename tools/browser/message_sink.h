// The messages of the library on their way to the window, from whatever thread they come.
//
//     MessageSink sink([&](std::vector<Message> messages) { pane.Add(std::move(messages)); });
//
// Is the library's message sink while it lives. The callback runs on the thread of the windows, from the
// event loop, with all that has come since it ran last.
#pragma once

#include <paramdb/platform/sea/pr_win.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace paramdb::browser {

struct Message {
    int category = 0;
    int style = 0; // see tools/messages.h
    QString text;  // without the line end behind it
    friend bool operator==(Message const&, Message const&) = default;
};

class MessageSink : public QObject {
public:
    // How many messages are kept from one Reset to the next; what comes beyond is only counted.
    static constexpr std::size_t Limit = 50'000;

    using Callback = std::function<void(std::vector<Message> messages)>;
    explicit MessageSink(Callback callback);
    MessageSink(MessageSink const&) = delete;
    MessageSink& operator=(MessageSink const&) = delete;
    ~MessageSink() override; // brings back the sink that was there before

    // Hands over at once what waits.
    void Flush();
    // Forgets what waits and begins to count anew.
    void Reset();

    // Since the last Reset; any thread.
    [[nodiscard]] std::uint64_t Count() const;
    [[nodiscard]] std::uint64_t CountOfStyle(int style) const;

private:
    void Take(int category, int style, std::wstring const& text);

    Callback m_callback;
    mutable std::mutex m_mutex;
    std::vector<Message> m_waiting;
    std::vector<std::pair<int, std::uint64_t>> m_counts; // by style
    std::uint64_t m_count = 0;
    bool m_scheduled = false;
    PrWin::Sink m_previous;
};

} // namespace paramdb::browser
