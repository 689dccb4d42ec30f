// Keeps the messages of the library to itself while it lives, for work whose messages nobody needs to see.
#pragma once

#include <paramdb/platform/sea/pr_win.h>

#include <string>
#include <utility>
#include <vector>

namespace paramdb::tools {

class MessageList {
public:
    MessageList()
        : m_previous(
              PrWin::SetSink([this](int, int, std::wstring const& text) { m_texts.push_back(text); })) {}
    MessageList(MessageList const&) = delete;
    MessageList& operator=(MessageList const&) = delete;
    ~MessageList() { PrWin::SetSink(std::move(m_previous)); }

    // What has come since the last call.
    std::vector<std::wstring> Take() { return std::exchange(m_texts, {}); }

private:
    std::vector<std::wstring> m_texts;
    PrWin::Sink m_previous;
};

} // namespace paramdb::tools
