// ListView: its window, and following the control.
#include <paramdb/views/win32/event_loop.h>
#include <paramdb/views/win32/list_view.h>
#include <paramdb/views/win32/native_window.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/theme.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace paramdb::win32 {

namespace {

bool IsListWithoutData(HWND window) {
    wchar_t name[32] = {};
    ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    auto const style = ::GetWindowLongPtrW(window, GWL_STYLE);
    return CString(name).CompareNoCase(WC_LISTVIEWW) == 0 && (style & LVS_TYPEMASK) == LVS_REPORT &&
           (style & LVS_OWNERDATA) != 0;
}

} // namespace

ListView::ListView() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&classes);
}

ListView::~ListView() {
    Disconnect();
    m_combo.Close();
    m_parent_tap.Detach();
    m_tap.Detach();
    if (HWND const window = std::exchange(m_window, nullptr)) {
        ForgetShown(window);
        ::SendMessageW(window, LVM_SETIMAGELIST, LVSIL_SMALL, 0);
        if (m_made)
            ::DestroyWindow(window);
    }
    ::ImageList_Destroy(m_row_room);
    ::ImageList_Destroy(m_mark_room);
}

bool ListView::Create(HWND parent, RECT const& place, int id) {
    if (m_window)
        return false;
    HWND const window = ::CreateWindowExW(
        WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
        WS_CHILD | WS_TABSTOP | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
        static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right - place.left),
        static_cast<int>(place.bottom - place.top), parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
        ThisModule(), nullptr);
    if (!window)
        return false;
    m_made = true;
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

bool ListView::TakeOver(HWND window) {
    if (m_window || !window || !IsListWithoutData(window) || !m_tap.Attach(window))
        return false;
    InstallTheme();
    m_window = window;
    m_parent_tap.Attach(::GetParent(window));
    // The images are the view's own, and texts have all their letters whatever the parent is like.
    ::SetWindowLongPtrW(window, GWL_STYLE, ::GetWindowLongPtrW(window, GWL_STYLE) | LVS_SHAREIMAGELISTS);
    Ask(LVM_SETUNICODEFORMAT, TRUE);
    Ask(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK);
    ::SendMessageW(Header(), HDM_SETUNICODEFORMAT, TRUE, 0);
    SyncFont();
    if (m_list)
        Connect();
    return true;
}

void ListView::SetList(CXListCtrl* list) {
    if (m_list == list)
        return;
    Disconnect();
    m_list = list;
    m_column = 0;
    if (m_window && m_list)
        Connect();
    else if (m_window)
        Update();
}

// Begins to show the list in the window.
void ListView::Connect() {
    Attach(*m_list);
    SetShownIn(*m_list, m_window);
    ::EnableWindow(m_window, m_list->IsWindowEnabled());
    if (!m_list->IsWindowVisible())
        ::ShowWindow(m_window, SW_HIDE);
    OnTitleChanged();
    ReadWidths();
    Update();
    if (HasKeyboard())
        OnEnter();
}

void ListView::Disconnect() {
    m_combo.Close();
    m_widths.clear();
    m_current = -1;
    CXListCtrl* const list = std::exchange(m_list, nullptr);
    bool const told = GetWnd() != nullptr;
    Detach();
    if (m_window)
        ForgetShown(m_window);
    if (list && told)
        CallControl([list] { list->KillFocus(); });
}

void ListView::OnWindowGone() {
    m_parent_tap.Detach();
    ForgetShown(m_window);
    m_window = nullptr;
    m_made = false;
    m_stale = false;
    Disconnect();
}

void ListView::OnControlGone() {
    m_list = nullptr;
    ForgetShown(m_window);
    Later();
}

void ListView::OnVisibilityChanged() {
    ::ShowWindow(m_window, m_list->IsWindowVisible() ? SW_SHOWNA : SW_HIDE);
}

void ListView::OnEnabledChanged() {
    ::EnableWindow(m_window, m_list->IsWindowEnabled());
}

void ListView::OnTitleChanged() {
    if (!m_window)
        return;
    CString name = m_name;
    if (name.IsEmpty() && m_list)
        name = m_list->GetTitle();
    if (name.IsEmpty() && m_list && m_list->GetColumnCount() > 0)
        name = m_list->GetColumn(0).heading;
    ::SetWindowTextW(m_window, name.GetString());
}

void ListView::SetName(CString const& name) {
    m_name = name;
    OnTitleChanged();
}

void ListView::OnContentChanged() {
    if (!m_own)
        Later();
}

// A click may change a whole column: from some number on they are shown together.
void ListView::OnItemChanged(int item, int) {
    constexpr int one_by_one = 64;
    if (IsStale())
        return;
    if (++m_changes > one_by_one)
        Later();
    else
        Repaint(item);
}

void ListView::OnColumnsChanged() {
    if (m_own)
        return;
    ReadWidths();
    OnTitleChanged();
    Later();
}

void ListView::ReadWidths() {
    m_widths.clear();
    for (int column = 0; column < m_list->GetColumnCount(); ++column)
        m_widths.push_back(m_list->GetColumnWidth(column));
}

void ListView::OnHeaderChanged(int) {
    ::InvalidateRect(Header(), nullptr, TRUE);
}

void ListView::OnSelectionChanged() {
    bool const reveal = !m_clicking; // what is clicked is in sight
    if (IsStale())
        m_reveal |= reveal;
    else
        ShowCurrent(reveal);
}

void ListView::OnScrollChanged() {
    if (m_own)
        return;
    if (IsStale())
        m_follow = true;
    else
        FollowScroll();
}

UINT ListView::UpdateMessage() {
    static UINT const number = ::RegisterWindowMessageW(L"paramdb list update");
    return number;
}

// Many changes of the control make one of the window.
void ListView::Later() {
    if (m_window && !std::exchange(m_stale, true))
        ::PostMessageW(m_window, UpdateMessage(), 0, 0);
}

void ListView::Update() {
    m_stale = false;
    m_changes = 0;
    if (!m_window)
        return;
    {
        // Where the window scrolls to by itself does not count.
        Mark const own(m_own);
        SyncStyle();
        SyncColumns();
        SyncRows();
        SyncWidths();
    }
    if (std::exchange(m_follow, false) && m_list)
        FollowScroll();
    SyncMetrics();
    ShowCurrent(std::exchange(m_reveal, false));
    SyncCombo();
    ::InvalidateRect(m_window, nullptr, TRUE);
}

// Puts the mark of the keyboard where the control has it.
void ListView::ShowCurrent(bool scroll) {
    int const item = m_list && m_window ? m_list->GetFocusItem() : -1;
    int const count = m_window ? static_cast<int>(Ask(LVM_GETITEMCOUNT)) : 0;
    int const shown = item < count ? item : -1;
    Repaint(std::exchange(m_current, shown));
    if (shown < 0 || m_widths.empty())
        return;
    m_column = std::clamp(m_column, 0, static_cast<int>(m_widths.size()) - 1);
    {
        Mark const own(m_own);
        LVITEMW state{};
        state.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
        state.state = ShowsWholeRow() ? LVIS_FOCUSED | LVIS_SELECTED : LVIS_FOCUSED;
        Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(shown), Parameter(&state));
        if (scroll) {
            Ask(LVM_ENSUREVISIBLE, static_cast<WPARAM>(shown), FALSE);
            ShowColumn(shown);
        }
    }
    Repaint(shown);
    if (scroll)
        SyncScroll();
}

void ListView::ShowColumn(int item) {
    RECT client{};
    ::GetClientRect(m_window, &client);
    RECT const cell = CellRect({item, m_column});
    int const over = std::max(static_cast<int>(cell.right - client.right), 0);
    int const move = std::min(over, static_cast<int>(cell.left)); // the beginning counts more
    if (move != 0)
        Ask(LVM_SCROLL, static_cast<WPARAM>(move), 0);
}

void ListView::Repaint(int item) {
    RECT row{};
    row.left = LVIR_BOUNDS;
    if (item >= 0 && Ask(LVM_GETITEMRECT, static_cast<WPARAM>(item), Parameter(&row)) != FALSE)
        ::InvalidateRect(m_window, &row, FALSE);
}

} // namespace paramdb::win32
