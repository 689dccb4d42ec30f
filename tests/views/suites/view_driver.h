// Hands and eyes of a user, for the tests that every kind of view has to pass. Each program of view tests has
// a driver for its own windows; the tests in this folder know nothing else.
//
// Rows and columns count from 0 as they are on the screen. Points are those of the control's own: pixels of
// the list's window, the headings included. Every doing lets everything come to rest before it returns.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/platform/framework/dialog.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Keys that are held during a press or a click.
struct Held {
    bool control = false;
    bool shift = false;
    bool alt = false;
};

enum class Key { up, down, left, right, page_up, page_down, home, end, space, enter, escape, tab, f2, f4, a };

class ViewDriver {
public:
    virtual ~ViewDriver() = default;

    // Shows a control in a window of that size, with a line beside it that can take the keyboard away; the
    // control has the keyboard. One control for each driver.
    virtual void Show(CXListCtrl& list, CSize size) = 0;
    virtual void Show(CComboBox& combo) = 0;
    // Takes the view away while the control stays.
    virtual void Drop() = 0;
    virtual void Resize(CSize size) = 0;
    virtual void Settle() = 0;

    virtual void Focus() = 0;
    virtual void FocusElsewhere() = 0;
    [[nodiscard]] virtual bool IsVisible() = 0;
    [[nodiscard]] virtual bool IsEnabled() = 0;
    // What a screen reader calls it.
    [[nodiscard]] virtual std::string Name() = 0;

    // The keyboard, wherever it is.
    virtual void Press(Key key, Held held = {}) = 0;
    virtual void Type(std::string const& letters) = 0;

    // The list.
    [[nodiscard]] virtual int Rows() = 0;
    [[nodiscard]] virtual int Columns() = 0;
    [[nodiscard]] virtual std::string Text(int row, int column) = 0;
    [[nodiscard]] virtual std::string Heading(int column) = 0;
    [[nodiscard]] virtual int ColumnWidth(int column) = 0;
    // Of the first column: 1, 0, or -1 without a box.
    [[nodiscard]] virtual int Check(int row) = 0;
    // The cell with the keyboard; -1, -1 for none.
    [[nodiscard]] virtual std::pair<int, int> Current() = 0;
    [[nodiscard]] virtual CRect Cell(int row, int column) = 0;
    // The part of the window that shows rows.
    [[nodiscard]] virtual CRect RowsInSight() = 0;
    [[nodiscard]] virtual CPoint Scroll() = 0;
    // Moves the scroll bars, as near to there as they go.
    virtual void ScrollTo(CPoint position) = 0;
    // Makes a column wider or narrower by its edge.
    virtual void DragColumn(int column, int width) = 0;
    virtual void Click(CPoint point, Held held = {}) = 0;
    virtual void DoubleClick(CPoint point) = 0;
    virtual void RightClick(CPoint point) = 0;
    virtual void ClickHeading(int column) = 0;
    // What is on the screen at a point, and the colours that the desktop has for such things.
    [[nodiscard]] virtual COLORREF Pixel(CPoint point) = 0;
    enum class Shade { paper, selected, selected_without_keyboard };
    [[nodiscard]] virtual COLORREF Color(Shade shade) = 0;

    // The combo that is open in a cell of the list, or the one that is shown.
    [[nodiscard]] virtual bool IsOpen() = 0;
    [[nodiscard]] virtual std::vector<std::string> Offered() = 0;
    [[nodiscard]] virtual std::string Chosen() = 0;
    virtual void ClickOffered(int index) = 0;
    // Closes it with the escape key and chooses nothing.
    virtual void LeaveCombo() = 0;

    // Dialogs. What is said of lists is then of the dialog's list.
    [[nodiscard]] virtual bool HasWindow(CDialog const& dialog) = 0;
    virtual void UseList(CDialog const& dialog, int id) = 0;
    [[nodiscard]] virtual std::string Title(CDialog const& dialog) = 0;
    [[nodiscard]] virtual std::string ButtonText(CDialog const& dialog, int id) = 0;
    // The place of an item within the dialog, and the size of its inside.
    [[nodiscard]] virtual CRect Item(CDialog const& dialog, int id) = 0;
    [[nodiscard]] virtual CSize Size(CDialog const& dialog) = 0;
    virtual void Enlarge(CDialog const& dialog, CSize by) = 0;
    virtual void ClickButton(CDialog const& dialog, int id) = 0;
    // The frame's own button.
    virtual void Close(CDialog const& dialog) = 0;
    // Somebody else takes the window away.
    virtual void TakeAway(CDialog const& dialog) = 0;

    // How many steps a test with hands at random takes: as many as there is time for.
    [[nodiscard]] virtual int RandomSteps() const = 0;
};

// That of the program. While it lives the program's views are ready, dialogs included.
std::unique_ptr<ViewDriver> MakeViewDriver();
