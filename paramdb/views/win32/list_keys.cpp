// ListView: the keyboard, and opening combos.
#include <paramdb/views/win32/event_loop.h>
#include <paramdb/views/win32/list_view.h>

#include <algorithm>

namespace paramdb::win32 {

namespace {

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

bool Moves(UINT key) {
    return key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT || key == VK_HOME ||
           key == VK_END;
}

} // namespace

std::optional<LRESULT> ListView::OnKey(UINT key, bool alt) {
    if (IsStale())
        Update();
    if (!m_list)
        return std::nullopt;
    bool const control = IsHeld(VK_CONTROL);
    bool const shift = IsHeld(VK_SHIFT);
    if (alt) {
        if (key != VK_DOWN)
            return std::nullopt;
        OpenCombo(ComboInRow());
        return 0;
    }
    switch (key) {
    case VK_F2:
    case VK_F4:
        OpenCombo(ComboInRow());
        return 0;
    case VK_LEFT:
    case VK_RIGHT:
        if (!MoveColumn(key == VK_LEFT ? -1 : 1))
            return std::nullopt;
        return 0;
    case VK_SPACE:
        PressSpace((control ? MK_CONTROL : 0U) | (shift ? MK_SHIFT : 0U));
        return 0;
    case 'A':
        if (!control)
            return std::nullopt;
        OnHeading(m_column);
        return 0;
    default:
        if (!Moves(key))
            return std::nullopt;
        Move(key, shift);
        return 0;
    }
}

// Typing goes into the combo of the row; without one the window itself looks for the row.
std::optional<LRESULT> ListView::OnCharacter(WPARAM unit) {
    if (unit <= L' ')
        return 0; // those keys have had their say
    Place const combo = ComboInRow();
    if (combo.item < 0)
        return std::nullopt;
    Life::Watch const watch(m_life);
    if (OpenCombo(combo) && !watch.IsOver())
        ::SendMessageW(m_combo.GetWindow(), WM_CHAR, unit, 0);
    return 0;
}

bool ListView::HasBoxes(int item) const {
    for (int column = 0; column < m_list->GetColumnCount(); ++column) {
        if (m_list->GetCheckbox(item, column) >= 0)
            return true;
    }
    return false;
}

void ListView::Move(UINT key, bool shift) {
    if (m_list->GetItemCount() == 0)
        return;
    Life::Watch const watch(m_life);
    SyncMetrics();
    CallControl([&] { m_list->Key(key); });
    if (watch.IsOver() || !m_list)
        return;
    if (IsGrid())
        MoveToText(m_list->GetFocusItem());
    if (int const item = m_list->GetFocusItem(); shift && item >= 0 && !HasBoxes(item))
        ClickCurrent(MK_SHIFT);
}

// The columns of a grid have different lengths: below a column's last text there is nothing to go to.
void ListView::MoveToText(int item) {
    while (item > 0 && m_list->GetItemText(item, m_column).IsEmpty())
        --item;
    m_list->SetFocusItem(item);
}

bool ListView::MoveColumn(int step) {
    int const count = m_list->GetColumnCount();
    int const column = m_column + step;
    if (column < 0 || column >= count)
        return count > 1;
    m_column = column;
    if (IsGrid())
        MoveToText(m_list->GetFocusItem());
    ShowCurrent(true);
    return true;
}

// A click in the middle of the cell that has the keyboard.
void ListView::ClickCurrent(UINT flags) {
    int const item = m_list->GetFocusItem();
    if (item < 0)
        return;
    ShowCurrent(true);
    SyncMetrics();
    CRect cell;
    if (!m_list->GetSubItemRect(item, m_column, cell))
        return;
    CPoint const middle(std::max(static_cast<int>(cell.left) + cell.Width() / 2, 0),
                        static_cast<int>(cell.top) + cell.Height() / 2);
    CallControl([&] { m_list->Click(flags, middle); });
}

void ListView::PressSpace(UINT flags) {
    Place const combo = ComboInRow();
    int const item = m_list->GetFocusItem();
    if (flags == 0 && combo.item >= 0)
        OpenCombo(combo);
    else if (!HasBoxes(item))
        ClickCurrent(flags);
    else if (m_list->GetCheckbox(item, m_column) >= 0)
        CallControl([&] { m_list->ToggleCheckbox(item, m_column); });
    else
        CallControl([&] { m_list->Key(VK_SPACE); });
}

// The combo of the row that has the keyboard, from anywhere in the row, as there is one in it.
ListView::Place ListView::ComboInRow() const {
    int const item = m_list ? m_list->GetFocusItem() : -1;
    if (item < 0 || !m_list->GetEnabled(item))
        return {};
    if (m_list->GetComboBox(item, m_column))
        return {item, m_column};
    for (int column = 0; column < m_list->GetColumnCount(); ++column) {
        if (m_list->GetComboBox(item, column))
            return {item, column};
    }
    return {};
}

// False if there is none that may be used.
bool ListView::OpenCombo(Place place) {
    if (!m_list || !m_list->GetEnabled(place.item))
        return false;
    auto const* const choices = m_list->GetComboBox(place.item, place.column);
    if (!choices)
        return false;
    m_column = place.column;
    ShowCurrent(true);
    m_combo_place = place;
    m_combo_cell = CellRect(place);
    // A combo is higher than a row; it stands out a little above and below, but not over the headings.
    RECT wanted = m_combo_cell;
    int const more = LeastComboHeight(m_window) - static_cast<int>(wanted.bottom - wanted.top);
    if (more > 0) {
        wanted.top = std::max<LONG>(wanted.top - more / 2, m_list->GetMetrics().header_height);
        wanted.bottom = wanted.top + LeastComboHeight(m_window);
    }
    return m_combo.Open(m_window, wanted, *choices, m_list->GetComboCurSel(place.item, place.column),
                        m_list->GetItemText(place.item, 0));
}

// The next row from a start on whose text begins with what was typed.
int ListView::Find(NMLVFINDITEMW const& find) const {
    if (!m_list || (find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || !find.lvfi.psz)
        return -1;
    CString const wanted(find.lvfi.psz);
    int const column = IsGrid() ? m_column : 0;
    int const count = m_list->GetItemCount();
    int const first = std::clamp(find.iStart, 0, count);
    bool const wraps = (find.lvfi.flags & LVFI_WRAP) != 0;
    for (int i = 0; i < (wraps ? count : count - first); ++i) {
        int const item = (first + i) % count;
        CString const text = m_list->GetItemText(item, column);
        if (m_list->GetEnabled(item) && text.Left(wanted.GetLength()).CompareNoCase(wanted.GetString()) == 0)
            return item;
    }
    return -1;
}

} // namespace paramdb::win32
