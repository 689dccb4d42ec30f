// A window for a list control: the check list, the key editor, the range grid, and any other CXListCtrl.
//
//     CClavisListCtrl channels;
//     ...
//     paramdb::qt::ListView view;
//     view.SetList(&channels);
//     layout->addWidget(&view);
//
// The view draws what the control holds, tells it the sizes it draws with, and hands clicks, headings and
// choices to it. The control may be filled, destroyed and made anew meanwhile, and may die first.
//
// The keyboard: the arrows, Home, End and the page keys move; the space bar clicks the cell, or opens its
// combo as F2, F4 and Alt with Down do; with Ctrl or Shift it is a click with that key, and so is a movement
// with Shift where there are no check boxes. Ctrl+A clicks the heading of the column.
//
// Typing, or Ctrl+F, opens a line above the list and narrows the list to the names that contain what is
// typed; the keyboard's row becomes the first that begins with it. The escape key shows all again. A heading
// then switches the boxes in sight alone. A range grid is not narrowed, since ranges run over what would be
// hidden: there the line finds the next name in the column, and the return key the one after that. Typing in
// a cell with a combo narrows the combo.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/views/qt/filter_line.h>
#include <paramdb/views/qt/list_delegate.h>
#include <paramdb/views/qt/list_model.h>
#include <paramdb/views/qt/list_table.h>
#include <paramdb/views/qt/soon.h>

#include <QtWidgets/QWidget>
#include <vector>

namespace paramdb::qt {

class PARAMDB_VIEWS_API ListView : public QWidget, private CWndView, private ListTable::Listener {
public:
    explicit ListView(QWidget* parent = nullptr);
    ListView(ListView const&) = delete;
    ListView& operator=(ListView const&) = delete;
    ~ListView() override;

    // Shows that list, and no longer the one before; none for null.
    void SetList(CXListCtrl* list);
    [[nodiscard]] CXListCtrl* GetList() const noexcept { return m_list; }

    // The name for screen readers, in place of the control's title or first heading.
    void SetName(QString const& name);

    [[nodiscard]] ListTable& Table() noexcept { return *m_table; }
    [[nodiscard]] QLineEdit& FilterEdit() noexcept { return m_filter->Edit(); }
    void OpenFilter();
    void CloseFilter();

    // Brings the view up to date at once with what the control has told; it does so by itself with the next
    // event.
    void Update();

    [[nodiscard]] QSize sizeHint() const override;

private:
    // From the control.
    void OnCreated() override { Later(); }
    void OnDestroyed() override { Later(); }
    void OnControlGone() override;
    void OnVisibilityChanged() override;
    void OnEnabledChanged() override;
    void OnTitleChanged() override;
    void OnContentChanged() override;
    void OnItemChanged(int item, int column) override;
    void OnColumnsChanged() override;
    void OnHeaderChanged(int column) override;
    void OnSelectionChanged() override;
    void OnScrollChanged() override;

    // From the user.
    void OnPress(QModelIndex const& index, QPoint const& point, Qt::KeyboardModifiers keys) override;
    bool OnKey(QKeyEvent const& key) override;
    void OnCurrent(QModelIndex const& index) override;
    void OnSize() override;
    void OnHeading(int column);
    void OnFilterText(QString const& text);
    bool OnFilterKey(QKeyEvent const& key);
    void OnFocus(QWidget const* now);

    [[nodiscard]] bool IsGrid() const;
    [[nodiscard]] bool HasBoxes(int item) const;
    [[nodiscard]] QModelIndex Current() const { return m_table->currentIndex(); }
    void Later();
    [[nodiscard]] bool IsStale() const noexcept { return m_update.IsAsked(); }
    void ShowCurrent(bool scroll);
    void SyncMetrics();
    void SyncScroll();
    void FollowScroll();
    void SyncColumns();
    void Click(int item, int column, QPoint offset, UINT flags);
    void ClickCurrent(UINT flags);
    bool Move(int key);
    void MoveInShown(int key);
    void MoveToText(int item);
    bool MoveColumn(int step);
    void PressSpace(UINT flags);
    bool OpenCombo(QKeyEvent const* typed);
    void SwitchShown(int column);
    void Find(QString const& text, int from);

    CXListCtrl* m_list = nullptr;
    QString m_name;
    ListModel m_model;
    ListDelegate m_delegate;
    ListTable* m_table;
    FilterLine* m_filter;
    std::vector<int> m_widths; // of the columns as the control or the user wants them
    int m_column = 0;          // of the cell that has the keyboard
    bool m_own = false;        // the view itself is changing the control or the table
    bool m_clicking = false;
    Soon m_update{[this] { Update(); }};
    bool m_follow = false; // the control has scrolled meanwhile
    bool m_reveal = false; // the place of the keyboard is to be scrolled to
    int m_changes = 0;     // of single items since the last update
};

} // namespace paramdb::qt
