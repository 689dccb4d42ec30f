// Points, sizes and rectangles in pixels, x to the right and y downwards.
#pragma once

#include <paramdb/platform/framework/window_types.h>

class CPoint : public POINT {
public:
    CPoint() noexcept : CPoint(0, 0) {}
    CPoint(int px, int py) noexcept {
        x = px;
        y = py;
    }
    CPoint(POINT point) noexcept : POINT(point) {}

    friend bool operator==(CPoint const& a, CPoint const& b) noexcept { return a.x == b.x && a.y == b.y; }
};

class CSize : public SIZE {
public:
    CSize() noexcept : CSize(0, 0) {}
    CSize(int width, int height) noexcept {
        cx = width;
        cy = height;
    }

    friend bool operator==(CSize const& a, CSize const& b) noexcept { return a.cx == b.cx && a.cy == b.cy; }
};

// Left and top lie inside, right and bottom outside.
class CRect : public RECT {
public:
    CRect() noexcept : CRect(0, 0, 0, 0) {}
    CRect(int l, int t, int r, int b) noexcept {
        left = l;
        top = t;
        right = r;
        bottom = b;
    }

    [[nodiscard]] int Width() const noexcept { return static_cast<int>(right - left); }
    [[nodiscard]] int Height() const noexcept { return static_cast<int>(bottom - top); }
    // Whether the point lies inside; no point lies in a rectangle whose sides are swapped.
    [[nodiscard]] bool PtInRect(POINT point) const noexcept {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }

    friend bool operator==(CRect const& a, CRect const& b) noexcept {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
};
