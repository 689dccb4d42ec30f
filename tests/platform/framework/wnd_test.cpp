#include <paramdb/platform/framework/wnd.h>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <tests/support/view_log.h>

namespace {

// Writes down what happens to it.
class Window : public CWnd {
public:
    std::vector<std::string> events;

protected:
    void PreSubclassWindow() override {
        events.push_back(IsWindow(GetSafeHwnd()) ? "prepare" : "prepare without window");
        CWnd::PreSubclassWindow();
    }
    void OnDestroy() override {
        events.push_back(GetSafeHwnd() ? "destroy with window" : "destroy");
        CWnd::OnDestroy();
    }
    void OnSetFocus(CWnd* old) override { events.push_back(old ? "focus from a window" : "focus"); }
    void OnKillFocus(CWnd* next) override { events.push_back(next ? "focus to a window" : "no focus"); }
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_USER)
            return static_cast<LRESULT>(first) * 10 + second;
        return CWnd::OnMessage(message, first, second);
    }
};

TEST(Wnd, IsMadeDestroyedAndMadeAgain) {
    Window window;
    ViewLog view(window);
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_FALSE(CWnd::IsWindow(nullptr));
    EXPECT_EQ(CWnd::FromHandlePermanent(nullptr), nullptr);
    EXPECT_FALSE(window.DestroyWindow());

    EXPECT_TRUE(window.Create(nullptr, 7));
    HWND const first = window.GetSafeHwnd();
    EXPECT_TRUE(CWnd::IsWindow(first));
    EXPECT_EQ(CWnd::FromHandlePermanent(first), &window);
    EXPECT_EQ(window.GetDlgCtrlID(), 7);
    EXPECT_FALSE(window.Create());
    EXPECT_EQ(window.events, Events{"prepare"});

    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_FALSE(CWnd::IsWindow(first));
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_FALSE(window.DestroyWindow());
    EXPECT_TRUE(window.Create());
    EXPECT_NE(window.GetSafeHwnd(), first);
    EXPECT_FALSE(CWnd::IsWindow(first));
    EXPECT_EQ(window.events, (Events{"prepare", "destroy", "prepare"}));
    EXPECT_EQ(view.Take(), (Events{"created", "destroyed", "created"}));
}

TEST(Wnd, ParentAndOwner) {
    CWnd frame;
    CWnd other;
    CWnd child;
    EXPECT_FALSE(child.Create(&frame)); // the parent has no window
    EXPECT_EQ(child.GetParent(), nullptr);
    EXPECT_EQ(child.GetOwner(), nullptr);
    EXPECT_TRUE(frame.Create());
    EXPECT_TRUE(child.Create(&frame, 5));
    EXPECT_EQ(child.GetParent(), &frame);
    EXPECT_EQ(child.GetOwner(), &frame);
    EXPECT_EQ(frame.GetDlgItem(5), &child);
    EXPECT_EQ(frame.GetDlgItem(6), nullptr);
    child.SetOwner(&other);
    EXPECT_EQ(child.GetOwner(), &other);
    child.SetOwner(nullptr);
    EXPECT_EQ(child.GetOwner(), &frame);
    EXPECT_TRUE(child.DestroyWindow());
    EXPECT_EQ(child.GetParent(), nullptr);
    EXPECT_EQ(frame.GetDlgItem(5), nullptr);
}

TEST(Wnd, AParentTakesTheWindowsWithinAlong) {
    Window child;
    Window grandchild;
    {
        Window frame;
        frame.Create();
        child.Create(&frame);
        grandchild.Create(&child);
        EXPECT_TRUE(frame.DestroyWindow());
        EXPECT_EQ(child.GetSafeHwnd(), nullptr);
        EXPECT_EQ(grandchild.GetSafeHwnd(), nullptr);
        frame.Create();
        child.Create(&frame);
        grandchild.Create(&child);
        child.SetOwner(&frame);
    }
    EXPECT_EQ(child.GetSafeHwnd(), nullptr);
    EXPECT_EQ(grandchild.GetSafeHwnd(), nullptr);
    EXPECT_EQ(child.GetParent(), nullptr);
    EXPECT_EQ(child.GetOwner(), nullptr);
    EXPECT_EQ(child.events, (Events{"prepare", "destroy", "prepare", "destroy"}));
    EXPECT_EQ(grandchild.events, child.events);
}

TEST(Wnd, AChildMayGoFirst) {
    CWnd frame;
    frame.Create();
    {
        CWnd child;
        child.Create(&frame, 5);
    }
    EXPECT_EQ(frame.GetDlgItem(5), nullptr);
    EXPECT_TRUE(frame.DestroyWindow());
}

TEST(Wnd, HandlesMessagesAtOnce) {
    Window window;
    EXPECT_EQ(window.SendMessageW(WM_USER, 4, 2), 42);
    EXPECT_EQ(window.SendMessageW(WM_USER + 1, 4, 2), 0);
    window.SendMessageW(WM_SETFOCUS);
    window.SendMessageW(WM_KILLFOCUS);
    EXPECT_EQ(window.events, (Events{"focus", "no focus"}));
}

TEST(Wnd, TheKeyboardHasOnePlace) {
    Window a;
    auto b = std::make_unique<Window>();
    a.Create();
    b->Create();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    a.SetFocus();
    a.SetFocus();
    EXPECT_TRUE(a.HasFocus());
    b->SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), b.get());
    EXPECT_EQ(a.events, (Events{"prepare", "focus", "focus to a window"}));
    EXPECT_EQ(b->events, (Events{"prepare", "focus from a window"}));
    a.KillFocus(); // does not have it
    b->KillFocus();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    EXPECT_EQ(b->events, (Events{"prepare", "focus from a window", "no focus"}));
    b->SetFocus();
    b.reset();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    a.SetFocus();
    a.DestroyWindow();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

// A window that does something when it loses the keyboard.
class Leaver : public CWnd {
public:
    std::function<void()> action;

protected:
    void OnKillFocus(CWnd*) override { action(); }
};

TEST(Wnd, WhoeverLosesTheKeyboardMayTakeItElsewhere) {
    Window third;
    third.Create();
    Leaver leaver;
    leaver.Create();
    leaver.SetFocus();
    auto next = std::make_unique<Window>();
    next->Create();
    leaver.action = [&] { third.SetFocus(); };
    next->SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &third);
    EXPECT_EQ(next->events, (Events{"prepare", "focus to a window"}));
    EXPECT_EQ(third.events, (Events{"prepare", "focus from a window"}));

    leaver.action = [] {};
    leaver.SetFocus();
    leaver.action = [&] { next.reset(); };
    next->SetFocus();
    EXPECT_EQ(next, nullptr);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST(Wnd, MayDestroyItselfWithItsWindow) {
    struct Fleeting : CWnd {
        void OnDestroy() override { delete this; }
    };
    auto* const window = new Fleeting; // deletes itself
    window->Create();
    ViewLog view(*window);
    EXPECT_TRUE(window->DestroyWindow());
    EXPECT_EQ(view.Take(), Events{"gone"});
    EXPECT_EQ(view.GetWnd(), nullptr);
}

TEST(Wnd, StateAndTitle) {
    CWnd window;
    ViewLog view(window);
    EXPECT_TRUE(window.IsWindowVisible());
    EXPECT_TRUE(window.IsWindowEnabled());
    window.ShowWindow(true);
    window.EnableWindow(true);
    EXPECT_EQ(view.Take(), Events{});
    window.ShowWindow(false);
    window.EnableWindow(false);
    window.SetTitle(L"Key");
    EXPECT_FALSE(window.IsWindowVisible());
    EXPECT_FALSE(window.IsWindowEnabled());
    EXPECT_EQ(window.GetTitle(), L"Key");
    EXPECT_EQ(view.Take(), (Events{"visibility", "enabled", "title"}));
}

TEST(WndView, FollowsOneControl) {
    CWnd a;
    CWnd b;
    ViewLog view(a);
    view.Attach(a);
    a.SetTitle(L"1");
    EXPECT_EQ(view.Take(), Events{"title"});
    view.Attach(b);
    EXPECT_EQ(view.GetWnd(), &b);
    a.SetTitle(L"2");
    EXPECT_EQ(view.Take(), Events{});
    view.Detach();
    view.Detach();
    EXPECT_EQ(view.GetWnd(), nullptr);
    b.SetTitle(L"3");
    EXPECT_EQ(view.Take(), Events{});
}

TEST(WndView, EitherMayGoFirst) {
    ViewLog first;
    ViewLog second;
    {
        CWnd window;
        window.Create();
        first.Attach(window);
        second.Attach(window);
        { ViewLog const third(window); }
        window.SetTitle(L"1");
    }
    EXPECT_EQ(first.Take(), (Events{"title", "gone"}));
    EXPECT_EQ(second.Take(), (Events{"title", "gone"}));
    EXPECT_EQ(first.GetWnd(), nullptr);
}

TEST(WndView, ItemsInARunAreContentUnlessAViewKnowsBetter) {
    // The defaults of a view do nothing, but for runs of items, which are content.
    struct Plain : CWndView {
        int contents = 0;
        void OnContentChanged() override { ++contents; }
    } view;
    view.OnItemsInserted(0, 3);
    EXPECT_EQ(view.contents, 1);
    view.OnCreated();
    view.OnDestroyed();
    view.OnControlGone();
    view.OnVisibilityChanged();
    view.OnEnabledChanged();
    view.OnTitleChanged();
    view.OnItemChanged(0, 0);
    view.OnColumnsChanged();
    view.OnHeaderChanged(0);
    view.OnSelectionChanged();
    view.OnScrollChanged();
    EXPECT_EQ(view.contents, 1);
}

// Does something when the title changes.
class Doer : public ViewLog {
public:
    explicit Doer(CWnd& wnd) : ViewLog(wnd) {}
    std::function<void()> action;
    void OnTitleChanged() override {
        ViewLog::OnTitleChanged();
        if (auto const once = std::exchange(action, {}))
            once();
    }
};

TEST(WndView, ViewsComeAndGoInsideANotification) {
    auto window = std::make_unique<CWnd>();
    Doer first(*window);
    std::optional<ViewLog> second(std::in_place, *window);
    ViewLog third(*window);
    std::optional<ViewLog> fourth;
    first.action = [&] {
        second.reset();
        first.Detach();
        fourth.emplace(*window);
    };
    window->SetTitle(L"1");
    EXPECT_EQ(first.Take(), Events{"title"});
    EXPECT_EQ(third.Take(), Events{"title"});
    fourth->Take();
    window->SetTitle(L"2");
    EXPECT_EQ(first.Take(), Events{});
    EXPECT_EQ(third.Take(), Events{"title"});
    EXPECT_EQ(fourth->Take(), Events{"title"});

    Doer destroyer(*window);
    destroyer.action = [&] { window.reset(); };
    ViewLog behind(*window);
    window->SetTitle(L"3");
    EXPECT_EQ(destroyer.Take(), (Events{"title", "gone"}));
    EXPECT_EQ(behind.Take(), Events{"gone"});
}

TEST(WndView, OneMayLeaveWhileAnotherIsToldTheEnd) {
    struct Last : ViewLog {
        ViewLog* other = nullptr;
        void OnControlGone() override {
            other->Detach();
            ViewLog::OnControlGone();
        }
    };
    ViewLog first;
    Last last; // is told first
    last.other = &first;
    {
        CWnd window;
        first.Attach(window);
        last.Attach(window);
    }
    EXPECT_EQ(last.Take(), Events{"gone"});
    EXPECT_EQ(first.Take(), Events{});
}

TEST(WndView, ANotificationInsideANotificationKeepsTheOrderOfViews) {
    CWnd window;
    std::optional<ViewLog> before(std::in_place, window);
    Doer first(window);
    std::optional<ViewLog> second(std::in_place, window);
    ViewLog third(window);
    ViewLog fourth(window);
    first.action = [&] {
        before.reset();
        second.reset();
        window.SetTitle(L"inner");
    };
    window.SetTitle(L"outer");
    EXPECT_EQ(first.Take(), (Events{"title", "title"}));
    EXPECT_EQ(third.Take(), (Events{"title", "title"}));
    EXPECT_EQ(fourth.Take(), (Events{"title", "title"}));
    window.SetTitle(L"last");
    EXPECT_EQ(third.Take(), Events{"title"});
}

TEST(WndView, AnExceptionOfAViewLeavesTheOthersInOrder) {
    CWnd window;
    Doer first(window);
    std::optional<ViewLog> second(std::in_place, window);
    first.action = [&] {
        second.reset();
        throw 5;
    };
    EXPECT_THROW(window.SetTitle(L"1"), int);
    ViewLog third(window);
    window.SetTitle(L"2");
    EXPECT_EQ(first.Take(), (Events{"title", "title"}));
    EXPECT_EQ(third.Take(), Events{"title"});
}

TEST(WndReference, BecomesNullWithItsObject) {
    CWndReference none;
    EXPECT_EQ(none.Get(), nullptr);
    EXPECT_EQ(CWndReference(nullptr).Get(), nullptr);
    auto window = std::make_unique<CWnd>();
    CWndReference const reference(window.get());
    EXPECT_EQ(reference.Get(), window.get());
    window.reset();
    EXPECT_EQ(reference.Get(), nullptr);
}

} // namespace
