#include <paramdb/views/win32/cell_combo.h>
#include <paramdb/views/win32/message_tap.h>
#include <paramdb/views/win32/screen.h>

#include <algorithm>
#include <utility>

namespace paramdb::win32 {

int LeastComboHeight(HWND window) {
    constexpr int frame = 8;
    return FontContext(window).LineHeight() + Scaled(frame, DpiOf(window));
}

void FitCombo(HWND combo, RECT const& place, int entries) {
    constexpr int rows_at_once = 16;
    constexpr int frame_of_list = 6; // above and below together
    constexpr WPARAM field = static_cast<WPARAM>(-1);
    int const height = static_cast<int>(place.bottom - place.top);
    auto const row = static_cast<int>(::SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0));
    int const opened =
        height + row * std::clamp(entries, 1, rows_at_once) + Scaled(frame_of_list, DpiOf(combo));
    ::MoveWindow(combo, static_cast<int>(place.left), static_cast<int>(place.top),
                 static_cast<int>(place.right - place.left), opened, TRUE);
    // The height of the text in it decides how high it is; how much comes on top of that shows itself.
    int const text = std::max(height - frame_of_list, 1);
    ::SendMessageW(combo, CB_SETITEMHEIGHT, field, text);
    RECT now{};
    ::GetWindowRect(combo, &now);
    if (int const more = static_cast<int>(now.bottom - now.top) - height; more != 0)
        ::SendMessageW(combo, CB_SETITEMHEIGHT, field, std::max(text - more, 1));
}

bool CellCombo::Open(HWND list, RECT const& place, std::map<int, CString> const& choices, int selected,
                     CString const& name) {
    Close();
    HWND const window = ::CreateWindowExW(
        0, L"COMBOBOX", name.GetString(), WS_CHILD | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_NOINTEGRALHEIGHT,
        static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right - place.left),
        1, list, nullptr, ThisModule(), nullptr);
    if (!window)
        return false;
    m_window = window;
    m_picked = false;
    m_numbers.clear();
    ::SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(::SendMessageW(list, WM_GETFONT, 0, 0)), 0);
    int widest = 0;
    {
        FontContext const font(window);
        for (auto const& [number, text] : choices) {
            auto const index = ::SendMessageW(window, CB_ADDSTRING, 0, Parameter(text.GetString()));
            if (number == selected)
                ::SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
            m_numbers.push_back(number);
            widest = std::max(widest, static_cast<int>(font.SizeOf(text).cx));
        }
    }
    FitCombo(window, place, static_cast<int>(choices.size()));
    int const room = ::GetSystemMetrics(SM_CXVSCROLL) + Scaled(8, DpiOf(window));
    ::SendMessageW(window, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widest + room), 0);
    ::ShowWindow(window, SW_SHOW);
    ::SetFocus(window);
    // Who lost the keyboard may have taken everything away, this object included.
    if (::IsWindow(window) == FALSE)
        return false;
    ::SendMessageW(window, CB_SHOWDROPDOWN, TRUE, 0);
    return true;
}

void CellCombo::Close() {
    HWND const window = std::exchange(m_window, nullptr);
    if (!window)
        return;
    if (::GetFocus() == window)
        ::SetFocus(::GetParent(window));
    ::DestroyWindow(window);
}

bool CellCombo::OnNotify(int code) {
    switch (code) {
    case CBN_SELENDOK:
        m_picked = true;
        return false;
    case CBN_SELENDCANCEL:
        m_picked = false;
        return false;
    default:
        return code == CBN_CLOSEUP;
    }
}

std::optional<int> CellCombo::Picked() const {
    auto const index = static_cast<std::size_t>(::SendMessageW(m_window, CB_GETCURSEL, 0, 0));
    if (!m_picked || index >= m_numbers.size())
        return std::nullopt;
    return m_numbers[index];
}

} // namespace paramdb::win32
