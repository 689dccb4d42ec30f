#include <paramdb/platform/control/x_list_cells.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/theme.h>

#include <QtGui/QFontMetricsF>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace paramdb::qt {

namespace {

bool installed = false;

// `share` of 256 parts of b, the rest of a.
QColor Mix(QColor const& a, QColor const& b, int share) {
    auto const mix = [share](int x, int y) { return (x * (256 - share) + y * share) / 256; };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

// The same hue with the lightness turned round, and not as black as can be.
QColor TurnedLightness(QColor const& color) {
    constexpr float darkest = 0.14F;
    float hue = 0, saturation = 0, lightness = 0;
    color.getHslF(&hue, &saturation, &lightness);
    return QColor::fromHslF(std::max(hue, 0.0F), saturation * 0.5F, std::max(1.0F - lightness, darkest));
}

// How wide texts are, letter by letter: lists have very many of them. Pairs of letters that move together
// make a text a little narrower than that.
class LetterWidths {
public:
    int Of(CString const& text) {
        QFont const font = QApplication::font("QAbstractItemView");
        if (!m_known || font != m_font)
            Measure(font);
        qreal width = 0;
        for (int i = 0; i < text.GetLength(); ++i) {
            auto const unit = static_cast<char32_t>(text.GetAt(i));
            if (unit >= Count) // letters that may be joined or fetched from another font
                return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(ToQString(text))));
            width += m_widths[unit];
        }
        return static_cast<int>(std::ceil(width));
    }

private:
    static constexpr std::size_t Count = 0x250; // Latin with all its accents

    void Measure(QFont const& font) {
        QFontMetricsF const metrics(font);
        for (std::size_t unit = 0; unit < Count; ++unit)
            m_widths[unit] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(unit)));
        m_font = font;
        m_known = true;
    }

    QFont m_font;
    bool m_known = false;
    std::array<qreal, Count> m_widths{};
};

} // namespace

void InstallTheme() {
    if (installed)
        return;
    installed = true;
    QPalette const palette = QApplication::palette();
    COLORREF const selection = FromQColor(palette.color(QPalette::Highlight));
    COLORREF inactive = FromQColor(InactiveSelection(palette));
    if (inactive == selection)
        inactive ^= 1; // two marks must differ
    SetSystemColors({
        {window_background_color, FromQColor(palette.color(QPalette::Base))},
        {window_text_color, FromQColor(palette.color(QPalette::Text))},
        {highlight_color, selection},
        {highlight_text_color, FromQColor(palette.color(QPalette::HighlightedText))},
        {button_face_color, inactive},
    });
    SetTextWidth(
        [widths = std::make_shared<LetterWidths>()](CString const& text) { return widths->Of(text); });
}

void UninstallTheme() {
    if (!installed)
        return;
    installed = false;
    ResetSystemColors();
    SetTextWidth({});
}

QColor ToQColor(COLORREF color) {
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                  static_cast<int>(color >> 16 & 0xFF));
}

COLORREF FromQColor(QColor const& color) {
    return static_cast<COLORREF>(color.red()) | static_cast<COLORREF>(color.green()) << 8 |
           static_cast<COLORREF>(color.blue()) << 16;
}

bool IsDark(QPalette const& palette) {
    return palette.color(QPalette::Text).lightness() > palette.color(QPalette::Base).lightness();
}

QColor InactiveSelection(QPalette const& palette) {
    constexpr int share = 52; // a fifth of the way to the text
    return Mix(palette.color(QPalette::Base), palette.color(QPalette::Text), share);
}

QPalette BoxPalette(QPalette const& palette) {
    constexpr int share = 190; // three quarters of the way to the text; styles take some off
    if (!IsDark(palette))
        return palette;
    QPalette box = palette;
    box.setColor(QPalette::Window, Mix(palette.color(QPalette::Base), palette.color(QPalette::Text), share));
    return box;
}

CellColors ColorsOnScreen(COLORREF text, COLORREF background, QPalette const& palette) {
    if (background == SystemColor(highlight_color))
        return {palette.color(QPalette::Active, QPalette::HighlightedText),
                palette.color(QPalette::Active, QPalette::Highlight)};
    if (background == SystemColor(button_face_color))
        return {palette.color(QPalette::Text), InactiveSelection(palette)};
    auto const own = [dark = IsDark(palette)](COLORREF color, QColor const& none) {
        if (color == XDefaultColor)
            return none;
        QColor const drawn = ToQColor(color);
        return dark ? TurnedLightness(drawn) : drawn;
    };
    return {own(text, palette.color(QPalette::Text)), own(background, QColor())};
}

} // namespace paramdb::qt
