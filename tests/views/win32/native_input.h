// Real input of mouse and keyboard, as if from the devices. It goes to whatever is under the pointer or has
// the keyboard.
#pragma once

#include <paramdb/platform/framework/window_types.h>

#include <tests/views/suites/view_driver.h>

enum class MouseButton { left, right };

// Out of the way: an open list follows the pointer.
void ParkPointer();
// At a point of a window; presses and releases.
void ClickWindow(HWND window, POINT point, Held held = {}, MouseButton button = MouseButton::left);
// Presses at one point, moves to another, releases.
void DragIn(HWND window, POINT from, POINT to);
void PressKey(WORD key, Held held = {});
void TypeLetter(wchar_t letter);
// The text of a window.
std::string TextOf(HWND window);
