#include <paramdb/platform/control/x_list_ctrl.h>

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <tests/support/view_log.h>
#include <tuple>

namespace {

class List : public CXListCtrl {
public:
    std::vector<std::tuple<int, int, unsigned int>> changes;
    using CXListCtrl::OnItemStateChange;

protected:
    void OnItemStateChange(int item, int column, unsigned int state) override {
        changes.emplace_back(item, column, state);
        CXListCtrl::OnItemStateChange(item, column, state);
    }
};

using Changes = std::vector<std::tuple<int, int, unsigned int>>;

class XListChecks : public testing::Test {
protected:
    XListChecks() {
        list.InsertColumn(0, L"a", 0, 50);
        list.InsertColumn(1, L"b", 0, 50);
        for (int i = 0; i < 4; ++i)
            list.InsertItem(i, L"row");
    }

    List list;
};

TEST_F(XListChecks, ThreeStates) {
    EXPECT_EQ(list.GetCheckbox(0, 0), -1);
    EXPECT_TRUE(list.SetCheckbox(0, 0, 0));
    EXPECT_EQ(list.GetCheckbox(0, 0), 0);
    EXPECT_TRUE(list.SetCheckbox(0, 0, true));
    EXPECT_TRUE(list.SetCheckbox(0, 0, 7)); // anything above 0 is on
    EXPECT_EQ(list.GetCheckbox(0, 0), 1);
    EXPECT_TRUE(list.SetCheckbox(0, 0, -3));
    EXPECT_EQ(list.GetCheckbox(0, 0), -1);
    EXPECT_TRUE(list.SetCheckbox(1, 1, 1));
    EXPECT_FALSE(list.SetCheckbox(4, 0, 1));
    EXPECT_FALSE(list.SetCheckbox(0, 2, 1));
    EXPECT_EQ(list.GetCheckbox(4, 0), -1);
    EXPECT_EQ(list.changes, (Changes{{0, 0, 1}, {0, 0, 0}, {1, 1, 1}}));
}

TEST_F(XListChecks, Counts) {
    EXPECT_EQ(list.CountCheckedItems(), 0);
    list.SetCheckbox(0, 0, 1);
    list.SetCheckbox(1, 0, 1);
    list.SetCheckbox(2, 0, 0);
    list.SetCheckbox(3, 1, 1);
    EXPECT_EQ(list.CountCheckedItems(), 2);
    EXPECT_EQ(list.CountCheckedItems(1), 1);
    EXPECT_EQ(list.CountCheckedItems(2), 0);
    EXPECT_EQ(list.CountCheckedItems(-1), 0);
    list.DeleteItem(0);
    EXPECT_EQ(list.CountCheckedItems(), 1);
    list.DeleteColumn(0);
    EXPECT_EQ(list.CountCheckedItems(), 1);
    list.DeleteAllItems();
    EXPECT_EQ(list.CountCheckedItems(), 0);
}

TEST_F(XListChecks, TheMarkInAHeading) {
    EXPECT_EQ(list.GetHeaderMark(0), -1);
    EXPECT_FALSE(list.SetHeaderCheckedState(2, 3));
    EXPECT_EQ(list.GetHeaderMark(2), -1);
    EXPECT_TRUE(list.SetHeaderCheckedState(0, 1));
    EXPECT_EQ(list.GetHeaderMark(0), 0);
    list.SetHeaderCheckedState(0, 2);
    EXPECT_EQ(list.GetHeaderMark(0), 1);
    list.SetHeaderCheckedState(0, 99);
    EXPECT_EQ(list.GetHeaderCheckedState(0), 3);
    EXPECT_EQ(list.GetHeaderCheckedState(5), 0);
    EXPECT_EQ(list.GetHeaderCheckedState(-1), 0);
    EXPECT_EQ(list.GetHeaderMark(-1), -1);
    EXPECT_EQ(list.GetHeaderMark(0), 0); // no box at all
    for (int i = 0; i < 3; ++i)
        list.SetCheckbox(i, 0, 0);
    EXPECT_EQ(list.GetHeaderMark(0), 0);
    list.SetCheckbox(0, 0, 1);
    EXPECT_EQ(list.GetHeaderMark(0), 2);
    list.SetCheckbox(1, 0, 1);
    list.SetCheckbox(2, 0, 1);
    EXPECT_EQ(list.GetHeaderMark(0), 1); // the row without a box does not count
}

TEST_F(XListChecks, ViewsHearOfMarks) {
    list.SetHeaderCheckedState(0, 3);
    ViewLog view(list);
    list.SetCheckbox(0, 0, 1);
    list.SetCheckbox(0, 0, 1);
    list.SetCheckbox(0, 1, 0);
    EXPECT_EQ(view.Take(), (Events{"item 0 0", "header 0", "item 0 1"}));
    list.SetHeaderCheckedState(1, 1);
    EXPECT_EQ(view.Take(), Events{"header 1"});
}

TEST_F(XListChecks, TogglingByTheUser) {
    EXPECT_FALSE(list.ToggleCheckbox(0, 0));
    list.SetCheckbox(0, 0, 0);
    EXPECT_TRUE(list.ToggleCheckbox(0, 0));
    EXPECT_EQ(list.GetCheckbox(0, 0), 1);
    EXPECT_TRUE(list.ToggleCheckbox(0, 0));
    EXPECT_EQ(list.GetCheckbox(0, 0), 0);
    list.SetEnabled(0, false);
    EXPECT_FALSE(list.ToggleCheckbox(0, 0));
    EXPECT_FALSE(list.ToggleCheckbox(9, 0));
    EXPECT_TRUE(list.SetCheckbox(0, 0, 1)); // the program may
}

TEST_F(XListChecks, AClickOnAHeading) {
    for (int i = 0; i < 3; ++i)
        list.SetCheckbox(i, 0, 0);
    list.SetEnabled(2, false);
    EXPECT_EQ(list.ClickColumn(0), 0); // no box in the heading
    EXPECT_EQ(list.CountCheckedItems(), 0);
    list.SetHeaderCheckedState(0, 3);
    ViewLog view(list);
    EXPECT_EQ(list.ClickColumn(0), 0);
    EXPECT_EQ(view.Take(), Events{"content"});
    EXPECT_EQ(list.CountCheckedItems(), 2);
    EXPECT_EQ(list.GetHeaderMark(0), 2);
    list.ClickColumn(0); // still not all of them
    EXPECT_EQ(list.CountCheckedItems(), 2);
    list.SetCheckbox(2, 0, 1);
    list.ClickColumn(0);
    EXPECT_EQ(list.CountCheckedItems(), 1); // the disabled one stays
    list.SetHeaderCheckedState(0, 1);
    list.ClickColumn(0);
    EXPECT_EQ(list.GetHeaderCheckedState(0), 2);
    EXPECT_EQ(list.CountCheckedItems(), 3);
    list.ClickColumn(0);
    EXPECT_EQ(list.GetHeaderCheckedState(0), 1);
    EXPECT_EQ(list.CountCheckedItems(), 1);
    EXPECT_EQ(list.ClickColumn(7), 0);
}

TEST_F(XListChecks, Combos) {
    std::map<int, CString> choices{{-1, L"none"}, {4, L"four"}, {5, L"five"}};
    std::vector<std::pair<int, int>> chosen;
    list.SetChangeCallback([&](int item, int column) {
        EXPECT_EQ(list.GetComboCurSel(item, column), 5); // it has settled
        EXPECT_EQ(list.GetItemText(item, column), L"five");
        chosen.emplace_back(item, column);
    });
    EXPECT_EQ(list.GetComboBox(1, 1), nullptr);
    EXPECT_EQ(list.GetComboCurSel(1, 1), -1);
    EXPECT_FALSE(list.ChooseInCombo(1, 1, 4));
    EXPECT_FALSE(list.SetComboBox(9, 1, choices, 4));
    EXPECT_EQ(list.GetComboBox(9, 1), nullptr);
    EXPECT_EQ(list.GetComboCurSel(9, 1), -1);
    EXPECT_FALSE(list.ChooseInCombo(9, 1, 4));
    EXPECT_TRUE(list.SetComboBox(1, 1, choices, 4));
    EXPECT_EQ(list.GetComboBox(1, 1), &choices);
    EXPECT_EQ(list.GetItemText(1, 1), L"four");
    EXPECT_EQ(list.GetComboCurSel(1, 1), 4);
    EXPECT_TRUE(chosen.empty());
    EXPECT_TRUE(list.SetComboBox(2, 1, choices, 77)); // the map lacks it
    EXPECT_EQ(list.GetItemText(2, 1), L"");
    EXPECT_EQ(list.GetComboCurSel(2, 1), 77);

    ViewLog view(list);
    EXPECT_FALSE(list.ChooseInCombo(1, 1, 6));
    EXPECT_TRUE(list.ChooseInCombo(1, 1, 4)); // as it is
    EXPECT_TRUE(chosen.empty());
    EXPECT_TRUE(list.ChooseInCombo(1, 1, 5));
    EXPECT_EQ(chosen, (std::vector<std::pair<int, int>>{{1, 1}}));
    EXPECT_EQ(view.Take(), Events{"item 1 1"});
    list.SetEnabled(1, false);
    EXPECT_FALSE(list.ChooseInCombo(1, 1, 4));
    list.SetEnabled(1, true);
    choices.erase(4);
    EXPECT_FALSE(list.ChooseInCombo(1, 1, 4)); // offered no longer
    list.SetChangeCallback({});
    EXPECT_TRUE(list.ChooseInCombo(1, 1, -1));
    EXPECT_EQ(list.GetItemText(1, 1), L"none");
    EXPECT_TRUE(list.RemoveComboBox(1, 1));
    EXPECT_FALSE(list.RemoveComboBox(1, 1));
    EXPECT_FALSE(list.RemoveComboBox(9, 1));
    EXPECT_EQ(list.GetComboCurSel(1, 1), -1);
    EXPECT_EQ(list.GetItemText(1, 1), L"none");
}

TEST_F(XListChecks, ACallbackMayReplaceItself) {
    std::map<int, CString> const choices{{1, L"one"}, {2, L"two"}};
    int calls = 0;
    list.SetComboBox(0, 0, choices, 1);
    list.SetChangeCallback([&](int, int) {
        list.SetChangeCallback({});
        ++calls;
    });
    list.ChooseInCombo(0, 0, 2);
    list.ChooseInCombo(0, 0, 1);
    EXPECT_EQ(calls, 1);
}

TEST_F(XListChecks, AViewMayDestroyTheListInTheMiddle) {
    struct Destroyer : CWndView {
        std::unique_ptr<CXListCtrl> doomed = std::make_unique<CXListCtrl>();
        void OnItemChanged(int, int) override { doomed.reset(); }
    };
    std::map<int, CString> const choices{{1, L"one"}, {2, L"two"}};
    for (int const what : {0, 1}) {
        Destroyer view;
        bool called = false;
        CXListCtrl& doomed = *view.doomed;
        doomed.InsertColumn(0, L"a");
        doomed.InsertItem(0, L"row");
        doomed.SetHeaderCheckedState(0, 3);
        doomed.SetComboBox(0, 0, choices, 1);
        doomed.SetChangeCallback([&](int, int) { called = true; });
        view.Attach(doomed);
        if (what == 0)
            EXPECT_TRUE(doomed.ChooseInCombo(0, 0, 2));
        else
            EXPECT_TRUE(doomed.SetCheckbox(0, 0, 1));
        EXPECT_EQ(view.doomed, nullptr);
        EXPECT_FALSE(called);
    }
}

} // namespace
