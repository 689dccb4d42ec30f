#include <paramdb/controls/pentad_ctrl.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <stdexcept>
#include <tests/controls/control_world.h>
#include <tests/controls/pentad_support.h>

namespace {

class PentadCtrl : public ControlTest {
protected:
    PentadCtrl() {
        ControlWorld world;
        world.names[0] = {{7, L"Ramp"}, {4, L"Coast"}, {5, L"Secret"}, {Virtual, L"Ramp 300"}};
        world.mode_flags = {{5, 1024}};
        world.names[1] = {{1001, L"Value"}, {2500, L"Spectrum"}};
        world.names[2] = {{3, L"Mix"}};
        world.names[3] = {{1, L"Housing"}};
        world.names[5] = {{8, L"Speed"}};
        world.parameters = {{20, {2500, L"late"}}, {10, {2500, L"early"}}, {15, {1001, L"only"}}};
        Load(world);
    }
    void Create() { ASSERT_TRUE(editor.Create(&frame)); }
    Posts Take() {
        CMessageQueue::Dispatch();
        return std::exchange(frame.posts, {});
    }

    inline static int const Virtual = ControlWorld::VirtualMode(7, 3);
    CClavis const full{7, 2500, 3, 1, 20, 8};
    Frame frame;
    CPentadCtrl editor;
};

TEST_F(PentadCtrl, Columns) {
    editor.SetExtendedStyle(1);
    Create();
    ASSERT_EQ(editor.GetColumnCount(), 2);
    EXPECT_EQ(editor.GetColumn(0).heading, L"Section");
    EXPECT_EQ(editor.GetColumn(1).heading, L"Value");
    EXPECT_EQ(editor.GetColumnWidth(0), 90);
    EXPECT_EQ(editor.GetColumnWidth(1), 90);
    EXPECT_EQ(editor.GetExtendedStyle(), 33u);
    editor.DestroyWindow();
    CQtParamInstance::ShowIdsInDialogs(true);
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    Create();
    ASSERT_EQ(editor.GetColumnCount(), 3);
    EXPECT_EQ(editor.GetColumn(0).heading, L"Abschnitt");
    EXPECT_EQ(editor.GetColumn(1).heading, L"Wert");
    EXPECT_EQ(editor.GetColumn(2).heading, L"Id");
    EXPECT_EQ(editor.GetColumn(2).format, LVCFMT_RIGHT);
    EXPECT_EQ(editor.GetColumnWidth(2), 35);
}

TEST_F(PentadCtrl, ShowsAKey) {
    Create();
    editor.fill(full);
    EXPECT_EQ(LinesOf(editor), (Lines{{L"Test step", L"Ramp"},
                                      {L"Instrument", L"Spectrum"},
                                      {L"Channel", L"Mix"},
                                      {L"Object", L"Housing"},
                                      {L"Parameter", L"late"},
                                      {L"Sensor", L"Speed"}}));
    EXPECT_EQ(ChoicesOf(editor, 0), (Choices{{-1, Dash}, {4, L"Coast"}, {7, L"Ramp"}}));
    EXPECT_EQ(ChoicesOf(editor, 1), (Choices{{-1, Dash}, {1001, L"Value"}, {2500, L"Spectrum"}}));
    EXPECT_EQ(ChoicesOf(editor, 4), (Choices{{-1, Dash}, {10, L"early"}, {20, L"late"}}));
    EXPECT_EQ(editor.GetComboCurSel(4, 1), 20);
    EXPECT_EQ(editor.retrieve(), full);
    EXPECT_EQ(editor.GetColumnWidth(1), 8 * 7 + 12 + 18); // autosized
    EXPECT_EQ(Take(), Posts{});
    EXPECT_EQ(messages.Take(), std::vector<Message>{});
}

TEST_F(PentadCtrl, AKeyWithoutValues) {
    Create();
    editor.fill(CClavis());
    for (auto const& line : LinesOf(editor))
        EXPECT_EQ(line[1], Dash);
    EXPECT_EQ(ChoicesOf(editor, 4), (Choices{{-1, Dash}}));
    EXPECT_EQ(editor.retrieve(), CClavis());
}

TEST_F(PentadCtrl, WithoutInstrumentThereIsNoParameter) {
    Create();
    editor.fill(CClavis(7, -1, 3, 1, 20, 8));
    EXPECT_EQ(editor.retrieve(), CClavis(7, -1, 3, 1, -1, 8));
    EXPECT_EQ(ChoicesOf(editor, 4), (Choices{{-1, Dash}}));
}

TEST_F(PentadCtrl, UnknownAndHiddenValuesStay) {
    Create();
    CClavis const odd(5, 99, 98, -3, 97, 96);
    editor.fill(odd);
    EXPECT_EQ(LinesOf(editor), (Lines{{L"Test step", L"(Test step 5)"},
                                      {L"Instrument", L"(Instrument 99)"},
                                      {L"Channel", L"(Channel 98)"},
                                      {L"Object", L"(Object -3)"},
                                      {L"Parameter", L"(Parameter 97)"},
                                      {L"Sensor", L"(Sensor 96)"}}));
    EXPECT_EQ(ChoicesOf(editor, 0),
              (Choices{{-1, Dash}, {4, L"Coast"}, {5, L"(Test step 5)"}, {7, L"Ramp"}}));
    EXPECT_EQ(editor.retrieve(), odd);
    editor.fill(CClavis(Virtual, 1001, -1, -1, 20, -1)); // a parameter of another instrument
    EXPECT_EQ(ChoicesOf(editor, 4), (Choices{{-1, Dash}, {15, L"only"}, {20, L"(Parameter 20)"}}));
    EXPECT_EQ(LinesOf(editor)[0][1], L"(Test step " + std::to_wstring(Virtual) + L")");
    EXPECT_EQ(editor.retrieve(), CClavis(Virtual, 1001, -1, -1, 20, -1));
}

TEST_F(PentadCtrl, VirtualModesOnRequest) {
    Create();
    editor.hide_virtual_modes(false);
    editor.fill(CClavis(Virtual, -1, -1, -1, -1, -1));
    EXPECT_EQ(ChoicesOf(editor, 0),
              (Choices{{-1, Dash}, {4, L"Coast"}, {7, L"Ramp"}, {Virtual, L"Ramp 300"}}));
    EXPECT_EQ(LinesOf(editor)[0][1], L"Ramp 300");
}

TEST_F(PentadCtrl, TheTextOfMinusOne) {
    Create();
    EXPECT_EQ(editor.TtNilText(), L"");
    editor.set_none_is_any(true);
    editor.fill(CClavis());
    EXPECT_EQ(LinesOf(editor)[2][1], L"(*)");
    EXPECT_EQ(editor.TtNilText(), L"(*)");
    editor.set_none_is_any(false); // too late, the text is there
    editor.fill(CClavis());
    EXPECT_EQ(LinesOf(editor)[2][1], L"(*)");
    editor.set_ttnil_text(L"nothing");
    editor.set_none_is_any(true);
    editor.fill(CClavis());
    EXPECT_EQ(LinesOf(editor)[4][1], L"nothing");
    editor.TtNilText().Empty();
    editor.set_none_is_any(false);
    editor.fill(CClavis());
    EXPECT_EQ(LinesOf(editor)[5][1], Dash);
}

TEST_F(PentadCtrl, AChangeIsPosted) {
    Create();
    EXPECT_GE(WM_PENTADCTRL_SELCHANGED, 0xC000u);
    EXPECT_EQ(WM_PENTADCTRL_SELCHANGED, CWnd::RegisterWindowMessageW(L"WM_PENTADCTRL_SELCHANGED"));
    editor.fill(full);
    EXPECT_TRUE(editor.ChooseInCombo(0, 1, 4));
    EXPECT_TRUE(frame.posts.empty()); // posted, not sent
    EXPECT_EQ(Take(), (Posts{{WM_PENTADCTRL_SELCHANGED, 0, 4}}));
    EXPECT_EQ(editor.retrieve(), CClavis(4, 2500, 3, 1, 20, 8));
    EXPECT_FALSE(editor.ChooseInCombo(0, 1, 5)); // hidden
    EXPECT_TRUE(editor.ChooseInCombo(5, 1, -1));
    editor.set_on_change_message(WM_USER + 3);
    EXPECT_TRUE(editor.ChooseInCombo(4, 1, 10));
    EXPECT_EQ(
        Take(),
        (Posts{{WM_PENTADCTRL_SELCHANGED, 5, -1}, {WM_PENTADCTRL_SELCHANGED, 4, 10}, {WM_USER + 3, 4, 10}}));
    EXPECT_EQ(editor.retrieve(), CClavis(4, 2500, 3, 1, 10, -1));
}

TEST_F(PentadCtrl, AnotherInstrumentHasOtherParameters) {
    Create();
    editor.fill(full);
    EXPECT_TRUE(editor.ChooseInCombo(1, 1, 1001));
    EXPECT_EQ(editor.retrieve(), CClavis(7, 1001, 3, 1, -1, 8));
    EXPECT_EQ(ChoicesOf(editor, 4), (Choices{{-1, Dash}, {15, L"only"}}));
    EXPECT_EQ(LinesOf(editor)[4][1], Dash);
    EXPECT_EQ(Take(), (Posts{{WM_PENTADCTRL_SELCHANGED, 1, 1001}})); // the parameter is not told
    EXPECT_TRUE(editor.ChooseInCombo(1, 1, -1));
    EXPECT_EQ(ChoicesOf(editor, 4), (Choices{{-1, Dash}}));
}

TEST_F(PentadCtrl, WhoHearsOfAChange) {
    Frame other;
    Frame owner;
    Create();
    editor.SetOwner(&owner); // does not matter while there is a parent
    editor.fill(full);
    editor.ChooseInCombo(0, 1, 4);
    EXPECT_EQ(Take().size(), 1u);
    editor.DestroyWindow();
    EXPECT_TRUE(editor.Create()); // without parent
    editor.fill(full);
    editor.ChooseInCombo(0, 1, 4);
    EXPECT_EQ(Take(), Posts{});
    EXPECT_EQ(owner.posts.size(), 1u);
    owner.DestroyWindow();
    editor.ChooseInCombo(0, 1, 7);
    editor.SetOwner(nullptr);
    editor.ChooseInCombo(0, 1, 4);
    EXPECT_EQ(CMessageQueue::Size(), 0u);
    EXPECT_EQ(editor.retrieve(), CClavis(4, 2500, 3, 1, 20, 8));
}

TEST_F(PentadCtrl, VisibleElementsAlone) {
    Create();
    editor.set_visible_mask(0b110101); // without instrument and location
    EXPECT_EQ(editor.get_visible_mask(), 0b110101u);
    editor.fill(full);
    EXPECT_EQ(
        LinesOf(editor),
        (Lines{{L"Test step", L"Ramp"}, {L"Channel", L"Mix"}, {L"Parameter", Dash}, {L"Sensor", L"Speed"}}));
    EXPECT_EQ(ChoicesOf(editor, 2), (Choices{{-1, Dash}}));
    EXPECT_EQ(editor.retrieve(), CClavis(7, -1, 3, -1, -1, 8));
    editor.ChooseInCombo(1, 1, -1);
    EXPECT_EQ(Take(), (Posts{{WM_PENTADCTRL_SELCHANGED, 2, -1}}));
    editor.set_visible_mask(0b000010); // the rows stand as they are until the next filling
    EXPECT_EQ(editor.retrieve(), CClavis(7, -1, -1, -1, -1, 8));
    editor.fill(full);
    editor.ChooseInCombo(0, 1, 1001); // there is no row of parameters to refill
    EXPECT_EQ(editor.retrieve(), CClavis(-1, 1001, -1, -1, -1, -1));
    EXPECT_EQ(Take(), (Posts{{WM_PENTADCTRL_SELCHANGED, 1, 1001}}));
    editor.set_visible_mask(0);
    editor.fill(full);
    EXPECT_EQ(editor.GetItemCount(), 0);
    EXPECT_EQ(editor.retrieve(), CClavis());
}

TEST_F(PentadCtrl, BeforeAnyFilling) {
    EXPECT_EQ(editor.retrieve(), CClavis(0, 0, 0, 0, 0, 0)); // the data of rows as it stands
    editor.set_visible_mask(0b000001);
    EXPECT_EQ(editor.retrieve(), CClavis(0, -1, -1, -1, -1, -1));
    editor.fill(full); // without a window there are no columns, but the key is kept
    EXPECT_EQ(editor.retrieve(), CClavis(7, -1, -1, -1, -1, -1));
}

TEST_F(PentadCtrl, ReadOnlyRows) {
    Create();
    editor.set_readonly_mask(0b010001);
    EXPECT_EQ(editor.get_readonly_mask(), 0b010001u);
    editor.fill(full);
    for (int row = 0; row < 6; ++row)
        EXPECT_EQ(editor.GetEnabled(row), row != 0 && row != 4) << row;
    EXPECT_FALSE(editor.ChooseInCombo(0, 1, 4));
    EXPECT_FALSE(editor.ChooseInCombo(4, 1, 10));
    EXPECT_EQ(editor.retrieve(), full);
    editor.ChooseInCombo(1, 1, 1001); // the parameter falls back all the same
    EXPECT_EQ(editor.retrieve(), CClavis(7, 1001, 3, 1, -1, 8));
    EXPECT_FALSE(editor.GetEnabled(4));
    editor.set_readonly_mask(0);
    EXPECT_FALSE(editor.GetEnabled(0));
    editor.fill(full);
    EXPECT_TRUE(editor.GetEnabled(0));
}

TEST_F(PentadCtrl, Ids) {
    CQtParamInstance::ShowIdsInDialogs(true);
    Create();
    CQtParamInstance::ShowIdsInDialogs(false); // read once, with the columns
    editor.fill(CClavis(7, 2500, -1, 99, 20, 8));
    auto const ids = [&] {
        std::vector<std::wstring> texts;
        for (auto const& line : LinesOf(editor))
            texts.push_back(line[2]);
        return texts;
    };
    EXPECT_EQ(ids(), (std::vector<std::wstring>{L"7", L"2500", L"-1", L"99", L"20", L"8"}));
    editor.ChooseInCombo(1, 1, 1001);
    editor.ChooseInCombo(2, 1, 3);
    EXPECT_EQ(ids(), (std::vector<std::wstring>{L"7", L"1001", L"3", L"99", L"-1", L"8"}));
    EXPECT_EQ(LinesOf(editor)[0][1], L"Ramp"); // without its id
}

TEST_F(PentadCtrl, ExtraRows) {
    CQtParamInstance::ShowIdsInDialogs(true);
    Create();
    editor.set_visible_mask(0b000001);
    editor.add_extra_row(L"Last", L"v5", 5, 55);
    editor.add_extra_row(L"First", L"v0", 0, 1);
    editor.add_extra_row(L"", L"unseen", 2, 2);
    editor.add_extra_row(L"No slot", L"v6", 6, 6);
    editor.add_extra_row(L"No slot", L"v", 0xFFFFFFFF, 6);
    EXPECT_EQ(editor.GetItemCount(), 0); // from the next filling on
    editor.fill(full);
    EXPECT_EQ(LinesOf(editor),
              (Lines{{L"Test step", L"Ramp", L"7"}, {L"First", L"v0", L"1"}, {L"Last", L"v5", L"55"}}));
    for (int column = 0; column < 3; ++column) {
        COLORREF text = 0;
        COLORREF background = 0;
        editor.GetItemColors(0, column, text, background);
        EXPECT_EQ(background, XDefaultColor);
        editor.GetItemColors(2, column, text, background);
        EXPECT_EQ(text, 0x646464u);
        EXPECT_EQ(background, 0xFFEBE6u);
    }
    EXPECT_EQ(editor.GetComboBox(1, 1), nullptr);
    EXPECT_EQ(editor.retrieve(), CClavis(7, -1, -1, -1, -1, -1));
    editor.add_extra_row(L"Other", L"w", 0, 3);
    editor.fill(full);
    EXPECT_EQ(LinesOf(editor)[1], (std::vector<std::wstring>{L"Other", L"w", L"3"}));
}

TEST_F(PentadCtrl, AComboOfTheHostInAnExtraRowIsNoElement) {
    Create();
    editor.set_visible_mask(0b000001);
    editor.add_extra_row(L"Extra", L"", 0, -1);
    editor.fill(full);
    std::map<int, CString> const choices{{1, L"one"}, {2, L"two"}};
    editor.SetComboBox(1, 0, choices, 1);
    EXPECT_TRUE(editor.ChooseInCombo(1, 0, 2)); // another column is not looked at
    editor.SetComboBox(1, 1, choices, 1);
    try {
        editor.ChooseInCombo(1, 1, 2);
        FAIL();
    } catch (std::out_of_range const& error) {
        EXPECT_STREQ(error.what(), "invalid bitset position");
    }
    EXPECT_EQ(Take(), Posts{});
}

TEST_F(PentadCtrl, EditorsShareWhatTheirCombosOffer) {
    Create();
    CPentadCtrl second;
    second.Create(&frame);
    editor.fill(CClavis(99, -1, -1, -1, -1, -1));
    second.set_ttnil_text(L"none");
    second.fill(CClavis());
    EXPECT_EQ(editor.GetComboBox(0, 1), second.GetComboBox(0, 1));
    EXPECT_EQ(ChoicesOf(editor, 0), (Choices{{-1, L"none"}, {4, L"Coast"}, {7, L"Ramp"}}));
    EXPECT_EQ(LinesOf(editor)[0][1], L"(Test step 99)"); // what it shows stays
    EXPECT_EQ(editor.retrieve(), CClavis(99, -1, -1, -1, -1, -1));
}

TEST_F(PentadCtrl, SpeaksTheLanguageInForce) {
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    Create();
    editor.fill(CClavis(99, -1, -1, -1, -1, -1));
    EXPECT_EQ(LinesOf(editor)[0], (std::vector<std::wstring>{L"Pr\u00FCfschritt", L"(Pr\u00FCfschritt 99)"}));
}

} // namespace
