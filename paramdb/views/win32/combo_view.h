// A window for a combo control.
//
//     CClavisComboBox modes;
//     paramdb::win32::ComboView view;
//     view.Create(host, {10, 10, 210, 34});
//     view.SetCombo(&modes);
//
// The window is the system's drop-down list. It shows the rows and the selected one, and has the control
// choose what the user picks (CComboBox::Choose): with the closed list at once, with the open one when it is
// closed; escape and a click elsewhere leave everything as it was. Typing goes to the row that begins so. The
// control may be filled anew meanwhile, and control, view and window may go in any order.
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/views/win32/life.h>
#include <paramdb/views/win32/message_tap.h>

namespace paramdb::win32 {

class PARAMDB_VIEWS_API ComboView : private CWndView, private MessageListener {
public:
    ComboView() = default;
    ComboView(ComboView const&) = delete;
    ComboView& operator=(ComboView const&) = delete;
    ~ComboView(); // takes its window along if it has made it

    // Makes the window within a parent, as high as the place. False if there is one already.
    bool Create(HWND parent, RECT const& place, int id = 0);
    // Uses a combo box of the host that offers a list and takes no text (CBS_DROPDOWNLIST, unsorted). False
    // for any other window or if there is one already.
    bool TakeOver(HWND window);
    // Null once it is gone.
    [[nodiscard]] HWND GetWindow() const noexcept { return m_window; }

    // Shows that combo, and no longer the one before; none for null.
    void SetCombo(CComboBox* combo);
    [[nodiscard]] CComboBox* GetCombo() const noexcept { return m_combo; }

    // The name for screen readers, in place of the control's title: a label before the combo that takes no
    // room. Without either they take what stands there.
    void SetName(CString const& name);

    // Brings the view up to date at once with what the control has told; it does so by itself with the next
    // message.
    void Update();

private:
    void OnCreated() override { Later(); }
    void OnDestroyed() override { Later(); }
    void OnControlGone() override;
    void OnVisibilityChanged() override;
    void OnEnabledChanged() override;
    void OnTitleChanged() override;
    void OnContentChanged() override { Later(true); }
    void OnItemChanged(int item, int column) override;
    void OnSelectionChanged() override { Later(); }

    std::optional<LRESULT> OnWindowMessage(HWND window, UINT message, WPARAM first, LPARAM second) override;
    void OnNotify(int code);
    void OnWindowGone();

    void Connect();
    void Disconnect();
    [[nodiscard]] bool IsStale() const noexcept { return m_stale; }
    void Later(bool rows = false);
    void Fill();
    void Fit();
    void ShowSelection();
    void Pick();
    LRESULT Ask(UINT message, WPARAM first = 0, LPARAM second = 0) const;

    HWND m_window = nullptr;
    HWND m_label = nullptr;
    CComboBox* m_combo = nullptr;
    CString m_name;
    int m_height = 0; // of the closed combo
    bool m_made = false;
    bool m_own_font = false;
    bool m_stale = false;
    bool m_rows_stale = false;
    bool m_accepted = false; // what the open list was left with counts
    Life m_life;
    MessageTap m_tap{*this};
    MessageTap m_parent_tap{*this};
};

} // namespace paramdb::win32
