// Check boxes and arrows, in the visual style in force or, where there is none, in the classic one.
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/framework/window_types.h>

namespace paramdb::win32 {

enum class BoxState { off, on, some };

// How wide and high a check box is.
[[nodiscard]] int BoxSide(int dpi);
// Draws a box of that size in the middle of the height of a place, at its left. The window is the one that is
// drawn on.
void DrawBox(HWND window, HDC context, RECT const& place, BoxState state, bool enabled);

// The visual style has changed: the next box is drawn in the new one.
void ForgetStyle();

// How wide an arrow of a combo is.
[[nodiscard]] int ArrowSide(int dpi);
// Draws an arrow that points down, in the middle of the height of a place, at its right.
void DrawArrow(HDC context, RECT const& place, COLORREF color, int dpi);

} // namespace paramdb::win32
