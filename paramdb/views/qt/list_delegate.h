// How the cells of a list look, and the editor of those with a combo.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/views/qt/soon.h>

#include <QtCore/QPointer>
#include <QtWidgets/QStyledItemDelegate>
#include <functional>

namespace paramdb::qt {

// The sizes with which cells are drawn, which the control is told too.
struct CellSizes {
    int margin = 5; // beside a text, on each side
    int box = 18;   // a check box or the arrow of a combo with the room around it
    int row = 18;

    explicit CellSizes(QWidget const& widget);
};

class ListDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // The list whose combos are edited; null for none.
    void SetList(CXListCtrl* list) { m_list = list; }

    void paint(QPainter* painter, QStyleOptionViewItem const& option,
               QModelIndex const& index) const override;
    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const override;
    // Shows the whole text of a cell that is too narrow for it.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, QStyleOptionViewItem const& option,
                   QModelIndex const& index) override;

    QWidget* createEditor(QWidget* parent, QStyleOptionViewItem const& option,
                          QModelIndex const& index) const override;
    void setEditorData(QWidget* editor, QModelIndex const& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, QModelIndex const& index) const override;
    void updateEditorGeometry(QWidget* editor, QStyleOptionViewItem const& option,
                              QModelIndex const& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Finish(QWidget* editor);

    QPointer<QWidget> m_finishing; // the editor that saw the return key
    Soon m_finish{[this] { Finish(m_finishing); }};

    CXListCtrl* m_list = nullptr;
};

} // namespace paramdb::qt
