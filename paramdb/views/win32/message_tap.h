// Messages of a window, seen before the window itself sees them. A helper of the views.
//
//     class View : private MessageListener { ... MessageTap m_tap{*this}; };
//     m_tap.Attach(window);
//
// A tap sits on one window at a time and leaves it by itself when either goes. Any number of taps may sit on
// a window; the youngest is asked first. Only for windows of the calling thread.
#pragma once

#include <paramdb/platform/framework/window_types.h>

#include <optional>

namespace paramdb::win32 {

class MessageListener {
public:
    // Answers a message instead of the window, or lets it pass. It may destroy the tap and itself. The last
    // message of a window is WM_NCDESTROY; the tap has left it by then.
    virtual std::optional<LRESULT> OnWindowMessage(HWND window, UINT message, WPARAM first,
                                                   LPARAM second) = 0;

protected:
    ~MessageListener() = default;
};

class MessageTap {
public:
    explicit MessageTap(MessageListener& listener) : m_listener(listener) {}
    MessageTap(MessageTap const&) = delete;
    MessageTap& operator=(MessageTap const&) = delete;
    ~MessageTap() { Detach(); }

    bool Attach(HWND window);
    void Detach();
    [[nodiscard]] HWND GetWindow() const noexcept { return m_window; }

private:
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                    DWORD_PTR self);

    MessageListener& m_listener;
    HWND m_window = nullptr;
};

// The module that this code is in, a program or a library.
[[nodiscard]] HINSTANCE ThisModule();

// A pointer as a parameter of a message.
template <class T>
LPARAM Parameter(T const* pointer) noexcept {
    return reinterpret_cast<LPARAM>(pointer);
}

// The halves of a parameter.
[[nodiscard]] constexpr int LowWord(WPARAM parameter) noexcept {
    return static_cast<int>(parameter & 0xFFFF);
}
[[nodiscard]] constexpr int HighWord(WPARAM parameter) noexcept {
    return static_cast<int>(parameter >> 16 & 0xFFFF);
}
// The point of a message of the mouse; it may lie above and on the left of the window.
[[nodiscard]] inline POINT PointOf(LPARAM parameter) noexcept {
    auto const half = [](LPARAM bits) { return static_cast<LONG>(static_cast<short>(bits & 0xFFFF)); };
    return {half(parameter), half(parameter >> 16)};
}

} // namespace paramdb::win32
