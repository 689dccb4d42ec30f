#include <paramdb/views/win32/dialog_view.h>
#include <paramdb/views/win32/message_tap.h>
#include <paramdb/views/win32/native_window.h>
#include <paramdb/views/win32/theme.h>
#include <paramdb/views/win32/views.h>

#include <utility>

namespace paramdb::win32 {

namespace {

// Before the window of the host that the dialog was made for, else before the active one.
void Present(CDialog3d& dialog) {
    auto const* const frame = dynamic_cast<NativeWindow const*>(dialog.GetParent());
    HWND const host = frame ? frame->GetHost() : ::GetActiveWindow();
    DialogView::Show(dialog, host ? ::GetAncestor(host, GA_ROOT) : nullptr);
}

// Sees every message that a loop of the thread takes out of its queue.
LRESULT CALLBACK SeeMessage(int code, WPARAM removed, LPARAM parameter) {
    auto& message = *PointerIn<MSG>(parameter);
    if (code == HC_ACTION && removed == PM_REMOVE && HandleDialogKey(message)) {
        message.message = WM_NULL;
        message.hwnd = nullptr;
        message.wParam = 0;
        message.lParam = 0;
    }
    return ::CallNextHookEx(nullptr, code, removed, parameter);
}

} // namespace

Views::Views() : m_hook(::SetWindowsHookExW(WH_GETMESSAGE, &SeeMessage, nullptr, ::GetCurrentThreadId())) {
    InstallTheme();
    m_presenter_before = CDialog3d::SetPresenter(Present);
}

Views::~Views() {
    CDialog3d::SetPresenter(std::move(m_presenter_before));
    ::UnhookWindowsHookEx(m_hook);
    UninstallTheme();
}

} // namespace paramdb::win32
