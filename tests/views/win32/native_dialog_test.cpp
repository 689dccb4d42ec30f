// Dialogs with the system's fonts, units and keys.
#include <paramdb/controls/pentad_dialog.h>
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/views/win32/dialog_layout.h>

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <tests/views/suites/gearbox.h>
#include <tests/views/win32/native_driver.h>
#include <tests/views/win32/native_input.h>

using paramdb::win32::DialogLayout;
using paramdb::win32::DialogView;
using paramdb::win32::Parameter;

namespace {

// Reads a template unit by unit, by the rules of the format.
class Reader {
public:
    explicit Reader(std::vector<std::uint16_t> const& units) : m_units(units) {}

    int Get16() { return m_units.at(m_next++); }
    int GetSigned16() { return static_cast<std::int16_t>(Get16()); }
    std::uint32_t Get32() {
        auto const low = static_cast<std::uint32_t>(Get16());
        return low | static_cast<std::uint32_t>(Get16()) << 16;
    }
    std::wstring GetText() {
        std::wstring text;
        while (int const unit = Get16())
            text.push_back(static_cast<wchar_t>(unit));
        return text;
    }
    void Align() { m_next += m_next % 2; }
    [[nodiscard]] bool IsAtEnd() const { return m_next == m_units.size(); }

private:
    std::vector<std::uint16_t> const& m_units;
    std::size_t m_next = 0;
};

class NativeDialogTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Gearbox::Load(); }
    static void TearDownTestSuite() { Gearbox::Unload(); }

    NativeDialogTest() {
        CLibMgr::SetLanguage(CLibMgr::Language::english);
        dialog.set_target([](CClavis const&) {});
    }
    ~NativeDialogTest() override {
        dialog.DestroyWindow();
        TakeMessages();
        CLibMgr::ResetLanguage();
    }

    std::optional<paramdb::win32::Views> m_views = std::optional<paramdb::win32::Views>(std::in_place);
    CPentadDialog dialog;
};

} // namespace

TEST(NativeDialogLayout, HoldsTheTemplate) {
    using Language = CLibMgr::Language;
    for (Language const language :
         {Language::english, Language::german, Language::hungarian, Language::chinese}) {
        SCOPED_TRACE(static_cast<int>(language));
        CLibMgr::SetLanguage(language);
        CDialogTemplate const description = paramdb::FindDialogTemplate(3002);
        auto const units = DialogLayout(description);
        Reader reader(units);
        EXPECT_EQ(reader.Get16(), 1);
        EXPECT_EQ(reader.Get16(), 0xFFFF);
        EXPECT_EQ(reader.Get32(), 0U);
        EXPECT_EQ(reader.Get32(), 0U);
        EXPECT_EQ(reader.Get32(), std::uint32_t{DS_SETFONT | DS_FIXEDSYS | WS_POPUP | WS_CAPTION |
                                                WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN});
        EXPECT_EQ(reader.Get16(), 3);
        for (int const value : {0, 0, 169, 115})
            EXPECT_EQ(reader.GetSigned16(), value);
        EXPECT_EQ(reader.Get16(), 0);
        EXPECT_EQ(reader.Get16(), 0);
        EXPECT_EQ(reader.GetText(), description.title.GetString());
        EXPECT_EQ(reader.Get16(), 8);
        EXPECT_EQ(reader.Get16(), FW_NORMAL);
        EXPECT_EQ(reader.Get16(), DEFAULT_CHARSET << 8);
        EXPECT_EQ(reader.GetText(), L"MS Shell Dlg");
        for (CDialogItem const& item : description.items) {
            reader.Align();
            EXPECT_EQ(reader.Get32(), 0U);
            EXPECT_EQ(reader.Get32(), 0U);
            LONG const own = item.kind == CDialogItem::Kind::list
                                 ? LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_BORDER
                             : item.kind == CDialogItem::Kind::default_button ? BS_DEFPUSHBUTTON
                                                                              : BS_PUSHBUTTON;
            EXPECT_EQ(reader.Get32(), static_cast<std::uint32_t>(WS_CHILD | WS_VISIBLE | WS_TABSTOP | own));
            for (int const value : {item.x, item.y, item.width, item.height})
                EXPECT_EQ(reader.GetSigned16(), value);
            EXPECT_EQ(reader.Get32(), static_cast<std::uint32_t>(item.id));
            if (item.kind == CDialogItem::Kind::list) {
                EXPECT_EQ(reader.GetText(), L"SysListView32");
            } else {
                EXPECT_EQ(reader.Get16(), 0xFFFF);
                EXPECT_EQ(reader.Get16(), 0x80);
            }
            EXPECT_EQ(reader.GetText(), item.text.GetString());
            EXPECT_EQ(reader.Get16(), 0);
        }
        EXPECT_TRUE(reader.IsAtEnd());
        CLibMgr::ResetLanguage();
    }
}

TEST_F(NativeDialogTest, HasTheUnitsAndTheFontOfTheSystem) {
    dialog.Display(CClavis());
    HWND const window = DialogView::Of(dialog)->GetWindow();
    // Places and sizes are rounded each by itself.
    auto const mapped = [window](int x, int y, int width, int height) {
        RECT corner{0, 0, x, y};
        RECT size{0, 0, width, height};
        ::MapDialogRect(window, &corner);
        ::MapDialogRect(window, &size);
        return CRect(static_cast<int>(corner.right), static_cast<int>(corner.bottom),
                     static_cast<int>(corner.right + size.right),
                     static_cast<int>(corner.bottom + size.bottom));
    };
    NativeDriver driver;
    EXPECT_EQ(driver.Item(dialog, 3000), mapped(7, 7, 155, 80));
    EXPECT_EQ(driver.Item(dialog, IDOK), mapped(58, 94, 50, 14));
    EXPECT_EQ(driver.Item(dialog, IDCANCEL), mapped(112, 94, 50, 14));
    CRect const whole = mapped(0, 0, 169, 115);
    EXPECT_EQ(driver.Size(dialog), CSize(whole.Width(), whole.Height()));
    auto const font = reinterpret_cast<HFONT>(::SendMessageW(::GetDlgItem(window, 3000), WM_GETFONT, 0, 0));
    LOGFONTW description{};
    ASSERT_NE(::GetObjectW(font, static_cast<int>(sizeof description), &description), 0);
    EXPECT_STREQ(description.lfFaceName, L"MS Shell Dlg");
    HDC const screen = ::GetDC(nullptr);
    EXPECT_EQ(description.lfHeight, -::MulDiv(8, ::GetDeviceCaps(screen, LOGPIXELSY), 72));
    ::ReleaseDC(nullptr, screen);
}

TEST_F(NativeDialogTest, OKIsTheDefaultButton) {
    dialog.Display(CClavis());
    HWND const window = DialogView::Of(dialog)->GetWindow();
    auto const answer = static_cast<WPARAM>(::SendMessageW(window, DM_GETDEFID, 0, 0));
    EXPECT_EQ(paramdb::win32::HighWord(answer), DC_HASDEFID);
    EXPECT_EQ(paramdb::win32::LowWord(answer), IDOK);
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(window, 3000)); // the first item has the keyboard
}

TEST_F(NativeDialogTest, IsNotMadeSmallerThanTheTemplate) {
    dialog.Display(CClavis());
    HWND const window = DialogView::Of(dialog)->GetWindow();
    RECT frame{};
    ::GetWindowRect(window, &frame);
    MINMAXINFO info{};
    ::SendMessageW(window, WM_GETMINMAXINFO, 0, Parameter(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, frame.right - frame.left);
    EXPECT_EQ(info.ptMinTrackSize.y, frame.bottom - frame.top);
}

TEST_F(NativeDialogTest, ShowsTheWindowThatItHas) {
    dialog.Display(CClavis());
    DialogView* const view = DialogView::Of(dialog);
    EXPECT_EQ(DialogView::Show(dialog, nullptr), view);
    EXPECT_EQ(view->List(7), nullptr);
    EXPECT_EQ(view->GetDialog(), &dialog);
}

TEST_F(NativeDialogTest, HidesAndDisablesWithTheDialog) {
    dialog.Display(CClavis());
    HWND const window = DialogView::Of(dialog)->GetWindow();
    dialog.ShowWindow(false);
    EXPECT_EQ(::IsWindowVisible(window), FALSE);
    dialog.ShowWindow(true);
    EXPECT_NE(::IsWindowVisible(window), FALSE);
    dialog.EnableWindow(false);
    EXPECT_EQ(::IsWindowEnabled(window), FALSE);
    dialog.EnableWindow(true);
    dialog.SetTitle(L"Another");
    EXPECT_EQ(TextOf(window), "Another");
    EXPECT_EQ(TextOf(::GetDlgItem(window, 3000)), "Another");
}

// A program that draws its dialogs itself, with a message loop of its own.
TEST_F(NativeDialogTest, KeysNeedTheLoopsHelpWithoutViews) {
    m_views.reset();
    paramdb::win32::EventLoop const loop;
    dialog.Display(CClavis());
    EXPECT_EQ(DialogView::Of(dialog), nullptr);
    DialogView* const view = DialogView::Show(dialog, nullptr);
    ASSERT_NE(view, nullptr);
    HWND const list = ::GetDlgItem(view->GetWindow(), 3000);
    MSG key{};
    key.hwnd = list;
    key.message = WM_KEYDOWN;
    key.wParam = VK_ESCAPE;
    MSG other = key;
    other.message = WM_MOUSEMOVE;
    EXPECT_FALSE(paramdb::win32::HandleDialogKey(other));
    other = key;
    other.hwnd = nullptr;
    EXPECT_FALSE(paramdb::win32::HandleDialogKey(other));
    EXPECT_TRUE(paramdb::win32::HandleDialogKey(key));
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
    EXPECT_EQ(::IsWindow(list), FALSE);
}
