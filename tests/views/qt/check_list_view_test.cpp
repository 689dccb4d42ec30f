// The check list of key values under real hands.
#include <paramdb/controls/clavis_list_ctrl.h>

#include <tests/views/qt/gearbox.h>
#include <tests/views/qt/view_test.h>

using paramdb::qt::ListView;

namespace {

class QtCheckListView : public ViewTest {
protected:
    static void SetUpTestSuite() { Gearbox::Load(); }
    static void TearDownTestSuite() { Gearbox::Unload(); }

    QtCheckListView() {
        list.Create();
        list.Init(Clavis::qInstrParam);
        list.Fill({1001, 1003}, 0);
        view.SetList(&list);
        Show(view);
    }

    std::set<int> Picked() {
        std::set<int> ids;
        list.Retrieve(ids);
        return ids;
    }
    // The id of a row on the screen.
    int Id(int row) {
        auto const& model = dynamic_cast<paramdb::qt::ListModel const&>(*view.Table().model());
        return static_cast<int>(list.GetItemData64(model.ItemOf(row)));
    }

    CClavisListCtrl list;
    ListView view;
};

} // namespace

TEST_F(QtCheckListView, AClickAnywhereInARowSwitchesIt) {
    EXPECT_FALSE(list.Changes());
    ClickCell(view, 1, 0); // in the middle of the text
    EXPECT_TRUE(list.Changes());
    EXPECT_EQ(Picked(), (std::set<int>{1001, 1002, 1003}));
    EXPECT_FALSE(list.Changes());
    ClickCell(view, 0, 0, {}, QPoint(3, 3)); // on the box
    EXPECT_EQ(Picked(), (std::set<int>{1002, 1003}));
}

TEST_F(QtCheckListView, TheHeadingSwitchesAll) {
    EXPECT_EQ(view.Table().model()->headerData(0, Qt::Horizontal, Qt::CheckStateRole).toInt(),
              Qt::PartiallyChecked);
    ClickHeading(view, 0);
    EXPECT_EQ(Picked(), (std::set<int>{-1}));
    EXPECT_EQ(view.Table().model()->headerData(0, Qt::Horizontal, Qt::CheckStateRole).toInt(), Qt::Checked);
    ClickHeading(view, 0);
    EXPECT_TRUE(Picked().empty());
}

TEST_F(QtCheckListView, PicksByTyping) {
    Type(view.Table(), "c");
    Type(view.FilterEdit(), "epstrum");
    ASSERT_EQ(Shown(view).size(), 1U);
    int const cepstrum = Id(0);
    Press(view.FilterEdit(), Qt::Key_Return);
    Press(view.Table(), Qt::Key_Space);
    Press(view.Table(), Qt::Key_Escape);
    EXPECT_EQ(Picked(), (std::set<int>{1001, 1003, cepstrum}));
}

TEST_F(QtCheckListView, ANewFillingShowsAtOnce) {
    ClickCell(view, 5, 0);
    list.Init(Clavis::qMode);
    list.Fill({-1}, 0);
    Settle();
    EXPECT_EQ(Shown(view).size(), static_cast<std::size_t>(list.GetItemCount()));
    EXPECT_EQ(Shown(view).front(), "Idle");
    EXPECT_EQ(view.Table().model()->headerData(0, Qt::Horizontal, Qt::DisplayRole),
              QStringLiteral("all test steps"));
    EXPECT_EQ(view.Table().accessibleName(), QStringLiteral("all test steps"));
    ClickCell(view, 0, 0);
    std::set<int> const picked = Picked();
    EXPECT_EQ(picked.size(), static_cast<std::size_t>(list.GetItemCount()) - 1);
    EXPECT_FALSE(picked.contains(-1));
}
