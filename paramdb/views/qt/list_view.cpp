// ListView: following the control, and the mouse.
#include <paramdb/controls/range_select_ctrl.h>
#include <paramdb/views/qt/event_loop.h>
#include <paramdb/views/qt/list_view.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/theme.h>

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <utility>

namespace paramdb::qt {

ListView::ListView(QWidget* parent)
    : QWidget(parent), m_table(new ListTable(*this, this)),
      m_filter(new FilterLine([this](QString const& text) { OnFilterText(text); },
                              [this](QKeyEvent const& key) { return OnFilterKey(key); }, this)) {
    InstallTheme();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_filter);
    column->addWidget(m_table, 1);
    m_filter->hide();
    setFocusProxy(m_table);
    m_table->setItemDelegate(&m_delegate);
    m_table->setModel(&m_model);

    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { OnFocus(now); });
    connect(m_table->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { OnHeading(section); });
    connect(m_table->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int section, int, int width) {
                if (m_own || !m_list || static_cast<std::size_t>(section) >= m_widths.size())
                    return;
                QScopedValueRollback<bool> const own(m_own, true);
                m_widths[static_cast<std::size_t>(section)] = width;
                m_list->SetColumnWidth(section, width);
            });
    auto const scrolled = [this] { SyncScroll(); };
    connect(m_table->horizontalScrollBar(), &QScrollBar::valueChanged, this, scrolled);
    connect(m_table->verticalScrollBar(), &QScrollBar::valueChanged, this, scrolled);
}

ListView::~ListView() {
    disconnect(qApp, nullptr, this, nullptr);
    if (m_list)
        m_list->KillFocus();
    Detach();
    m_list = nullptr;
    delete m_table; // it calls this object while it lives
    delete m_filter;
}

void ListView::SetList(CXListCtrl* list) {
    if (m_list == list)
        return;
    Detach();
    m_list = list;
    m_column = 0;
    m_widths.clear();
    m_delegate.SetList(list);
    m_model.SetList(list);
    CloseFilter();
    if (!list)
        return;
    Attach(*list);
    setEnabled(list->IsWindowEnabled());
    if (!list->IsWindowVisible())
        hide();
    OnTitleChanged();
    OnColumnsChanged();
    Update();
    if (m_table->hasFocus())
        list->SetFocus();
}

void ListView::OnControlGone() {
    m_list = nullptr;
    m_delegate.SetList(nullptr);
    m_model.SetList(nullptr);
}

void ListView::OnVisibilityChanged() {
    setVisible(m_list->IsWindowVisible());
}

void ListView::OnEnabledChanged() {
    setEnabled(m_list->IsWindowEnabled());
}

void ListView::OnTitleChanged() {
    QString name = m_name;
    if (name.isEmpty() && m_list)
        name = ToQString(m_list->GetTitle());
    if (name.isEmpty() && m_list && m_list->GetColumnCount() > 0)
        name = ToQString(m_list->GetColumn(0).heading);
    m_table->setAccessibleName(name);
    setAccessibleName(name);
}

void ListView::SetName(QString const& name) {
    m_name = name;
    OnTitleChanged();
}

void ListView::OnContentChanged() {
    if (!m_own)
        Later();
}

// A click may change a whole column: from some number on they are shown together.
void ListView::OnItemChanged(int item, int column) {
    constexpr int one_by_one = 64;
    if (IsStale())
        return;
    if (++m_changes > one_by_one)
        Later();
    else
        m_model.TellChanged(item, column);
}

void ListView::OnColumnsChanged() {
    if (m_own)
        return;
    m_widths.clear();
    for (int column = 0; column < m_list->GetColumnCount(); ++column)
        m_widths.push_back(m_list->GetColumnWidth(column));
    OnTitleChanged();
    Later();
}

void ListView::OnHeaderChanged(int column) {
    m_model.TellHeaderChanged(column);
}

void ListView::OnSelectionChanged() {
    bool const reveal = !m_clicking; // what is clicked is in sight
    if (IsStale())
        m_reveal |= reveal;
    else
        ShowCurrent(reveal);
}

void ListView::OnScrollChanged() {
    if (m_own || m_model.IsFiltered())
        return;
    if (IsStale())
        m_follow = true;
    else
        FollowScroll();
}

void ListView::FollowScroll() {
    QScopedValueRollback<bool> const own(m_own, true);
    CPoint const position = m_list->GetScrollPos();
    m_table->horizontalScrollBar()->setValue(static_cast<int>(position.x));
    m_table->verticalScrollBar()->setValue(static_cast<int>(position.y));
}

// Many changes of the control make one of the view.
void ListView::Later() {
    m_update.Ask();
}

void ListView::Update() {
    m_update.Forget();
    m_changes = 0;
    {
        // Where the table scrolls to by itself does not count.
        QScopedValueRollback<bool> const own(m_own, true);
        m_model.Refresh();
        m_table->SetRowHeight(CellSizes(*m_table).row);
        SyncColumns();
        m_table->LayOut();
    }
    if (std::exchange(m_follow, false) && m_list && !m_model.IsFiltered())
        FollowScroll();
    SyncMetrics();
    if (m_model.IsFiltered())
        m_filter->ShowCount(m_model.rowCount(), m_list ? m_list->GetItemCount() : 0);
    ShowCurrent(std::exchange(m_reveal, false));
}

// Puts the mark of the keyboard where the control has it.
void ListView::ShowCurrent(bool scroll) {
    int const row = m_list ? m_model.RowOf(m_list->GetFocusItem()) : -1;
    if (row < 0 || m_model.columnCount() == 0)
        return;
    m_column = std::clamp(m_column, 0, m_model.columnCount() - 1);
    QModelIndex const index = m_model.index(row, m_column);
    {
        QScopedValueRollback<bool> const own(m_own, true);
        m_table->setCurrentIndex(index);
    }
    if (scroll)
        m_table->scrollTo(index, QAbstractItemView::EnsureVisible);
}

void ListView::SyncMetrics() {
    if (!m_list)
        return;
    CellSizes const sizes(*m_table);
    CXListCtrl::Metrics wanted = m_list->GetMetrics();
    QSize const page = m_table->viewport()->size();
    wanted.row_height = m_table->verticalHeader()->defaultSectionSize();
    wanted.header_height = m_table->horizontalHeader()->height();
    wanted.box_width = sizes.box;
    wanted.cell_margin = 2 * sizes.margin;
    wanted.page = CSize(page.width(), page.height() + wanted.header_height);
    CXListCtrl::Metrics const& now = m_list->GetMetrics();
    bool const same = now.row_height == wanted.row_height && now.header_height == wanted.header_height &&
                      now.box_width == wanted.box_width && now.cell_margin == wanted.cell_margin &&
                      now.page == wanted.page;
    if (!same) {
        QScopedValueRollback<bool> const own(m_own, true);
        m_list->SetMetrics(wanted);
    }
    SyncScroll();
}

// The control cannot be where a narrowed list is; it stays where it is then.
void ListView::SyncScroll() {
    if (m_own || !m_list)
        return;
    QScopedValueRollback<bool> const own(m_own, true);
    int const y = m_model.IsFiltered() ? static_cast<int>(m_list->GetScrollPos().y)
                                       : m_table->verticalScrollBar()->value();
    m_list->SetScrollPos(CPoint(m_table->horizontalScrollBar()->value(), y));
}

// The columns get their widths; what room is left goes to the one with the values.
void ListView::SyncColumns() {
    int const count = m_model.columnCount();
    if (!m_list || count == 0 || m_widths.size() != static_cast<std::size_t>(count))
        return;
    QScopedValueRollback<bool> const own(m_own, true);
    std::vector<int> widths = m_widths;
    if (!IsGrid()) {
        int rest = m_table->viewport()->width();
        for (int const width : widths)
            rest -= width;
        widths[count > 1 ? 1 : 0] += std::max(rest, 0);
    }
    for (int column = 0; column < count; ++column) {
        m_table->horizontalHeader()->resizeSection(column, widths[static_cast<std::size_t>(column)]);
        int const width = m_table->horizontalHeader()->sectionSize(column);
        if (m_list->GetColumnWidth(column) != width)
            m_list->SetColumnWidth(column, width);
    }
}

void ListView::OnSize() {
    m_table->SetRowHeight(CellSizes(*m_table).row);
    SyncColumns();
    SyncMetrics();
    Later(); // the table takes notice of columns only when it is done with its own size
}

// The keyboard is with the list as long as anything of this view has it, the line and the combos included.
void ListView::OnFocus(QWidget const* now) {
    if (!m_list)
        return;
    while (now && now != this)
        now = now->parentWidget();
    CallControl([this, now] {
        if (now)
            m_list->SetFocus();
        else
            m_list->KillFocus();
    });
}

void ListView::OnCurrent(QModelIndex const& index) {
    if (m_own || !m_list || !index.isValid())
        return;
    m_column = index.column();
    m_list->SetFocusItem(m_model.ItemOf(index.row()));
}

void ListView::OnPress(QModelIndex const& pressed, QPoint const& point, Qt::KeyboardModifiers keys) {
    QModelIndex index = pressed;
    if (IsStale()) {
        Update();
        index = m_table->indexAt(point);
    }
    if (!m_list)
        return;
    UINT const flags = MK_LBUTTON | (keys & Qt::ControlModifier ? MK_CONTROL : 0) |
                       (keys & Qt::ShiftModifier ? MK_SHIFT : 0);
    if (index.isValid()) {
        Click(m_model.ItemOf(index.row()), index.column(), point - m_table->visualRect(index).topLeft(),
              flags);
        // The click may have changed everything.
        bool const combo = !IsStale() && (m_model.flags(index) & Qt::ItemIsEditable);
        if (combo && (flags & (MK_CONTROL | MK_SHIFT)) == 0)
            OpenCombo(nullptr);
    } else if (!m_model.IsFiltered()) {
        SyncMetrics();
        CPoint const beside(point.x(), point.y() + m_list->GetMetrics().header_height);
        CallControl([&] { m_list->Click(flags, beside); });
    }
}

// A click at a place of a cell, counted from its upper left corner.
void ListView::Click(int item, int column, QPoint offset, UINT flags) {
    SyncMetrics();
    if (m_model.IsFiltered()) {
        QScopedValueRollback<bool> const own(m_own, true);
        m_list->EnsureVisible(item);
    } else {
        m_list->EnsureVisible(item);
    }
    CRect rect;
    if (!m_list->GetSubItemRect(item, column, rect))
        return;
    CPoint const point(std::max(static_cast<int>(rect.left) + std::clamp(offset.x(), 0, rect.Width() - 1), 0),
                       static_cast<int>(rect.top) + std::clamp(offset.y(), 0, rect.Height() - 1));
    m_column = column;
    {
        QScopedValueRollback<bool> const clicking(m_clicking, true);
        CallControl([&] { m_list->Click(flags, point); });
    }
    if (!m_list || IsStale())
        return;
    int const row = m_model.RowOf(item);
    if (row >= 0 && m_list->GetFocusItem() == item) {
        QScopedValueRollback<bool> const own(m_own, true);
        m_table->setCurrentIndex(m_model.index(row, column));
    }
}

void ListView::OnHeading(int column) {
    if (IsStale())
        Update();
    if (!m_list)
        return;
    if (m_model.IsFiltered() && m_list->GetHeaderMark(column) >= 0)
        SwitchShown(column);
    else
        CallControl([&] { m_list->ClickColumn(column); });
}

// The heading of a narrowed list: the boxes out of sight keep their marks.
void ListView::SwitchShown(int column) {
    std::vector<int> off;
    std::vector<int> on;
    for (int row = 0; row < m_model.rowCount(); ++row) {
        int const item = m_model.ItemOf(row);
        int const state = m_list->GetEnabled(item) ? m_list->GetCheckbox(item, column) : -1;
        if (state >= 0)
            (state > 0 ? on : off).push_back(item);
    }
    CallControl([&] {
        m_list->SetBatchInsertMode(true);
        for (int const item : off.empty() ? on : off)
            m_list->ToggleCheckbox(item, column);
        m_list->SetBatchInsertMode(false);
        m_list->SetHeaderCheckedState(column, m_list->GetHeaderCheckedState(column));
    });
}

bool ListView::IsGrid() const {
    return dynamic_cast<CRangeSelectCtrlBasics const*>(m_list) != nullptr;
}

QSize ListView::sizeHint() const {
    constexpr int rows = 12;
    constexpr int least_width = 240;
    int width = 2 * m_table->frameWidth() + m_table->verticalScrollBar()->sizeHint().width();
    for (int const column : m_widths)
        width += column;
    return {std::max(width, least_width),
            m_table->horizontalHeader()->sizeHint().height() + rows * CellSizes(*m_table).row};
}

} // namespace paramdb::qt
