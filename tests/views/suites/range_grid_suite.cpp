// The range grid under real hands.
#include <paramdb/controls/pentad_range_select_ctrl.h>

#include <algorithm>
#include <random>
#include <tests/views/suites/view_suite.h>

namespace {

class RangeGridSuite : public ViewSuite {
protected:
    ~RangeGridSuite() override { view.reset(); }

    // Columns of those lengths; ids are ten for each row.
    void Open(std::vector<int> const& lengths, CSize size = {700, 300}) {
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
        view->Show(grid, size);
    }
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
};

using Rows = std::vector<int>;

} // namespace

TEST_F(RangeGridSuite, MarksRangesWithTheMouse) {
    Open({10, 4});
    ClickCell(2, 0);
    EXPECT_EQ(Selected(0), (Rows{2}));
    ClickCell(5, 0, {.shift = true});
    EXPECT_EQ(Selected(0), (Rows{2, 3, 4, 5}));
    ClickCell(1, 0, {.shift = true});
    EXPECT_EQ(Selected(0), (Rows{1, 2}));
    ClickCell(8, 0, {.control = true});
    ClickCell(1, 0, {.control = true});
    EXPECT_EQ(Selected(0), (Rows{2, 8}));
    ClickCell(3, 1);
    EXPECT_EQ(Selected(0), (Rows{2, 8})); // one column leaves the other alone
    EXPECT_EQ(Selected(1), (Rows{3}));
    ClickCell(7, 1); // an empty cell
    EXPECT_EQ(Selected(1), (Rows{3}));
    view->ClickHeading(1);
    EXPECT_EQ(Selected(1), (Rows{0, 1, 2, 3}));
}

TEST_F(RangeGridSuite, MarksRangesWithTheKeyboard) {
    Open({10, 4});
    view->Press(Key::home);
    view->Press(Key::down);
    EXPECT_TRUE(Selected(0).empty()); // arrows alone mark nothing
    view->Press(Key::space);
    EXPECT_EQ(Selected(0), (Rows{1}));
    view->Press(Key::down, {.shift = true});
    view->Press(Key::down, {.shift = true});
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3}));
    view->Press(Key::home, {.shift = true});
    EXPECT_EQ(Selected(0), (Rows{0, 1}));
    view->Press(Key::end, {.shift = true});
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    view->Press(Key::up);
    view->Press(Key::space, {.control = true});
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3, 4, 5, 6, 7, 9}));
    view->Press(Key::up);
    view->Press(Key::up);
    view->Press(Key::space, {.shift = true});
    EXPECT_EQ(Selected(0), (Rows{6, 7, 8}));
    view->Press(Key::a, {.control = true});
    EXPECT_EQ(Selected(0).size(), 10U);
    EXPECT_TRUE(Selected(1).empty());
}

TEST_F(RangeGridSuite, TheKeyboardStaysWhereThereAreTexts) {
    Open({10, 4});
    view->Press(Key::end);
    EXPECT_EQ(grid.GetFocusItem(), 9);
    view->Press(Key::right);
    EXPECT_EQ(view->Current(), std::pair(3, 1));
    view->Press(Key::down);
    EXPECT_EQ(grid.GetFocusItem(), 3);
    view->Press(Key::home);
    view->Press(Key::space);
    view->Press(Key::page_down, {.shift = true});
    EXPECT_EQ(Selected(1), (Rows{0, 1, 2, 3}));
}

TEST_F(RangeGridSuite, TheSelectionStaysWhenTheKeyboardGoes) {
    Open({10});
    ClickCell(1, 0);
    ClickCell(3, 0, {.shift = true});
    auto const background = [&](int row) {
        CRect const cell = view->Cell(row, 0);
        return view->Pixel(
            CPoint(static_cast<int>(cell.right) - 4, static_cast<int>(cell.top) + cell.Height() / 2));
    };
    COLORREF text = 0;
    COLORREF mark = 0;
    grid.GetItemColors(2, 0, text, mark);
    EXPECT_EQ(mark, CWnd::GetSysColor(13));
    EXPECT_EQ(background(2), view->Color(ViewDriver::Shade::selected));
    view->FocusElsewhere();
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3}));
    grid.GetItemColors(2, 0, text, mark);
    EXPECT_EQ(mark, CWnd::GetSysColor(15));
    EXPECT_EQ(background(2), view->Color(ViewDriver::Shade::selected_without_keyboard));
    EXPECT_EQ(background(5), view->Color(ViewDriver::Shade::paper));
    view->Focus();
    EXPECT_EQ(Selected(0), (Rows{1, 2, 3}));
    grid.GetItemColors(2, 0, text, mark);
    EXPECT_EQ(mark, CWnd::GetSysColor(13));
    EXPECT_EQ(background(2), view->Color(ViewDriver::Shade::selected));
}

TEST_F(RangeGridSuite, CellsAreFoundWhenScrolledSideways) {
    Open({40, 40, 40, 40, 40, 40}, {300, 220});
    int const height = grid.GetMetrics().row_height;
    view->ScrollTo(CPoint(100'000, 7 * height));
    CPoint const scroll = view->Scroll();
    ASSERT_GT(scroll.x, 0);
    EXPECT_EQ(scroll.y, 7 * height);
    EXPECT_EQ(grid.GetScrollPos(), scroll);
    CPoint const point(2,
                       static_cast<int>(view->RowsInSight().top) + 2 * height + 4); // sticks out on the left
    LVHITTESTINFO hit{};
    hit.pt = point;
    ASSERT_EQ(grid.HitTest(&hit), 9);
    ASSERT_LT(view->Cell(9, hit.iSubItem).left, 2);
    view->Click(point);
    EXPECT_EQ(Selected(hit.iSubItem), (Rows{9}));
    EXPECT_EQ(view->Scroll(), scroll); // what is clicked does not move away
    view->Press(Key::end);
    ClickCell(39, 5, {.control = true}, CPoint(10, 5));
    EXPECT_EQ(Selected(5), (Rows{39}));
}

TEST_F(RangeGridSuite, TheKeyboardBringsItsColumnIntoSight) {
    Open({40, 40, 40, 40, 40, 40}, {300, 220});
    view->Press(Key::home);
    for (int column = 1; column < 6; ++column)
        view->Press(Key::right);
    CRect const cell = view->Cell(0, 5);
    EXPECT_GE(cell.left, 0);
    EXPECT_LE(cell.right, view->RowsInSight().right);
    EXPECT_EQ(grid.GetScrollPos(), view->Scroll());
    view->Press(Key::space);
    EXPECT_EQ(Selected(5), (Rows{0}));
    for (int column = 5; column > 0; --column)
        view->Press(Key::left);
    EXPECT_EQ(view->Scroll().x, 0);
}

TEST_F(RangeGridSuite, LongColumnsAreMarkedAtOnce) {
    Open({20'000, 20'000, 20'000});
    ClickCell(10, 1);
    ClickCell(19'999, 1, {.shift = true});
    EXPECT_EQ(Selected(1).size(), 19'990U);
    EXPECT_EQ(view->Current(), std::pair(19'999, 1));
}

// Hands at random, beside a plain model of what they mean.
TEST_F(RangeGridSuite, FollowsAPlainModel) {
    constexpr unsigned int seed = 3;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    auto const up_to = [&](std::size_t count) { return static_cast<int>(random() % count); };
    std::vector<int> const lengths{30, 7, 55};
    Open(lengths);

    struct Column {
        std::set<int> selected;
        int anchor = -1;

        void Click(int row, Held held) {
            if (held.control) {
                if (selected.erase(row) == 0)
                    selected.insert(row);
                anchor = row;
            } else if (held.shift && anchor >= 0) {
                selected.clear();
                for (int r = std::min(row, anchor); r <= std::max(row, anchor); ++r)
                    selected.insert(r);
            } else {
                selected = {row};
                anchor = row;
            }
        }
    };
    std::vector<Column> model(lengths.size());
    for (int step = 0; step < view->RandomSteps(); ++step) {
        int const c = up_to(lengths.size());
        Column& column = model[static_cast<std::size_t>(c)];
        int const length = lengths[static_cast<std::size_t>(c)];
        int row = up_to(55);
        switch (up_to(8)) {
        case 0:
            view->ClickHeading(c);
            for (int r = 0; r < length; ++r)
                column.selected.insert(r);
            column.anchor = -1;
            break;
        case 1:
            view->FocusElsewhere();
            break;
        case 2:
            view->Focus();
            break;
        default:
            Held const held{.control = up_to(3) == 0, .shift = up_to(2) == 0};
            if (up_to(3) == 0) { // by keyboard, in the column where it is
                view->Focus();
                int const place = std::max(view->Current().second, 0);
                row = std::min(row, lengths[static_cast<std::size_t>(place)] - 1);
                grid.SetFocusItem(row);
                view->Settle();
                view->Press(Key::space, held);
                model[static_cast<std::size_t>(place)].Click(row, held);
            } else {
                ClickCell(row, c, held);
                if (row < length)
                    column.Click(row, held);
            }
        }
        for (int i = 0; i < static_cast<int>(lengths.size()); ++i) {
            std::set<int> const& expected = model[static_cast<std::size_t>(i)].selected;
            ASSERT_EQ(Selected(i), Rows(expected.begin(), expected.end()))
                << "step " << step << " column " << i;
        }
    }
}
