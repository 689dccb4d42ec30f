// A window for a list control: the check list, the key editor, the range grid, and any other CXListCtrl.
//
//     CClavisListCtrl channels;
//     ...
//     paramdb::win32::ListView view;
//     view.Create(host, {10, 10, 210, 310});
//     view.SetList(&channels);
//
// The window is the system's list view with rows that are asked for when they are drawn. The view draws what
// the control holds, tells it the sizes it draws with, and hands clicks, headings and choices to it. The
// control may be filled, destroyed and made anew meanwhile, and control, view and window may go in any order,
// also from within what they tell the host.
//
// The keyboard: the arrows, Home, End and the page keys move; the space bar clicks the cell, or opens its
// combo as F2, F4 and Alt with Down do; with Ctrl or Shift it is a click with that key, and so is a movement
// with Shift where there are no check boxes. Ctrl+A clicks the heading of the column. Typing goes to the next
// row that begins with what is typed, or into the combo of the row.
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/views/win32/cell_combo.h>
#include <paramdb/views/win32/life.h>
#include <paramdb/views/win32/message_tap.h>

#include <vector>

namespace paramdb::win32 {

class PARAMDB_VIEWS_API ListView : private CWndView, private MessageListener {
public:
    ListView();
    ListView(ListView const&) = delete;
    ListView& operator=(ListView const&) = delete;
    ~ListView(); // takes its window along if it has made it

    // Makes the window within a parent. False if there is one already.
    bool Create(HWND parent, RECT const& place, int id = 0);
    // Uses a list view of the host, as of a dialog's template: in report style and without data of its own
    // (LVS_REPORT, LVS_OWNERDATA). False for any other window or if there is one already.
    bool TakeOver(HWND window);
    // Null once it is gone.
    [[nodiscard]] HWND GetWindow() const noexcept { return m_window; }

    // Shows that list, and no longer the one before; none for null.
    void SetList(CXListCtrl* list);
    [[nodiscard]] CXListCtrl* GetList() const noexcept { return m_list; }

    // The name for screen readers, in place of the control's title or first heading.
    void SetName(CString const& name);

    // The column of the cell that has the keyboard.
    [[nodiscard]] int GetColumn() const noexcept { return m_column; }
    // The combo that is open in a cell, null without one.
    [[nodiscard]] HWND GetCombo() const noexcept { return m_combo.GetWindow(); }

    // Brings the view up to date at once with what the control has told; it does so by itself with the next
    // message.
    void Update();

private:
    struct Place {
        int item = -1;
        int column = -1;
    };

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

    // From the system: of the window, and of its parent what concerns the window.
    std::optional<LRESULT> OnWindowMessage(HWND window, UINT message, WPARAM first, LPARAM second) override;
    std::optional<LRESULT> OnNotify(NMHDR const& header);
    LRESULT OnHeaderNotify(WPARAM first, LPARAM second);
    std::optional<LRESULT> OnCommand(WPARAM first, LPARAM second);
    std::optional<LRESULT> OnKey(UINT key, bool alt);
    std::optional<LRESULT> OnCharacter(WPARAM unit);
    void OnPress(POINT point, UINT flags);
    void OnRelease();
    void OnHeading(int column);
    void OnEnter();
    void OnLeave(HWND next);
    void OnComboOver();
    void OnWindowGone();

    // Following the control.
    void Connect();
    void Disconnect();
    [[nodiscard]] bool IsStale() const noexcept { return m_stale; }
    static UINT UpdateMessage();
    void Later();
    void ReadWidths();
    void SyncStyle();
    void SyncFont();
    void SyncColumns();
    void SyncRows();
    void SyncWidths();
    void SyncMetrics();
    void SyncScroll();
    void SyncCombo();
    void FollowScroll();
    void ShowCurrent(bool scroll);
    void ShowColumn(int item);
    void Repaint(int item);

    // Drawing.
    void Answer(LVITEMW& item) const;
    [[nodiscard]] LRESULT OnDraw(NMCUSTOMDRAW const& draw) const;
    void DrawRow(HDC context, int item) const;
    void DrawCell(HDC context, RECT const& cell, Place place) const;
    [[nodiscard]] LRESULT OnHeaderDraw(NMCUSTOMDRAW const& draw) const;
    [[nodiscard]] bool ShowsWholeRow() const;

    // The keyboard.
    [[nodiscard]] bool IsGrid() const;
    [[nodiscard]] bool HasBoxes(int item) const;
    [[nodiscard]] bool HasKeyboard() const;
    void Move(UINT key, bool shift);
    void MoveToText(int item);
    bool MoveColumn(int step);
    void ClickCurrent(UINT flags);
    void PressSpace(UINT flags);
    [[nodiscard]] Place ComboInRow() const;
    bool OpenCombo(Place place);
    [[nodiscard]] int Find(NMLVFINDITEMW const& find) const;

    LRESULT Ask(UINT message, WPARAM first = 0, LPARAM second = 0) const;
    [[nodiscard]] HWND Header() const;
    [[nodiscard]] int RowHeight() const;
    [[nodiscard]] RECT CellRect(Place place) const;
    [[nodiscard]] CPoint WindowScroll() const;

    HWND m_window = nullptr;
    CXListCtrl* m_list = nullptr;
    CString m_name;
    std::vector<int> m_widths; // of the columns as the control or the user wants them
    int m_column = 0;          // of the cell that has the keyboard
    int m_current = -1;        // the item that is shown with the keyboard
    Place m_pressed;           // whose combo opens when the button goes up
    Place m_combo_place;
    RECT m_combo_cell{};
    bool m_made = false;     // the window is the view's own
    bool m_own_font = false; // and so is its font
    bool m_own = false;      // the view itself is changing the control or the window
    bool m_clicking = false;
    bool m_stale = false;             // there is an update to come
    bool m_follow = false;            // the control has scrolled meanwhile
    bool m_reveal = false;            // the place of the keyboard is to be scrolled to
    int m_changes = 0;                // of single items since the last update
    HIMAGELIST m_row_room = nullptr;  // gives the rows their height
    HIMAGELIST m_mark_room = nullptr; // keeps a place for the mark of a heading
    CellCombo m_combo;
    Life m_life;
    MessageTap m_tap{*this};
    MessageTap m_parent_tap{*this};
};

} // namespace paramdb::win32
