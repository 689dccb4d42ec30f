#include <paramdb/controls/pentad_range_select_ctrl.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <tests/controls/control_world.h>
#include <tests/controls/range_grid.h>

namespace {

using List = CPentadRangeSelectCtrl::List;
using Picked = std::map<int, bool>;

class PentadRangeSelectCtrl : public ControlTest {
protected:
    CPentadRangeSelectCtrl grid;
    List lists[6] = {
        {{1, L"a1"}, {2, L"a2"}},  {{3, L"b3"}}, {{4, L"c4"}, {5, L"c5"}, {6, L"c6"}}, {}, {{7, L"e7"}},
        {{8, L"f8"}, {-4, L"f-4"}}};
};

TEST_F(PentadRangeSelectCtrl, HeadingsAreTheElements) {
    wchar_t const* const words[] = {L"Test steps", L"Instruments", L"Channels",
                                    L"Objects",    L"Parameters",  L"Sensors"};
    ASSERT_TRUE(grid.Create());
    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(grid.GetColumn(column).heading, words[column]);
    EXPECT_EQ(grid.col_head_names(6), L"");
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    EXPECT_EQ(grid.col_head_names(2), L"Kan\u00E4le");
}

TEST_F(PentadRangeSelectCtrl, KeepsCopiesOfTheLists) {
    grid.send_pentad_list(lists);
    EXPECT_EQ(grid.GetItemCount(), 0); // does not fill
    lists[0].clear();
    ASSERT_TRUE(grid.Create());
    EXPECT_EQ(IdsOf(grid), (Ids{{1, 3, 4, -1, 7, -4}, {2, -1, 5, -1, -1, 8}, {-1, -1, 6, -1, -1, -1}}));
    grid.send_pentad_list(lists);
    EXPECT_EQ(IdsOf(grid)[0][0], 1);
    grid.fill();
    EXPECT_EQ(IdsOf(grid)[0][0], -1);
    grid.fill(lists); // the general form is there too
    EXPECT_EQ(grid.GetItemCount(), 3);
}

TEST_F(PentadRangeSelectCtrl, SetsTheSelection) {
    grid.send_pentad_list(lists);
    ASSERT_TRUE(grid.Create());
    ClickCell(grid, 0, 0);
    Picked active[6];
    active[0] = {{2, true}, {1, false}, {99, true}};
    active[2] = {{4, true}, {6, true}};
    active[4] = {{8, true}};              // the value of another column
    active[5] = {{-4, true}, {-1, true}}; // never below 0
    grid.send_active_list(active);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 2}, {1, 0}, {2, 2}}));
    // The anchor is gone.
    ClickCell(grid, 1, 0, MK_SHIFT);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 2}, {1, 0}, {2, 2}}));

    Picked out[6];
    grid.retrieve(out);
    EXPECT_EQ(out[2], (Picked{{4, true}, {5, false}, {6, true}}));
    EXPECT_EQ(out[3], (Picked{{-1, false}}));
    grid.full_selection();
    grid.send_active_list(out); // there and back
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 2}, {1, 0}, {2, 2}}));
    for (auto& column : active)
        column.clear();
    grid.send_active_list(active);
    EXPECT_EQ(SelectionOf(grid), (Cells{}));
}

TEST_F(PentadRangeSelectCtrl, BehindAGapColumnsAndElementsDiffer) {
    grid.set_mask(0b100100);
    grid.send_pentad_list(lists);
    ASSERT_TRUE(grid.Create());
    EXPECT_EQ(IdsOf(grid), (Ids{{4, -4}, {5, 8}, {6, -1}}));
    Picked active[6];
    active[0] = {{5, true}};
    active[1] = {{8, true}};
    active[2] = {{4, true}};
    active[5] = {{8, true}};
    grid.send_active_list(active); // by column
    EXPECT_EQ(SelectionOf(grid), (Cells{{1, 0}, {1, 1}}));
    Picked out[6];
    grid.retrieve(out);
    EXPECT_EQ(out[0], (Picked{{4, false}, {5, true}, {6, false}}));
    EXPECT_EQ(out[1], (Picked{{-4, false}, {-1, false}, {8, true}}));
    for (int const rest : {2, 3, 4, 5})
        EXPECT_TRUE(out[rest].empty());
}

TEST_F(PentadRangeSelectCtrl, WithoutTheKeyboardToo) {
    grid.send_pentad_list(lists);
    ASSERT_TRUE(grid.Create());
    grid.SetFocus();
    grid.KillFocus();
    Picked active[6];
    active[1] = {{3, true}};
    grid.send_active_list(active);
    EXPECT_EQ(SelectionOf(grid), (Cells{{0, 1}}));
    Picked out[6];
    grid.retrieve(out);
    EXPECT_TRUE(out[1].at(3));
}

} // namespace
