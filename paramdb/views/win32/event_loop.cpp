#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/views/win32/event_loop.h>
#include <paramdb/views/win32/message_tap.h>

#include <exception>
#include <utility>

namespace paramdb::win32 {

namespace {

constexpr UINT DrainMessage = WM_APP;
constexpr wchar_t ClassName[] = L"paramdb event loop";

} // namespace

EventLoop::EventLoop() {
    WNDCLASSW description{};
    description.lpfnWndProc = &Receive;
    description.hInstance = ThisModule();
    description.lpszClassName = ClassName;
    ::RegisterClassW(&description); // fails where it is there already
    m_window =
        ::CreateWindowExW(0, ClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ThisModule(), nullptr);
    auto const wake_up = [window = m_window] { ::PostMessageW(window, DrainMessage, 0, 0); };
    m_before = CMessageQueue::SetWakeUp(wake_up);
    if (CMessageQueue::Size() > 0)
        wake_up();
}

EventLoop::~EventLoop() {
    CMessageQueue::SetWakeUp(std::move(m_before));
    ::DestroyWindow(m_window);
}

void EventLoop::Drain(HWND window) {
    CallControl([] { CMessageQueue::Dispatch(); });
    // The queue wakes nobody for what came while it was not empty.
    if (CMessageQueue::Size() > 0 && ::IsWindow(window))
        ::PostMessageW(window, DrainMessage, 0, 0);
}

LRESULT CALLBACK EventLoop::Receive(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != DrainMessage)
        return ::DefWindowProcW(window, message, first, second);
    Drain(window);
    return 0;
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

} // namespace paramdb::win32
