// A window of the host among those of the controls.
//
//     paramdb::win32::NativeWindow frame(host);   // a HWND
//     CPentadDialog dialog(&frame);
//     editor.Create(&frame, 3000);
//
// What a control sends or posts to it reaches the host's window procedure, with the same number and the same
// parameters: WM_PENTADCTRL_SELCHANGED, which RegisterWindowMessageW gives the host by its name, messages
// that the host has set itself, and WM_COMMAND with the id of a combo. What is posted comes through the
// message loop of the thread (event_loop.h). Where a message names a control's window, the host gets the
// system's window that shows it, null if none does.
//
// It follows the life of the host's window, and dialogs on it stand before that. For the thread of the
// windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/wnd.h>
#include <paramdb/views/win32/message_tap.h>

namespace paramdb::win32 {

class PARAMDB_VIEWS_API NativeWindow : public CWnd, private MessageListener {
public:
    explicit NativeWindow(HWND host);

    // Null once it is gone.
    [[nodiscard]] HWND GetHost() const noexcept { return m_tap.GetWindow(); }

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

private:
    std::optional<LRESULT> OnWindowMessage(HWND window, UINT message, WPARAM first, LPARAM second) override;

    MessageTap m_tap{*this};
};

// Whether a message is on its way from a control to the host, for taps on the host's window: it is not one of
// the system's own notifications.
[[nodiscard]] bool IsFromControl() noexcept;

// Which window of the system shows a control. Views say so for as long as they do; null without one.
void SetShownIn(CWnd const& control, HWND window);
void ForgetShown(HWND window);
[[nodiscard]] PARAMDB_VIEWS_API HWND ShownIn(CWnd const* control);

} // namespace paramdb::win32
