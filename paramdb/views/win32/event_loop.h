// Posted messages of the controls, delivered by the message loop of the thread.
//
//     paramdb::win32::EventLoop loop; // from here on CWnd::PostMessageW arrives
//     while (GetMessageW(&message, nullptr, 0, 0) > 0) ...
//
// They arrive in any loop that dispatches messages, those of message boxes and menus included. One at a time,
// on the thread of the windows.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/window_types.h>

#include <functional>

namespace paramdb::win32 {

class PARAMDB_VIEWS_API EventLoop {
public:
    EventLoop();
    EventLoop(EventLoop const&) = delete;
    EventLoop& operator=(EventLoop const&) = delete;
    ~EventLoop(); // puts back who was woken before; messages that wait stay

private:
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM first, LPARAM second);
    static void Drain(HWND window);

    HWND m_window = nullptr; // never on the screen
    std::function<void()> m_before;
};

// Calls into a control from a message of the system. No exception may pass through the system, so one that a
// host's own function throws ends here, as a message of category 8 and style 3 with its what().
PARAMDB_VIEWS_API void CallControl(std::function<void()> const& call);

} // namespace paramdb::win32
