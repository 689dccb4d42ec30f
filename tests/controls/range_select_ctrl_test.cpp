#include <paramdb/controls/range_select_ctrl.h>
#include <paramdb/platform/framework/sys_color.h>

#include <tests/controls/control_world.h>
#include <tests/controls/range_grid.h>
#include <tests/support/view_log.h>

namespace {

class RangeSelectCtrl : public ControlTest {
protected:
    RangeSelectCtrl() {
        grid.lists[0] = {{1, L"a1"}, {2, L"a2"}, {3, L"a3"}, {4, L"a4"}};
        grid.lists[2] = {{9, L"c9"}, {5, L"c5"}};
        grid.lists[5] = {{7, L"f7"}, {7, L"e7"}, {8, L""}};
    }
    // Columns: 0 list 0, 1 list 2, 2 list 5.
    void CreateWithGap() {
        grid.set_mask(0b100101);
        ASSERT_TRUE(grid.Create());
    }

    Grid<6> grid;
};

TEST_F(RangeSelectCtrl, FillsEachColumnFromTheTop) {
    EXPECT_EQ(CRangeSelectCtrl<6>::m_size, 6u);
    EXPECT_EQ(CRangeSelectCtrl<7>::m_size, 7u);
    EXPECT_TRUE(grid.mask().all());
    grid.SetExtendedStyle(0x21);
    CreateWithGap();
    EXPECT_EQ(grid.mask(), 0b100101u);
    ASSERT_EQ(grid.GetColumnCount(), 3);
    EXPECT_EQ(grid.GetColumn(0).heading, L"list 0");
    EXPECT_EQ(grid.GetColumn(1).heading, L"list 2");
    EXPECT_EQ(grid.GetColumn(2).heading, L"list 5");
    EXPECT_EQ(grid.GetColumn(1).format, LVCFMT_LEFT);
    EXPECT_EQ(grid.GetExtendedStyle(), 0x8001u);
    EXPECT_EQ(TextsOf(grid),
              (Texts{{L"a1", L"c5", L"e7"}, {L"a2", L"c9", L"f7"}, {L"a3", L"", L""}, {L"a4", L"", L""}}));
    EXPECT_EQ(IdsOf(grid), (Ids{{1, 5, 7}, {2, 9, 7}, {3, -1, 8}, {4, -1, -1}}));
    EXPECT_EQ(grid.GetColumnWidth(0), 6 * 7 + 12); // autosized
    EXPECT_EQ(messages.Take(), std::vector<Message>{});
}

TEST_F(RangeSelectCtrl, FillingAgain) {
    CreateWithGap();
    grid.SetColumnWidth(1, 123);
    grid.select_cell({0, 0});
    grid.lists[0] = {{6, L"six"}};
    grid.fill();
    EXPECT_EQ(grid.GetColumnWidth(1), 123); // the columns stay
    EXPECT_EQ(IdsOf(grid), (Ids{{6, 5, 7}, {-1, 9, 7}, {-1, -1, 8}}));
    EXPECT_EQ(SelectionOf(grid), (Cells{}));
    grid.set_mask(0b000001);
    EXPECT_EQ(grid.GetColumnCount(), 3);
    grid.fill();
    EXPECT_EQ(grid.GetColumnCount(), 1);
    EXPECT_EQ(grid.GetColumnWidth(0), 90);
    EXPECT_EQ(IdsOf(grid), (Ids{{6}}));
    grid.set_mask(0);
    grid.fill();
    EXPECT_EQ(grid.GetColumnCount(), 0);
    EXPECT_EQ(grid.GetItemCount(), 0);
}

TEST_F(RangeSelectCtrl, ViewsHearAtTheEndOfAFilling) {
    CreateWithGap();
    ViewLog view(grid);
    grid.fill();
    EXPECT_EQ(view.Take(), (Events{"content", "content"})); // emptied and filled
}

TEST_F(RangeSelectCtrl, FilledBeforeItsWindowIsMade) {
    grid.set_mask(0b100101);
    grid.fill();
    EXPECT_EQ(IdsOf(grid).size(), 4u);
    grid.select_cell({1, 0});
    std::map<int, bool> out[6];
    out[3][5] = true;
    grid.retrieve(out);
    for (auto const& column : out)
        EXPECT_TRUE(column.empty()); // without a window
    ASSERT_TRUE(grid.Create());
    EXPECT_EQ(grid.GetColumnCount(), 3);
    EXPECT_EQ(SelectionOf(grid), (Cells{}));
}

TEST_F(RangeSelectCtrl, PlainClicks) {
    CreateWithGap();
    ClickCell(grid, 1, 0);
    EXPECT_EQ(SelectionOf(grid), (Cells{{1, 0}}));
    ClickCell(grid, 0, 1); // another column
    ClickCell(grid, 3, 0);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 1}, {3, 0}}));
    ClickCell(grid, 3, 1); // empty
    ClickCell(grid, 3, 2, MK_SHIFT);
    ClickCell(grid, 2, 2);       // an id without text
    grid.Click(0, CPoint(3, 3)); // headings
    grid.Click(0, CPoint(-3, 50));
    grid.Click(0, CPoint(3, 5000));
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 1}, {3, 0}}));
    EXPECT_EQ(grid.m_last_click[0], 3);
    EXPECT_EQ(grid.m_last_click[1], 0);
    EXPECT_EQ(grid.m_last_click[2], -1);
    EXPECT_EQ(grid.GetFocusItem(), 2); // the list has had the clicks too
}

TEST_F(RangeSelectCtrl, ShiftMovesTheEndOfTheRange) {
    CreateWithGap();
    ClickCell(grid, 2, 0, MK_SHIFT); // a plain click without an anchor
    EXPECT_EQ(SelectionOf(grid), (Cells{{2, 0}}));
    ClickCell(grid, 0, 0, MK_SHIFT);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 0}, {1, 0}, {2, 0}}));
    ClickCell(grid, 3, 0, MK_SHIFT | MK_LBUTTON);
    EXPECT_EQ(SelectionOf(grid), (Cells{{2, 0}, {3, 0}}));
    ClickCell(grid, 2, 0, MK_SHIFT);
    EXPECT_EQ(SelectionOf(grid), (Cells{{2, 0}}));
    ClickCell(grid, 1, 1, MK_SHIFT); // its own anchor
    EXPECT_EQ(SelectionOf(grid), (Cells{{1, 1}, {2, 0}}));
}

TEST_F(RangeSelectCtrl, ControlSwitchesOneCell) {
    CreateWithGap();
    ClickCell(grid, 0, 0, MK_CONTROL);
    ClickCell(grid, 2, 0, MK_CONTROL | MK_SHIFT); // the control key goes first
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 0}, {2, 0}}));
    ClickCell(grid, 0, 0, MK_CONTROL);
    EXPECT_EQ(SelectionOf(grid), (Cells{{2, 0}}));
    EXPECT_EQ(grid.m_last_click[0], 0); // the anchor, though deselected
    ClickCell(grid, 1, 0, MK_SHIFT);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 0}, {1, 0}}));
}

TEST_F(RangeSelectCtrl, AValueOfMinusOneIsAnEntryToo) {
    grid.lists[0] = {{-1, L"all"}, {1, L"one"}, {2, L"two"}};
    grid.lists[2] = {};
    grid.lists[5] = {};
    grid.set_mask(1);
    ASSERT_TRUE(grid.Create());
    ClickCell(grid, 2, 0);
    ClickCell(grid, 0, 0, MK_SHIFT);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 0}, {1, 0}, {2, 0}}));
}

TEST_F(RangeSelectCtrl, AHeadingAddsItsColumn) {
    CreateWithGap();
    ClickCell(grid, 0, 1);
    EXPECT_EQ(grid.ClickColumn(0), 0);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 0}, {0, 1}, {1, 0}, {2, 0}, {3, 0}}));
    grid.ClickColumn(2);
    EXPECT_TRUE(grid.selected({1, 2}));
    EXPECT_FALSE(grid.selected({2, 2})); // without text
    EXPECT_FALSE(grid.selected({3, 2}));
    ClickCell(grid, 2, 0);
    grid.ClickColumn(0); // forgets the anchor
    EXPECT_EQ(grid.m_last_click[0], -1);
    ClickCell(grid, 3, 0, MK_SHIFT);
    EXPECT_FALSE(grid.selected({2, 0}));
    for (int const column : {-1, 3, 6, 7, 100})
        EXPECT_EQ(grid.ClickColumn(column), 0);
}

TEST_F(RangeSelectCtrl, EverythingAndTheOpposite) {
    CreateWithGap();
    ClickCell(grid, 1, 0);
    ClickCell(grid, 1, 1);
    grid.invert_selection();
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 0}, {0, 1}, {0, 2}, {1, 2}, {2, 0}, {3, 0}}));
    EXPECT_EQ(grid.m_last_click[0], 1);
    grid.full_selection();
    Cells const full{{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}, {2, 0}, {3, 0}};
    EXPECT_EQ(SelectionOf(grid), full);
    EXPECT_EQ(grid.m_last_click[0], -1);
    grid.invert_selection();
    EXPECT_EQ(SelectionOf(grid), (Cells{}));
    grid.full_selection();
    grid.deselect_all(0);
    grid.deselect_all(77);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 1}, {0, 2}, {1, 1}, {1, 2}}));
}

TEST_F(RangeSelectCtrl, DisabledRows) {
    CreateWithGap();
    grid.SetEnabled(1, false);
    CRect rect;
    ASSERT_TRUE(grid.GetSubItemRect(1, 0, rect));
    EXPECT_EQ(grid.get_cell(CPoint(static_cast<int>(rect.left), static_cast<int>(rect.top))),
              std::pair(1, -1));
    ClickCell(grid, 1, 0);
    EXPECT_EQ(SelectionOf(grid), (Cells{}));
    ClickCell(grid, 0, 0);
    ClickCell(grid, 2, 0, MK_SHIFT); // a range runs over it
    EXPECT_TRUE(grid.selected({1, 0}));
    EXPECT_EQ(grid.get_cell(CPoint(3, 3)), std::pair(-1, -1));
}

TEST_F(RangeSelectCtrl, Colours) {
    COLORREF const background = CWnd::GetSysColor(13);
    COLORREF const text = CWnd::GetSysColor(14);
    COLORREF const face = CWnd::GetSysColor(15);
    COLORREF const window_text = CWnd::GetSysColor(8);
    auto const colors = [&](int row, int column) {
        COLORREF of_text = 1;
        COLORREF of_background = 1;
        EXPECT_TRUE(grid.GetItemColors(row, column, of_text, of_background));
        return std::pair(of_text, of_background);
    };
    CreateWithGap();
    ClickCell(grid, 1, 0);
    EXPECT_EQ(colors(1, 0), std::pair(text, background));
    EXPECT_EQ(colors(0, 0), std::pair(XDefaultColor, XDefaultColor));
    grid.SetFocus();
    EXPECT_EQ(colors(1, 0), std::pair(text, background));
    CWnd other;
    other.Create();
    other.SetFocus();
    EXPECT_EQ(colors(1, 0), std::pair(window_text, face));
    EXPECT_EQ(colors(0, 0), std::pair(XDefaultColor, XDefaultColor));
    EXPECT_TRUE(grid.selected({1, 0}));
    std::map<int, bool> out[6];
    grid.retrieve(out);
    EXPECT_EQ(out[0], (std::map<int, bool>{{1, false}, {2, true}, {3, false}, {4, false}}));
    ClickCell(grid, 2, 0, MK_CONTROL); // in the colours without the keyboard
    EXPECT_EQ(colors(2, 0), std::pair(window_text, face));
    ClickCell(grid, 1, 0, MK_CONTROL);
    EXPECT_EQ(colors(1, 0), std::pair(XDefaultColor, XDefaultColor));
    grid.SetFocus();
    EXPECT_EQ(colors(2, 0), std::pair(text, background));
    EXPECT_EQ(SelectionOf(grid), (Cells{{2, 0}}));
    // A host's own colour is no selection.
    grid.SetItemText(3, 0, L"a4", 0, 0x123456);
    EXPECT_FALSE(grid.selected({3, 0}));
    EXPECT_EQ(grid.GetItemText(2, 0), L"a3");
}

TEST_F(RangeSelectCtrl, TheColoursOfAView) {
    paramdb::SetSystemColors({{13, 0x111111}, {14, 0x222222}, {15, 0x333333}, {8, 0x444444}});
    Grid<6> themed;
    themed.lists[0] = {{1, L"a"}};
    themed.set_mask(1);
    ASSERT_TRUE(themed.Create());
    ClickCell(themed, 0, 0);
    COLORREF text = 0;
    COLORREF background = 0;
    themed.GetItemColors(0, 0, text, background);
    EXPECT_EQ(text, 0x222222u);
    EXPECT_EQ(background, 0x111111u);
    themed.SetFocus();
    themed.KillFocus();
    themed.GetItemColors(0, 0, text, background);
    EXPECT_EQ(text, 0x444444u);
    EXPECT_EQ(background, 0x333333u);
}

TEST_F(RangeSelectCtrl, RetrievesByColumn) {
    CreateWithGap();
    ClickCell(grid, 1, 2); // the second of two with the id 7: the first counts
    std::map<int, bool> out[6];
    out[4][1] = true;
    grid.retrieve(out);
    EXPECT_EQ(out[0], (std::map<int, bool>{{1, false}, {2, false}, {3, false}, {4, false}}));
    EXPECT_EQ(out[1], (std::map<int, bool>{{-1, false}, {5, false}, {9, false}}));
    EXPECT_EQ(out[2], (std::map<int, bool>{{-1, false}, {7, false}, {8, false}}));
    for (int const rest : {3, 4, 5})
        EXPECT_TRUE(out[rest].empty());
    ClickCell(grid, 0, 2);
    grid.retrieve(out);
    EXPECT_TRUE(out[2].at(7));
    grid.DestroyWindow();
    grid.retrieve(out);
    for (auto const& column : out)
        EXPECT_TRUE(column.empty());
}

TEST_F(RangeSelectCtrl, AnAnchorThatIsNotThereAnyMore) {
    CreateWithGap();
    ClickCell(grid, 3, 0);
    grid.lists[0] = {{1, L"x"}, {2, L"y"}};
    grid.fill();
    ClickCell(grid, 1, 0, MK_SHIFT);
    EXPECT_EQ(SelectionOf(grid), (Cells{{1, 0}}));
}

TEST_F(RangeSelectCtrl, SevenColumns) {
    Grid<7> seven;
    for (int list = 0; list < 7; ++list)
        seven.lists[list] = {{list, L"x"}, {list + 1, L"y"}};
    ASSERT_TRUE(seven.Create());
    ASSERT_EQ(seven.GetColumnCount(), 7);
    EXPECT_EQ(seven.GetColumn(6).heading, L"list 6");
    ClickCell(seven, 1, 6);
    std::map<int, bool> out[7];
    seven.retrieve(out);
    EXPECT_EQ(out[6], (std::map<int, bool>{{6, false}, {7, true}}));
    EXPECT_EQ(out[0], (std::map<int, bool>{{0, false}, {1, false}}));
}

} // namespace
