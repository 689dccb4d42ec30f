// CXListCtrl: columns, items, texts and colours.
#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/framework/sys_color.h>

#include <algorithm>
#include <utility>

CXListRow* CXListCtrl::Row(int item) noexcept {
    return item >= 0 && item < GetItemCount() ? &m_rows[static_cast<std::size_t>(item)] : nullptr;
}

CXListRow const* CXListCtrl::Row(int item) const noexcept {
    return item >= 0 && item < GetItemCount() ? &m_rows[static_cast<std::size_t>(item)] : nullptr;
}

CXListColumn* CXListCtrl::Column(int column) noexcept {
    return column >= 0 && column < GetColumnCount() ? &m_columns[static_cast<std::size_t>(column)] : nullptr;
}

CXListCell* CXListCtrl::Cell(int item, int column) noexcept {
    return const_cast<CXListCell*>(std::as_const(*this).Cell(item, column));
}

CXListCell const* CXListCtrl::Cell(int item, int column) const noexcept {
    CXListRow const* const row = Row(item);
    return row && column >= 0 && column < GetColumnCount() ? &row->cells[static_cast<std::size_t>(column)]
                                                           : nullptr;
}

int CXListCtrl::InsertColumn(int column, wchar_t const* heading, int format, int width) {
    if (column < 0)
        return -1;
    column = std::min(column, GetColumnCount());
    CXListColumn added;
    added.heading = heading;
    added.format = format;
    added.width = width >= 0 ? width : paramdb::TextWidth(added.heading) + m_metrics.cell_margin;
    m_columns.insert(m_columns.begin() + column, std::move(added));
    for (CXListRow& row : m_rows)
        row.cells.emplace(row.cells.begin() + column);
    Notify([](CWndView& view) { view.OnColumnsChanged(); });
    return column;
}

bool CXListCtrl::DeleteColumn(int column) {
    if (!Column(column))
        return false;
    if (GetColumnCount() == 1)
        return DeleteAllColumns();
    m_columns.erase(m_columns.begin() + column);
    for (CXListRow& row : m_rows)
        row.cells.erase(row.cells.begin() + column);
    KeepScrollInside();
    Notify([](CWndView& view) { view.OnColumnsChanged(); });
    return true;
}

bool CXListCtrl::DeleteAllColumns() {
    CWndReference const self = this;
    DeleteAllItems();
    if (!self.Get() || m_columns.empty())
        return true;
    m_columns.clear();
    KeepScrollInside();
    Notify([](CWndView& view) { view.OnColumnsChanged(); });
    return true;
}

bool CXListCtrl::SetColumnWidth(int column, int width) {
    CXListColumn* const found = Column(column);
    if (!found)
        return false;
    found->width = std::max(width, 0);
    KeepScrollInside();
    Notify([](CWndView& view) { view.OnColumnsChanged(); });
    return true;
}

int CXListCtrl::GetColumnWidth(int column) const noexcept {
    return column >= 0 && column < GetColumnCount() ? m_columns[static_cast<std::size_t>(column)].width : 0;
}

void CXListCtrl::AutosizeColumnWidth(int column) {
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (column != -1 && static_cast<std::size_t>(column) != i)
            continue;
        CXListColumn& sized = m_columns[i];
        auto const width = [&](CString const& text, bool box) {
            return paramdb::TextWidth(text) + m_metrics.cell_margin + (box ? m_metrics.box_width : 0);
        };
        sized.width = width(sized.heading, sized.header_check != no_header_check);
        for (CXListRow const& row : m_rows) {
            CXListCell const& cell = row.cells[i];
            sized.width = std::max(sized.width, width(cell.text, cell.check >= 0 || cell.combo));
        }
    }
    KeepScrollInside();
    Notify([](CWndView& view) { view.OnColumnsChanged(); });
}

int CXListCtrl::Insert(int item, wchar_t const* text, COLORREF text_color, COLORREF background_color,
                       std::uint64_t data) {
    if (item < 0)
        return -1;
    item = std::min(item, GetItemCount());
    CXListRow row;
    row.cells.resize(m_columns.size());
    row.data = data;
    if (!row.cells.empty()) {
        row.cells[0].text = text;
        row.cells[0].text_color = text_color;
        row.cells[0].background_color = background_color;
    }
    m_rows.insert(m_rows.begin() + item, std::move(row));
    if (m_focus_item >= item)
        ++m_focus_item;
    if (m_batch)
        m_changed_in_batch = true;
    else
        Notify([item](CWndView& view) { view.OnItemsInserted(item, 1); });
    return item;
}

int CXListCtrl::InsertItem(int item, wchar_t const* text, COLORREF text_color, COLORREF background_color) {
    return Insert(item, text, text_color, background_color, 0);
}

int CXListCtrl::InsertItem(LVITEMW const* item) {
    bool const has_text = (item->mask & LVIF_TEXT) != 0;
    bool const has_data = (item->mask & LVIF_PARAM) != 0;
    return Insert(item->iItem, has_text ? item->pszText : L"", XDefaultColor, XDefaultColor,
                  has_data ? static_cast<std::uint64_t>(item->lParam) : 0);
}

bool CXListCtrl::DeleteItem(int item) {
    CXListRow const* const row = Row(item);
    if (!row)
        return false;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        m_columns[i].boxes -= row->cells[i].check >= 0;
        m_columns[i].checked -= row->cells[i].check > 0;
    }
    m_rows.erase(m_rows.begin() + item);
    if (m_focus_item > item || m_focus_item == GetItemCount())
        --m_focus_item;
    TellContent();
    return true;
}

bool CXListCtrl::DeleteAllItems() {
    if (m_rows.empty())
        return true;
    m_rows.clear();
    for (CXListColumn& column : m_columns)
        column.boxes = column.checked = 0;
    m_focus_item = -1;
    TellContent();
    return true;
}

void CXListCtrl::SetBatchInsertMode(bool on) {
    m_batch = on;
    if (!on && std::exchange(m_changed_in_batch, false))
        TellContent();
}

bool CXListCtrl::SetItemText(int item, int column, wchar_t const* text, COLORREF text_color,
                             COLORREF background_color) {
    CXListCell* const cell = Cell(item, column);
    if (!cell)
        return false;
    cell->text = text;
    cell->text_color = text_color;
    cell->background_color = background_color;
    TellItem(item, column);
    return true;
}

CString CXListCtrl::GetItemText(int item, int column) const {
    CXListCell const* const cell = Cell(item, column);
    return cell ? cell->text : CString();
}

bool CXListCtrl::GetItemColors(int item, int column, COLORREF& text_color,
                               COLORREF& background_color) const noexcept {
    CXListCell const* const cell = Cell(item, column);
    if (!cell)
        return false;
    text_color = cell->text_color;
    background_color = cell->background_color;
    return true;
}

bool CXListCtrl::SetRowColors(int item, COLORREF text_color, COLORREF background_color) {
    CXListRow* const row = Row(item);
    if (!row)
        return false;
    for (CXListCell& cell : row->cells) {
        cell.text_color = text_color;
        cell.background_color = background_color;
    }
    TellItem(item, -1);
    return true;
}

bool CXListCtrl::SetItemData(int item, std::uint64_t data) noexcept {
    CXListRow* const row = Row(item);
    if (row)
        row->data = data;
    return row != nullptr;
}

std::uint64_t CXListCtrl::GetItemData64(int item) const noexcept {
    CXListRow const* const row = Row(item);
    return row ? row->data : 0;
}

void* CXListCtrl::GetItemDataPtr(int item) const noexcept {
    return PointerIn<void>(static_cast<LPARAM>(GetItemData64(item)));
}

bool CXListCtrl::SetEnabled(int item, bool enable) {
    CXListRow* const row = Row(item);
    if (!row)
        return false;
    if (std::exchange(row->enabled, enable) != enable)
        TellItem(item, -1);
    return true;
}

bool CXListCtrl::GetEnabled(int item) const noexcept {
    CXListRow const* const row = Row(item);
    return row && row->enabled;
}

UINT CXListCtrl::SetExtendedStyle(UINT style, UINT mask) {
    UINT const before = m_extended_style;
    m_extended_style = mask == 0 ? style : (before & ~mask) | (style & mask);
    if (m_extended_style != before)
        Notify([](CWndView& view) { view.OnContentChanged(); });
    return before;
}

void CXListCtrl::TellItem(int item, int column) {
    if (m_batch)
        m_changed_in_batch = true;
    else
        Notify([item, column](CWndView& view) { view.OnItemChanged(item, column); });
}

void CXListCtrl::TellContent() {
    KeepScrollInside();
    if (m_batch)
        m_changed_in_batch = true;
    else
        Notify([](CWndView& view) { view.OnContentChanged(); });
}

void CXListCtrl::OnDestroy() {
    m_batch = false;
    m_changed_in_batch = false;
    DeleteAllColumns();
}
