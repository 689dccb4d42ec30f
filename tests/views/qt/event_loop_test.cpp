#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/framework/wnd.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/views/qt/event_loop.h>

#include <QtWidgets/QApplication>
#include <gtest/gtest.h>
#include <stdexcept>
#include <tuple>
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
        if (second > 0)
            PostMessageW(WM_USER, first + 1, second - 1);
        if (second < 0)
            throw std::runtime_error("no");
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

TEST(QtEventLoop, DeliversWhatComesMeanwhile) {
    EventLoop const loop;
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 10, 3);
    receiver.PostMessageW(WM_USER, 20, 1);
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{10, 20, 11, 21, 12, 13}));
    EXPECT_EQ(CMessageQueue::Size(), 0U);
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

TEST(QtEventLoop, AnExceptionBecomesAMessage) {
    std::vector<std::tuple<int, int, std::wstring>> messages;
    auto const before = PrWin::SetSink([&](int category, int style, std::wstring const& text) {
        messages.emplace_back(category, style, text);
    });
    EventLoop const loop;
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 1, -1);
    receiver.PostMessageW(WM_USER, 2);
    QApplication::processEvents();
    QApplication::processEvents();
    PrWin::SetSink(before);
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{1, 2}));
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0], std::tuple(8, 3, std::wstring(L"no\n")));
}
