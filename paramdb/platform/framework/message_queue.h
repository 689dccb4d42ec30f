// Posted messages: one queue for the whole process, which the event loop of a view empties, or a test.
//
//     CMessageQueue::SetWakeUp([] { ... call CMessageQueue::Dispatch() from the event loop soon ... });
//
// A message for a window that is destroyed before its turn is dropped. For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/window_types.h>

#include <cstddef>
#include <functional>

class PARAMDB_API CMessageQueue {
public:
    // Puts a message behind the others; false, and nothing happens, if there is no such window.
    static bool Post(HWND window, UINT message, WPARAM first, LPARAM second);

    // Delivers the messages that are waiting now, in order, and returns how many found their window. Those
    // that are posted meanwhile wait for the next call. May be called while it runs. An exception of a window
    // passes through; its message is gone, the others stay.
    static std::size_t Dispatch();

    // How many messages wait, those for windows that are gone included.
    [[nodiscard]] static std::size_t Size() noexcept;

    // Drops all of them.
    static void Clear() noexcept;

    // Installs what is called whenever a message comes into the empty queue; returns the one before. Empty
    // for none.
    static std::function<void()> SetWakeUp(std::function<void()> wake_up);
};

namespace paramdb {

// The number of a message by name: 0xC000 to 0xFFFF, the same for the same name as long as the process lives.
// Names are compared without regard to case. 0 for an empty name and when all numbers are taken. Any thread.
[[nodiscard]] PARAMDB_API UINT RegisteredMessage(wchar_t const* name);

} // namespace paramdb
