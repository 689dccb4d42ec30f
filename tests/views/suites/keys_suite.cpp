// Lists of boxes and of combos under the keyboard, and combos under the mouse.
#include <map>
#include <random>
#include <tests/views/suites/view_suite.h>

namespace {

class KeysSuite : public ViewSuite {
protected:
    KeysSuite() {
        list.InsertColumn(0, L"Name", LVCFMT_LEFT, 150);
        list.InsertColumn(1, L"Value", LVCFMT_LEFT, 100);
    }
    ~KeysSuite() override { view.reset(); } // before the list

    // Rows with a check box each.
    void OpenChecks(std::vector<std::wstring> const& names) {
        for (std::wstring const& name : names) {
            int const item = list.InsertItem(list.GetItemCount(), name.c_str());
            list.SetCheckbox(item, 0, 0);
        }
        list.SetHeaderCheckedState(0, CXListCtrl::header_follows);
        Open();
    }
    // Rows with a combo each.
    void OpenCombos() {
        for (wchar_t const* name : {L"Test step", L"Channel", L"Sensor"}) {
            int const item = list.InsertItem(list.GetItemCount(), name);
            list.SetComboBox(item, 1, choices, 2);
        }
        list.SetChangeCallback([this](int item, int column) { changes.emplace_back(item, column); });
        Open();
    }
    void Open() {
        view->Show(list, {400, 300});
        list.SetFocusItem(0);
        view->Settle();
    }
    [[nodiscard]] std::vector<int> Checked() const {
        std::vector<int> items;
        for (int item = 0; item < list.GetItemCount(); ++item) {
            if (list.GetCheckbox(item, 0) > 0)
                items.push_back(item);
        }
        return items;
    }

    std::map<int, CString> choices{{-1, L"-"}, {1, L"Left ear"}, {2, L"Right ear"}, {3, L"Foot"}};
    std::vector<std::pair<int, int>> changes;
    CXListCtrl list;
};

std::vector<std::wstring> const Names{L"Ramp up", L"Ramp down", L"Idle", L"Tramp", L"Stop"};

using Changes = std::vector<std::pair<int, int>>;

} // namespace

TEST_F(KeysSuite, MovesFromRowToRow) {
    std::vector<std::wstring> names;
    for (int i = 0; i < 100; ++i)
        names.push_back(std::to_wstring(i));
    OpenChecks(names);
    int const page = view->RowsInSight().Height() / view->Cell(0, 0).Height();
    struct Step {
        Key key;
        int row;
    };
    for (auto const& [key, row] :
         {Step{Key::down, 1}, Step{Key::down, 2}, Step{Key::up, 1}, Step{Key::page_down, 1 + page},
          Step{Key::page_up, 1}, Step{Key::page_up, 0}, Step{Key::up, 0}, Step{Key::end, 99},
          Step{Key::down, 99}, Step{Key::page_down, 99}, Step{Key::home, 0}}) {
        SCOPED_TRACE(static_cast<int>(key));
        view->Press(key);
        ASSERT_EQ(list.GetFocusItem(), row);
        ASSERT_EQ(view->Current().first, row);
        ASSERT_TRUE(IsInSight(row));
    }
    EXPECT_TRUE(Checked().empty());
}

TEST_F(KeysSuite, MovesPastRowsThatTakeNoInput) {
    OpenChecks(Names);
    list.SetEnabled(1, false);
    list.SetEnabled(4, false);
    view->Press(Key::down);
    EXPECT_EQ(view->Current().first, 2);
    view->Press(Key::end);
    EXPECT_EQ(view->Current().first, 3);
    view->Press(Key::home);
    EXPECT_EQ(view->Current().first, 0);
}

TEST_F(KeysSuite, MovesFromColumnToColumn) {
    OpenChecks(Names);
    view->Press(Key::right);
    EXPECT_EQ(view->Current(), std::pair(0, 1));
    view->Press(Key::right);
    EXPECT_EQ(view->Current(), std::pair(0, 1));
    view->Press(Key::down);
    EXPECT_EQ(view->Current(), std::pair(1, 1));
    view->Press(Key::left);
    EXPECT_EQ(view->Current(), std::pair(1, 0));
}

TEST_F(KeysSuite, TheSpaceBarSwitchesTheBoxOfTheRow) {
    OpenChecks(Names);
    view->Press(Key::space);
    EXPECT_EQ(view->Check(0), 1);
    view->Press(Key::down);
    view->Press(Key::down);
    view->Press(Key::space);
    EXPECT_EQ(Checked(), (std::vector<int>{0, 2}));
    view->Press(Key::right); // from a cell without a box too
    view->Press(Key::space);
    EXPECT_EQ(Checked(), (std::vector<int>{0}));
    view->Press(Key::down, {.shift = true}); // moves, and leaves boxes alone
    EXPECT_EQ(list.GetFocusItem(), 3);
    EXPECT_EQ(Checked(), (std::vector<int>{0}));
}

TEST_F(KeysSuite, ControlAIsAClickOnTheHeading) {
    OpenChecks(Names);
    view->Press(Key::a, {.control = true});
    EXPECT_EQ(Checked().size(), Names.size());
    view->Press(Key::a, {.control = true});
    EXPECT_TRUE(Checked().empty());
}

TEST_F(KeysSuite, TypingGoesToTheRowThatBeginsSo) {
    OpenChecks({L"Tramp", L"Idle", L"Ramp up", L"Foot", L"Stop"});
    view->Type("ra");
    EXPECT_EQ(list.GetFocusItem(), 2);
    EXPECT_TRUE(Checked().empty());
}

// Hands at random on a list of boxes, beside a plain model of it.
TEST_F(KeysSuite, BoxesFollowAPlainModel) {
    constexpr unsigned int seed = 5;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    auto const up_to = [&](std::size_t count) { return static_cast<int>(random() % count); };
    std::vector<std::wstring> names;
    for (int i = 0; i < 60; ++i)
        names.push_back(std::to_wstring(100 + i * 7));
    OpenChecks(names);
    std::vector<bool> expected(names.size());
    for (int step = 0; step < view->RandomSteps(); ++step) {
        if (up_to(8) == 0) {
            view->ClickHeading(0);
            bool all = true;
            for (bool const on : expected)
                all = all && on;
            expected.assign(expected.size(), !all);
        } else {
            int const row = up_to(names.size());
            expected[static_cast<std::size_t>(row)].flip();
            if (random() % 2 == 0) {
                ClickCell(row, 0, {}, CPoint(6, 6));
            } else {
                list.SetFocusItem(row);
                view->Settle();
                view->Press(Key::space);
            }
        }
        for (std::size_t i = 0; i < names.size(); ++i)
            ASSERT_EQ(list.GetCheckbox(static_cast<int>(i), 0) > 0, expected[i])
                << "step " << step << " item " << i;
    }
}

TEST_F(KeysSuite, AClickOpensACombo) {
    OpenCombos();
    ClickCell(1, 1);
    ASSERT_TRUE(view->IsOpen());
    EXPECT_EQ(view->Offered(), (Texts{"-", "Left ear", "Right ear", "Foot"}));
    EXPECT_EQ(view->Chosen(), "Right ear");
    view->ClickOffered(3);
    EXPECT_EQ(list.GetComboCurSel(1, 1), 3);
    EXPECT_EQ(list.GetItemText(1, 1), L"Foot");
    EXPECT_EQ(view->Text(1, 1), "Foot");
    EXPECT_EQ(changes, (Changes{{1, 1}}));
    EXPECT_FALSE(view->IsOpen());
    ClickCell(1, 0); // beside the combo
    EXPECT_FALSE(view->IsOpen());
    EXPECT_TRUE(list.HasFocus());
}

TEST_F(KeysSuite, KeysOpenACombo) {
    OpenCombos();
    struct Way {
        Key key;
        Held held;
    };
    for (auto const& [key, held] :
         {Way{Key::f2, {}}, Way{Key::f4, {}}, Way{Key::space, {}}, Way{Key::down, {.alt = true}}}) {
        SCOPED_TRACE(static_cast<int>(key));
        view->Press(key, held);
        ASSERT_TRUE(view->IsOpen());
        EXPECT_TRUE(list.HasFocus()); // the combo is the list's
        view->LeaveCombo();
        EXPECT_FALSE(view->IsOpen());
        EXPECT_TRUE(list.HasFocus());
    }
    EXPECT_TRUE(changes.empty());
    view->Press(Key::f4);
    view->Press(Key::up);
    view->Press(Key::enter);
    EXPECT_EQ(list.GetComboCurSel(0, 1), 1);
    EXPECT_EQ(changes, (Changes{{0, 1}}));
    EXPECT_FALSE(view->IsOpen());
    EXPECT_TRUE(list.HasFocus());
    view->Press(Key::down); // and the keyboard is back where it was
    EXPECT_EQ(view->Current(), std::pair(1, 1));
}

TEST_F(KeysSuite, LeavingAnOpenComboChoosesNothing) {
    OpenCombos();
    view->Press(Key::f4);
    view->Press(Key::down);
    view->LeaveCombo();
    EXPECT_EQ(list.GetComboCurSel(0, 1), 2);
    EXPECT_EQ(view->Text(0, 1), "Right ear");
    EXPECT_TRUE(changes.empty());
}

TEST_F(KeysSuite, TypingInARowWithAComboGoesIntoTheCombo) {
    OpenCombos();
    view->Press(Key::down);
    view->Type("fo");
    view->Press(Key::enter);
    EXPECT_EQ(list.GetComboCurSel(1, 1), 3);
    EXPECT_FALSE(view->IsOpen());
    EXPECT_EQ(changes, (Changes{{1, 1}}));
}

TEST_F(KeysSuite, ADisabledRowOpensNothing) {
    OpenCombos();
    list.SetEnabled(1, false);
    ClickCell(1, 1);
    EXPECT_FALSE(view->IsOpen());
    view->Press(Key::down); // passes it
    EXPECT_EQ(list.GetFocusItem(), 2);
}

TEST_F(KeysSuite, AChangeThatRebuildsTheListIsHarmless) {
    OpenCombos();
    list.SetChangeCallback([this](int, int) {
        list.DeleteAllItems();
        list.InsertItem(0, L"new");
    });
    view->Press(Key::f4);
    view->Press(Key::up);
    view->Press(Key::enter);
    view->Settle();
    EXPECT_EQ(Shown(), (Texts{"new"}));
}

TEST_F(KeysSuite, AComboWhoseRowGoesIsClosed) {
    OpenCombos();
    view->Press(Key::f4);
    ASSERT_TRUE(view->IsOpen());
    list.DeleteAllItems();
    view->Settle();
    EXPECT_FALSE(view->IsOpen());
    EXPECT_TRUE(changes.empty());
}

TEST_F(KeysSuite, ThousandsOfChoicesOpenAtOnce) {
    choices.clear();
    for (int i = 0; i < 2000; ++i)
        choices[i] = std::to_wstring(i).c_str();
    OpenCombos();
    view->Press(Key::f4);
    EXPECT_EQ(view->Offered().size(), 2000U);
    view->Press(Key::end);
    view->Press(Key::enter);
    EXPECT_EQ(list.GetComboCurSel(0, 1), 1999);
}
