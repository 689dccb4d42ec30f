// ListView: messages of the window, and the mouse.
#include <paramdb/views/win32/event_loop.h>
#include <paramdb/views/win32/glyphs.h>
#include <paramdb/views/win32/list_view.h>
#include <paramdb/views/win32/screen.h>

#include <utility>

namespace paramdb::win32 {

namespace {

// Screens of different pixels send it to the windows within another; older headers lack it.
constexpr UINT DpiChangedAfterParent = 0x02E3;

UINT ComboOverMessage() {
    static UINT const number = ::RegisterWindowMessageW(L"paramdb list combo over");
    return number;
}

} // namespace

std::optional<LRESULT> ListView::OnWindowMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (window != m_window) { // its parent
        auto const* const header = message == WM_NOTIFY ? PointerIn<NMHDR const>(second) : nullptr;
        return header && m_window && header->hwndFrom == m_window ? OnNotify(*header) : std::nullopt;
    }
    if (message == UpdateMessage()) {
        if (IsStale())
            Update();
        return 0;
    }
    if (message == ComboOverMessage()) {
        OnComboOver();
        return 0;
    }
    // What the window does itself first.
    auto const after = [&](auto const& then) {
        Life::Watch const watch(m_life);
        LRESULT const answer = ::DefSubclassProc(window, message, first, second);
        if (!watch.IsOver() && m_window)
            then();
        return answer;
    };
    switch (message) {
    case WM_PAINT:
        if (IsStale())
            Update();
        return std::nullopt;
    case WM_SIZE:
        return after([this] {
            if (m_own)
                return;
            SyncWidths();
            SyncMetrics();
            SyncCombo();
        });
    case WM_SETFONT:
        return after([this] { SyncFont(); });
    case DpiChangedAfterParent:
        return after([this] {
            if (m_own_font)
                Ask(WM_SETFONT, reinterpret_cast<WPARAM>(MessageFont(DpiOf(m_window))), TRUE);
            else
                SyncFont();
        });
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        return after([this] {
            ForgetStyle();
            Later();
        });
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
        m_combo.Close();
        return after([this] { SyncScroll(); });
    case WM_SETFOCUS:
        return after([this] { OnEnter(); });
    case WM_KILLFOCUS:
        return after([this, next = reinterpret_cast<HWND>(first)] { OnLeave(next); });
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        OnPress(PointOf(second), static_cast<UINT>(first) & (MK_LBUTTON | MK_CONTROL | MK_SHIFT));
        return 0;
    case WM_LBUTTONUP:
        OnRelease();
        return 0;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        if (auto const answer = OnKey(static_cast<UINT>(first), message == WM_SYSKEYDOWN))
            return answer;
        return m_window == window ? after([this] { SyncScroll(); }) : 0;
    case WM_CHAR:
        return OnCharacter(first);
    case WM_NOTIFY:
        if (PointerIn<NMHDR const>(second)->hwndFrom == Header())
            return OnHeaderNotify(first, second);
        return std::nullopt;
    case WM_COMMAND:
        return OnCommand(first, second);
    case WM_DESTROY:
        m_combo.Close();
        return std::nullopt;
    case WM_NCDESTROY:
        OnWindowGone();
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> ListView::OnNotify(NMHDR const& header) {
    LPARAM const all = Parameter(&header);
    switch (header.code) {
    case LVN_GETDISPINFOW:
        Answer(PointerIn<NMLVDISPINFOW>(all)->item);
        return 0;
    case NM_CUSTOMDRAW:
        return OnDraw(PointerIn<NMLVCUSTOMDRAW const>(all)->nmcd);
    case LVN_COLUMNCLICK:
        OnHeading(PointerIn<NMLISTVIEW const>(all)->iSubItem);
        return 0;
    case LVN_ODFINDITEMW:
    case LVN_ODFINDITEMA:
        return header.code == LVN_ODFINDITEMW ? Find(*PointerIn<NMLVFINDITEMW const>(all)) : -1;
    case LVN_ENDSCROLL:
        SyncScroll();
        return 0;
    case LVN_ITEMCHANGED: {
        // A screen reader, or typing, has taken the keyboard to another row.
        auto const& change = *PointerIn<NMLISTVIEW const>(all);
        bool const entered = (change.uNewState & ~change.uOldState & LVIS_FOCUSED) != 0;
        if (entered && !m_own && m_list && !IsStale() && change.iItem >= 0) {
            if (m_list->GetEnabled(change.iItem))
                CallControl([this, item = change.iItem] { m_list->SetFocusItem(item); });
            else
                Later();
        }
        return 0;
    }
    default:
        return std::nullopt;
    }
}

LRESULT ListView::OnHeaderNotify(WPARAM first, LPARAM second) {
    auto const& notification = *PointerIn<NMHEADERW const>(second);
    UINT const code = notification.hdr.code;
    if (code == NM_CUSTOMDRAW)
        return OnHeaderDraw(*PointerIn<NMCUSTOMDRAW const>(second));
    Life::Watch const watch(m_life);
    LRESULT const answer = ::DefSubclassProc(m_window, WM_NOTIFY, first, second);
    if (watch.IsOver() || m_own || !m_list)
        return answer;
    if (code == HDN_ITEMDBLCLICKW || code == HDN_ITEMDBLCLICKA) {
        OnHeading(notification.iItem); // the second of two quick clicks
        return answer;
    }
    if (code == HDN_ITEMCHANGEDW || code == HDN_ITEMCHANGEDA || code == HDN_ENDTRACKW) {
        // A column has been drawn wider or narrower.
        auto const column = static_cast<std::size_t>(notification.iItem);
        if (column < m_widths.size()) {
            Mark const own(m_own);
            m_widths[column] = static_cast<int>(Ask(LVM_GETCOLUMNWIDTH, column));
            m_list->SetColumnWidth(notification.iItem, m_widths[column]);
        }
        SyncMetrics();
        SyncCombo();
    }
    return answer;
}

// The combo in a cell is a child of the window. It is not taken away while it is still speaking.
std::optional<LRESULT> ListView::OnCommand(WPARAM first, LPARAM second) {
    if (!m_combo.IsOpen() || reinterpret_cast<HWND>(second) != m_combo.GetWindow())
        return std::nullopt;
    if (m_combo.OnNotify(HighWord(first)))
        ::PostMessageW(m_window, ComboOverMessage(), 0, 0);
    return 0;
}

void ListView::OnComboOver() {
    if (!m_combo.IsOpen())
        return;
    Life::Watch const watch(m_life);
    auto const picked = m_combo.Picked();
    Place const place = m_combo_place;
    m_combo.Close();
    if (picked && m_list)
        CallControl([&] { m_list->ChooseInCombo(place.item, place.column, *picked); });
    if (!watch.IsOver() && m_list && !HasKeyboard())
        CallControl([this] { m_list->KillFocus(); });
}

// The keyboard is with the list as long as the window has it or the combo in it.
bool ListView::HasKeyboard() const {
    HWND const focus = ::GetFocus();
    return m_window && focus && (focus == m_window || ::IsChild(m_window, focus) != FALSE);
}

void ListView::OnEnter() {
    if (!m_list)
        return;
    Life::Watch const watch(m_life);
    CallControl([this] { m_list->SetFocus(); });
    if (!watch.IsOver() && m_window)
        Repaint(m_current);
}

void ListView::OnLeave(HWND next) {
    Repaint(m_current);
    if (m_list && !(next && ::IsChild(m_window, next) != FALSE))
        CallControl([this] { m_list->KillFocus(); });
}

void ListView::OnPress(POINT point, UINT flags) {
    Life::Watch const watch(m_life);
    m_pressed = {};
    ::SetFocus(m_window);
    if (watch.IsOver() || !m_window)
        return;
    m_combo.Close();
    if (IsStale())
        Update();
    if (!m_list)
        return;
    SyncMetrics();
    LVHITTESTINFO hit{};
    hit.pt = point;
    if (m_list->HitTest(&hit) >= 0)
        m_column = hit.iSubItem;
    {
        bool const before = m_clicking;
        m_clicking = true;
        CallControl([&] { m_list->Click(flags, CPoint(point)); });
        if (watch.IsOver())
            return;
        m_clicking = before;
    }
    if (!m_list || IsStale())
        return; // the click may have changed everything
    ShowCurrent(false);
    if ((flags & (MK_CONTROL | MK_SHIFT)) == 0 && m_list->GetComboBox(hit.iItem, hit.iSubItem))
        m_pressed = {hit.iItem, hit.iSubItem};
}

// Only now: the list of a combo would take the button's going up for its own.
void ListView::OnRelease() {
    Place const pressed = std::exchange(m_pressed, Place{});
    if (pressed.item >= 0)
        OpenCombo(pressed);
}

void ListView::OnHeading(int column) {
    if (IsStale())
        Update();
    if (m_list)
        CallControl([&] { m_list->ClickColumn(column); });
}

} // namespace paramdb::win32
