#include <paramdb/platform/control/x_list_cells.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/theme.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>

namespace paramdb::win32 {

namespace {

bool installed = false;

// How wide texts are, letter by letter: lists have very many of them, and the system moves no pairs together.
class LetterWidths {
public:
    LetterWidths() : m_context(nullptr, MessageFont(DpiOf(nullptr))) {
        for (std::size_t unit = 0; unit < Count; ++unit) {
            wchar_t const letter = static_cast<wchar_t>(unit);
            SIZE size{};
            ::GetTextExtentPoint32W(m_context.Get(), &letter, 1, &size);
            m_widths[unit] = static_cast<int>(size.cx);
        }
    }

    [[nodiscard]] int Of(CString const& text) const {
        int width = 0;
        for (int i = 0; i < text.GetLength(); ++i) {
            auto const unit = static_cast<std::size_t>(text.GetAt(i));
            if (unit >= Count) // letters that may be joined or fetched from another font
                return static_cast<int>(m_context.SizeOf(text).cx);
            width += m_widths[unit];
        }
        return width;
    }

private:
    static constexpr std::size_t Count = 0x250; // Latin with all its accents

    FontContext m_context;
    std::array<int, Count> m_widths{};
};

} // namespace

void InstallTheme() {
    if (installed)
        return;
    installed = true;
    std::map<int, COLORREF> colors;
    for (int const index : {window_background_color, window_text_color, highlight_color, highlight_text_color,
                            button_face_color})
        colors[index] = ::GetSysColor(index);
    if (colors[button_face_color] == colors[highlight_color])
        colors[button_face_color] ^= 1; // two marks must differ
    SetSystemColors(colors);
    SetTextWidth(
        [widths = std::make_shared<LetterWidths const>()](CString const& text) { return widths->Of(text); });
}

void UninstallTheme() {
    if (!installed)
        return;
    installed = false;
    ResetSystemColors();
    SetTextWidth({});
}

CellColors ColorsOnScreen(COLORREF text, COLORREF background, bool enabled) {
    if (background == SystemColor(highlight_color))
        return {::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)};
    if (background == SystemColor(button_face_color))
        return {::GetSysColor(COLOR_WINDOWTEXT), ::GetSysColor(COLOR_BTNFACE)};
    COLORREF const plain = ::GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    return {text == XDefaultColor ? plain : text,
            background == XDefaultColor ? ::GetSysColor(COLOR_WINDOW) : background};
}

} // namespace paramdb::win32
