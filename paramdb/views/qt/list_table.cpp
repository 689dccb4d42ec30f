#include <paramdb/views/qt/list_header.h>
#include <paramdb/views/qt/list_table.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>

namespace paramdb::qt {

ListTable::ListTable(Listener& listener, QWidget* parent) : QTableView(parent), m_listener(listener) {
    constexpr int least_column = 16;
    setHorizontalHeader(new ListHeader(this));
    horizontalHeader()->setMinimumSectionSize(least_column);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setSelectionMode(QAbstractItemView::NoSelection); // the list knows what is selected
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTabKeyNavigation(false);
    setAutoScroll(false);
    setDragEnabled(false);
}

void ListTable::SetRowHeight(int height) {
    if (verticalHeader()->defaultSectionSize() != height)
        verticalHeader()->setDefaultSectionSize(height);
}

void ListTable::LayOut() {
    executeDelayedItemsLayout();
    updateGeometries();
}

void ListTable::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    QPoint const point = event->position().toPoint();
    m_listener.OnPress(indexAt(point), point, event->modifiers());
    event->accept();
}

void ListTable::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

void ListTable::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
}

void ListTable::keyPressEvent(QKeyEvent* event) {
    // While a cell is edited only what its editor leaves over comes here. It is nobody else's.
    if (state() == QAbstractItemView::EditingState || m_listener.OnKey(*event))
        event->accept();
    else
        event->ignore(); // the dialog around it may know the return and the escape key
}

void ListTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    m_listener.OnSize();
}

void ListTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_listener.OnSize();
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

void ListTable::currentChanged(QModelIndex const& current, QModelIndex const& previous) {
    QTableView::currentChanged(current, previous);
    viewport()->update(); // a list may show the whole row
    m_listener.OnCurrent(current);
}

void ListTable::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    viewport()->update();
}

void ListTable::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    viewport()->update();
}

} // namespace paramdb::qt
