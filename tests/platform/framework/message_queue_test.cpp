#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/framework/wnd.h>

#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <tests/support/view_log.h>
#include <thread>

namespace {

class Receiver : public CWnd {
public:
    Receiver() { Create(); }
    std::vector<std::string> events;
    std::function<void(UINT)> action;

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message < WM_USER)
            return CWnd::OnMessage(message, first, second);
        events.push_back(std::to_string(message - WM_USER) + " " + std::to_string(first) + " " +
                         std::to_string(second));
        if (action)
            action(message);
        return 0;
    }
};

class MessageQueueTest : public testing::Test {
protected:
    MessageQueueTest() { CMessageQueue::Clear(); }
    ~MessageQueueTest() override {
        CMessageQueue::Clear();
        CMessageQueue::SetWakeUp({});
    }
};

TEST_F(MessageQueueTest, DeliversInOrder) {
    Receiver a;
    Receiver b;
    EXPECT_TRUE(a.PostMessageW(WM_USER + 1, 2, -3));
    EXPECT_TRUE(b.PostMessageW(WM_USER + 2));
    EXPECT_TRUE(CMessageQueue::Post(a.GetSafeHwnd(), WM_USER + 3, 0, 4));
    EXPECT_EQ(CMessageQueue::Size(), 3u);
    EXPECT_TRUE(a.events.empty());
    EXPECT_EQ(CMessageQueue::Dispatch(), 3u);
    EXPECT_EQ(a.events, (Events{"1 2 -3", "3 0 4"}));
    EXPECT_EQ(b.events, Events{"2 0 0"});
    EXPECT_EQ(CMessageQueue::Dispatch(), 0u);
}

TEST_F(MessageQueueTest, DropsWhatIsForADeadWindow) {
    Receiver a;
    {
        Receiver b;
        b.PostMessageW(WM_USER);
    }
    a.PostMessageW(WM_USER);
    a.DestroyWindow();
    EXPECT_FALSE(a.PostMessageW(WM_USER + 1));
    EXPECT_FALSE(CMessageQueue::Post(nullptr, WM_USER, 0, 0));
    a.Create();
    a.PostMessageW(WM_USER + 2);
    EXPECT_EQ(CMessageQueue::Size(), 3u);
    EXPECT_EQ(CMessageQueue::Dispatch(), 1u);
    EXPECT_EQ(a.events, Events{"2 0 0"});
    EXPECT_EQ(CMessageQueue::Size(), 0u);
}

TEST_F(MessageQueueTest, WhatIsPostedMeanwhileWaits) {
    Receiver a;
    a.action = [&](UINT message) {
        if (message == WM_USER)
            a.PostMessageW(WM_USER + 1);
    };
    a.PostMessageW(WM_USER);
    EXPECT_EQ(CMessageQueue::Dispatch(), 1u);
    EXPECT_EQ(CMessageQueue::Dispatch(), 1u);
    EXPECT_EQ(a.events, (Events{"0 0 0", "1 0 0"}));
}

TEST_F(MessageQueueTest, MayRunInsideItself) {
    Receiver a;
    a.action = [&](UINT message) {
        if (message == WM_USER) {
            EXPECT_EQ(CMessageQueue::Dispatch(), 2u);
        }
    };
    for (UINT i = 0; i < 3; ++i)
        a.PostMessageW(WM_USER + i);
    EXPECT_EQ(CMessageQueue::Dispatch(), 1u);
    EXPECT_EQ(a.events, (Events{"0 0 0", "1 0 0", "2 0 0"}));
}

TEST_F(MessageQueueTest, AnExceptionLeavesTheRest) {
    Receiver a;
    a.action = [](UINT message) {
        if (message == WM_USER)
            throw 5;
    };
    a.PostMessageW(WM_USER);
    a.PostMessageW(WM_USER + 1);
    EXPECT_THROW(CMessageQueue::Dispatch(), int);
    EXPECT_EQ(CMessageQueue::Dispatch(), 1u);
    EXPECT_EQ(a.events, (Events{"0 0 0", "1 0 0"}));
}

TEST_F(MessageQueueTest, WakesWhoEmptiesIt) {
    Receiver a;
    int calls = 0;
    CMessageQueue::SetWakeUp([&] { ++calls; });
    a.PostMessageW(WM_USER);
    a.PostMessageW(WM_USER);
    EXPECT_EQ(calls, 1);
    CMessageQueue::Dispatch();
    a.PostMessageW(WM_USER);
    EXPECT_EQ(calls, 2);
    auto const before = CMessageQueue::SetWakeUp({});
    before();
    EXPECT_EQ(calls, 3);
    CMessageQueue::Clear();
    a.PostMessageW(WM_USER);
    EXPECT_EQ(calls, 3);
}

TEST(RegisteredMessage, OneNumberForOneName) {
    UINT const first = CWnd::RegisterWindowMessageW(L"paramdb test message");
    EXPECT_GE(first, 0xC000u);
    EXPECT_LE(first, 0xFFFFu);
    EXPECT_EQ(CWnd::RegisterWindowMessageW(L"paramdb test message"), first);
    EXPECT_EQ(paramdb::RegisteredMessage(L"PARAMDB test Message"), first);
    EXPECT_NE(CWnd::RegisterWindowMessageW(L"paramdb test message 2"), first);
    EXPECT_EQ(CWnd::RegisterWindowMessageW(L""), 0u);
    EXPECT_EQ(CWnd::RegisterWindowMessageW(nullptr), 0u);
}

TEST(RegisteredMessage, FromThreadsAtOnce) {
    std::vector<std::vector<UINT>> numbers(4);
    std::vector<std::thread> threads;
    for (auto& own : numbers) {
        threads.emplace_back([&own] {
            for (int i = 0; i < 50; ++i)
                own.push_back(
                    CWnd::RegisterWindowMessageW((L"paramdb test thread " + std::to_wstring(i)).c_str()));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (auto const& own : numbers)
        EXPECT_EQ(own, numbers[0]);
    EXPECT_EQ(std::set<UINT>(numbers[0].begin(), numbers[0].end()).size(), 50u);
}

} // namespace
