// Takes the messages of the library while an object of this class lives, and sees to it that they are as
// every message is: of a known category and style, and with an end of line.
#pragma once

#include <paramdb/platform/sea/pr_win.h>

#include "answers.h"
#include "expect.h"

#include <cstddef>
#include <string>
#include <utility>

namespace fuzz {

class MessageWatch {
public:
    MessageWatch()
        : m_previous(PrWin::SetSink(
              [this](int category, int style, std::wstring const& text) { Take(category, style, text); })) {}
    MessageWatch(MessageWatch const&) = delete;
    MessageWatch& operator=(MessageWatch const&) = delete;
    ~MessageWatch() { PrWin::SetSink(std::move(m_previous)); }

    // How many have come since the last call, and all of them as a number.
    std::size_t TakeCount() { return std::exchange(m_count, 0); }
    std::uint64_t TakeSum() { return std::exchange(m_answers, {}).Sum(); }

private:
    void Take(int category, int style, std::wstring const& text) {
        KeepMessage(text);
        Expect(category == 1 || category == 8 || category == 16, "a known category of messages");
        Expect(style == 1 || style == 3 || style == 4, "a known style of messages");
        Expect(!text.empty() && text.back() == L'\n', "a message with an end of line");
        ++m_count;
        m_answers.Take(category, style, text);
    }

    std::size_t m_count = 0;
    Answers m_answers;
    PrWin::Sink m_previous;
};

} // namespace fuzz
