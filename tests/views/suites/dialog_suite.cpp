// The key dialog on the screen.
#include <paramdb/controls/pentad_dialog.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/pr_win.h>

#include <functional>
#include <memory>
#include <optional>
#include <tests/views/suites/gearbox.h>
#include <tests/views/suites/view_suite.h>

namespace {

class DialogSuite : public ViewSuite {
protected:
    static void SetUpTestSuite() { Gearbox::Load(); }
    static void TearDownTestSuite() { Gearbox::Unload(); }

    DialogSuite() {
        dialog->set_target([this](CClavis const& key) { result = key; });
    }
    ~DialogSuite() override {
        dialog.reset();
        view->Settle();
        view.reset();
    }

    // Displays the dialog and has its list at hand.
    void Display(CClavis const& key) {
        dialog->Display(key);
        view->Settle();
        ASSERT_TRUE(view->HasWindow(*dialog));
        view->UseList(*dialog, CPentadDialog::ControlId);
    }
    void GoTo(int row) {
        view->Focus();
        dialog->control().SetFocusItem(row);
        view->Settle();
    }
    // Opens the combo of a row and clicks a name.
    void Choose(int row, CString const& name) {
        GoTo(row);
        view->Press(Key::f4);
        ASSERT_TRUE(view->IsOpen());
        Texts const offered = view->Offered();
        auto const wanted = std::find(offered.begin(), offered.end(), paramdb::ToUtf8(name.GetString()));
        ASSERT_NE(wanted, offered.end());
        view->ClickOffered(static_cast<int>(wanted - offered.begin()));
    }
    std::size_t OfferedIn(int row) {
        GoTo(row);
        view->Press(Key::f4);
        std::size_t const count = view->Offered().size();
        view->LeaveCombo();
        return count;
    }

    std::optional<CClavis> result;
    std::unique_ptr<CPentadDialog> dialog = std::make_unique<CPentadDialog>();
};

CClavis const SomeKey(4, -1, -1, -1, -1, -1);

} // namespace

TEST_F(DialogSuite, HasThePlacesOfTheTemplate) {
    Display(SomeKey);
    EXPECT_EQ(view->Title(*dialog), "Key Specification");
    EXPECT_EQ(view->ButtonText(*dialog, IDOK), "OK");
    EXPECT_EQ(view->ButtonText(*dialog, IDCANCEL), "Cancel");
    // Same proportions, within what rounding does.
    CSize const size = view->Size(*dialog);
    double const x = static_cast<double>(size.cx) / 169.0;
    double const y = static_cast<double>(size.cy) / 115.0;
    auto const at = [&](CRect const& place, double left, double top, double width, double height) {
        EXPECT_NEAR(static_cast<double>(place.left), left * x, 1.5);
        EXPECT_NEAR(static_cast<double>(place.top), top * y, 1.5);
        EXPECT_NEAR(place.Width(), width * x, 1.5);
        EXPECT_NEAR(place.Height(), height * y, 1.5);
    };
    at(view->Item(*dialog, 3000), 7, 7, 155, 80);
    at(view->Item(*dialog, IDOK), 58, 94, 50, 14);
    at(view->Item(*dialog, IDCANCEL), 112, 94, 50, 14);
    EXPECT_EQ(view->Name(), "Key Specification");
}

TEST_F(DialogSuite, TheListGrowsWithTheFrame) {
    Display(SomeKey);
    CRect const list = view->Item(*dialog, 3000);
    CRect const ok = view->Item(*dialog, IDOK);
    view->Enlarge(*dialog, {100, 60});
    CRect const after = view->Item(*dialog, 3000);
    EXPECT_EQ(after.left, list.left);
    EXPECT_EQ(after.top, list.top);
    EXPECT_EQ(after.Width(), list.Width() + 100);
    EXPECT_EQ(after.Height(), list.Height() + 60);
    CRect const moved = view->Item(*dialog, IDOK);
    EXPECT_EQ(moved.left, ok.left + 100);
    EXPECT_EQ(moved.top, ok.top + 60);
    EXPECT_EQ(moved.Width(), ok.Width());
}

TEST_F(DialogSuite, SpeaksEveryLanguageWithoutCuttingIt) {
    using Language = CLibMgr::Language;
    for (Language const language :
         {Language::english, Language::portuguese, Language::czech, Language::german, Language::french,
          Language::hungarian, Language::italian, Language::standard, Language::chinese, Language::spanish}) {
        SCOPED_TRACE(static_cast<int>(language));
        CLibMgr::SetLanguage(language);
        Display(SomeKey);
        CRect const ok = view->Item(*dialog, IDOK);
        CRect const cancel = view->Item(*dialog, IDCANCEL);
        EXPECT_GT(cancel.left, ok.right);
        EXPECT_LE(cancel.right, view->Size(*dialog).cx);
        EXPECT_GE(ok.left, 0);
        CDialogTemplate const& layout = dialog->GetTemplate();
        EXPECT_EQ(view->Title(*dialog), paramdb::ToUtf8(layout.title.GetString()));
        EXPECT_EQ(view->ButtonText(*dialog, IDCANCEL), paramdb::ToUtf8(layout.items.back().text.GetString()));
        dialog->OnBnClickedCancel();
        view->Settle();
        EXPECT_FALSE(view->HasWindow(*dialog));
    }
}

TEST_F(DialogSuite, EveryRowIsInSight) {
    Display(SomeKey);
    EXPECT_EQ(view->Rows(), 6);
    EXPECT_TRUE(IsInSight(0));
    EXPECT_TRUE(IsInSight(5));
    EXPECT_LE(view->Cell(0, 1).right, view->RowsInSight().right);
}

TEST_F(DialogSuite, ShowsTheKeyAndHandsItBack) {
    Display(SomeKey);
    EXPECT_EQ(Shown(), (Texts{"Test step", "Instrument", "Channel", "Object", "Parameter", "Sensor"}));
    view->ClickButton(*dialog, IDOK);
    EXPECT_EQ(result, SomeKey);
    EXPECT_FALSE(view->HasWindow(*dialog));
}

TEST_F(DialogSuite, HandsOverWhatWasChosen) {
    Display(SomeKey);
    CQtParamInstance const parameters;
    CClavis expected = SomeKey;
    expected[Clavis::qChannel] = parameters.IdNameMap(Clavis::qChannel).begin()->first[0];
    Choose(2, parameters.ChannelName(expected[Clavis::qChannel]));
    // The only choice of the parameter row is none until there is an instrument.
    EXPECT_EQ(OfferedIn(4), 1U);
    auto const first = parameters.InstrumentParam().begin();
    expected[Clavis::qInstrument] = first->second.get<"instrument">();
    Choose(1, parameters.InstrumentName(expected[Clavis::qInstrument]));
    EXPECT_GT(OfferedIn(4), 1U);
    EXPECT_EQ(dialog->retrieve(), expected);
    view->ClickButton(*dialog, IDOK);
    EXPECT_EQ(result, expected);
}

TEST_F(DialogSuite, CancelHandsOverNothing) {
    struct Way {
        char const* name;
        std::function<void()> leave;
    };
    for (auto const& [name, leave] : {Way{"button", [this] { view->ClickButton(*dialog, IDCANCEL); }},
                                      Way{"escape", [this] { view->Press(Key::escape); }},
                                      Way{"frame", [this] { view->Close(*dialog); }}}) {
        SCOPED_TRACE(name);
        Display(SomeKey);
        view->Focus();
        leave();
        EXPECT_FALSE(result);
        EXPECT_FALSE(view->HasWindow(*dialog));
        EXPECT_EQ(dialog->GetSafeHwnd(), nullptr);
    }
}

TEST_F(DialogSuite, TheReturnKeyIsOk) {
    Display(SomeKey);
    view->Focus();
    view->Press(Key::enter);
    EXPECT_EQ(result, SomeKey);
    EXPECT_FALSE(view->HasWindow(*dialog));
}

TEST_F(DialogSuite, TheTabKeyGoesRound) {
    Display(SomeKey);
    view->Focus();
    EXPECT_TRUE(dialog->control().HasFocus());
    view->Press(Key::tab);
    EXPECT_FALSE(dialog->control().HasFocus());
    view->Press(Key::tab);
    EXPECT_FALSE(dialog->control().HasFocus());
    view->Press(Key::space); // on Cancel
    EXPECT_FALSE(result);
    EXPECT_FALSE(view->HasWindow(*dialog));
}

TEST_F(DialogSuite, ReturnAndEscapeInAComboLeaveTheDialogOpen) {
    Display(SomeKey);
    GoTo(0);
    view->Press(Key::f2);
    ASSERT_TRUE(view->IsOpen());
    view->LeaveCombo();
    EXPECT_TRUE(view->HasWindow(*dialog));
    GoTo(2);
    view->Press(Key::f2);
    view->Press(Key::down);
    view->Press(Key::enter);
    EXPECT_TRUE(view->HasWindow(*dialog));
    EXPECT_FALSE(result);
    EXPECT_NE(dialog->retrieve()[Clavis::qChannel], -1);
}

TEST_F(DialogSuite, ASecondDisplayChangesNothing) {
    Display(SomeKey);
    dialog->Display(CClavis());
    view->Settle();
    EXPECT_EQ(dialog->retrieve(), SomeKey);
    view->ClickButton(*dialog, IDOK);
    Display(CClavis()); // and again when it is closed
    EXPECT_EQ(dialog->retrieve(), CClavis());
}

TEST_F(DialogSuite, ReadOnlyRowsOpenNothing) {
    dialog->set_readonly_mask(0b000001);
    Display(SomeKey);
    ClickCell(0, 1);
    EXPECT_FALSE(view->IsOpen());
    ClickCell(2, 1);
    EXPECT_TRUE(view->IsOpen());
    view->LeaveCombo();
}

TEST_F(DialogSuite, ADialogWithoutTargetStaysAndSaysWhy) {
    std::vector<std::wstring> messages;
    auto const before = PrWin::SetSink([&](int, int, std::wstring const& text) { messages.push_back(text); });
    dialog->set_target({});
    Display(SomeKey);
    view->ClickButton(*dialog, IDOK);
    PrWin::SetSink(before);
    EXPECT_TRUE(view->HasWindow(*dialog));
    EXPECT_EQ(messages, (std::vector<std::wstring>{L"bad_function_call\n"}));
}

TEST_F(DialogSuite, GoesWithTheDialog) {
    Display(SomeKey);
    CDialog const* const address = dialog.get();
    dialog.reset();
    view->Settle();
    EXPECT_FALSE(view->HasWindow(*address)); // an address alone by now
}

TEST_F(DialogSuite, ADialogWhoseWindowIsTakenAwayIsClosed) {
    Display(SomeKey);
    view->TakeAway(*dialog);
    EXPECT_EQ(dialog->GetSafeHwnd(), nullptr);
    EXPECT_FALSE(result);
    Display(CClavis());
    EXPECT_EQ(dialog->retrieve(), CClavis());
}

TEST_F(DialogSuite, TheDialogMayDieInItsTarget) {
    Display(SomeKey);
    dialog->set_target([this](CClavis const& key) {
        result = key;
        dialog.reset();
    });
    view->ClickButton(*dialog, IDOK);
    EXPECT_EQ(result, SomeKey);
}

TEST_F(DialogSuite, TheDialogMayDieInAChange) {
    Display(SomeKey);
    dialog->control().SetChangeCallback([this](int, int) { dialog.reset(); });
    GoTo(2);
    view->Press(Key::f4);
    view->Press(Key::down);
    view->Press(Key::enter);
    EXPECT_EQ(dialog, nullptr);
}
