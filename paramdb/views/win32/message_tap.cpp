#include <paramdb/views/win32/message_tap.h>

namespace paramdb::win32 {

bool MessageTap::Attach(HWND window) {
    Detach();
    if (!window || !::SetWindowSubclass(window, &Receive, reinterpret_cast<UINT_PTR>(this),
                                        reinterpret_cast<DWORD_PTR>(this)))
        return false;
    m_window = window;
    return true;
}

void MessageTap::Detach() {
    if (m_window)
        ::RemoveWindowSubclass(m_window, &Receive, reinterpret_cast<UINT_PTR>(this));
    m_window = nullptr;
}

LRESULT CALLBACK MessageTap::Receive(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                                     DWORD_PTR self) {
    auto* const tap = PointerIn<MessageTap>(static_cast<LPARAM>(self));
    if (message == WM_NCDESTROY)
        tap->Detach();
    auto const answer = tap->m_listener.OnWindowMessage(window, message, first, second);
    return answer ? *answer : ::DefSubclassProc(window, message, first, second);
}

HINSTANCE ThisModule() {
    static char const here = 0;
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<wchar_t const*>(&here), &module);
    return module;
}

} // namespace paramdb::win32
