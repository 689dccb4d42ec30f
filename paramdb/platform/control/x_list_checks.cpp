// CXListCtrl: check boxes and combos.
#include <paramdb/platform/control/x_list_ctrl.h>

#include <algorithm>
#include <utility>

bool CXListCtrl::SetCheckbox(int item, int column, int state) {
    CXListCell* const cell = Cell(item, column);
    if (!cell)
        return false;
    state = std::clamp(state, -1, 1);
    int const before = std::exchange(cell->check, state);
    if (before == state)
        return true;
    CXListColumn& counts = *Column(column);
    counts.boxes += (state >= 0) - (before >= 0);
    counts.checked += (state > 0) - (before > 0);
    if ((state > 0) != (before > 0))
        OnItemStateChange(item, column, static_cast<unsigned int>(state > 0));
    CWndReference const self = this;
    TellItem(item, column);
    if (self.Get())
        TellHeader(column);
    return true;
}

int CXListCtrl::GetCheckbox(int item, int column) const noexcept {
    CXListCell const* const cell = Cell(item, column);
    return cell ? cell->check : -1;
}

int CXListCtrl::CountCheckedItems(int column) const noexcept {
    return column >= 0 && column < GetColumnCount() ? m_columns[static_cast<std::size_t>(column)].checked : 0;
}

bool CXListCtrl::SetHeaderCheckedState(int column, int state) {
    CXListColumn* const found = Column(column);
    if (!found)
        return false;
    found->header_check = std::clamp<int>(state, no_header_check, header_follows);
    Notify([column](CWndView& view) { view.OnHeaderChanged(column); });
    return true;
}

int CXListCtrl::GetHeaderCheckedState(int column) const noexcept {
    return column >= 0 && column < GetColumnCount() ? m_columns[static_cast<std::size_t>(column)].header_check
                                                    : static_cast<int>(no_header_check);
}

int CXListCtrl::GetHeaderMark(int column) const noexcept {
    enum mark_t { none = -1, off = 0, on = 1, some = 2 };
    switch (GetHeaderCheckedState(column)) {
    case header_off:
        return off;
    case header_on:
        return on;
    case header_follows: {
        auto const& [boxes, checked] = std::pair(m_columns[static_cast<std::size_t>(column)].boxes,
                                                 m_columns[static_cast<std::size_t>(column)].checked);
        if (checked == 0)
            return off;
        return checked == boxes ? on : some;
    }
    default:
        return none;
    }
}

void CXListCtrl::TellHeader(int column) {
    if (!m_batch && GetHeaderCheckedState(column) == header_follows)
        Notify([column](CWndView& view) { view.OnHeaderChanged(column); });
}

int CXListCtrl::FirstCheckbox(int item) const noexcept {
    for (int column = 0; column < GetColumnCount(); ++column) {
        if (GetCheckbox(item, column) >= 0)
            return column;
    }
    return -1;
}

bool CXListCtrl::ToggleCheckbox(int item, int column) {
    int const state = GetCheckbox(item, column);
    return state >= 0 && GetEnabled(item) && SetCheckbox(item, column, 1 - state);
}

// Gives all boxes of a column that the user may switch the same state.
void CXListCtrl::CheckColumn(int column, int state) {
    bool const batch = std::exchange(m_batch, true);
    for (int item = 0; item < GetItemCount(); ++item) {
        if (GetEnabled(item) && GetCheckbox(item, column) >= 0)
            SetCheckbox(item, column, state);
    }
    SetBatchInsertMode(batch);
}

void CXListCtrl::OnItemStateChange(int, int, unsigned int) {}

bool CXListCtrl::SetComboBox(int item, int column, std::map<int, CString> const& choices, int selected) {
    CXListCell* const cell = Cell(item, column);
    if (!cell)
        return false;
    auto const choice = choices.find(selected);
    cell->combo = &choices;
    cell->combo_selection = selected;
    cell->text = choice != choices.end() ? choice->second : CString();
    TellItem(item, column);
    return true;
}

bool CXListCtrl::RemoveComboBox(int item, int column) {
    CXListCell* const cell = Cell(item, column);
    if (!cell || !cell->combo)
        return false;
    cell->combo = nullptr;
    cell->combo_selection = -1;
    TellItem(item, column);
    return true;
}

std::map<int, CString> const* CXListCtrl::GetComboBox(int item, int column) const noexcept {
    CXListCell const* const cell = Cell(item, column);
    return cell ? cell->combo : nullptr;
}

int CXListCtrl::GetComboCurSel(int item, int column) const noexcept {
    CXListCell const* const cell = Cell(item, column);
    return cell ? cell->combo_selection : -1;
}

bool CXListCtrl::ChooseInCombo(int item, int column, int number) {
    CXListCell* const cell = Cell(item, column);
    if (!cell || !cell->combo || !GetEnabled(item))
        return false;
    auto const choice = cell->combo->find(number);
    if (choice == cell->combo->end())
        return false;
    if (cell->combo_selection == number)
        return true;
    cell->combo_selection = number;
    cell->text = choice->second;
    CWndReference const self = this;
    TellItem(item, column);
    if (!self.Get() || !m_change_callback)
        return true;
    ChangeCallback const callback = m_change_callback; // it may install another
    callback(item, column);
    return true;
}
