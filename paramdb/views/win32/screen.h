// How many pixels there are to the inch, and the letters for that. What the system offers of it depends on
// its version and is looked for when it is needed; without any of it everything is as on a screen with 96.
//
// For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/window_types.h>

namespace paramdb::win32 {

inline constexpr int PlainDpi = 96;

// Tells the system that this program draws sharply on every screen, also on several with different pixels.
// For a program to call before its first window, unless its manifest says so already. False if the system
// knows nothing of it, or has been told before.
PARAMDB_VIEWS_API bool EnableHighDpi();

// Pixels to the inch of the screen that a window is on; of the main screen for null.
[[nodiscard]] PARAMDB_VIEWS_API int DpiOf(HWND window);
// A length on a plain screen in pixels of one with that dpi.
[[nodiscard]] inline int Scaled(int pixels, int dpi) {
    return ::MulDiv(pixels, dpi, PlainDpi);
}

// The font of messages and lists. It belongs to this function and lives as long as the process.
[[nodiscard]] PARAMDB_VIEWS_API HFONT MessageFont(int dpi);

// Lends a device context for texts.
class FontContext {
public:
    // Of that window with that font, with the window's own for null; of the main screen without a window.
    explicit FontContext(HWND window, HFONT font = nullptr);
    FontContext(FontContext const&) = delete;
    FontContext& operator=(FontContext const&) = delete;
    ~FontContext();

    [[nodiscard]] HDC Get() const noexcept { return m_context; }
    [[nodiscard]] int LineHeight() const;
    [[nodiscard]] SIZE SizeOf(CString const& text) const;

private:
    HWND m_window;
    HDC m_context;
    HGDIOBJ m_before;
};

} // namespace paramdb::win32
