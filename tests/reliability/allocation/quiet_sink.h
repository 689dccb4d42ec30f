// Messages that go nowhere, so that nobody needs memory for them.
#pragma once

#include <paramdb/platform/sea/pr_win.h>

#include <string>
#include <utility>

class QuietSink {
public:
    QuietSink() : m_previous(PrWin::SetSink([](int, int, std::wstring const&) {})) {}
    QuietSink(QuietSink const&) = delete;
    QuietSink& operator=(QuietSink const&) = delete;
    ~QuietSink() { PrWin::SetSink(std::move(m_previous)); }

private:
    PrWin::Sink m_previous;
};
