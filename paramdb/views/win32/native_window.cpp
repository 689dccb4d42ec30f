#include <paramdb/views/win32/life.h>
#include <paramdb/views/win32/native_window.h>

#include <bit>
#include <map>

namespace paramdb::win32 {

namespace {

// The windows by control. A view takes its own out before either goes.
std::map<CWnd const*, HWND>& Shown() {
    static auto& shown = *new std::map<CWnd const*, HWND>;
    return shown;
}

bool from_control = false;

} // namespace

bool IsFromControl() noexcept {
    return from_control;
}

NativeWindow::NativeWindow(HWND host) {
    if (m_tap.Attach(host))
        Create();
}

LRESULT NativeWindow::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return CWnd::OnMessage(message, first, second); // the host's window has its own
    case WM_COMMAND:
        second = reinterpret_cast<LPARAM>(ShownIn(CWnd::FromHandlePermanent(std::bit_cast<HWND>(second))));
        break;
    default:
        break;
    }
    if (!GetHost())
        return 0;
    Mark const mark(from_control);
    return ::SendMessageW(GetHost(), message, first, second);
}

std::optional<LRESULT> NativeWindow::OnWindowMessage(HWND, UINT message, WPARAM, LPARAM) {
    if (message == WM_NCDESTROY)
        DestroyWindow();
    return std::nullopt;
}

void SetShownIn(CWnd const& control, HWND window) {
    Shown()[&control] = window;
}

void ForgetShown(HWND window) {
    std::erase_if(Shown(), [window](auto const& entry) { return entry.second == window; });
}

HWND ShownIn(CWnd const* control) {
    auto const found = Shown().find(control);
    return found != Shown().end() ? found->second : nullptr;
}

} // namespace paramdb::win32
