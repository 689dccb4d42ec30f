// Posted messages of the controls, delivered by Qt's event loop.
//
//     QApplication application(argc, argv);
//     paramdb::qt::EventLoop loop; // from here on CWnd::PostMessageW arrives
//
// One at a time, on the thread of the windows, while there is a QCoreApplication.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/views/qt/soon.h>

#include <functional>

namespace paramdb::qt {

class PARAMDB_VIEWS_API EventLoop {
public:
    EventLoop();
    EventLoop(EventLoop const&) = delete;
    EventLoop& operator=(EventLoop const&) = delete;
    ~EventLoop(); // puts back who was woken before; messages that wait stay

private:
    void Drain();

    Soon m_drain;
    std::function<void()> m_before;
};

// Calls into a control from an event of Qt. No exception may pass through Qt, so one that a host's own
// function throws ends here, as a message of category 8 and style 3 with its what().
PARAMDB_VIEWS_API void CallControl(std::function<void()> const& call);

} // namespace paramdb::qt
