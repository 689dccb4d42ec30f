// The table of a list view: it draws, and hands every doing of the user on.
#pragma once

#include <paramdb/platform/core/export.h>

#include <QtWidgets/QTableView>
#include <functional>

namespace paramdb::qt {

class PARAMDB_VIEWS_API ListTable : public QTableView {
public:
    // Who hears of the user.
    struct Listener {
        virtual ~Listener() = default;
        // The left mouse button has gone down, at a point of the viewport.
        virtual void OnPress(QModelIndex const& index, QPoint const& point, Qt::KeyboardModifiers keys) = 0;
        // True if the key has done something.
        virtual bool OnKey(QKeyEvent const& key) = 0;
        // Something other than the list has moved the place of the keyboard: a screen reader, or Qt itself.
        virtual void OnCurrent(QModelIndex const& index) = 0;
        // The visible part has another size, or the letters have.
        virtual void OnSize() = 0;
    };

    ListTable(Listener& listener, QWidget* parent);

    // The editor of the cell that is edited, null without one.
    [[nodiscard]] QWidget* Editor(QModelIndex const& index) const { return indexWidget(index); }
    // Gives cells that height.
    void SetRowHeight(int height);
    // Brings the scroll bars up to date with the rows.
    void LayOut();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void currentChanged(QModelIndex const& current, QModelIndex const& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    Listener& m_listener;
};

} // namespace paramdb::qt
