// Everything that a Windows program needs for the controls, in one object.
//
//     int WINAPI wWinMain(...) {
//         paramdb::win32::EnableHighDpi(); // screen.h; or a line in the manifest
//         paramdb::win32::Views views;
//         ... the program's windows and its message loop ...
//     }
//
// While it lives, the controls have the colours and letters of the desktop (theme.h), their posted messages
// arrive (event_loop.h), a dialog that is displayed gets its window (dialog_view.h), and dialogs take their
// keys in every message loop of the thread. A program that draws dialogs itself leaves this object out and
// makes an EventLoop. Make it on the thread of the windows before the first control; one at a time.
//
// Start reading at list_view.h, combo_view.h and dialog_view.h; native_window.h tells how a window of the
// host gets the messages of the controls.
#pragma once

#include <paramdb/platform/control/dialog3d.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/views/win32/event_loop.h>

namespace paramdb::win32 {

class PARAMDB_VIEWS_API Views {
public:
    Views();
    Views(Views const&) = delete;
    Views& operator=(Views const&) = delete;
    ~Views();

private:
    EventLoop m_event_loop;
    HHOOK m_hook;
    CDialog3d::Presenter m_presenter_before;
};

} // namespace paramdb::win32
