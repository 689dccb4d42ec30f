// The check list of key values under real hands.
#include <paramdb/controls/clavis_list_ctrl.h>

#include <tests/views/suites/gearbox.h>
#include <tests/views/suites/view_suite.h>

namespace {

class CheckListSuite : public ViewSuite {
protected:
    static void SetUpTestSuite() { Gearbox::Load(); }
    static void TearDownTestSuite() { Gearbox::Unload(); }

    CheckListSuite() {
        list.Create();
        list.Init(Clavis::qInstrParam);
        list.Fill({1001, 1003}, 0);
        view->Show(list, {400, 300});
    }
    ~CheckListSuite() override { view.reset(); }

    std::set<int> Picked() {
        std::set<int> ids;
        list.Retrieve(ids);
        return ids;
    }

    CClavisListCtrl list;
};

} // namespace

TEST_F(CheckListSuite, AClickAnywhereInARowSwitchesIt) {
    EXPECT_FALSE(list.Changes());
    EXPECT_EQ(view->Check(0), 1);
    EXPECT_EQ(view->Check(1), 0);
    ClickCell(1, 0); // in the middle of the text
    EXPECT_TRUE(list.Changes());
    EXPECT_EQ(Picked(), (std::set<int>{1001, 1002, 1003}));
    EXPECT_EQ(view->Check(1), 1);
    EXPECT_FALSE(list.Changes());
    ClickCell(0, 0, {}, CPoint(6, 6)); // on the box
    EXPECT_EQ(Picked(), (std::set<int>{1002, 1003}));
}

TEST_F(CheckListSuite, TheSpaceBarSwitchesRows) {
    view->Press(Key::home);
    view->Press(Key::down);
    view->Press(Key::space);
    EXPECT_EQ(Picked(), (std::set<int>{1001, 1002, 1003}));
    view->Press(Key::up);
    view->Press(Key::space);
    EXPECT_EQ(Picked(), (std::set<int>{1002, 1003}));
}

TEST_F(CheckListSuite, TheHeadingSwitchesAll) {
    view->ClickHeading(0);
    EXPECT_EQ(Picked(), (std::set<int>{-1}));
    EXPECT_EQ(view->Check(7), 1);
    view->ClickHeading(0);
    EXPECT_TRUE(Picked().empty());
    EXPECT_EQ(view->Check(0), 0);
}

TEST_F(CheckListSuite, ANewFillingShowsAtOnce) {
    ClickCell(5, 0);
    list.Init(Clavis::qMode);
    list.Fill({-1}, 0);
    view->Settle();
    EXPECT_EQ(view->Rows(), list.GetItemCount());
    EXPECT_EQ(view->Text(0, 0), "Idle");
    EXPECT_EQ(view->Heading(0), "all test steps");
    EXPECT_EQ(view->Name(), "all test steps");
    ClickCell(0, 0);
    std::set<int> const picked = Picked();
    EXPECT_EQ(picked.size(), static_cast<std::size_t>(list.GetItemCount()) - 1);
    EXPECT_FALSE(picked.contains(-1));
}
