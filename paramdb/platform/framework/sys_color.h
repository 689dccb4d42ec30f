// The colours of the desktop by number, and how wide a text is. Both are known to who draws: a view installs
// them before it shows a control, and until then classic values stand in (on Windows the system's own
// colours).
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/window_types.h>

#include <functional>
#include <map>

namespace paramdb {

// The numbers of the colours that controls use.
enum SystemColorIndex : int {
    window_background_color = 5,
    window_text_color = 8,
    highlight_color = 13,      // behind selected text
    highlight_text_color = 14, // selected text
    button_face_color = 15,    // behind selected text of a control without the focus
};

// The colour of a number, 0x00BBGGRR; 0 for a number that nobody has set.
[[nodiscard]] PARAMDB_API COLORREF SystemColor(int index) noexcept;

// Sets colours, others stay. A selection grid knows its selected cells by these colours, so set them before
// one is filled, and 13 and 15 to values that no cell has otherwise.
PARAMDB_API void SetSystemColors(std::map<int, COLORREF> const& colors);
// Goes back to the colours of the start.
PARAMDB_API void ResetSystemColors();

using TextWidthFunction = std::function<int(CString const& text)>;

// The width of a text in pixels, with the font of the controls.
[[nodiscard]] PARAMDB_API int TextWidth(CString const& text);

// Installs what measures texts; an empty function brings back the first, seven pixels for each character.
PARAMDB_API void SetTextWidth(TextWidthFunction function);

} // namespace paramdb
