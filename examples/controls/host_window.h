// The window of a host that has all four controls: a combo for the test step, a check list of instrument
// parameters, a range grid for modes and channels, and a button that opens the key dialog.
#pragma once

#include <paramdb/controls.h>
#include <paramdb/views/qt/combo_view.h>
#include <paramdb/views/qt/dialog_view.h>
#include <paramdb/views/qt/list_view.h>

#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>

// What the controls report to: a window without pixels that takes their messages.
class HostFrame : public CWnd {
public:
    explicit HostFrame(std::function<void()> on_change) : m_on_change(std::move(on_change)) { Create(); }

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

private:
    std::function<void()> m_on_change;
};

class HostWindow : public QWidget {
public:
    // The tables must be loaded.
    HostWindow();

    // Opens the key dialog and returns its window.
    paramdb::qt::DialogView* EditKey();

    paramdb::qt::ListView& CheckList() { return *m_check_list; }
    paramdb::qt::ListView& Grid() { return *m_grid_view; }
    paramdb::qt::ComboView& Combo() { return *m_combo_view; }

private:
    void FillGrid();
    void ShowState();

    // Frames first: a control goes before the window it stands in.
    HostFrame m_frame;
    CClavisComboBox m_modes;
    CClavisListCtrl m_parameters;
    CPentadRangeSelectCtrl m_grid;
    CPentadDialog m_dialog;
    CClavis m_key;

    paramdb::qt::ComboView* m_combo_view;
    paramdb::qt::ListView* m_check_list;
    paramdb::qt::ListView* m_grid_view;
    QLabel* m_state;
};
