// CXListCtrl: mouse, keyboard and messages.
#include <paramdb/platform/control/x_list_ctrl.h>

#include <algorithm>

bool CXListCtrl::SetFocusItem(int item) {
    if (item != -1 && !Row(item))
        return false;
    if (m_focus_item == item)
        return true;
    m_focus_item = item;
    CWndReference const self = this;
    Notify([](CWndView& view) { view.OnSelectionChanged(); });
    if (self.Get() && item != -1)
        EnsureVisible(item);
    return true;
}

void CXListCtrl::OnLButtonDown(UINT, CPoint point) {
    LVHITTESTINFO hit{};
    hit.pt = point;
    int const item = HitTest(&hit);
    if (item < 0 || !GetEnabled(item))
        return;
    CWndReference const self = this;
    SetFocusItem(item);
    if (!self.Get())
        return;
    if (hit.flags == LVHT_ONITEMSTATEICON)
        ToggleCheckbox(item, hit.iSubItem);
    else if (m_check_on_click)
        ToggleCheckbox(item, FirstCheckbox(item));
}

LRESULT CXListCtrl::OnColumnClick(int column) {
    int const state = GetHeaderCheckedState(column);
    if (state == no_header_check)
        return 0;
    int const wanted = GetHeaderMark(column) == 1 ? 0 : 1;
    CWndReference const self = this;
    if (state != header_follows)
        SetHeaderCheckedState(column, wanted == 1 ? header_on : header_off);
    if (self.Get())
        CheckColumn(column, wanted);
    return 0;
}

// The first enabled row from there on in that direction (1 or -1), else in the other; -1 if all are disabled.
int CXListCtrl::NearestEnabled(int item, int direction) const noexcept {
    for (int const way : {direction, -direction}) {
        for (int i = item; Row(i); i += way) {
            if (GetEnabled(i))
                return i;
        }
    }
    return -1;
}

int CXListCtrl::RowOfKey(UINT key) const noexcept {
    int const last = GetItemCount() - 1;
    int const page =
        std::max(1, (static_cast<int>(m_metrics.page.cy) - m_metrics.header_height) / m_metrics.row_height);
    auto const from = [&](int target, int direction) {
        int const row = NearestEnabled(std::clamp(target, 0, std::max(last, 0)), direction);
        return row >= 0 ? row : m_focus_item;
    };
    switch (key) {
    case VK_UP:
        return from(m_focus_item - 1, -1);
    case VK_DOWN:
        return from(m_focus_item + 1, 1);
    case VK_PRIOR:
        return from(m_focus_item - page, -1);
    case VK_NEXT:
        return from(m_focus_item + page, 1);
    case VK_HOME:
        return from(0, 1);
    case VK_END:
        return from(last, -1);
    default:
        return m_focus_item;
    }
}

void CXListCtrl::OnKeyDown(UINT key) {
    if (key == VK_SPACE)
        ToggleCheckbox(m_focus_item, FirstCheckbox(m_focus_item));
    else
        SetFocusItem(RowOfKey(key));
}

LRESULT CXListCtrl::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case LVM_GETITEMCOUNT:
        return GetItemCount();
    case LVM_DELETEALLITEMS:
        return DeleteAllItems();
    case LVM_HITTEST:
        return HitTest(PointerIn<LVHITTESTINFO>(second));
    case LVM_INSERTITEMW:
        return InsertItem(PointerIn<LVITEMW const>(second));
    case LVM_SETEXTENDEDLISTVIEWSTYLE:
        return static_cast<LRESULT>(SetExtendedStyle(static_cast<UINT>(second), static_cast<UINT>(first)));
    case LVM_GETEXTENDEDLISTVIEWSTYLE:
        return static_cast<LRESULT>(GetExtendedStyle());
    case WM_KEYDOWN:
        OnKeyDown(static_cast<UINT>(first));
        return 0;
    default:
        return CWnd::OnMessage(message, first, second);
    }
}
