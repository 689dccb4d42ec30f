#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/views/qt/event_loop.h>

#include <QtCore/QMetaObject>
#include <exception>
#include <utility>

namespace paramdb::qt {

EventLoop::EventLoop() : m_drain([this] { Drain(); }) {
    m_before = CMessageQueue::SetWakeUp([this] { m_drain.Ask(); });
    if (CMessageQueue::Size() > 0)
        m_drain.Ask();
}

EventLoop::~EventLoop() {
    CMessageQueue::SetWakeUp(std::move(m_before));
}

void EventLoop::Drain() {
    CallControl([] { CMessageQueue::Dispatch(); });
    // The queue wakes nobody for what came while it was not empty.
    if (CMessageQueue::Size() > 0)
        m_drain.Ask();
}

void CallControl(std::function<void()> const& call) {
    constexpr int category = 8;
    constexpr int fault = 3;
    try {
        call();
    } catch (std::exception const& error) {
        PrWin::Output(category, fault, FromUtf8(error.what()) + L'\n');
    }
}

} // namespace paramdb::qt
