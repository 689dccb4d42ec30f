// A combo on the screen.
#include <paramdb/platform/control/combo_box_x.h>

#include <memory>
#include <tests/views/suites/view_suite.h>

namespace {

// The window around a combo, which hears of its changes.
class Parent : public CWnd {
public:
    Parent() { Create(); }

    std::vector<std::pair<unsigned int, int>> heard; // code and id

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_COMMAND)
            heard.emplace_back(static_cast<unsigned int>(first >> 16), static_cast<int>(first & 0xFFFF));
        return CWnd::OnMessage(message, first, second);
    }
};

using Heard = std::vector<std::pair<unsigned int, int>>;

class ComboSuite : public ViewSuite {
protected:
    ComboSuite() {
        combo->Create(&parent, 17);
        for (wchar_t const* name : {L"(not assigned)", L"Ramp up", L"Ramp down", L"Idle"})
            combo->SetItemData(combo->AddString(name), combo->GetCount() * 10);
        combo->SetCurSel(2);
        view->Show(*combo);
    }
    ~ComboSuite() override { view.reset(); }

    Parent parent;
    std::unique_ptr<CComboBoxX> combo = std::make_unique<CComboBoxX>();
};

} // namespace

TEST_F(ComboSuite, ShowsRowsAndSelection) {
    EXPECT_EQ(view->Offered(), (Texts{"(not assigned)", "Ramp up", "Ramp down", "Idle"}));
    EXPECT_EQ(view->Chosen(), "Ramp down");
}

TEST_F(ComboSuite, FollowsTheControl) {
    combo->SetCurSel(-1);
    view->Settle();
    EXPECT_EQ(view->Chosen(), "");
    combo->ResetContent();
    combo->AddString(L"Other");
    combo->SetCurSel(0);
    view->Settle();
    EXPECT_EQ(view->Offered(), (Texts{"Other"}));
    EXPECT_EQ(view->Chosen(), "Other");
    combo->EnableWindow(false);
    EXPECT_FALSE(view->IsEnabled());
    combo->ShowWindow(false);
    EXPECT_FALSE(view->IsVisible());
    EXPECT_TRUE(parent.heard.empty());
}

TEST_F(ComboSuite, ArrowsChooseInTheControl) {
    view->Press(Key::down);
    EXPECT_EQ(combo->GetCurSel(), 3);
    EXPECT_EQ(view->Chosen(), "Idle");
    EXPECT_EQ(parent.heard, (Heard{{1, 17}})); // the selection has changed
    view->Press(Key::up);
    EXPECT_EQ(combo->GetCurSel(), 2);
    EXPECT_EQ(parent.heard.size(), 2U);
}

TEST_F(ComboSuite, AnOpenListChoosesWhenItIsLeft) {
    view->Press(Key::f4);
    ASSERT_TRUE(view->IsOpen());
    view->Press(Key::up);
    EXPECT_EQ(combo->GetCurSel(), 2); // not before
    view->Press(Key::enter);
    EXPECT_FALSE(view->IsOpen());
    EXPECT_EQ(combo->GetCurSel(), 1);
    EXPECT_EQ(parent.heard, (Heard{{1, 17}}));
    view->Press(Key::f4);
    ASSERT_TRUE(view->IsOpen());
    view->ClickOffered(3);
    EXPECT_EQ(combo->GetCurSel(), 3);
    EXPECT_EQ(parent.heard.size(), 2U);
    view->Press(Key::f4);
    view->Press(Key::home);
    view->LeaveCombo();
    EXPECT_EQ(combo->GetCurSel(), 3);
    EXPECT_EQ(view->Chosen(), "Idle");
    EXPECT_EQ(parent.heard.size(), 2U);
}

TEST_F(ComboSuite, TypingChooses) {
    view->Type("i");
    view->Press(Key::enter);
    EXPECT_EQ(view->Chosen(), view->Offered()[static_cast<std::size_t>(combo->GetCurSel())]);
    EXPECT_LE(parent.heard.size(), 1U);
}

TEST_F(ComboSuite, KeepsTheControlToldOfTheKeyboard) {
    EXPECT_TRUE(combo->HasFocus());
    view->FocusElsewhere();
    EXPECT_FALSE(combo->HasFocus());
}

TEST_F(ComboSuite, OutlivesTheControl) {
    combo.reset();
    view->Settle();
    EXPECT_TRUE(view->Offered().empty());
    view->Press(Key::down);
}

TEST_F(ComboSuite, DiesBeforeTheControl) {
    view->Drop();
    EXPECT_FALSE(combo->HasFocus());
    combo->AddString(L"later");
    view->Settle();
}

TEST_F(ComboSuite, TheControlMayDieInItsChange) {
    struct Killer : CWnd {
        explicit Killer(std::unique_ptr<CComboBoxX>& c) : victim(c) { Create(); }
        std::unique_ptr<CComboBoxX>& victim;

    protected:
        LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
            if (message == WM_COMMAND)
                victim.reset();
            return CWnd::OnMessage(message, first, second);
        }
    };
    Killer killer(combo);
    combo->DestroyWindow();
    combo->Create(&killer, 3);
    for (wchar_t const* name : {L"one", L"two"})
        combo->AddString(name);
    view->Settle();
    view->Press(Key::down);
    EXPECT_EQ(combo, nullptr);
    EXPECT_TRUE(view->Offered().empty());
}

TEST_F(ComboSuite, TitlesBecomeNamesForScreenReaders) {
    EXPECT_EQ(view->Name(), "");
    combo->SetTitle(L"Test step");
    EXPECT_EQ(view->Name(), "Test step");
}

TEST_F(ComboSuite, ThousandsOfRowsOpenAtOnce) {
    constexpr int count = 2000;
    combo->ResetContent();
    for (int i = 0; i < count; ++i)
        combo->AddString(std::to_wstring(i).c_str());
    combo->SetCurSel(1);
    view->Settle();
    EXPECT_EQ(view->Offered().size(), std::size_t{count});
    view->Press(Key::f4);
    view->Press(Key::end);
    view->Press(Key::enter);
    EXPECT_EQ(combo->GetCurSel(), count - 1);
}
