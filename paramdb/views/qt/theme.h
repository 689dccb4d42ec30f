// Colours and letter widths of the desktop, for the controls, and colours of the controls, for the screen.
//
// The colours that a control gets from GetSysColor are marks: a selection grid knows its selected cells by
// them. So they are taken from the palette once, when the theme is installed, and stay; drawing puts the
// colours of the palette in force in their place. That way a selection outlives a change between light and
// dark.
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/window_types.h>

#include <QtGui/QColor>
#include <QtGui/QPalette>

namespace paramdb::qt {

// Gives the controls the colours of the application's palette and the widths of its font. The first view does
// it if nobody has before; a host that fills grids before there is a view calls it when its QApplication
// stands. Further calls change nothing.
PARAMDB_VIEWS_API void InstallTheme();
// Puts the colours and widths of the start back; the next view installs the theme anew. For the end of a
// host.
PARAMDB_VIEWS_API void UninstallTheme();

// 0x00BBGGRR.
[[nodiscard]] PARAMDB_VIEWS_API QColor ToQColor(COLORREF color);
[[nodiscard]] PARAMDB_VIEWS_API COLORREF FromQColor(QColor const& color);

// Whether text is lighter than what is behind it.
[[nodiscard]] PARAMDB_VIEWS_API bool IsDark(QPalette const& palette);
// Behind what is selected in a control that does not have the keyboard.
[[nodiscard]] PARAMDB_VIEWS_API QColor InactiveSelection(QPalette const& palette);

// The palette for an empty box on the background of a list. Styles outline it darker than the window, which
// is not seen on a dark list.
[[nodiscard]] PARAMDB_VIEWS_API QPalette BoxPalette(QPalette const& palette);

// What a cell is drawn with. An invalid background means that of the list.
struct CellColors {
    QColor text;
    QColor background;
};
// The colours of a cell, XDefaultColor for none of its own. Marks become colours of the palette; others are
// a host's, made for white paper: on a dark palette light becomes dark and dark light.
[[nodiscard]] PARAMDB_VIEWS_API CellColors ColorsOnScreen(COLORREF text, COLORREF background,
                                                          QPalette const& palette);

} // namespace paramdb::qt
