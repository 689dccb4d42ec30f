// Everything that a Qt program needs for the controls, in one object.
//
//     int main(int argc, char** argv) {
//         QApplication application(argc, argv);
//         paramdb::qt::Views views;
//         ...
//         return QApplication::exec();
//     }
//
// While it lives, the controls have the colours and letters of the application (theme.h), their posted
// messages arrive (event_loop.h), and a dialog that is displayed gets its window (dialog_view.h). A program
// that draws dialogs itself leaves this object out and makes an EventLoop. Make it behind the QApplication
// and before the first control; one at a time.
//
// Start reading at list_view.h, combo_view.h and dialog_view.h.
#pragma once

#include <paramdb/platform/control/dialog3d.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/views/qt/event_loop.h>

namespace paramdb::qt {

class PARAMDB_VIEWS_API Views {
public:
    Views();
    Views(Views const&) = delete;
    Views& operator=(Views const&) = delete;
    ~Views();

private:
    EventLoop m_event_loop;
    CDialog3d::Presenter m_presenter_before;
};

} // namespace paramdb::qt
