#include <paramdb/views/qt/choice_box.h>

#include <QtWidgets/QCompleter>
#include <map>
#include <random>
#include <tests/views/qt/view_test.h>

using paramdb::qt::ChoiceBox;
using paramdb::qt::ListView;

namespace {

using Texts = std::vector<std::string>;

class QtListKeys : public ViewTest {
protected:
    QtListKeys() {
        list.InsertColumn(0, L"Name", LVCFMT_LEFT, 150);
        list.InsertColumn(1, L"Value", LVCFMT_LEFT, 100);
    }

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
        view.SetList(&list);
        Show(view);
        list.SetFocusItem(0);
        Settle();
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) { Press(view.Table(), key, keys); }
    std::vector<int> Checked() {
        std::vector<int> items;
        for (int item = 0; item < list.GetItemCount(); ++item) {
            if (list.GetCheckbox(item, 0) > 0)
                items.push_back(item);
        }
        return items;
    }
    ChoiceBox* Editor(int row) {
        return dynamic_cast<ChoiceBox*>(view.Table().Editor(view.Table().model()->index(row, 1)));
    }

    std::map<int, CString> choices{{-1, L"-"}, {1, L"Left ear"}, {2, L"Right ear"}, {3, L"Foot"}};
    std::vector<std::pair<int, int>> changes;
    CXListCtrl list;
    ListView view;
};

std::vector<std::wstring> const Names{L"Ramp up", L"Ramp down", L"Idle", L"Tramp", L"Stop"};

} // namespace

TEST_F(QtListKeys, TypingNarrowsAndGoesToTheFirstThatBeginsSo) {
    OpenChecks({L"Tramp", L"Idle", L"Ramp up", L"ramp down", L"Stop"});
    list.SetCheckbox(1, 0, 1);
    Type(view.Table(), "r");
    ASSERT_TRUE(view.FilterEdit().isVisible());
    EXPECT_TRUE(view.FilterEdit().hasFocus());
    Type(view.FilterEdit(), "AMP");
    EXPECT_EQ(Shown(view), (Texts{"Tramp", "Ramp up", "ramp down"}));
    EXPECT_EQ(list.GetFocusItem(), 2);
    Press(view.FilterEdit(), Qt::Key_Down);
    EXPECT_TRUE(view.Table().hasFocus());
    EXPECT_EQ(list.GetFocusItem(), 3);
    Key(Qt::Key_Down);
    EXPECT_EQ(list.GetFocusItem(), 3);
    Key(Qt::Key_Space);
    Key(Qt::Key_Home);
    EXPECT_EQ(list.GetFocusItem(), 0);
    Key(Qt::Key_End);
    EXPECT_EQ(list.GetFocusItem(), 3);
    EXPECT_EQ(Checked(), (std::vector<int>{1, 3})); // what is out of sight keeps its mark
    Key(Qt::Key_Escape);
    EXPECT_FALSE(view.FilterEdit().isVisible());
    EXPECT_EQ(Shown(view).size(), 5U);
    EXPECT_EQ(list.GetFocusItem(), 3);
    EXPECT_EQ(view.Table().currentIndex().row(), 3);
    EXPECT_EQ(Checked(), (std::vector<int>{1, 3}));
}

TEST_F(QtListKeys, ControlFOpensTheLine) {
    OpenChecks(Names);
    Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(view.FilterEdit().hasFocus());
    Type(view.FilterEdit(), "nothing");
    EXPECT_TRUE(Shown(view).empty());
    Press(view.FilterEdit(), Qt::Key_Down); // nowhere to go
    Key(Qt::Key_Space);
    Press(view.FilterEdit(), Qt::Key_Escape);
    EXPECT_EQ(Shown(view).size(), Names.size());
    EXPECT_TRUE(view.Table().hasFocus());
    EXPECT_TRUE(Checked().empty());
}

TEST_F(QtListKeys, ClicksInANarrowedListGoToTheItemThatIsSeen) {
    std::vector<std::wstring> names;
    for (int i = 0; i < 300; ++i)
        names.push_back(i % 50 == 49 ? L"found " + std::to_wstring(i) : std::to_wstring(i));
    OpenChecks(names);
    view.OpenFilter();
    Type(view.FilterEdit(), "found");
    ASSERT_EQ(Shown(view).size(), 6U);
    ClickCell(view, 4, 0, {}, QPoint(3, 3));
    EXPECT_EQ(Checked(), (std::vector<int>{249}));
    EXPECT_EQ(view.Table().currentIndex().row(), 4);
    ClickCell(view, 0, 0, {}, QPoint(3, 3));
    EXPECT_EQ(Checked(), (std::vector<int>{49, 249}));
}

TEST_F(QtListKeys, AHeadingSwitchesWhatIsShown) {
    OpenChecks(Names);
    list.SetCheckbox(4, 0, 1);
    list.SetCheckbox(0, 0, 1);
    list.SetEnabled(3, false);
    view.OpenFilter();
    Type(view.FilterEdit(), "ramp");
    ClickHeading(view, 0);
    EXPECT_EQ(Checked(), (std::vector<int>{0, 1, 4}));
    ClickHeading(view, 0);
    EXPECT_EQ(Checked(), (std::vector<int>{4}));
    view.CloseFilter();
    EXPECT_EQ(Checked(), (std::vector<int>{4}));
}

TEST_F(QtListKeys, AListThatChangesStaysNarrowed) {
    OpenChecks(Names);
    view.OpenFilter();
    Type(view.FilterEdit(), "ramp");
    list.InsertItem(0, L"First ramp");
    list.DeleteItem(2);
    Settle();
    EXPECT_EQ(Shown(view), (Texts{"First ramp", "Ramp up", "Tramp"}));
}

// Hands at random on a narrowed list of boxes, beside a plain model of it.
TEST_F(QtListKeys, BoxesFollowAPlainModel) {
    constexpr unsigned int seed = 5;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    auto const up_to = [&](std::size_t count) { return static_cast<int>(random() % count); };
    std::vector<std::wstring> names;
    for (int i = 0; i < 60; ++i)
        names.push_back(std::to_wstring(100 + i * 7));
    OpenChecks(names);
    std::vector<bool> expected(names.size());
    std::wstring filter;
    auto const shown = [&] {
        std::vector<std::size_t> items;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i].find(filter) != std::wstring::npos)
                items.push_back(i);
        }
        return items;
    };
    for (int step = 0; step < 300; ++step) {
        auto const items = shown();
        switch (up_to(5)) {
        case 0:
            filter = random() % 3 == 0 ? L"" : std::to_wstring(up_to(40));
            view.OpenFilter();
            view.FilterEdit().setText(QString::fromStdWString(filter));
            break;
        case 1:
            ClickHeading(view, 0);
            {
                bool all = true;
                for (std::size_t const item : items)
                    all = all && expected[item];
                for (std::size_t const item : items)
                    expected[item] = !all;
            }
            break;
        default:
            if (items.empty())
                break;
            int const row = up_to(items.size());
            std::size_t const item = items[static_cast<std::size_t>(row)];
            expected[item] = !expected[item];
            if (random() % 2 == 0) {
                ClickCell(view, row, 0, {}, QPoint(4, 4));
            } else {
                view.Table().setFocus();
                view.Table().setCurrentIndex(view.Table().model()->index(row, 0));
                QTest::keyClick(&view.Table(), Qt::Key_Space);
            }
        }
        for (std::size_t i = 0; i < names.size(); ++i)
            ASSERT_EQ(list.GetCheckbox(static_cast<int>(i), 0) > 0, expected[i])
                << "step " << step << " item " << i;
    }
}

TEST_F(QtListKeys, TypingInARowWithAComboNarrowsTheCombo) {
    OpenCombos();
    Key(Qt::Key_Down);
    Type(view.Table(), "f");
    ChoiceBox* const editor = Editor(1);
    ASSERT_NE(editor, nullptr);
    EXPECT_FALSE(view.FilterEdit().isVisible());
    EXPECT_EQ(editor->lineEdit()->text(), QStringLiteral("f"));
    EXPECT_EQ(editor->accessibleName(), QStringLiteral("Channel"));
    Type(*editor, "o");
    Press(*editor, Qt::Key_Return);
    EXPECT_EQ(list.GetComboCurSel(1, 1), 3);
    EXPECT_EQ(Editor(1), nullptr);
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{1, 1}}));
}

TEST_F(QtListKeys, WhatIsNoChoiceChangesNothing) {
    OpenCombos();
    Type(view.Table(), "e"); // two contain it
    Press(*Editor(0), Qt::Key_Return);
    EXPECT_EQ(list.GetComboCurSel(0, 1), 2);
    EXPECT_EQ(list.GetItemText(0, 1), L"Right ear");
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(Editor(0), nullptr);
}
