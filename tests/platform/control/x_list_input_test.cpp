#include <paramdb/platform/control/x_list_ctrl.h>

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <tests/support/view_log.h>

namespace {

class ClickList : public CXListCtrl {
public:
    using CXListCtrl::m_check_on_click;
};

// Rows of 10 pixels, five of which fit.
class XListInput : public testing::Test {
protected:
    XListInput() {
        CXListCtrl::Metrics metrics;
        metrics.row_height = 10;
        metrics.header_height = 20;
        metrics.page = CSize(200, 70);
        list.SetMetrics(metrics);
        list.InsertColumn(0, L"a", 0, 50);
        list.InsertColumn(1, L"b", 0, 50);
    }
    void Add(int count) {
        for (int i = 0; i < count; ++i)
            list.InsertItem(list.GetItemCount(), L"row");
    }
    void ClickCell(int item, int column, int dx) {
        CRect rect;
        ASSERT_TRUE(list.GetSubItemRect(item, column, rect));
        list.Click(MK_LBUTTON, CPoint(static_cast<int>(rect.left) + dx, static_cast<int>(rect.top) + 3));
    }

    ClickList list;
};

TEST_F(XListInput, ClicksOnBoxes) {
    Add(3);
    list.SetCheckbox(1, 1, 0);
    ClickCell(1, 1, 30); // beside the box
    EXPECT_EQ(list.GetCheckbox(1, 1), 0);
    EXPECT_EQ(list.GetFocusItem(), 1);
    ClickCell(1, 1, 3);
    EXPECT_EQ(list.GetCheckbox(1, 1), 1);
    ClickCell(2, 1, 3);
    EXPECT_EQ(list.GetFocusItem(), 2);
    list.SetEnabled(1, false);
    ClickCell(1, 1, 3);
    EXPECT_EQ(list.GetCheckbox(1, 1), 1);
    EXPECT_EQ(list.GetFocusItem(), 2);
    list.Click(MK_LBUTTON, CPoint(10, 5)); // the headings
    EXPECT_EQ(list.GetFocusItem(), 2);
}

TEST_F(XListInput, ClicksAnywhereWhereAListWantsThat) {
    Add(2);
    list.m_check_on_click = true;
    list.SetCheckbox(0, 1, 0);
    list.SetCheckbox(1, 0, 0);
    list.SetCheckbox(1, 1, 0);
    ClickCell(0, 0, 40);
    EXPECT_EQ(list.GetCheckbox(0, 1), 1);
    ClickCell(1, 1, 40);
    EXPECT_EQ(list.GetCheckbox(1, 0), 1); // the first box
    EXPECT_EQ(list.GetCheckbox(1, 1), 0);
    ClickCell(1, 1, 3);
    EXPECT_EQ(list.GetCheckbox(1, 1), 1); // the box itself
    EXPECT_EQ(list.GetCheckbox(1, 0), 1);
}

TEST_F(XListInput, TheRowOfTheKeyboardFollowsItsRow) {
    EXPECT_EQ(list.GetFocusItem(), -1);
    EXPECT_FALSE(list.SetFocusItem(0));
    Add(4);
    ViewLog view(list);
    EXPECT_TRUE(list.SetFocusItem(2));
    EXPECT_TRUE(list.SetFocusItem(2));
    EXPECT_EQ(view.Take(), Events{"selection"});
    list.InsertItem(0, L"front");
    EXPECT_EQ(list.GetFocusItem(), 3);
    list.InsertItem(4, L"behind");
    EXPECT_EQ(list.GetFocusItem(), 3);
    list.DeleteItem(0);
    EXPECT_EQ(list.GetFocusItem(), 2);
    list.DeleteItem(2); // itself: the next one
    EXPECT_EQ(list.GetFocusItem(), 2);
    list.SetFocusItem(3);
    list.DeleteItem(3); // the last one
    EXPECT_EQ(list.GetFocusItem(), 2);
    EXPECT_FALSE(list.SetFocusItem(3));
    EXPECT_TRUE(list.SetFocusItem(-1));
    list.SetFocusItem(0);
    list.DeleteAllItems();
    EXPECT_EQ(list.GetFocusItem(), -1);
}

TEST_F(XListInput, TheLastRowTakesTheKeyboardAlong) {
    Add(1);
    list.SetFocusItem(0);
    list.DeleteItem(0);
    EXPECT_EQ(list.GetFocusItem(), -1);
    list.DeleteItem(0);
    EXPECT_EQ(list.GetFocusItem(), -1);
}

TEST_F(XListInput, Keys) {
    struct Case {
        int from;
        UINT key;
        int to;
    };
    Case const cases[] = {
        {-1, VK_DOWN, 0},  {-1, VK_UP, 0},    {-1, VK_PRIOR, 0}, {-1, VK_NEXT, 4}, {-1, VK_HOME, 0},
        {-1, VK_END, 19},  {3, VK_DOWN, 5},   {5, VK_UP, 3},     {0, VK_UP, 0},    {19, VK_DOWN, 19},
        {10, VK_NEXT, 15}, {17, VK_NEXT, 19}, {9, VK_PRIOR, 3},  {3, VK_PRIOR, 0}, {7, VK_HOME, 0},
        {7, VK_END, 19},   {7, VK_SPACE, 7},  {7, L'X', 7},      {2, VK_DOWN, 3},
    };
    Add(20);
    list.SetEnabled(4, false);
    for (auto const& [from, key, to] : cases) {
        if (from == -1 && key == VK_NEXT)
            list.SetEnabled(4, true);
        else
            list.SetEnabled(4, false);
        list.SetFocusItem(from);
        list.SendMessageW(WM_KEYDOWN, key);
        EXPECT_EQ(list.GetFocusItem(), to) << from << " " << key;
    }
    list.SetFocusItem(0);
    list.Key(VK_END);
    EXPECT_EQ(list.GetScrollPos().y, 150); // the row is in sight
}

TEST_F(XListInput, TheSpaceBarSwitchesTheFirstBox) {
    Add(2);
    list.Key(VK_SPACE);
    list.SetFocusItem(1);
    list.Key(VK_SPACE);
    EXPECT_EQ(list.GetCheckbox(1, 0), -1);
    list.SetCheckbox(1, 1, 0);
    list.Key(VK_SPACE);
    EXPECT_EQ(list.GetCheckbox(1, 1), 1);
    list.SetEnabled(1, false);
    list.Key(VK_SPACE);
    EXPECT_EQ(list.GetCheckbox(1, 1), 1);
}

TEST_F(XListInput, AnEmptyOrDisabledListTakesKeysInItsStride) {
    for (UINT const key : {VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_SPACE})
        list.Key(key);
    EXPECT_EQ(list.GetFocusItem(), -1);
    Add(3);
    for (int i = 0; i < 3; ++i)
        list.SetEnabled(i, false);
    for (UINT const key : {VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END, VK_SPACE})
        list.Key(key);
    EXPECT_EQ(list.GetFocusItem(), -1);
}

// Keys against a plain reading of the rule, with rows disabled at random.
TEST_F(XListInput, RandomKeysAgainstAModel) {
    unsigned const seed = 4711;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        list.DeleteAllItems();
        int const count = static_cast<int>(random() % 15);
        Add(count);
        std::vector<bool> enabled;
        for (int i = 0; i < count; ++i) {
            enabled.push_back(random() % 3 != 0);
            list.SetEnabled(i, enabled.back());
        }
        int focus = -1;
        for (int step = 0; step < 30; ++step) {
            UINT const keys[] = {VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, VK_HOME, VK_END};
            int const steps[] = {-1, 1, -5, 5, -1000, 1000};
            auto const key = random() % std::size(keys);
            bool const upwards = steps[key] < 0 && keys[key] != VK_HOME;
            bool const to_end = keys[key] == VK_END;
            int target = std::min(std::max(focus + steps[key], 0), count - 1);
            // All enabled rows in the order in which they are preferred.
            std::vector<int> preferred;
            int const way = upwards || to_end ? -1 : 1;
            for (int const direction : {way, -way}) {
                for (int i = target; i >= 0 && i < count; i += direction) {
                    if (enabled[static_cast<std::size_t>(i)])
                        preferred.push_back(i);
                }
            }
            if (!preferred.empty())
                focus = preferred.front();
            list.Key(keys[key]);
            ASSERT_EQ(list.GetFocusItem(), focus) << round << " " << step;
        }
    }
}

TEST_F(XListInput, AViewMayDestroyTheListInTheMiddle) {
    struct Destroyer : CWndView {
        std::unique_ptr<CXListCtrl> doomed = std::make_unique<CXListCtrl>();
        void OnSelectionChanged() override { doomed.reset(); }
    } view;
    CXListCtrl& doomed = *view.doomed;
    doomed.InsertColumn(0, L"a", 0, 50);
    doomed.InsertItem(0, L"row");
    doomed.SetCheckbox(0, 0, 0);
    view.Attach(doomed);
    doomed.Click(MK_LBUTTON, CPoint(2, 25));
    EXPECT_EQ(view.doomed, nullptr);
}

TEST_F(XListInput, AViewMayDestroyTheListWhoseHeadingIsClicked) {
    struct Destroyer : CWndView {
        std::unique_ptr<CXListCtrl> doomed = std::make_unique<CXListCtrl>();
        void OnHeaderChanged(int) override { doomed.reset(); }
    } view;
    CXListCtrl& doomed = *view.doomed;
    doomed.InsertColumn(0, L"a", 0, 50);
    doomed.InsertItem(0, L"row");
    doomed.SetCheckbox(0, 0, 0);
    doomed.SetHeaderCheckedState(0, 1);
    view.Attach(doomed);
    doomed.ClickColumn(0);
    EXPECT_EQ(view.doomed, nullptr);
}

} // namespace
