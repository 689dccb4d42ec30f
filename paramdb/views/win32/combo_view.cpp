#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/views/win32/cell_combo.h>
#include <paramdb/views/win32/combo_view.h>
#include <paramdb/views/win32/event_loop.h>
#include <paramdb/views/win32/native_window.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/theme.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace paramdb::win32 {

namespace {

// Screens of different pixels send it to the windows within another; older headers lack it.
constexpr UINT DpiChangedAfterParent = 0x02E3;

UINT UpdateMessage() {
    static UINT const number = ::RegisterWindowMessageW(L"paramdb combo update");
    return number;
}

bool IsPlainDropDown(HWND window) {
    constexpr LONG_PTR kind = 0x3; // the bits of CBS_SIMPLE, CBS_DROPDOWN and CBS_DROPDOWNLIST
    wchar_t name[32] = {};
    ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    auto const style = ::GetWindowLongPtrW(window, GWL_STYLE);
    return CString(name).CompareNoCase(L"ComboBox") == 0 && (style & kind) == CBS_DROPDOWNLIST &&
           (style & CBS_SORT) == 0;
}

} // namespace

ComboView::~ComboView() {
    Disconnect();
    m_parent_tap.Detach();
    m_tap.Detach();
    HWND const window = std::exchange(m_window, nullptr);
    ::DestroyWindow(std::exchange(m_label, nullptr));
    if (window && m_made)
        ::DestroyWindow(window);
}

bool ComboView::Create(HWND parent, RECT const& place, int id) {
    if (m_window)
        return false;
    HWND const window = ::CreateWindowExW(
        0, L"COMBOBOX", L"",
        WS_CHILD | WS_TABSTOP | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_NOINTEGRALHEIGHT,
        static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right - place.left),
        static_cast<int>(place.bottom - place.top), parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
        ThisModule(), nullptr);
    if (!window)
        return false;
    m_made = true;
    m_height = static_cast<int>(place.bottom - place.top);
    auto font = static_cast<WPARAM>(::SendMessageW(parent, WM_GETFONT, 0, 0));
    m_own_font = font == 0;
    if (m_own_font)
        font = reinterpret_cast<WPARAM>(MessageFont(DpiOf(window)));
    ::SendMessageW(window, WM_SETFONT, font, 0);
    if (TakeOver(window))
        return true;
    ::DestroyWindow(window);
    return false;
}

bool ComboView::TakeOver(HWND window) {
    if (m_window || !window || !IsPlainDropDown(window) || !m_tap.Attach(window))
        return false;
    InstallTheme();
    m_window = window;
    m_parent_tap.Attach(::GetParent(window));
    if (m_combo)
        Connect();
    return true;
}

void ComboView::SetCombo(CComboBox* combo) {
    if (m_combo == combo)
        return;
    Disconnect();
    m_combo = combo;
    m_rows_stale = true;
    if (m_window && m_combo)
        Connect();
    else
        Update();
}

void ComboView::Connect() {
    Attach(*m_combo);
    SetShownIn(*m_combo, m_window);
    ::EnableWindow(m_window, m_combo->IsWindowEnabled());
    if (!m_combo->IsWindowVisible())
        ::ShowWindow(m_window, SW_HIDE);
    OnTitleChanged();
    m_rows_stale = true;
    Update();
    if (::GetFocus() == m_window)
        CallControl([this] { m_combo->SetFocus(); });
}

void ComboView::Disconnect() {
    CComboBox* const combo = std::exchange(m_combo, nullptr);
    bool const told = GetWnd() != nullptr;
    Detach();
    if (m_window)
        ForgetShown(m_window);
    if (combo && told)
        CallControl([combo] { combo->KillFocus(); });
}

void ComboView::OnWindowGone() {
    m_parent_tap.Detach();
    ForgetShown(m_window);
    m_window = nullptr;
    m_made = false;
    m_stale = false;
    ::DestroyWindow(std::exchange(m_label, nullptr));
    Disconnect();
}

void ComboView::OnControlGone() {
    m_combo = nullptr;
    ForgetShown(m_window);
    Later(true);
}

void ComboView::OnVisibilityChanged() {
    ::ShowWindow(m_window, m_combo->IsWindowVisible() ? SW_SHOWNA : SW_HIDE);
}

void ComboView::OnEnabledChanged() {
    ::EnableWindow(m_window, m_combo->IsWindowEnabled());
}

// The text of the window itself is the selected one.
void ComboView::OnTitleChanged() {
    CString const name = m_name.IsEmpty() && m_combo ? m_combo->GetTitle() : m_name;
    if (!m_window || (!m_label && name.IsEmpty()))
        return;
    if (!m_label) {
        m_label = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0,
                                    ::GetParent(m_window), nullptr, ThisModule(), nullptr);
        HWND const before = ::GetWindow(m_window, GW_HWNDPREV);
        ::SetWindowPos(m_label, before ? before : HWND_TOP, 0, 0, 0, 0,
                       SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    ::SetWindowTextW(m_label, name.GetString());
}

void ComboView::SetName(CString const& name) {
    m_name = name;
    OnTitleChanged();
}

void ComboView::OnItemChanged(int, int) {
    Later(true);
}

// Many changes of the control make one of the window.
void ComboView::Later(bool rows) {
    m_rows_stale |= rows;
    if (m_window && !std::exchange(m_stale, true))
        ::PostMessageW(m_window, UpdateMessage(), 0, 0);
}

void ComboView::Update() {
    m_stale = false;
    if (!m_window)
        return;
    if (std::exchange(m_rows_stale, false))
        Fill();
    ShowSelection();
}

void ComboView::Fill() {
    constexpr WPARAM bytes_of_a_text = 32;
    int const count = m_combo ? m_combo->GetCount() : 0;
    Ask(CB_SHOWDROPDOWN, FALSE);
    m_tap.Detach(); // thousands of messages that say nothing
    Ask(WM_SETREDRAW, FALSE);
    Ask(CB_RESETCONTENT);
    Ask(CB_INITSTORAGE, static_cast<WPARAM>(count), static_cast<LPARAM>(bytes_of_a_text) * count);
    CString text;
    for (int row = 0; row < count; ++row) {
        m_combo->GetLBText(row, text);
        Ask(CB_ADDSTRING, 0, Parameter(text.GetString()));
    }
    Ask(WM_SETREDRAW, TRUE);
    m_tap.Attach(m_window);
    Fit();
    ::InvalidateRect(m_window, nullptr, TRUE);
}

// The open list shows some rows and is as wide as its widest text; the closed combo keeps its height.
void ComboView::Fit() {
    RECT place{};
    ::GetWindowRect(m_window, &place);
    ::MapWindowPoints(nullptr, ::GetParent(m_window), PointerIn<POINT>(Parameter(&place)), 2);
    if (m_height > 0)
        place.bottom = place.top + std::max(m_height, LeastComboHeight(m_window));
    FitCombo(m_window, place, m_combo ? m_combo->GetCount() : 0);
    if (auto const* const wide = dynamic_cast<CComboBoxX const*>(m_combo)) {
        int const most = ::GetSystemMetrics(SM_CXSCREEN) / 2;
        Ask(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min(wide->GetDroppedWidth(), most)));
    }
}

void ComboView::ShowSelection() {
    int const selected = m_combo ? m_combo->GetCurSel() : CB_ERR;
    if (static_cast<int>(Ask(CB_GETCURSEL)) != selected)
        Ask(CB_SETCURSEL, static_cast<WPARAM>(selected));
}

LRESULT ComboView::Ask(UINT message, WPARAM first, LPARAM second) const {
    return ::SendMessageW(m_window, message, first, second);
}

// What the window shows now is the user's choice.
void ComboView::Pick() {
    auto const index = static_cast<int>(Ask(CB_GETCURSEL));
    if (m_combo && index >= 0 && index != m_combo->GetCurSel())
        CallControl([&] { m_combo->Choose(index); });
}

// Systems differ in the order: the list is closed before or after the selection has changed.
void ComboView::OnNotify(int code) {
    switch (code) {
    case CBN_DROPDOWN:
        m_accepted = false;
        if (IsStale())
            Update();
        Fit(); // whoever has moved the combo may have made its list as small as itself
        break;
    case CBN_SELENDOK:
        m_accepted = true;
        break;
    case CBN_SELENDCANCEL:
        m_accepted = false;
        break;
    case CBN_SELCHANGE:
        if (Ask(CB_GETDROPPEDSTATE) == FALSE && !IsStale())
            Pick();
        break;
    case CBN_CLOSEUP:
        if (m_accepted && !IsStale())
            Pick();
        else
            Later(); // back to what the control has
        break;
    default:
        break;
    }
}

std::optional<LRESULT> ComboView::OnWindowMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (window != m_window) { // its parent
        if (message == WM_COMMAND && m_window && reinterpret_cast<HWND>(second) == m_window &&
            !IsFromControl()) {
            OnNotify(HighWord(first));
            return 0;
        }
        return std::nullopt;
    }
    if (message == UpdateMessage()) {
        if (IsStale())
            Update();
        return 0;
    }
    switch (message) {
    case WM_PAINT:
    case WM_KEYDOWN:
    case WM_LBUTTONDOWN:
        if (IsStale())
            Update();
        return std::nullopt;
    case WM_SETFONT: { // makes the combo as high as a line
        Life::Watch const watch(m_life);
        LRESULT const answer = ::DefSubclassProc(window, message, first, second);
        if (!watch.IsOver() && m_window)
            Fit();
        return answer;
    }
    case DpiChangedAfterParent:
        if (m_own_font)
            Ask(WM_SETFONT, reinterpret_cast<WPARAM>(MessageFont(DpiOf(m_window))), TRUE);
        return std::nullopt;
    case WM_MOUSEWHEEL: // scrolling past must not choose
        return ::GetFocus() == m_window ? std::nullopt : std::optional<LRESULT>(0);
    case WM_SETFOCUS:
    case WM_KILLFOCUS: {
        Life::Watch const watch(m_life);
        LRESULT const answer = ::DefSubclassProc(window, message, first, second);
        if (!watch.IsOver() && m_combo)
            CallControl([&] { message == WM_SETFOCUS ? m_combo->SetFocus() : m_combo->KillFocus(); });
        return answer;
    }
    case WM_NCDESTROY:
        OnWindowGone();
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace paramdb::win32
