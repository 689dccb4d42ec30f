// Hands and eyes for the native views: real input of mouse and keyboard, and windows as the system has them.
#pragma once

#include <paramdb/views/win32/combo_view.h>
#include <paramdb/views/win32/dialog_view.h>
#include <paramdb/views/win32/list_view.h>
#include <paramdb/views/win32/views.h>

#include <optional>
#include <tests/views/suites/view_driver.h>

// Takes all messages that wait, and those that they bring.
void TakeMessages();

class NativeDriver : public ViewDriver {
public:
    NativeDriver();
    ~NativeDriver() override;

    // The window in which everything stands, and the list's window.
    [[nodiscard]] HWND Frame() const { return m_frame; }
    [[nodiscard]] HWND ListWindow() const { return m_list ? m_list->GetWindow() : nullptr; }
    [[nodiscard]] paramdb::win32::ListView& View() { return *m_list; }

    void Show(CXListCtrl& list, CSize size) override;
    void Show(CComboBox& combo) override;
    void Drop() override;
    void Resize(CSize size) override;
    void Settle() override { TakeMessages(); }

    void Focus() override;
    void FocusElsewhere() override;
    bool IsVisible() override;
    bool IsEnabled() override;
    std::string Name() override;

    void Press(Key key, Held held) override;
    void Type(std::string const& letters) override;

    int Rows() override;
    int Columns() override;
    std::string Text(int row, int column) override;
    std::string Heading(int column) override;
    int ColumnWidth(int column) override;
    int Check(int row) override;
    std::pair<int, int> Current() override;
    CRect Cell(int row, int column) override;
    CRect RowsInSight() override;
    CPoint Scroll() override;
    void ScrollTo(CPoint position) override;
    void DragColumn(int column, int width) override;
    void Click(CPoint point, Held held) override;
    void DoubleClick(CPoint point) override;
    void RightClick(CPoint point) override;
    void ClickHeading(int column) override;
    COLORREF Pixel(CPoint point) override;
    COLORREF Color(Shade shade) override;

    bool IsOpen() override;
    std::vector<std::string> Offered() override;
    std::string Chosen() override;
    void ClickOffered(int index) override;
    void LeaveCombo() override;

    bool HasWindow(CDialog const& dialog) override;
    void UseList(CDialog const& dialog, int id) override;
    std::string Title(CDialog const& dialog) override;
    std::string ButtonText(CDialog const& dialog, int id) override;
    CRect Item(CDialog const& dialog, int id) override;
    CSize Size(CDialog const& dialog) override;
    void Enlarge(CDialog const& dialog, CSize by) override;
    void ClickButton(CDialog const& dialog, int id) override;
    void Close(CDialog const& dialog) override;
    void TakeAway(CDialog const& dialog) override;

    int RandomSteps() const override { return 40; }

private:
    void Open(CSize size);
    [[nodiscard]] HWND Shown() const;
    [[nodiscard]] HWND Combo() const;
    [[nodiscard]] HWND Header() const;

    // First, so that they go last.
    std::optional<paramdb::win32::Views> m_views;
    HWND m_frame = nullptr;
    HWND m_elsewhere = nullptr;
    std::unique_ptr<paramdb::win32::ListView> m_made;
    std::unique_ptr<paramdb::win32::ComboView> m_combo;
    paramdb::win32::ListView* m_list = nullptr; // the one that was made, or a dialog's
};
