#include <paramdb/platform/control/x_list_ctrl.h>

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <tests/support/view_log.h>

namespace {

// Two columns of 50 and 30 pixels, rows of 10 below a heading of 20, a window of 60 by 70.
class XListGeometry : public testing::Test {
protected:
    XListGeometry() {
        CXListCtrl::Metrics metrics;
        metrics.row_height = 10;
        metrics.header_height = 20;
        metrics.box_width = 8;
        metrics.page = CSize(60, 70);
        list.SetMetrics(metrics);
        list.InsertColumn(0, L"a", 0, 50);
        list.InsertColumn(1, L"b", 0, 30);
        for (int i = 0; i < 12; ++i)
            list.InsertItem(i, L"row");
    }
    LVHITTESTINFO Hit(int x, int y) {
        LVHITTESTINFO hit{};
        hit.pt = CPoint(x, y);
        EXPECT_EQ(list.SendMessageW(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)), hit.iItem);
        return hit;
    }
    CRect RectOf(int item, int column) {
        CRect rect(1, 2, 3, 4);
        EXPECT_TRUE(list.GetSubItemRect(item, column, rect));
        return rect;
    }

    CXListCtrl list;
};

TEST_F(XListGeometry, RectanglesOfCells) {
    EXPECT_EQ(RectOf(0, 0), CRect(0, 20, 50, 30));
    EXPECT_EQ(RectOf(2, 1), CRect(50, 40, 80, 50));
    EXPECT_EQ(RectOf(11, 0), CRect(0, 130, 50, 140));
    list.SetScrollPos(CPoint(15, 33));
    EXPECT_EQ(RectOf(0, 0), CRect(-15, -13, 35, -3));
    EXPECT_EQ(RectOf(2, 1), CRect(35, 7, 65, 17));
    CRect rect(1, 2, 3, 4);
    EXPECT_FALSE(list.GetSubItemRect(12, 0, rect));
    EXPECT_FALSE(list.GetSubItemRect(-1, 0, rect));
    EXPECT_FALSE(list.GetSubItemRect(0, 2, rect));
    EXPECT_EQ(rect, CRect(1, 2, 3, 4));
}

TEST_F(XListGeometry, WhatIsAtAPoint) {
    list.SetCheckbox(1, 0, 0);
    list.SetCheckbox(1, 1, 1);
    struct Case {
        int x, y, item, column;
        UINT flags;
    };
    Case const cases[] = {
        {0, 20, 0, 0, LVHT_ONITEMLABEL},      {49, 29, 0, 0, LVHT_ONITEMLABEL},
        {50, 29, 0, 1, LVHT_ONITEMLABEL},     {79, 139, 11, 1, LVHT_ONITEMLABEL},
        {80, 29, -1, -1, LVHT_NOWHERE},       {10, 140, -1, -1, LVHT_NOWHERE},
        {10, 19, -1, -1, LVHT_ABOVE},         {10, -1, -1, -1, LVHT_ABOVE},
        {-1, 25, -1, -1, LVHT_TOLEFT},        {0, 30, 1, 0, LVHT_ONITEMSTATEICON},
        {7, 39, 1, 0, LVHT_ONITEMSTATEICON},  {8, 30, 1, 0, LVHT_ONITEMLABEL},
        {50, 30, 1, 1, LVHT_ONITEMSTATEICON}, {58, 30, 1, 1, LVHT_ONITEMLABEL},
        {7, 40, 2, 0, LVHT_ONITEMLABEL},
    };
    for (auto const& [x, y, item, column, flags] : cases) {
        SCOPED_TRACE(std::to_string(x) + " " + std::to_string(y));
        LVHITTESTINFO const hit = Hit(x, y);
        EXPECT_EQ(hit.iItem, item);
        EXPECT_EQ(hit.iSubItem, column);
        EXPECT_EQ(hit.flags, flags);
    }
    list.SetScrollPos(CPoint(20, 10));
    EXPECT_EQ(Hit(30, 20).iSubItem, 1);
    EXPECT_EQ(Hit(30, 20).iItem, 1);
}

TEST_F(XListGeometry, ScrollingStaysInside) {
    ViewLog view(list);
    EXPECT_EQ(list.GetContentSize(), CSize(80, 120));
    list.SetScrollPos(CPoint(1000, 1000));
    EXPECT_EQ(list.GetScrollPos(), CPoint(20, 70)); // 80 - 60, 120 + 20 - 70
    list.SetScrollPos(CPoint(-5, -5));
    EXPECT_EQ(list.GetScrollPos(), CPoint());
    list.SetScrollPos(CPoint(-5, -5));
    EXPECT_EQ(view.Take(), (Events{"scroll", "scroll"}));
    list.SetScrollPos(CPoint(20, 70));
    list.DeleteItem(0);
    EXPECT_EQ(list.GetScrollPos(), CPoint(20, 60));
    list.SetColumnWidth(1, 20);
    EXPECT_EQ(list.GetScrollPos(), CPoint(10, 60));
    list.DeleteAllItems();
    EXPECT_EQ(list.GetScrollPos(), CPoint(10, 0));
    list.DeleteAllColumns();
    EXPECT_EQ(list.GetScrollPos(), CPoint());
}

TEST_F(XListGeometry, ShowingARow) {
    EXPECT_TRUE(list.EnsureVisible(3));
    EXPECT_EQ(list.GetScrollPos().y, 0);
    EXPECT_TRUE(list.EnsureVisible(7));
    EXPECT_EQ(list.GetScrollPos().y, 30);
    EXPECT_TRUE(list.EnsureVisible(4));
    EXPECT_EQ(list.GetScrollPos().y, 30);
    EXPECT_TRUE(list.EnsureVisible(1));
    EXPECT_EQ(list.GetScrollPos().y, 10);
    EXPECT_TRUE(list.EnsureVisible(11));
    EXPECT_EQ(list.GetScrollPos().y, 70);
    EXPECT_FALSE(list.EnsureVisible(12));
    EXPECT_FALSE(list.EnsureVisible(-1));
}

TEST_F(XListGeometry, SenselessMetricsDoNoHarm) {
    CXListCtrl::Metrics metrics;
    metrics.row_height = 0;
    metrics.header_height = -4;
    metrics.page = CSize(-10, -10);
    list.SetMetrics(metrics);
    EXPECT_EQ(list.GetMetrics().row_height, 1);
    EXPECT_EQ(list.GetMetrics().header_height, 0);
    EXPECT_EQ(Hit(0, 11).iItem, 11);
    list.Key(VK_NEXT);
    list.SetScrollPos(CPoint(std::numeric_limits<int>::max(), std::numeric_limits<int>::max()));
    metrics.row_height = std::numeric_limits<int>::max();
    list.SetMetrics(metrics);
    EXPECT_EQ(RectOf(11, 0).bottom, std::numeric_limits<int>::max());
    EXPECT_EQ(list.GetContentSize().cy, std::numeric_limits<int>::max());
}

TEST_F(XListGeometry, EveryPointOfACellHitsIt) {
    unsigned const seed = 77;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto const below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 2000; ++round) {
        list.SetColumnWidth(0, below(40));
        list.SetColumnWidth(1, 1 + below(40));
        list.SetScrollPos(CPoint(below(40), below(100)));
        int const item = below(12);
        int const column = below(2);
        CRect const rect = RectOf(item, column);
        if (rect.Width() == 0)
            continue;
        CPoint const point(static_cast<int>(rect.left) + below(rect.Width()),
                           static_cast<int>(rect.top) + below(rect.Height()));
        LVHITTESTINFO const hit = Hit(static_cast<int>(point.x), static_cast<int>(point.y));
        bool const seen = point.x >= 0 && point.y >= 20;
        ASSERT_EQ(hit.iItem, seen ? item : -1);
        ASSERT_EQ(hit.iSubItem, seen ? column : -1);
    }
}

} // namespace
