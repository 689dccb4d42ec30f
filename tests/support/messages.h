// The protocol messages that code under test gives out, collected while an object of this class lives.
#pragma once

#include <paramdb/platform/sea/pr_win.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

struct Message {
    int category;
    int style;
    std::wstring text;
    bool operator==(Message const&) const = default;
};

inline void PrintTo(Message const& message, std::ostream* out) {
    *out << "(" << message.category << ", " << message.style << ") ";
    for (wchar_t const unit : message.text)
        *out << (unit < 0x80 ? static_cast<char>(unit) : '?');
}

class MessageLog {
public:
    MessageLog()
        : m_previous(PrWin::SetSink([this](int category, int style, std::wstring const& text) {
              m_messages.push_back({category, style, text});
          })) {}
    MessageLog(MessageLog const&) = delete;
    MessageLog& operator=(MessageLog const&) = delete;
    ~MessageLog() { PrWin::SetSink(std::move(m_previous)); }

    // What has come since the last call.
    std::vector<Message> Take() { return std::exchange(m_messages, {}); }

private:
    std::vector<Message> m_messages;
    PrWin::Sink m_previous;
};
