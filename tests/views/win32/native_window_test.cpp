// Windows of a host, and the messages of the controls in them.
#include <paramdb/controls/clavis_combo_box.h>
#include <paramdb/controls/pentad_dialog.h>
#include <paramdb/views/win32/native_window.h>

#include <bit>
#include <gtest/gtest.h>
#include <tests/views/suites/gearbox.h>
#include <tests/views/win32/native_driver.h>
#include <tuple>
#include <vector>

using paramdb::win32::ComboView;
using paramdb::win32::DialogView;
using paramdb::win32::ListView;
using paramdb::win32::NativeWindow;
using paramdb::win32::ShownIn;

namespace {

constexpr UINT OwnMessage = WM_APP + 7;

// A host's window that writes down what it gets of some messages.
class Host {
public:
    Host() {
        WNDCLASSW description{};
        description.lpfnWndProc = &Receive;
        description.hInstance = ::GetModuleHandleW(nullptr);
        description.lpszClassName = L"paramdb test host";
        ::RegisterClassW(&description);
        window = ::CreateWindowExW(0, description.lpszClassName, L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                   30, 30, 400, 300, nullptr, nullptr, description.hInstance, this);
    }
    Host(Host const&) = delete;
    Host& operator=(Host const&) = delete;
    ~Host() {
        ::DestroyWindow(window);
        TakeMessages();
    }

    HWND window = nullptr;
    std::vector<std::tuple<UINT, WPARAM, LPARAM>> heard;

private:
    static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM first, LPARAM second) {
        static UINT const changed = ::RegisterWindowMessageW(L"WM_PENTADCTRL_SELCHANGED");
        if (message == WM_NCCREATE)
            ::SetWindowLongPtrW(window, GWLP_USERDATA,
                                std::bit_cast<LONG_PTR>(PointerIn<CREATESTRUCTW>(second)->lpCreateParams));
        auto* const host = std::bit_cast<Host*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        if (host && (message == changed || message == OwnMessage || message == WM_COMMAND))
            host->heard.emplace_back(message, first, second);
        return message == OwnMessage ? 42 : ::DefWindowProcW(window, message, first, second);
    }
};

class NativeWindowTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Gearbox::Load(); }
    static void TearDownTestSuite() { Gearbox::Unload(); }

    paramdb::win32::Views m_views;
    Host host;
};

} // namespace

TEST_F(NativeWindowTest, TheSystemHandsOutTheNumbersOfMessages) {
    EXPECT_EQ(WM_PENTADCTRL_SELCHANGED, ::RegisterWindowMessageW(L"WM_PENTADCTRL_SELCHANGED"));
    EXPECT_EQ(CWnd::RegisterWindowMessageW(L"paramdb Test"), ::RegisterWindowMessageW(L"PARAMDB test"));
}

TEST_F(NativeWindowTest, ChoicesReachTheHostThroughTheLoop) {
    NativeWindow frame(host.window);
    CPentadCtrl editor;
    editor.set_on_change_message(OwnMessage);
    editor.Create(&frame, 3000);
    editor.fill(CClavis());
    int const channel = CQtParamInstance().IdNameMap(Clavis::qChannel).begin()->first[0];
    EXPECT_TRUE(editor.ChooseInCombo(2, 1, channel));
    EXPECT_TRUE(host.heard.empty()); // posted
    TakeMessages();
    EXPECT_EQ(host.heard, (std::vector<std::tuple<UINT, WPARAM, LPARAM>>{
                              {WM_PENTADCTRL_SELCHANGED, 2, channel}, {OwnMessage, 2, channel}}));
}

TEST_F(NativeWindowTest, ChoicesArriveInsideAMessageBoxToo) {
    NativeWindow frame(host.window);
    CPentadCtrl editor;
    editor.Create(&frame, 3000);
    editor.fill(CClavis());
    int const channel = CQtParamInstance().IdNameMap(Clavis::qChannel).begin()->first[0];
    editor.ChooseInCombo(2, 1, channel);
    // A loop that knows nothing of the controls; the timer ends it.
    static std::size_t heard_inside = 0;
    static Host const* seen = nullptr;
    seen = &host;
    ::SetTimer(nullptr, 0, 150, [](HWND, UINT, UINT_PTR id, DWORD) {
        ::KillTimer(nullptr, id);
        heard_inside = seen->heard.size();
        ::PostMessageW(::FindWindowW(L"#32770", L"paramdb box"), WM_CLOSE, 0, 0);
    });
    ::MessageBoxW(host.window, L"", L"paramdb box", MB_OK);
    EXPECT_EQ(heard_inside, 1U);
}

TEST_F(NativeWindowTest, SentMessagesAreAnswered) {
    NativeWindow frame(host.window);
    EXPECT_EQ(frame.SendMessageW(OwnMessage, 1, 2), 42);
    EXPECT_EQ(host.heard, (std::vector<std::tuple<UINT, WPARAM, LPARAM>>{{OwnMessage, 1, 2}}));
}

TEST_F(NativeWindowTest, ACommandNamesTheWindowOnTheScreen) {
    NativeWindow frame(host.window);
    CClavisComboBox modes;
    modes.Create(&frame, 17);
    modes.Fill(Clavis::qMode, -1, 0);
    modes.Choose(1);
    ASSERT_EQ(host.heard.size(), 1U);
    EXPECT_EQ(host.heard[0], (std::tuple<UINT, WPARAM, LPARAM>(WM_COMMAND, CBN_SELCHANGE << 16 | 17, 0)));
    {
        ComboView view;
        ASSERT_TRUE(view.Create(host.window, {0, 0, 100, 24}, 17));
        view.SetCombo(&modes);
        EXPECT_EQ(ShownIn(&modes), view.GetWindow());
        host.heard.clear();
        modes.Choose(2);
        ASSERT_FALSE(host.heard.empty());
        EXPECT_EQ(host.heard[0], (std::tuple<UINT, WPARAM, LPARAM>(WM_COMMAND, CBN_SELCHANGE << 16 | 17,
                                                                   std::bit_cast<LPARAM>(view.GetWindow()))));
    }
    EXPECT_EQ(ShownIn(&modes), nullptr);
}

TEST_F(NativeWindowTest, GoesWithTheHost) {
    auto other = std::make_unique<Host>();
    NativeWindow frame(other->window);
    CPentadCtrl editor;
    editor.Create(&frame, 3000);
    EXPECT_EQ(frame.GetHost(), other->window);
    other.reset();
    EXPECT_EQ(frame.GetHost(), nullptr);
    EXPECT_EQ(frame.GetSafeHwnd(), nullptr);
    EXPECT_EQ(editor.GetSafeHwnd(), nullptr); // what stood in it too
    EXPECT_EQ(frame.SendMessageW(OwnMessage), 0);
    EXPECT_FALSE(frame.PostMessageW(OwnMessage));
}

TEST_F(NativeWindowTest, IsNoneWithoutAHost) {
    NativeWindow const frame(nullptr);
    EXPECT_EQ(frame.GetSafeHwnd(), nullptr);
}

TEST_F(NativeWindowTest, DialogsStandBeforeTheHost) {
    NativeWindow frame(host.window);
    CPentadDialog dialog(&frame);
    dialog.set_target([](CClavis const&) {});
    dialog.Display(CClavis());
    TakeMessages();
    HWND const window = DialogView::Of(dialog)->GetWindow();
    EXPECT_EQ(::GetWindow(window, GW_OWNER), host.window);
    // A choice in it goes to the dialog; the dialog's own window is not the host's.
    dialog.control().ChooseInCombo(2, 1, CQtParamInstance().IdNameMap(Clavis::qChannel).begin()->first[0]);
    TakeMessages();
    EXPECT_TRUE(host.heard.empty());
    ::DestroyWindow(host.window); // takes the dialog along
    EXPECT_EQ(DialogView::Of(dialog), nullptr);
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
}
