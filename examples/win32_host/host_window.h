// The window of a host with all controls: a combo for the test step, a key editor, a check list of instrument
// parameters, a range grid, and a button that opens the key dialog. What is selected stands below.
#pragma once

#include <paramdb/controls.h>
#include <paramdb/views/win32/combo_view.h>
#include <paramdb/views/win32/dialog_view.h>
#include <paramdb/views/win32/list_view.h>
#include <paramdb/views/win32/native_window.h>

#include <memory>

class HostWindow {
public:
    // The tables must be loaded.
    HostWindow();
    HostWindow(HostWindow const&) = delete;
    HostWindow& operator=(HostWindow const&) = delete;
    ~HostWindow();

    [[nodiscard]] HWND Window() const { return m_window; }
    // Opens the key dialog and returns its window.
    paramdb::win32::DialogView* EditKey(CClavis const& key);

    // For the pictures.
    [[nodiscard]] CPentadCtrl& Editor() { return m_controls->editor; }
    [[nodiscard]] CClavisListCtrl& Parameters() { return m_controls->parameters; }
    [[nodiscard]] paramdb::win32::ListView& GridView() { return m_grid_view; }
    [[nodiscard]] CPentadDialog& Dialog() { return m_controls->dialog; }

private:
    // What the views show, without a pixel of its own. A control goes before the window that it stands in.
    struct Controls {
        explicit Controls(HWND window);

        paramdb::win32::NativeWindow frame;
        CClavisComboBox modes;
        CPentadCtrl editor;
        CClavisListCtrl parameters;
        CPentadRangeSelectCtrl grid;
        CPentadDialog dialog;
    };

    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM first, LPARAM second);
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second);
    void MakeViews();
    void Arrange();
    void SetFonts();
    void ShowState();

    HWND m_window = nullptr;
    HWND m_label = nullptr;
    HWND m_button = nullptr;
    HWND m_state = nullptr;
    CString m_last; // what was chosen last
    std::unique_ptr<Controls> m_controls;
    paramdb::win32::ComboView m_modes_view;
    paramdb::win32::ListView m_editor_view;
    paramdb::win32::ListView m_parameters_view;
    paramdb::win32::ListView m_grid_view;
};
