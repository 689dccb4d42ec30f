#include <paramdb/platform/control/x_list_cells.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/views/win32/glyphs.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/theme.h>

#include <cstdlib>
#include <gtest/gtest.h>

using namespace paramdb::win32;

namespace {

class ThemeTest : public testing::Test {
protected:
    ThemeTest() { UninstallTheme(); }
    ~ThemeTest() override { UninstallTheme(); }
};

} // namespace

TEST(NativeScreen, ScalesByTheInch) {
    struct Case {
        int pixels, dpi, scaled;
    };
    for (auto const& [pixels, dpi, scaled] :
         {Case{13, 96, 13}, Case{13, 144, 20}, Case{5, 120, 6}, Case{0, 192, 0}, Case{100, 192, 200}})
        EXPECT_EQ(Scaled(pixels, dpi), scaled) << pixels << ' ' << dpi;
    EXPECT_EQ(BoxSide(192), 26);
}

TEST(NativeScreen, KnowsTheInchOfEveryScreen) {
    HDC const screen = ::GetDC(nullptr);
    EXPECT_EQ(DpiOf(nullptr), ::GetDeviceCaps(screen, LOGPIXELSX));
    ::ReleaseDC(nullptr, screen);
    EXPECT_GT(DpiOf(::GetDesktopWindow()), 0);
}

TEST(NativeScreen, FontsGrowWithTheInch) {
    HFONT const plain = MessageFont(96);
    HFONT const twice = MessageFont(192);
    EXPECT_EQ(MessageFont(96), plain); // kept
    LOGFONTW a{};
    LOGFONTW b{};
    ::GetObjectW(plain, static_cast<int>(sizeof a), &a);
    ::GetObjectW(twice, static_cast<int>(sizeof b), &b);
    EXPECT_STREQ(a.lfFaceName, b.lfFaceName);
    EXPECT_NEAR(static_cast<double>(b.lfHeight) / static_cast<double>(a.lfHeight), 2.0, 0.1);
}

TEST_F(ThemeTest, TakesColorsAndLettersOfTheDesktop) {
    InstallTheme();
    for (int const index : {5, 8, 13, 14, 15})
        EXPECT_EQ(paramdb::SystemColor(index), ::GetSysColor(index)) << index;
    EXPECT_NE(paramdb::SystemColor(13), paramdb::SystemColor(15));
    FontContext const context(nullptr, MessageFont(DpiOf(nullptr)));
    for (wchar_t const* text :
         {L"", L"Order spectrum", L"AVAVAV", L"\u6307\u5B9A Pr\u00FCf", L"mmmmmmmmmmmmmm"})
        EXPECT_EQ(paramdb::TextWidth(text), context.SizeOf(text).cx);
    UninstallTheme();
    EXPECT_EQ(paramdb::TextWidth(L"abc"), 21);
}

TEST_F(ThemeTest, MarksBecomeTheColorsInForce) {
    // As if the desktop had had other colours when the marks were taken.
    paramdb::SetSystemColors({{13, 0x123456}, {15, 0x654321}});
    CellColors const selected = ColorsOnScreen(0xFFFFFF, 0x123456);
    EXPECT_EQ(selected.background, ::GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(selected.text, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
    CellColors const inactive = ColorsOnScreen(0, 0x654321);
    EXPECT_EQ(inactive.background, ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(inactive.text, ::GetSysColor(COLOR_WINDOWTEXT));
    paramdb::ResetSystemColors();
}

TEST_F(ThemeTest, OtherColorsAreTheHosts) {
    InstallTheme();
    CellColors const own = ColorsOnScreen(0x646464, 0xFFEBE6);
    EXPECT_EQ(own.text, 0x646464U);
    EXPECT_EQ(own.background, 0xFFEBE6U);
    CellColors const none = ColorsOnScreen(XDefaultColor, XDefaultColor);
    EXPECT_EQ(none.text, ::GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(none.background, ::GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(ColorsOnScreen(XDefaultColor, XDefaultColor, false).text, ::GetSysColor(COLOR_GRAYTEXT));
    EXPECT_EQ(ColorsOnScreen(0x646464, XDefaultColor, false).text, 0x646464U);
}
