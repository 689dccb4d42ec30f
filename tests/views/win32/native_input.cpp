#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <string>
#include <tests/views/win32/native_driver.h>
#include <tests/views/win32/native_input.h>
#include <vector>

namespace {

void Send(std::vector<INPUT> inputs) {
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), static_cast<int>(sizeof(INPUT)));
    TakeMessages();
}

INPUT KeyInput(WORD key, bool up) {
    constexpr WORD extended[] = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_PRIOR, VK_NEXT, VK_HOME, VK_END};
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    bool const is_extended = std::find(std::begin(extended), std::end(extended), key) != std::end(extended);
    input.ki.dwFlags = (up ? KEYEVENTF_KEYUP : 0U) | (is_extended ? KEYEVENTF_EXTENDEDKEY : 0U);
    return input;
}

INPUT ButtonInput(DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
}

void MoveTo(HWND window, POINT point) {
    ::ClientToScreen(window, &point);
    ::SetCursorPos(static_cast<int>(point.x), static_cast<int>(point.y));
    TakeMessages();
}

// Around something: keys go down before and up behind it.
class HeldKeys {
public:
    explicit HeldKeys(Held held) {
        if (held.control)
            m_keys.push_back(VK_CONTROL);
        if (held.shift)
            m_keys.push_back(VK_SHIFT);
        if (held.alt)
            m_keys.push_back(VK_MENU);
        for (WORD const key : m_keys)
            Hold(key);
    }
    HeldKeys(HeldKeys const&) = delete;
    HeldKeys& operator=(HeldKeys const&) = delete;
    ~HeldKeys() {
        for (WORD const key : m_keys)
            Send({KeyInput(key, true)});
    }

private:
    // The screen's own keyboard may report at any time that it has no key down.
    static void Hold(WORD key) {
        constexpr int attempts = 100;
        for (int i = 0; i < attempts && ::GetKeyState(key) >= 0; ++i) {
            if (i > 0)
                ::Sleep(1);
            Send({KeyInput(key, false)});
        }
    }

    std::vector<WORD> m_keys;
};

} // namespace

void TakeMessages() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

void ParkPointer() {
    ::SetCursorPos(::GetSystemMetrics(SM_CXSCREEN) - 1, ::GetSystemMetrics(SM_CYSCREEN) - 1);
    TakeMessages();
}

void ClickWindow(HWND window, POINT point, Held held, MouseButton button) {
    bool const left = button == MouseButton::left;
    MoveTo(window, point);
    HeldKeys const keys(held);
    // Both at once: some windows look at nothing else until the button goes up.
    Send({ButtonInput(left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN),
          ButtonInput(left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP)});
}

void DragIn(HWND window, POINT from, POINT to) {
    MoveTo(window, from);
    Send({ButtonInput(MOUSEEVENTF_LEFTDOWN)});
    MoveTo(window, to);
    Send({ButtonInput(MOUSEEVENTF_LEFTUP)});
}

void PressKey(WORD key, Held held) {
    HeldKeys const keys(held);
    Send({KeyInput(key, false), KeyInput(key, true)});
}

void TypeLetter(wchar_t letter) {
    auto const key = static_cast<unsigned short>(::VkKeyScanW(letter));
    PressKey(static_cast<WORD>(key & 0xFF), {.shift = (key & 0x100) != 0});
}

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return paramdb::ToUtf8(text);
}
