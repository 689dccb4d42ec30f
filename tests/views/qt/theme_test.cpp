#include <paramdb/platform/control/x_list_cells.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/theme.h>

#include <QtGui/QFontMetrics>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace paramdb;
using namespace paramdb::qt;

namespace {

QPalette Light() {
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8C, 0xC6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette Dark() {
    QPalette palette = Light();
    palette.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    palette.setColor(QPalette::Text, QColor(0xF0, 0xF0, 0xF0));
    return palette;
}

// How much light a colour gives, and how well one is read on another: 1 not at all, 21 black on white.
double Luminance(QColor const& color) {
    auto const linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}
double Contrast(QColor const& a, QColor const& b) {
    double const first = Luminance(a);
    double const second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

class Theme : public testing::Test {
protected:
    Theme() { UninstallTheme(); }
    ~Theme() override {
        QApplication::setPalette(m_before);
        UninstallTheme();
    }

    QPalette m_before = QApplication::palette();
};

} // namespace

TEST_F(Theme, ColorsGoThereAndBack) {
    EXPECT_EQ(ToQColor(0x00332211), QColor(0x11, 0x22, 0x33));
    EXPECT_EQ(FromQColor(QColor(0x11, 0x22, 0x33)), 0x00332211U);
    for (COLORREF const color : {0x000000U, 0xFFFFFFU, 0x0000FFU, 0xFF0000U, 0x6A240AU})
        EXPECT_EQ(FromQColor(ToQColor(color)), color);
}

TEST_F(Theme, TakesColorsAndLettersOfTheApplication) {
    QApplication::setPalette(Light());
    InstallTheme();
    EXPECT_EQ(SystemColor(window_background_color), 0xFFFFFFU);
    EXPECT_EQ(SystemColor(window_text_color), 0x000000U);
    EXPECT_EQ(SystemColor(highlight_color), 0xC68C30U);
    EXPECT_EQ(SystemColor(highlight_text_color), 0xFFFFFFU);
    EXPECT_EQ(SystemColor(button_face_color), FromQColor(InactiveSelection(Light())));
    QFontMetrics const metrics(QApplication::font("QAbstractItemView"));
    for (QString const& text : {QStringLiteral("Order spectrum"), QStringLiteral("AVAVAV"), QString(),
                                QString::fromUtf16(u"\u6307\u5B9A Pr\u00FCf"), QString(200, u'm')}) {
        int const width = TextWidth(FromQString(text));
        EXPECT_GE(width, metrics.horizontalAdvance(text)); // never too narrow
        EXPECT_LE(width, metrics.horizontalAdvance(text) * 11 / 10 + 1);
    }
    UninstallTheme();
    EXPECT_EQ(SystemColor(highlight_color), 0x6A240AU);
    EXPECT_EQ(TextWidth(L"abc"), 21);
}

TEST_F(Theme, MarksStayWhenThePaletteChanges) {
    QApplication::setPalette(Light());
    InstallTheme();
    COLORREF const mark = SystemColor(highlight_color);
    QPalette dark = Dark();
    dark.setColor(QPalette::Highlight, Qt::darkMagenta);
    QApplication::setPalette(dark);
    InstallTheme();
    EXPECT_EQ(SystemColor(highlight_color), mark);
    CellColors const colors = ColorsOnScreen(SystemColor(highlight_text_color), mark, dark);
    EXPECT_EQ(colors.background, dark.color(QPalette::Highlight));
    EXPECT_EQ(colors.text, dark.color(QPalette::HighlightedText));
}

TEST_F(Theme, MarksDifferWhateverThePalette) {
    QPalette odd = Light();
    odd.setColor(QPalette::Highlight, InactiveSelection(odd));
    QApplication::setPalette(odd);
    InstallTheme();
    EXPECT_NE(SystemColor(highlight_color), SystemColor(button_face_color));
}

TEST_F(Theme, TellsDarkFromLight) {
    EXPECT_FALSE(IsDark(Light()));
    EXPECT_TRUE(IsDark(Dark()));
}

TEST_F(Theme, HostColorsAreKeptOnLightPaper) {
    CellColors const colors = ColorsOnScreen(0x646464, 0xFFEBE6, Light());
    EXPECT_EQ(colors.text, QColor(0x64, 0x64, 0x64));
    EXPECT_EQ(colors.background, QColor(0xE6, 0xEB, 0xFF));
}

TEST_F(Theme, CellsWithoutColorsHaveThoseOfTheList) {
    for (QPalette const& palette : {Light(), Dark()}) {
        CellColors const colors = ColorsOnScreen(XDefaultColor, XDefaultColor, palette);
        EXPECT_EQ(colors.text, palette.color(QPalette::Text));
        EXPECT_FALSE(colors.background.isValid());
    }
}

TEST_F(Theme, EverythingCanBeReadOnBothPalettes) {
    struct Cell {
        COLORREF text, background;
    };
    for (QPalette const& palette : {Light(), Dark()}) {
        QApplication::setPalette(palette);
        UninstallTheme();
        InstallTheme();
        for (auto const& [text, background] :
             {Cell{XDefaultColor, XDefaultColor}, Cell{0x646464, 0xFFEBE6}, Cell{0x000000, 0x80FFFF},
              Cell{0x0000C0, XDefaultColor}, Cell{SystemColor(8), SystemColor(15)}}) {
            CellColors const colors = ColorsOnScreen(text, background, palette);
            QColor const paper =
                colors.background.isValid() ? colors.background : palette.color(QPalette::Base);
            EXPECT_GE(Contrast(colors.text, paper), 4.5) << std::hex << text << " on " << background;
        }
    }
}
