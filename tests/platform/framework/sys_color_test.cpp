#include <paramdb/platform/framework/geometry.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/platform/framework/wnd.h>

#include <gtest/gtest.h>

namespace {

#ifndef _WIN32
TEST(SysColor, ClassicAtFirst) {
    EXPECT_EQ(CWnd::GetSysColor(5), 0xFFFFFFu);
    EXPECT_EQ(CWnd::GetSysColor(8), 0x000000u);
    EXPECT_EQ(CWnd::GetSysColor(13), 0x6A240Au);
    EXPECT_EQ(CWnd::GetSysColor(14), 0xFFFFFFu);
    EXPECT_EQ(CWnd::GetSysColor(15), 0xC8D0D4u);
    for (int const unknown : {-1, 99, 0x6A240A})
        EXPECT_EQ(CWnd::GetSysColor(unknown), 0u);
}
#endif

TEST(SysColor, AViewSetsItsOwn) {
    COLORREF const text = CWnd::GetSysColor(8);
    COLORREF const face = CWnd::GetSysColor(15);
    paramdb::SetSystemColors({{15, 0x112233}, {77, 5}});
    EXPECT_EQ(CWnd::GetSysColor(15), 0x112233u);
    EXPECT_EQ(CWnd::GetSysColor(77), 5u);
    EXPECT_EQ(CWnd::GetSysColor(8), text);
    paramdb::ResetSystemColors();
    EXPECT_EQ(CWnd::GetSysColor(15), face);
}

TEST(TextWidth, SevenPixelsUntilAViewMeasures) {
    EXPECT_EQ(paramdb::TextWidth(L""), 0);
    EXPECT_EQ(paramdb::TextWidth(L"abc"), 21);
    paramdb::SetTextWidth([](CString const& text) { return text.GetLength() + 1; });
    EXPECT_EQ(paramdb::TextWidth(L"abc"), 4);
    paramdb::SetTextWidth({});
    EXPECT_EQ(paramdb::TextWidth(L"abc"), 21);
}

TEST(Geometry, PointsInRectangles) {
    struct Case {
        CRect rect;
        CPoint point;
        bool inside;
    };
    Case const cases[] = {
        {{1, 2, 5, 8}, {1, 2}, true},    {{1, 2, 5, 8}, {4, 7}, true},  {{1, 2, 5, 8}, {5, 7}, false},
        {{1, 2, 5, 8}, {4, 8}, false},   {{1, 2, 5, 8}, {0, 2}, false}, {{1, 2, 5, 8}, {1, 1}, false},
        {{5, 8, 1, 2}, {3, 4}, false},   {{1, 2, 1, 8}, {1, 4}, false}, {{-5, -5, 0, 0}, {-1, -1}, true},
        {{-5, -5, 0, 0}, {0, 0}, false},
    };
    for (auto const& [rect, point, inside] : cases)
        EXPECT_EQ(rect.PtInRect(point), inside) << point.x << " " << point.y;
    CRect const rect(1, 2, 5, 9);
    EXPECT_EQ(rect.Width(), 4);
    EXPECT_EQ(rect.Height(), 7);
    EXPECT_EQ(rect, CRect(1, 2, 5, 9));
    for (CRect const other :
         {CRect(0, 2, 5, 9), CRect(1, 0, 5, 9), CRect(1, 2, 0, 9), CRect(1, 2, 5, 0), CRect()})
        EXPECT_FALSE(rect == other);
    EXPECT_EQ(CPoint(POINT{3, 4}), CPoint(3, 4));
    EXPECT_EQ(CSize(3, 4), CSize(3, 4));
    EXPECT_FALSE(CSize(3, 4) == CSize());
    EXPECT_FALSE(CSize(3, 4) == CSize(3, 5));
    EXPECT_FALSE(CPoint(3, 4) == CPoint(3, 5));
}

} // namespace
