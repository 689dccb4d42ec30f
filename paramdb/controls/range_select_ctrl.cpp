#include <paramdb/controls/range_select_ctrl.h>
#include <paramdb/query/param_instance.h>

#include <algorithm>

namespace {

// Numbers of the system's colours.
constexpr int WindowText = 8;
constexpr int Highlight = 13;
constexpr int HighlightText = 14;
constexpr int ButtonFace = 15;

constexpr int RangeColumnWidth = 90;

} // namespace

CRangeSelectCtrlBasics::~CRangeSelectCtrlBasics() = default;

template <unsigned int N>
void CRangeSelectCtrl<N>::PreSubclassWindow() {
    fill_header();
    m_show_ids = CQtParamInstance::ShowIdsInDialogs();
    fill();
    std::fill(std::begin(m_last_click), std::end(m_last_click), -1);
    AutosizeColumnWidth();
    CXListCtrl::PreSubclassWindow();
    // Cells are selected one by one, never the row.
    SetExtendedStyle((GetExtendedStyle() & ~LVS_EX_FULLROWSELECT) | LVS_EX_BORDERSELECT);
}

template <unsigned int N>
void CRangeSelectCtrl<N>::fill_header() {
    for (unsigned int list = 0; list < N; ++list) {
        if (m_mask[list])
            InsertColumn(GetColumnCount(), col_head_names(list), LVCFMT_LEFT, RangeColumnWidth);
    }
}

template <unsigned int N>
void CRangeSelectCtrl<N>::fill(List const (&lists)[N]) {
    if (static_cast<int>(m_mask.count()) != GetColumnCount()) {
        DeleteAllColumns();
        fill_header();
    } else {
        DeleteAllItems();
    }
    std::size_t count = 0;
    typename List::const_iterator next[N];
    for (unsigned int list = 0; list < N; ++list) {
        next[list] = lists[list].begin();
        if (m_mask[list])
            count = std::max(count, lists[list].size());
    }
    std::array<int, N> empty;
    empty.fill(-1);
    m_rows.assign(count, empty); // they stay where they are from here on

    SetBatchInsertMode(true);
    for (std::size_t row = 0; row < count; ++row) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = static_cast<int>(row);
        item.lParam = reinterpret_cast<LPARAM>(m_rows[row].data());
        InsertItem(&item);
        int column = 0;
        for (unsigned int list = 0; list < N; ++list) {
            if (!m_mask[list])
                continue;
            if (next[list] != lists[list].end()) {
                auto const& [id, text] = *next[list]++;
                m_rows[row][static_cast<std::size_t>(column)] = id;
                SetItemText(item.iItem, column, text);
            }
            ++column;
        }
    }
    SetBatchInsertMode(false);
}

template <unsigned int N>
void CRangeSelectCtrl<N>::retrieve(std::map<int, bool> (&out)[N]) const {
    for (auto& column : out)
        column.clear();
    if (!IsWindow(GetSafeHwnd()))
        return;
    for (int row = 0; row < GetItemCount(); ++row) {
        auto const* const ids = static_cast<int const*>(GetItemDataPtr(row));
        for (int column = 0; column < GetColumnCount(); ++column)
            out[column].try_emplace(ids[column], selected({row, column}));
    }
}

template <unsigned int N>
void CRangeSelectCtrl<N>::full_selection() {
    for (int column = 0; column < GetColumnCount(); ++column)
        select_col(column);
}

template <unsigned int N>
void CRangeSelectCtrl<N>::invert_selection() {
    for (int row = 0; row < static_cast<int>(m_rows.size()); ++row) {
        for (int column = 0; column < GetColumnCount(); ++column) {
            if (!GetItemText(row, column).IsEmpty())
                toggle_cell({row, column});
        }
    }
}

template <unsigned int N>
void CRangeSelectCtrl<N>::l_button_down(unsigned int flags, CPoint point) {
    cell_t const cell = get_cell(point);
    auto const [row, column] = cell;
    if (row < 0 || column < 0 || GetItemText(row, column).IsEmpty())
        return;
    int& last_click = m_last_click[column];
    if (flags & MK_CONTROL) {
        toggle_cell(cell);
        last_click = row;
    } else if ((flags & MK_SHIFT) && last_click >= 0) {
        deselect_all(static_cast<unsigned int>(column));
        auto const [first, last] = std::minmax(last_click, row);
        for (int i = first; i <= last; ++i) {
            if (has_entry({i, column})) // the last click may be older than the lists
                select_cell({i, column});
        }
    } else {
        deselect_all(static_cast<unsigned int>(column));
        select_cell(cell);
        last_click = row;
    }
}

template <unsigned int N>
void CRangeSelectCtrl<N>::deselect_all(unsigned int column) {
    for (int row = 0; row < static_cast<int>(m_rows.size()); ++row)
        write_colors({row, static_cast<int>(column)}, XDefaultColor, XDefaultColor);
}

template <unsigned int N>
void CRangeSelectCtrl<N>::select_col(int column) {
    if (column < 0 || column >= static_cast<int>(N))
        return;
    for (int row = 0; row < GetItemCount(); ++row) {
        if (!GetItemText(row, column).IsEmpty())
            select_cell({row, column});
    }
    m_last_click[column] = -1;
}

template <unsigned int N>
void CRangeSelectCtrl<N>::select_cell(cell_t const& cell) {
    write_colors(cell, m_selection_text, m_selection_background);
}

template <unsigned int N>
void CRangeSelectCtrl<N>::toggle_cell(cell_t const& cell) {
    if (selected(cell))
        write_colors(cell, XDefaultColor, XDefaultColor);
    else
        select_cell(cell);
}

// Either colour counts: the selection may have been coloured with the focus or without.
template <unsigned int N>
bool CRangeSelectCtrl<N>::selected(cell_t const& cell) const {
    COLORREF text = XDefaultColor;
    COLORREF background = XDefaultColor;
    GetItemColors(cell.first, cell.second, text, background);
    return background == GetSysColor(Highlight) || background == GetSysColor(ButtonFace);
}

template <unsigned int N>
typename CRangeSelectCtrl<N>::cell_t CRangeSelectCtrl<N>::get_cell(CPoint const& point) const {
    LVHITTESTINFO hit{};
    hit.pt = point;
    HitTest(&hit);
    cell_t cell(-1, -1);
    if (hit.flags & LVHT_ONITEM)
        cell.first = hit.iItem;
    if (!GetEnabled(cell.first))
        return cell;
    for (int column = 0; column < GetColumnCount(); ++column) {
        CRect rect;
        if (GetSubItemRect(cell.first, column, rect) && rect.PtInRect(point)) {
            cell.second = column;
            break;
        }
    }
    return cell;
}

template <unsigned int N>
void CRangeSelectCtrl<N>::set_selection_colors() {
    for (int row = 0; row < GetItemCount(); ++row) {
        for (int column = 0; column < GetColumnCount(); ++column) {
            if (selected({row, column}))
                select_cell({row, column});
        }
    }
}

// Whether a value stands in a cell, if only one without text.
template <unsigned int N>
bool CRangeSelectCtrl<N>::has_entry(cell_t const& cell) const {
    auto const [row, column] = cell;
    return row < static_cast<int>(m_rows.size()) &&
           (m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] != -1 ||
            !GetItemText(row, column).IsEmpty());
}

template <unsigned int N>
void CRangeSelectCtrl<N>::write_colors(cell_t const& cell, COLORREF text, COLORREF background) {
    auto const [row, column] = cell;
    SetItemText(row, column, GetItemText(row, column), text, background);
}

template <unsigned int N>
LRESULT CRangeSelectCtrl<N>::OnColumnClick(int column) {
    select_col(column);
    return 0;
}

template <unsigned int N>
void CRangeSelectCtrl<N>::OnLButtonDown(UINT flags, CPoint point) {
    l_button_down(flags, point);
    CXListCtrl::OnLButtonDown(flags, point);
}

template <unsigned int N>
void CRangeSelectCtrl<N>::OnSetFocus(CWnd* old) {
    CXListCtrl::OnSetFocus(old);
    m_selection_background = GetSysColor(Highlight);
    m_selection_text = GetSysColor(HighlightText);
    set_selection_colors();
}

template <unsigned int N>
void CRangeSelectCtrl<N>::OnKillFocus(CWnd* next) {
    CXListCtrl::OnKillFocus(next);
    m_selection_background = GetSysColor(ButtonFace);
    m_selection_text = GetSysColor(WindowText);
    set_selection_colors();
}

template class CRangeSelectCtrl<6>;
template class CRangeSelectCtrl<7>;
