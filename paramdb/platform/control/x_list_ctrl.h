// A list in columns: cells with texts and colours, check boxes and combos in cells, rows that can be
// disabled.
//
//     CXListCtrl list;
//     list.InsertColumn(0, L"Section", LVCFMT_LEFT, 90);
//     int const row = list.InsertItem(list.GetItemCount(), L"Ramp");
//     list.SetItemData(row, 4);
//     list.SetCheckbox(row, 0, true);
//
// Rows and columns count from 0. An operation on a row or column that is not there changes nothing and
// answers false, -1, 0 or an empty text. Many items are added quickest between SetBatchInsertMode(true) and
// (false). Rows are found in constant time, adding at either end takes constant time too.
//
// Views draw the cells with the metrics that are set here, or set their own, and call the functions under
// "the user". The list answers where things are (GetSubItemRect, HitTest) in pixels of its window: the
// headings above, the rows below, moved by the scroll position.
#pragma once

#include <paramdb/platform/control/x_list_cells.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/wnd.h>

#include <deque>
#include <functional>

class PARAMDB_API CXListCtrl : public CWnd {
public:
    // Columns. A width below 0 is that of the heading.
    int InsertColumn(int column, wchar_t const* heading, int format = LVCFMT_LEFT, int width = -1);
    bool DeleteColumn(int column);
    // Removes all columns and, as no cell is left, all items.
    bool DeleteAllColumns();
    [[nodiscard]] int GetColumnCount() const noexcept { return static_cast<int>(m_columns.size()); }
    // The column for a view; it must be there.
    [[nodiscard]] CXListColumn const& GetColumn(int column) const {
        return m_columns.at(static_cast<std::size_t>(column));
    }
    bool SetColumnWidth(int column, int width);
    [[nodiscard]] int GetColumnWidth(int column) const noexcept;
    // Makes a column as wide as its widest cell or its heading wants; every column for -1.
    void AutosizeColumnWidth(int column = -1);

    // Items. A position past the end is the end; the result is the row, -1 for a position below 0. The text
    // goes into column 0.
    int InsertItem(int item, wchar_t const* text, COLORREF text_color = XDefaultColor,
                   COLORREF background_color = XDefaultColor);
    // The same with what the mask names of LVIF_TEXT and LVIF_PARAM; lParam is the item's data.
    int InsertItem(LVITEMW const* item);
    bool DeleteItem(int item);
    bool DeleteAllItems();
    [[nodiscard]] int GetItemCount() const noexcept { return static_cast<int>(m_rows.size()); }
    // While it is on, views hear nothing of added and changed items; when it is turned off, once.
    void SetBatchInsertMode(bool on);

    // Text and colours of a cell; without colours it gets those that everything has.
    bool SetItemText(int item, int column, wchar_t const* text, COLORREF text_color = XDefaultColor,
                     COLORREF background_color = XDefaultColor);
    [[nodiscard]] CString GetItemText(int item, int column) const;
    // False, and nothing handed over, on a miss. XDefaultColor where the cell has no colour of its own.
    bool GetItemColors(int item, int column, COLORREF& text_color, COLORREF& background_color) const noexcept;
    // Colours all cells of a row.
    bool SetRowColors(int item, COLORREF text_color, COLORREF background_color);

    // A number or a pointer of the host's for each item; 0 and null at first and on a miss.
    bool SetItemData(int item, std::uint64_t data) noexcept;
    [[nodiscard]] std::uint64_t GetItemData64(int item) const noexcept;
    [[nodiscard]] void* GetItemDataPtr(int item) const noexcept;

    // A disabled row takes no clicks, checks or choices. False on a miss.
    bool SetEnabled(int item, bool enable);
    [[nodiscard]] bool GetEnabled(int item) const noexcept;

    // Check boxes. SetCheckbox gives a cell its box too; -1 takes it away. GetCheckbox is 1, 0, or -1 without
    // one.
    bool SetCheckbox(int item, int column, int state);
    [[nodiscard]] int GetCheckbox(int item, int column) const noexcept;
    [[nodiscard]] int CountCheckedItems(int column = 0) const noexcept;
    // The box in a heading: none, one that is off or on, or one that follows the boxes below it.
    enum HeaderCheck : int { no_header_check = 0, header_off = 1, header_on = 2, header_follows = 3 };
    bool SetHeaderCheckedState(int column, int state);
    [[nodiscard]] int GetHeaderCheckedState(int column) const noexcept;
    // What a view draws in a heading: -1 no box, 0 off, 1 on, 2 some of the boxes below it are on.
    [[nodiscard]] int GetHeaderMark(int column) const noexcept;

    // Combos. The cell offers the texts of the map, which is not copied and must stay while the cell has it,
    // and shows the text of the selected number, none if the map lacks it. Numbers are looked up when they
    // are needed: the map may change.
    bool SetComboBox(int item, int column, std::map<int, CString> const& choices, int selected);
    bool RemoveComboBox(int item, int column);
    [[nodiscard]] std::map<int, CString> const* GetComboBox(int item, int column) const noexcept; // or null
    // The selected number, -1 without a combo.
    [[nodiscard]] int GetComboCurSel(int item, int column) const noexcept;
    // What is called when the user has chosen in a combo, with row and column; empty for nothing.
    using ChangeCallback = std::function<void(int item, int column)>;
    void SetChangeCallback(ChangeCallback callback) { m_change_callback = std::move(callback); }

    // Bits LVS_EX_...; the first mask tells which bits to take over, 0 all. The result is what was before.
    UINT SetExtendedStyle(UINT style, UINT mask = 0);
    [[nodiscard]] UINT GetExtendedStyle() const noexcept { return m_extended_style; }

    // Where things are. The rectangle of a cell, also of one out of sight; false on a miss.
    bool GetSubItemRect(int item, int column, CRect& rect) const noexcept;
    // The row at a point, or -1. The result also stands in `hit`, with the column and flags:
    // LVHT_ONITEMSTATEICON for the check box, LVHT_ONITEMLABEL anywhere else in a cell, otherwise where the
    // point lies beside the cells.
    int HitTest(LVHITTESTINFO* hit) const noexcept;
    struct Metrics {
        int row_height = 17;
        int header_height = 21;
        int box_width = 18;   // of a check box, from the left of its cell
        int cell_margin = 12; // of a cell beside its text, both sides together
        CSize page{320, 240}; // the visible part of the window
    };
    void SetMetrics(Metrics const& metrics);
    [[nodiscard]] Metrics const& GetMetrics() const noexcept { return m_metrics; }
    // How far the content is moved to the left and up; brought into what there is.
    void SetScrollPos(CPoint position);
    [[nodiscard]] CPoint GetScrollPos() const noexcept { return m_scroll; }
    // The size of all cells together.
    [[nodiscard]] CSize GetContentSize() const noexcept;
    // Scrolls as little as needed to show the row.
    bool EnsureVisible(int item);

    // The row that the keyboard works on, or -1.
    [[nodiscard]] int GetFocusItem() const noexcept { return m_focus_item; }
    bool SetFocusItem(int item);

    // The user, as a view has seen him. Flags are MK_..., keys VK_....
    void Click(UINT flags, CPoint point) { OnLButtonDown(flags, point); }
    LRESULT ClickColumn(int column) { return OnColumnClick(column); }
    void Key(UINT key) { OnKeyDown(key); }
    // Switches the check box of an enabled row. False if there is none.
    bool ToggleCheckbox(int item, int column);
    // Selects a number of the combo of an enabled row, shows its text and runs the change callback. False,
    // and nothing happens, if the combo does not offer it.
    bool ChooseInCombo(int item, int column, int number);

protected:
    // A check box has another state than before, whoever has changed it.
    virtual void OnItemStateChange(int item, int column, unsigned int state);
    // The base takes the keyboard to the row and switches the check box under the point.
    virtual void OnLButtonDown(UINT flags, CPoint point);
    // The base switches the box in the heading and with it those of the enabled rows below. The result is 0.
    virtual LRESULT OnColumnClick(int column);
    // The base moves from row to row, past disabled ones, with the arrows, page keys, home and end, and
    // switches the first check box of the row with the space bar.
    virtual void OnKeyDown(UINT key);
    void OnDestroy() override; // removes all columns and items
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

    // Whether a click anywhere in a row switches its first check box, not only one on the box itself.
    bool m_check_on_click = false;

private:
    [[nodiscard]] CXListRow* Row(int item) noexcept;
    [[nodiscard]] CXListRow const* Row(int item) const noexcept;
    [[nodiscard]] CXListColumn* Column(int column) noexcept;
    [[nodiscard]] CXListCell* Cell(int item, int column) noexcept;
    [[nodiscard]] CXListCell const* Cell(int item, int column) const noexcept;
    [[nodiscard]] int FirstCheckbox(int item) const noexcept;
    [[nodiscard]] std::int64_t LeftOf(int column) const noexcept;
    [[nodiscard]] int NearestEnabled(int item, int direction) const noexcept;
    [[nodiscard]] int RowOfKey(UINT key) const noexcept;
    int Insert(int item, wchar_t const* text, COLORREF text_color, COLORREF background_color,
               std::uint64_t data);
    void CheckColumn(int column, int state);
    void KeepScrollInside();
    void TellItem(int item, int column);
    void TellContent();
    void TellHeader(int column);

    std::vector<CXListColumn> m_columns;
    std::deque<CXListRow> m_rows;
    ChangeCallback m_change_callback;
    UINT m_extended_style = 0;
    Metrics m_metrics;
    CPoint m_scroll;
    int m_focus_item = -1;
    bool m_batch = false;
    bool m_changed_in_batch = false;
};
