// The loop alone, for a program that draws its dialogs itself.
#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/framework/wnd.h>
#include <paramdb/views/qt/event_loop.h>

#include <QtWidgets/QApplication>
#include <gtest/gtest.h>
#include <vector>

using paramdb::qt::EventLoop;

namespace {

class Receiver : public CWnd {
public:
    Receiver() { Create(); }

    std::vector<WPARAM> heard;

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message != WM_USER)
            return CWnd::OnMessage(message, first, second);
        heard.push_back(first);
        return 0;
    }
};

} // namespace

TEST(QtEventLoop, DeliversInOrderWithTheNextEvent) {
    EventLoop const loop;
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 1);
    receiver.PostMessageW(WM_USER, 2);
    EXPECT_TRUE(receiver.heard.empty());
    QApplication::processEvents();
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{1, 2}));
}

TEST(QtEventLoop, DeliversWhatWasThereBefore) {
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 7);
    EventLoop const loop;
    QApplication::processEvents();
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{7}));
}

TEST(QtEventLoop, LeavesTheQueueAsItWas) {
    int woken = 0;
    auto const before = CMessageQueue::SetWakeUp([&] { ++woken; });
    Receiver receiver;
    { EventLoop const loop; }
    receiver.PostMessageW(WM_USER, 1);
    EXPECT_EQ(woken, 1);
    CMessageQueue::Clear();
    CMessageQueue::SetWakeUp(before);
}
