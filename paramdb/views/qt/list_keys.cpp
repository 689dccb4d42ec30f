// ListView: the keyboard and the line for typing.
#include <paramdb/views/qt/choice_box.h>
#include <paramdb/views/qt/event_loop.h>
#include <paramdb/views/qt/list_view.h>
#include <paramdb/views/qt/qt_text.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <algorithm>

namespace paramdb::qt {

namespace {

// The control's number of a key that moves from row to row; 0 for any other.
UINT MovingKey(int key) {
    switch (key) {
    case Qt::Key_Up:
        return VK_UP;
    case Qt::Key_Down:
        return VK_DOWN;
    case Qt::Key_PageUp:
        return VK_PRIOR;
    case Qt::Key_PageDown:
        return VK_NEXT;
    case Qt::Key_Home:
        return VK_HOME;
    case Qt::Key_End:
        return VK_END;
    default:
        return 0;
    }
}

} // namespace

bool ListView::OnKey(QKeyEvent const& key) {
    if (IsStale())
        Update();
    if (!m_list)
        return false;
    bool const control = (key.modifiers() & Qt::ControlModifier) != 0;
    bool const shift = (key.modifiers() & Qt::ShiftModifier) != 0;
    bool const alt = (key.modifiers() & Qt::AltModifier) != 0;
    UINT const flags = (control ? MK_CONTROL : 0) | (shift ? MK_SHIFT : 0);
    switch (key.key()) {
    case Qt::Key_Down:
        if (alt)
            return OpenCombo(nullptr);
        break;
    case Qt::Key_F2:
    case Qt::Key_F4:
        return !alt && OpenCombo(nullptr);
    case Qt::Key_Left:
    case Qt::Key_Right:
        return MoveColumn(key.key() == Qt::Key_Left ? -1 : 1);
    case Qt::Key_Space:
        PressSpace(flags);
        return true;
    case Qt::Key_A:
        if (!control)
            break;
        OnHeading(m_column);
        return true;
    case Qt::Key_F:
        if (!control)
            break;
        OpenFilter();
        return true;
    case Qt::Key_Escape:
        if (!m_filter->isVisibleTo(this))
            return false;
        CloseFilter();
        return true;
    default:
        break;
    }
    if (MovingKey(key.key()) != 0) {
        if (Move(key.key()) && shift && !HasBoxes(m_list->GetFocusItem()))
            ClickCurrent(MK_SHIFT);
        return true;
    }
    if (!ChoiceBox::Types(key))
        return false;
    if (OpenCombo(&key))
        return true;
    OpenFilter();
    FilterEdit().setText(key.text());
    return true;
}

bool ListView::HasBoxes(int item) const {
    for (int column = 0; column < m_list->GetColumnCount(); ++column) {
        if (m_list->GetCheckbox(item, column) >= 0)
            return true;
    }
    return false;
}

// False if the keyboard is nowhere.
bool ListView::Move(int key) {
    if (m_model.rowCount() == 0)
        return false;
    SyncMetrics();
    if (m_model.IsFiltered())
        MoveInShown(key);
    else
        m_list->Key(MovingKey(key));
    if (IsGrid())
        MoveToText(m_list->GetFocusItem());
    return m_list->GetFocusItem() >= 0;
}

// A narrowed list is another list for the keyboard than the control's own.
void ListView::MoveInShown(int key) {
    int const last = m_model.rowCount() - 1;
    int const page = std::max(1, m_table->viewport()->height() / m_list->GetMetrics().row_height);
    int const from = m_model.RowOf(m_list->GetFocusItem());
    int const step = key == Qt::Key_Up         ? -1
                     : key == Qt::Key_Down     ? 1
                     : key == Qt::Key_PageUp   ? -page
                     : key == Qt::Key_PageDown ? page
                     : key == Qt::Key_Home     ? -last
                                               : last;
    int row = from < 0 && key != Qt::Key_End ? 0 : std::clamp(std::max(from, 0) + step, 0, last);
    // Past rows that take no input, onwards first.
    auto const goes = [&](int r) { return m_list->GetEnabled(m_model.ItemOf(r)); };
    int const onwards = step < 0 && key != Qt::Key_Home ? -1 : key == Qt::Key_End ? -1 : 1;
    while (row >= 0 && row <= last && !goes(row))
        row += onwards;
    if (row >= 0 && row <= last)
        m_list->SetFocusItem(m_model.ItemOf(row));
}

// The columns of a grid have different lengths: below a column's last text there is nothing to go to.
void ListView::MoveToText(int item) {
    while (item > 0 && m_list->GetItemText(item, m_column).IsEmpty())
        --item;
    m_list->SetFocusItem(item);
}

bool ListView::MoveColumn(int step) {
    int const column = m_column + step;
    if (column < 0 || column >= m_model.columnCount())
        return m_model.columnCount() > 1;
    m_column = column;
    if (IsGrid())
        MoveToText(m_list->GetFocusItem());
    ShowCurrent(true);
    return true;
}

// A click in the middle of the cell that has the keyboard.
void ListView::ClickCurrent(UINT flags) {
    QModelIndex const index = Current();
    if (!index.isValid())
        return;
    m_table->scrollTo(index, QAbstractItemView::EnsureVisible);
    QRect const cell = m_table->visualRect(index);
    Click(m_model.ItemOf(index.row()), index.column(), QPoint(cell.width() / 2, cell.height() / 2), flags);
}

void ListView::PressSpace(UINT flags) {
    if (flags == 0 && OpenCombo(nullptr))
        return;
    int const item = m_list->GetFocusItem();
    if (m_model.RowOf(item) < 0) // narrowed away
        return;
    if (!HasBoxes(item))
        ClickCurrent(flags);
    else if (m_list->GetCheckbox(item, m_column) >= 0)
        CallControl([&] { m_list->ToggleCheckbox(item, m_column); });
    else
        CallControl([&] { m_list->Key(VK_SPACE); });
}

// Opens the combo of the row that has the keyboard: its list, or narrowed by a typed character. False if the
// row has none that may be used.
bool ListView::OpenCombo(QKeyEvent const* typed) {
    QModelIndex index = Current();
    if (!index.isValid() || !m_list)
        return false;
    // From anywhere in the row, as there is one combo in it.
    for (int column = 0; column < m_model.columnCount() && !(m_model.flags(index) & Qt::ItemIsEditable);
         ++column)
        index = index.siblingAtColumn(column);
    if (!(m_model.flags(index) & Qt::ItemIsEditable))
        return false;
    m_column = index.column();
    ShowCurrent(true);
    m_table->edit(index);
    auto* const editor = dynamic_cast<ChoiceBox*>(m_table->Editor(index));
    if (!editor)
        return false;
    if (typed)
        editor->BeginTyping(*typed);
    else
        editor->showPopup();
    return true;
}

void ListView::OpenFilter() {
    m_filter->show();
    m_filter->ShowCount(-1, 0);
    FilterEdit().setFocus(Qt::OtherFocusReason);
    FilterEdit().selectAll();
}

void ListView::CloseFilter() {
    bool const had_keyboard = FilterEdit().hasFocus();
    FilterEdit().clear();
    if (had_keyboard)
        m_table->setFocus(Qt::OtherFocusReason);
    m_filter->hide();
    ShowCurrent(true);
}

void ListView::OnFilterText(QString const& text) {
    if (IsStale())
        Update();
    if (!m_list)
        return;
    if (IsGrid()) {
        Find(text, m_list->GetFocusItem());
        return;
    }
    m_model.SetFilter(text);
    SyncColumns();
    SyncMetrics();
    m_filter->ShowCount(m_model.IsFiltered() ? m_model.rowCount() : -1, m_list->GetItemCount());
    if (!m_model.IsFiltered() || m_model.rowCount() == 0) {
        ShowCurrent(true);
        return;
    }
    int best = 0;
    for (int row = 0; row < m_model.rowCount(); ++row) {
        if (ToQString(m_list->GetItemText(m_model.ItemOf(row), m_column))
                .startsWith(text, Qt::CaseInsensitive)) {
            best = row;
            break;
        }
    }
    m_list->SetFocusItem(m_model.ItemOf(best));
    ShowCurrent(true);
}

// Takes the keyboard to the next row from that one on, and on from the top, whose cell in the column contains
// the text.
void ListView::Find(QString const& text, int from) {
    int const count = m_list->GetItemCount();
    for (int i = 0; i < count && !text.isEmpty(); ++i) {
        int const item = (std::max(from, 0) + i) % count;
        if (m_list->GetEnabled(item) &&
            ToQString(m_list->GetItemText(item, m_column)).contains(text, Qt::CaseInsensitive)) {
            m_list->SetFocusItem(item);
            ShowCurrent(true);
            return;
        }
    }
}

bool ListView::OnFilterKey(QKeyEvent const& key) {
    switch (key.key()) {
    case Qt::Key_Escape:
        CloseFilter();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (IsGrid())
            Find(FilterEdit().text(), m_list->GetFocusItem() + 1);
        else
            m_table->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        m_table->setFocus(Qt::OtherFocusReason);
        return OnKey(key);
    }
}

} // namespace paramdb::qt
