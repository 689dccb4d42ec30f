// A dialog in which a whole key is edited. It is not modal: the key comes through a callable.
//
//     CPentadDialog dialog(&frame);
//     dialog.set_target([&](CClavis const& key) { ... });
//     dialog.Display(key);
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/controls/pentad_ctrl.h>
#include <paramdb/platform/control/dialog3d.h>
#include <paramdb/platform/core/export.h>

#include <functional>

class PARAMDB_CONTROLS_API CPentadDialog : public CDialog3d {
public:
    static constexpr unsigned int Resource = 3002;
    static constexpr int ControlId = 3000; // of the key editor

    explicit CPentadDialog(CWnd* parent = nullptr) : CDialog3d(Resource, parent) {}

    // Who gets the finished key. Needed before OK is pressed.
    using Target = std::function<void(CClavis const& key)>;
    void set_target(Target target) { m_target = std::move(target); }

    // Shows the dialog with that key; nothing happens while it is shown.
    void Display(CClavis const& key);
    // The key as it stands in the dialog.
    [[nodiscard]] CClavis retrieve() const { return m_control.retrieve(); }

    // Which elements have a row and which cannot be edited; call before Display.
    void set_visible_mask(std::bitset<Clavis::ElementCount> mask) { m_control.set_visible_mask(mask); }
    void set_readonly_mask(std::bitset<Clavis::ElementCount> mask) { m_control.set_readonly_mask(mask); }

    // Hands the key to the target and closes. Throws std::bad_function_call without one, the dialog then
    // stays.
    void OnBnClickedOk();
    // Closes without a word.
    void OnBnClickedCancel();

    // The key editor, for views and for its further settings.
    [[nodiscard]] CPentadCtrl& control() { return m_control; }

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override { OnBnClickedOk(); }
    void OnCancel() override { OnBnClickedCancel(); }
    void OnDestroy() override;

private:
    Target m_target;
    CPentadCtrl m_control;
    bool m_is_shown = false;
};
