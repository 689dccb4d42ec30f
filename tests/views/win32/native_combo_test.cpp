// What only the system's combo box has.
#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/views/win32/screen.h>

#include <chrono>
#include <tests/views/suites/view_suite.h>
#include <tests/views/win32/native_driver.h>
#include <tests/views/win32/native_input.h>

using paramdb::win32::ComboView;
using paramdb::win32::Parameter;

namespace {

class NativeComboTest : public ViewSuite {
protected:
    NativeComboTest() {
        for (wchar_t const* text : {L"one", L"two", L"three"})
            combo.AddString(text);
        combo.SetCurSel(0);
    }
    ~NativeComboTest() override { view.reset(); }

    NativeDriver& Native() { return dynamic_cast<NativeDriver&>(*view); }
    static int HeightOf(HWND window) {
        RECT place{};
        ::GetWindowRect(window, &place);
        return static_cast<int>(place.bottom - place.top);
    }
    static int RowsInList(HWND window) {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ::GetComboBoxInfo(window, &info);
        RECT inner{};
        ::GetClientRect(info.hwndList, &inner);
        return static_cast<int>(inner.bottom) /
               static_cast<int>(::SendMessageW(info.hwndList, LB_GETITEMHEIGHT, 0, 0));
    }

    CComboBoxX combo;
};

} // namespace

TEST_F(NativeComboTest, TwentyThousandRowsAreThereAtOnce) {
    for (int i = 0; i < 20'000; ++i)
        combo.AddString(L"some text");
    auto const start = std::chrono::steady_clock::now();
    view->Show(combo);
    std::chrono::duration<double> const time = std::chrono::steady_clock::now() - start;
    EXPECT_LT(time.count(), 1.0);
}

TEST_F(NativeComboTest, KeepsItsHeightAndOpensItsList) {
    view->Show(combo);
    ComboView other;
    ASSERT_TRUE(other.Create(Native().Frame(), {10, 40, 200, 70}, 5));
    other.SetCombo(&combo);
    view->Settle();
    HWND const window = other.GetWindow();
    EXPECT_EQ(HeightOf(window), 30);
    ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(paramdb::win32::MessageFont(120)), TRUE);
    EXPECT_EQ(HeightOf(window), 30);
    ::MoveWindow(window, 10, 40, 150, 30, TRUE); // a host that knows nothing of lists
    ::SendMessageW(window, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_GE(RowsInList(window), 3);
    ::SendMessageW(window, CB_SHOWDROPDOWN, FALSE, 0);
    EXPECT_EQ(HeightOf(window), 30);
}

TEST_F(NativeComboTest, TheOpenListIsWideEnough) {
    combo.AddString(std::wstring(40, L'm').c_str());
    view->Show(combo);
    HWND const window = ::GetDlgItem(Native().Frame(), 17);
    EXPECT_GE(::SendMessageW(window, CB_GETDROPPEDWIDTH, 0, 0), combo.GetDroppedWidth());
}

TEST_F(NativeComboTest, TheWheelChoosesOnlyWithTheKeyboard) {
    view->Show(combo);
    HWND const window = ::GetDlgItem(Native().Frame(), 17);
    auto const turn = [window] {
        ::SendMessageW(window, WM_MOUSEWHEEL, static_cast<WPARAM>(-WHEEL_DELTA) << 16 & 0xFFFF0000, 0);
        TakeMessages();
    };
    view->FocusElsewhere();
    turn();
    EXPECT_EQ(combo.GetCurSel(), 0);
    view->Focus();
    turn();
    EXPECT_EQ(combo.GetCurSel(), 1);
}

TEST_F(NativeComboTest, TakesOverAPlainDropDownList) {
    struct Case {
        wchar_t const* name;
        LONG style;
        bool taken;
    };
    view->Show(combo);
    for (auto const& [name, style, taken] :
         {Case{L"COMBOBOX", CBS_DROPDOWNLIST, true}, Case{L"COMBOBOX", CBS_DROPDOWNLIST | CBS_SORT, false},
          Case{L"COMBOBOX", CBS_DROPDOWN, false}, Case{L"COMBOBOX", CBS_SIMPLE, false},
          Case{L"LISTBOX", CBS_DROPDOWNLIST, false}}) {
        HWND const window = ::CreateWindowExW(0, name, L"", static_cast<DWORD>(WS_CHILD | style), 0, 0, 100,
                                              100, Native().Frame(), nullptr, nullptr, nullptr);
        {
            ComboView other;
            EXPECT_EQ(other.TakeOver(window), taken);
            EXPECT_EQ(other.GetWindow(), taken ? window : nullptr);
        }
        EXPECT_NE(::IsWindow(window), FALSE);
        ::DestroyWindow(window);
    }
}

TEST_F(NativeComboTest, SurvivesItsWindow) {
    view->Show(combo);
    EXPECT_TRUE(combo.HasFocus());
    ::DestroyWindow(::GetDlgItem(Native().Frame(), 17));
    EXPECT_FALSE(combo.HasFocus());
    combo.AddString(L"later");
    combo.SetTitle(L"name");
    view->Settle();
}
