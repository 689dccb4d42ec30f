// Posted messages of the controls, delivered by the program's message loop.
#include <paramdb/controls/pentad_ctrl.h>
#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/sea/pr_win.h>

#include <stdexcept>
#include <tests/views/suites/gearbox.h>
#include <tests/views/suites/view_suite.h>
#include <tuple>

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

class PostedSuite : public ViewSuite {};

} // namespace

TEST_F(PostedSuite, ArriveInOrderWithTheNextEvent) {
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 1);
    receiver.PostMessageW(WM_USER, 2);
    EXPECT_TRUE(receiver.heard.empty());
    view->Settle();
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{1, 2}));
}

TEST_F(PostedSuite, WhatComesMeanwhileArrivesToo) {
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 10, 3);
    receiver.PostMessageW(WM_USER, 20, 1);
    for (int i = 0; i < 5; ++i)
        view->Settle();
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{10, 20, 11, 21, 12, 13}));
    EXPECT_EQ(CMessageQueue::Size(), 0U);
}

TEST_F(PostedSuite, AnExceptionBecomesAMessage) {
    std::vector<std::tuple<int, int, std::wstring>> messages;
    auto const before = PrWin::SetSink([&](int category, int style, std::wstring const& text) {
        messages.emplace_back(category, style, text);
    });
    Receiver receiver;
    receiver.PostMessageW(WM_USER, 1, -1);
    receiver.PostMessageW(WM_USER, 2);
    view->Settle();
    view->Settle();
    PrWin::SetSink(before);
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{1, 2}));
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0], std::tuple(8, 3, std::wstring(L"no\n")));
}

TEST_F(PostedSuite, WithoutALoopTheyWait) {
    Receiver receiver;
    view.reset();
    receiver.PostMessageW(WM_USER, 7);
    EXPECT_TRUE(receiver.heard.empty());
    view = MakeViewDriver(); // delivers what was there before
    view->Settle();
    EXPECT_EQ(receiver.heard, (std::vector<WPARAM>{7}));
}

TEST_F(PostedSuite, LeaveTheQueueAsItWas) {
    view.reset();
    int woken = 0;
    auto const before = CMessageQueue::SetWakeUp([&] { ++woken; });
    Receiver receiver;
    MakeViewDriver();
    receiver.PostMessageW(WM_USER, 1);
    EXPECT_EQ(woken, 1);
    CMessageQueue::Clear();
    CMessageQueue::SetWakeUp(before);
}

// The editor tells its parent of a choice after it has settled.
TEST_F(PostedSuite, AChoiceInTheEditorReachesItsParent) {
    struct Parent : CWnd {
        std::vector<std::pair<WPARAM, LPARAM>> heard;
        CPentadCtrl* editor = nullptr;
        std::vector<int> keys;

    protected:
        LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
            if (message == WM_PENTADCTRL_SELCHANGED) {
                heard.emplace_back(first, second);
                keys.push_back(editor->retrieve()[Clavis::qChannel]);
            }
            return CWnd::OnMessage(message, first, second);
        }
    };
    Gearbox::Load();
    {
        Parent parent;
        parent.Create();
        CPentadCtrl editor;
        parent.editor = &editor;
        editor.Create(&parent, 3000);
        editor.fill(CClavis());
        view->Show(editor, {400, 300});
        editor.SetFocusItem(2);
        view->Settle();
        view->Press(Key::f4);
        view->Press(Key::down);
        view->Press(Key::enter);
        view->Settle();
        int const chosen = CQtParamInstance().IdNameMap(Clavis::qChannel).begin()->first[0];
        EXPECT_EQ(parent.heard, (std::vector<std::pair<WPARAM, LPARAM>>{{2, chosen}}));
        EXPECT_EQ(parent.keys, (std::vector<int>{chosen}));
        view.reset();
    }
    Gearbox::Unload();
}
