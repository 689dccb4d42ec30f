#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/framework/wnd.h>

#include <deque>
#include <utility>

#ifndef _WIN32
#include <map>
#include <mutex>
#endif

namespace {

struct PostedMessage {
    HWND window;
    UINT message;
    WPARAM first;
    LPARAM second;
};

struct Queue {
    std::deque<PostedMessage> messages;
    std::function<void()> wake_up;
};

// Never destroyed: a static window may post as late as it likes.
Queue& TheQueue() {
    static auto& queue = *new Queue;
    return queue;
}

} // namespace

bool CMessageQueue::Post(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (!CWnd::IsWindow(window))
        return false;
    auto& [messages, wake_up] = TheQueue();
    bool const was_empty = messages.empty();
    messages.push_back({window, message, first, second});
    if (was_empty && wake_up)
        wake_up();
    return true;
}

std::size_t CMessageQueue::Dispatch() {
    auto& messages = TheQueue().messages;
    std::size_t delivered = 0;
    for (std::size_t left = messages.size(); left > 0 && !messages.empty(); --left) {
        PostedMessage const next = messages.front();
        messages.pop_front();
        if (CWnd* const window = CWnd::FromHandlePermanent(next.window)) {
            ++delivered;
            window->SendMessageW(next.message, next.first, next.second);
        }
    }
    return delivered;
}

std::size_t CMessageQueue::Size() noexcept {
    return TheQueue().messages.size();
}

void CMessageQueue::Clear() noexcept {
    TheQueue().messages.clear();
}

std::function<void()> CMessageQueue::SetWakeUp(std::function<void()> wake_up) {
    return std::exchange(TheQueue().wake_up, std::move(wake_up));
}

#ifdef _WIN32

// The system's own, so that a host's real windows know it by the same number.
UINT paramdb::RegisteredMessage(wchar_t const* name) {
    return name && *name ? ::RegisterWindowMessageW(name) : 0;
}

#else

UINT paramdb::RegisteredMessage(wchar_t const* name) {
    constexpr UINT first_number = 0xC000;
    constexpr UINT last_number = 0xFFFF;
    static std::mutex lock;
    static auto& numbers = *new std::map<CString, UINT>;
    CString key(name);
    if (key.IsEmpty())
        return 0;
    key.MakeLower();
    std::lock_guard const guard(lock);
    if (auto const known = numbers.find(key); known != numbers.end())
        return known->second;
    UINT const number = first_number + static_cast<UINT>(numbers.size());
    if (number > last_number)
        return 0;
    numbers.emplace(key, number);
    return number;
}

#endif
