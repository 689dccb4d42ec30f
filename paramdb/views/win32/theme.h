// Colours and letter widths of the desktop, for the controls, and colours of the controls, for the screen.
//
// The colours that a control gets from GetSysColor are marks: a selection grid knows its selected cells by
// them. So they are taken from the system once, when the theme is installed, and stay; drawing puts the
// system's colours in force in their place. That way a selection outlives a change of the desktop's colours.
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/window_types.h>

namespace paramdb::win32 {

// Gives the controls the system's colours and the widths of its message font. The first view does it if
// nobody has before; a host that fills grids before there is a view calls it itself. Further calls change
// nothing.
PARAMDB_VIEWS_API void InstallTheme();
// Puts the colours and widths of the start back; the next view installs the theme anew. For the end of a
// host.
PARAMDB_VIEWS_API void UninstallTheme();

// What a cell is drawn with.
struct CellColors {
    COLORREF text;
    COLORREF background;
};
// The colours of a cell, XDefaultColor for none of its own; without one the text of a disabled row is grey.
[[nodiscard]] CellColors ColorsOnScreen(COLORREF text, COLORREF background, bool enabled = true);

} // namespace paramdb::win32
