// The range grid under real hands.
#include <paramdb/controls/pentad_range_select_ctrl.h>
#include <paramdb/views/qt/theme.h>

#include <random>
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

TEST_F(QtRangeGridView, MarksRangesWithTheMouse) {
    Open({10, 4});
    ClickCell(view, 2, 0);
    EXPECT_EQ(Selected(0), (Rows{2}));
    ClickCell(view, 5, 0, Qt::ShiftModifier);
    EXPECT_EQ(Selected(0), (Rows{2, 3, 4, 5}));
    ClickCell(view, 1, 0, Qt::ShiftModifier);
    EXPECT_EQ(Selected(0), (Rows{1, 2}));
    ClickCell(view, 8, 0, Qt::ControlModifier);
    ClickCell(view, 1, 0, Qt::ControlModifier);
    EXPECT_EQ(Selected(0), (Rows{2, 8}));
    ClickCell(view, 3, 1);
    EXPECT_EQ(Selected(0), (Rows{2, 8})); // one column leaves the other alone
    EXPECT_EQ(Selected(1), (Rows{3}));
    ClickCell(view, 7, 1); // an empty cell
    EXPECT_EQ(Selected(1), (Rows{3}));
    ClickHeading(view, 1);
    EXPECT_EQ(Selected(1), (Rows{0, 1, 2, 3}));
}

TEST_F(QtRangeGridView, MarksRangesWithTheKeyboard) {
    Open({10, 4});
    Key(Qt::Key_Home);
    Key(Qt::Key_Down);
    EXPECT_TRUE(Selected(0).empty()); // arrows alone mark nothing
    Key(Qt::Key_Space);
    EXPECT_EQ(Selected(0), (Rows{1}));
    Key(Qt::Key_Down, Qt::ShiftModifier);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3}));
    Key(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(Selected(0), (Rows{0, 1}));
    Key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    Key(Qt::Key_Up);
    Key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3, 4, 5, 6, 7, 9}));
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    Key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(Selected(0), (Rows{6, 7, 8}));
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Selected(0).size(), 10U);
    EXPECT_TRUE(Selected(1).empty());
}

TEST_F(QtRangeGridView, TheKeyboardStaysWhereThereAreTexts) {
    Open({10, 4});
    Key(Qt::Key_End);
    EXPECT_EQ(grid.GetFocusItem(), 9);
    Key(Qt::Key_Right);
    EXPECT_EQ(view.Table().currentIndex(), view.Table().model()->index(3, 1));
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.GetFocusItem(), 3);
    Key(Qt::Key_Home);
    Key(Qt::Key_Space);
    Key(Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_EQ(Selected(1), (Rows{0, 1, 2, 3}));
}

TEST_F(QtRangeGridView, TheSelectionOutlivesTheKeyboardAndShowsIt) {
    Open({10});
    ClickCell(view, 1, 0);
    ClickCell(view, 3, 0, Qt::ShiftModifier);
    auto const background = [&](int row) {
        QImage const picture = view.Table().viewport()->grab().toImage();
        QRect const cell = view.Table().visualRect(view.Table().model()->index(row, 0));
        return picture.pixelColor((cell.topRight() - QPoint(4, -4)) * picture.devicePixelRatio());
    };
    QPalette const palette = view.palette();
    COLORREF text = 0;
    COLORREF mark = 0;
    grid.GetItemColors(2, 0, text, mark);
    EXPECT_EQ(mark, CWnd::GetSysColor(13));
    EXPECT_EQ(background(2), palette.color(QPalette::Highlight));
    m_elsewhere.setFocus();
    Settle();
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3}));
    grid.GetItemColors(2, 0, text, mark);
    EXPECT_EQ(mark, CWnd::GetSysColor(15));
    EXPECT_EQ(background(2), paramdb::qt::InactiveSelection(palette));
    EXPECT_EQ(background(5), palette.color(QPalette::Base));
    view.setFocus();
    Settle();
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3}));
    grid.GetItemColors(2, 0, text, mark);
    EXPECT_EQ(mark, CWnd::GetSysColor(13));
}

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

TEST_F(QtRangeGridView, CellsAreFoundWhenScrolledSideways) {
    Open({40, 40, 40, 40, 40, 40});
    m_window.resize(300, 200);
    Settle();
    auto& table = view.Table();
    table.horizontalScrollBar()->setValue(table.horizontalScrollBar()->maximum());
    table.verticalScrollBar()->setValue(7 * table.rowHeight(0));
    Settle();
    ASSERT_GT(table.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(grid.GetScrollPos(),
              CPoint(table.horizontalScrollBar()->value(), table.verticalScrollBar()->value()));
    QModelIndex const index = table.indexAt(QPoint(2, 30)); // a cell that sticks out on the left
    ASSERT_TRUE(index.isValid());
    int const x = table.horizontalScrollBar()->value();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, QPoint(2, 30));
    Settle();
    EXPECT_EQ(Selected(index.column()), (Rows{index.row()}));
    EXPECT_EQ(table.horizontalScrollBar()->value(), x); // what is clicked does not move away
    ClickCell(view, 39, 5, Qt::ControlModifier);
    EXPECT_EQ(Selected(5), (Rows{39}));
}

TEST_F(QtRangeGridView, LongColumnsAreMarkedAtOnce) {
    Open({20'000, 20'000, 20'000});
    ClickCell(view, 10, 1);
    ClickCell(view, 19'999, 1, Qt::ShiftModifier);
    EXPECT_EQ(Selected(1).size(), 19'990U);
    EXPECT_EQ(view.Table().currentIndex(), view.Table().model()->index(19'999, 1));
}

// Hands at random, beside a plain model of what they mean.
TEST_F(QtRangeGridView, FollowsAPlainModel) {
    constexpr unsigned int seed = 3;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    auto const up_to = [&](std::size_t count) { return static_cast<int>(random() % count); };
    std::vector<int> const lengths{30, 7, 55};
    Open(lengths);

    struct Column {
        std::set<int> selected;
        int anchor = -1;
    };
    std::vector<Column> model(lengths.size());
    int const rows = 55;
    for (int step = 0; step < 400; ++step) {
        int const c = up_to(lengths.size());
        Column& column = model[static_cast<std::size_t>(c)];
        int const length = lengths[static_cast<std::size_t>(c)];
        int const row = up_to(static_cast<std::size_t>(rows));
        Qt::KeyboardModifiers keys;
        switch (up_to(8)) {
        case 0:
            ClickHeading(view, c);
            for (int r = 0; r < length; ++r)
                column.selected.insert(r);
            column.anchor = -1;
            break;
        case 1:
            m_elsewhere.setFocus();
            break;
        case 2:
            view.setFocus();
            break;
        default:
            keys.setFlag(Qt::ControlModifier, up_to(3) == 0);
            keys.setFlag(Qt::ShiftModifier, up_to(2) == 0);
            if (up_to(3) == 0) { // by keyboard
                view.Table().setFocus();
                view.Table().setCurrentIndex(view.Table().model()->index(row, c));
                QTest::keyClick(&view.Table(), Qt::Key_Space, keys);
            } else {
                ClickCell(view, row, c, keys);
            }
            if (row >= length)
                break;
            if (keys & Qt::ControlModifier) {
                if (column.selected.erase(row) == 0)
                    column.selected.insert(row);
                column.anchor = row;
            } else if ((keys & Qt::ShiftModifier) && column.anchor >= 0) {
                column.selected.clear();
                for (int r = std::min(row, column.anchor); r <= std::max(row, column.anchor); ++r)
                    column.selected.insert(r);
            } else {
                column.selected = {row};
                column.anchor = row;
            }
        }
        for (int i = 0; i < static_cast<int>(lengths.size()); ++i) {
            std::set<int> const& expected = model[static_cast<std::size_t>(i)].selected;
            ASSERT_EQ(Selected(i), Rows(expected.begin(), expected.end()))
                << "step " << step << " column " << i;
        }
    }
}
