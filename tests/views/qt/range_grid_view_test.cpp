// The range grid: what the Qt view alone does.
#include <paramdb/controls/pentad_range_select_ctrl.h>
#include <paramdb/views/qt/theme.h>

#include <tests/views/qt/view_test.h>

using paramdb::qt::ListView;

namespace {

class QtRangeGridView : public ViewTest {
protected:
    // Columns of those lengths; ids are ten for each row.
    void Open(std::vector<int> const& lengths) {
        CPentadRangeSelectCtrl::List lists[6];
        std::bitset<6> mask;
        for (std::size_t column = 0; column < lengths.size(); ++column) {
            mask.set(column);
            for (int row = 0; row < lengths[column]; ++row)
                lists[column].emplace(row * 10,
                                      (L"c" + std::to_wstring(column) + L" " + std::to_wstring(row)).c_str());
        }
        grid.set_mask(mask);
        grid.send_pentad_list(lists);
        grid.Create();
        view.SetList(&grid);
        Show(view, {700, 300});
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) { Press(view.Table(), key, keys); }
    // The rows that are selected in a column.
    std::vector<int> Selected(int column) {
        std::map<int, bool> all[6];
        grid.retrieve(all);
        std::vector<int> rows;
        for (auto const& [id, selected] : all[column]) {
            if (selected)
                rows.push_back(id / 10);
        }
        return rows;
    }

    CPentadRangeSelectCtrl grid;
    ListView view;
};

using Rows = std::vector<int>;

} // namespace

TEST_F(QtRangeGridView, TheSelectionOutlivesADarkPalette) {
    Open({10});
    ClickCell(view, 1, 0);
    QPalette const before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, Qt::darkMagenta);
    QApplication::setPalette(dark);
    Settle();
    EXPECT_EQ(Selected(0), (Rows{1}));
    ClickCell(view, 4, 0, Qt::ShiftModifier);
    m_elsewhere.setFocus();
    Settle();
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3, 4}));
    QApplication::setPalette(before);
    Settle();
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3, 4}));
}

TEST_F(QtRangeGridView, TypingFindsAndHidesNothing) {
    Open({120, 4});
    Key(Qt::Key_Home);
    Type(view.Table(), "1");
    Type(view.FilterEdit(), "0");
    EXPECT_EQ(Shown(view).size(), 120U);
    EXPECT_EQ(grid.GetFocusItem(), 10);
    Press(view.FilterEdit(), Qt::Key_Return);
    EXPECT_EQ(grid.GetFocusItem(), 100);
    Press(view.FilterEdit(), Qt::Key_Return);
    Press(view.FilterEdit(), Qt::Key_Return);
    Press(view.FilterEdit(), Qt::Key_Return);
    EXPECT_EQ(grid.GetFocusItem(), 103);
    Press(view.FilterEdit(), Qt::Key_Escape);
    EXPECT_EQ(grid.GetFocusItem(), 103);
    Key(Qt::Key_Space);
    EXPECT_EQ(Selected(0), (Rows{103}));
}
