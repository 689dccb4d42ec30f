// The check list of key values: what the Qt view alone does.
#include <paramdb/controls/clavis_list_ctrl.h>

#include <tests/views/qt/view_test.h>
#include <tests/views/suites/gearbox.h>

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
