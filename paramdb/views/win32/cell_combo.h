// The combo that is open in a cell of a list: the system's own, laid over the cell, one at a time.
//
// It opens its list at once and is over when that closes; what was picked is asked for then. A helper of the
// list's view, which is the parent and hears of the combo's notifications first.
#pragma once

#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/window_types.h>

#include <map>
#include <optional>
#include <vector>

namespace paramdb::win32 {

class CellCombo {
public:
    CellCombo() = default;
    CellCombo(CellCombo const&) = delete;
    CellCombo& operator=(CellCombo const&) = delete;
    ~CellCombo() { Close(); }

    // Opens at a place of the list, with these choices and that number selected. It has the keyboard then.
    bool Open(HWND list, RECT const& place, std::map<int, CString> const& choices, int selected,
              CString const& name);
    // Takes it away; the keyboard goes back to the list if the combo has it.
    void Close();

    [[nodiscard]] bool IsOpen() const noexcept { return m_window != nullptr; }
    [[nodiscard]] HWND GetWindow() const noexcept { return m_window; }

    // A notification (CBN_...) of the combo. True if it is over: ask for what was picked and close it, but
    // not before the notification has been answered.
    bool OnNotify(int code);
    // The number that was picked, if any.
    [[nodiscard]] std::optional<int> Picked() const;

private:
    HWND m_window = nullptr;
    std::vector<int> m_numbers; // of the entries
    bool m_picked = false;
};

// How high a combo with the letters of a window is at least.
[[nodiscard]] int LeastComboHeight(HWND window);
// Makes a combo box as high as that at its place; its list opens downwards.
void FitCombo(HWND combo, RECT const& place, int entries);

} // namespace paramdb::win32
