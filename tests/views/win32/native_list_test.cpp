// What only the system's list view has.
#include <paramdb/controls/clavis_list_ctrl.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/views/win32/glyphs.h>

#include <chrono>
#include <functional>
#include <set>
#include <tests/views/suites/view_suite.h>
#include <tests/views/win32/native_driver.h>
#include <tests/views/win32/native_input.h>

using paramdb::win32::ListView;
using paramdb::win32::Parameter;

namespace {

class NativeListTest : public ViewSuite {
protected:
    NativeListTest() {
        list.InsertColumn(0, L"Name", LVCFMT_LEFT, 150);
        list.InsertColumn(1, L"Value", LVCFMT_RIGHT, 100);
    }
    ~NativeListTest() override { view.reset(); }

    void Open(int rows) {
        for (int i = 0; i < rows; ++i)
            list.InsertItem(i, (L"row " + std::to_wstring(i)).c_str());
        view->Show(list, {400, 300});
    }
    NativeDriver& Native() { return dynamic_cast<NativeDriver&>(*view); }
    HWND Window() { return Native().ListWindow(); }
    // All the colours of a part of the window, as they stand.
    std::vector<COLORREF> Picture(CRect const& part) {
        ::UpdateWindow(Window());
        HWND const header = reinterpret_cast<HWND>(::SendMessageW(Window(), LVM_GETHEADER, 0, 0));
        ::UpdateWindow(header);
        std::vector<COLORREF> colors;
        HDC const context = ::GetDC(Window());
        for (LONG y = part.top; y < part.bottom; ++y) {
            for (LONG x = part.left; x < part.right; ++x)
                colors.push_back(::GetPixel(context, static_cast<int>(x), static_cast<int>(y)));
        }
        ::ReleaseDC(Window(), context);
        return colors;
    }

    CXListCtrl list;
};

} // namespace

// The list and the system's list view find the same cell at every point.
TEST_F(NativeListTest, FindsTheCellsThatTheSystemFinds) {
    list.SetExtendedStyle(LVS_EX_FULLROWSELECT); // else the system finds texts alone
    Open(50);
    for (int const scroll : {0, 12, 1000}) {
        view->ScrollTo(CPoint(0, scroll * list.GetMetrics().row_height));
        CRect const sight = view->RowsInSight();
        for (int y = static_cast<int>(sight.top); y < sight.bottom; y += 3) {
            for (int x = 1; x < sight.right; x += 11) {
                LVHITTESTINFO own{};
                LVHITTESTINFO its{};
                own.pt = its.pt = {x, y};
                list.HitTest(&own);
                ::SendMessageW(Window(), LVM_SUBITEMHITTEST, 0, Parameter(&its));
                ASSERT_EQ(own.iItem, its.iItem) << x << ' ' << y;
                if (own.iItem >= 0) {
                    ASSERT_EQ(own.iSubItem, its.iSubItem) << x << ' ' << y;
                }
            }
        }
    }
}

TEST_F(NativeListTest, OpensAHundredThousandRowsAtOnce) {
    constexpr int count = 100'000;
    list.SetBatchInsertMode(true);
    for (int i = 0; i < count; ++i)
        list.InsertItem(i, L"text");
    list.SetBatchInsertMode(false);
    auto const start = std::chrono::steady_clock::now();
    view->Show(list, {400, 300});
    view->Press(Key::end);
    std::chrono::duration<double> const time = std::chrono::steady_clock::now() - start;
    EXPECT_LT(time.count(), 1.0);
    EXPECT_EQ(view->Current().first, count - 1);
    EXPECT_TRUE(IsInSight(count - 1));
}

TEST_F(NativeListTest, TheMarkInTheHeadingIsSeen) {
    for (int i = 0; i < 2; ++i) {
        list.InsertItem(i, L"row");
        list.SetCheckbox(i, 0, 0);
    }
    list.SetHeaderCheckedState(0, CXListCtrl::header_follows);
    view->Show(list, {400, 300});
    view->FocusElsewhere();
    CRect const mark(0, 0, 30, list.GetMetrics().header_height);
    std::set<std::vector<COLORREF>> pictures;
    for (int const checked : {0, 1, 2}) {
        list.SetCheckbox(0, 0, checked > 0);
        list.SetCheckbox(1, 0, checked > 1);
        view->Settle();
        pictures.insert(Picture(mark));
    }
    EXPECT_EQ(pictures.size(), 3U); // none, some, all
    list.SetHeaderCheckedState(0, CXListCtrl::no_header_check);
    view->Settle();
    pictures.insert(Picture(mark));
    EXPECT_EQ(pictures.size(), 4U);
}

TEST_F(NativeListTest, BoxesInAnyColumnAreSeen) {
    Open(2);
    view->FocusElsewhere();
    CRect const cell = view->Cell(0, 1);
    auto const plain = Picture(cell);
    list.SetCheckbox(0, 1, 0);
    view->Settle();
    auto const off = Picture(cell);
    list.SetCheckbox(0, 1, 1);
    view->Settle();
    auto const on = Picture(cell);
    EXPECT_NE(off, plain);
    EXPECT_NE(on, off);
    view->Click(CPoint(static_cast<int>(cell.left) + 8, static_cast<int>(cell.top) + 8));
    EXPECT_EQ(list.GetCheckbox(0, 1), 0);
}

TEST_F(NativeListTest, ArrowsShowWhereThereIsAChoice) {
    std::map<int, CString> const choices{{1, L""}, {2, L"two"}};
    Open(2);
    view->FocusElsewhere();
    CRect const cell = view->Cell(0, 1);
    auto const plain = Picture(cell);
    list.SetComboBox(0, 1, choices, 1);
    view->Settle();
    EXPECT_NE(Picture(cell), plain);
    list.SetEnabled(0, false);
    view->Settle();
    EXPECT_EQ(Picture(cell), plain); // nothing to choose
}

TEST_F(NativeListTest, AnOpenComboCoversItsCell) {
    std::map<int, CString> const choices{{1, L"one"}, {2, L"two"}};
    Open(5);
    for (int row = 0; row < 5; ++row)
        list.SetComboBox(row, 1, choices, 1);
    view->Settle();
    for (int const row : {0, 3}) {
        ClickCell(row, 1);
        ASSERT_TRUE(view->IsOpen());
        RECT place{};
        ::GetWindowRect(Native().View().GetCombo(), &place);
        ::MapWindowPoints(nullptr, Window(), PointerIn<POINT>(Parameter(&place)), 2);
        CRect const cell = view->Cell(row, 1);
        EXPECT_EQ(place.left, cell.left);
        EXPECT_EQ(place.right, cell.right);
        EXPECT_LE(place.top, cell.top);
        EXPECT_GE(place.bottom, cell.bottom);
        EXPECT_GE(place.top, view->RowsInSight().top);        // not over the headings
        EXPECT_EQ(TextOf(Native().View().GetCombo()), "one"); // whole, in the font of the list
        view->LeaveCombo();
    }
}

TEST_F(NativeListTest, AnOpenComboShowsAllOfAFew) {
    std::map<int, CString> choices;
    Open(3);
    for (int count = 1; count <= 16; ++count) {
        choices[count] = std::to_wstring(count).c_str();
        list.SetComboBox(1, 1, choices, 1);
        list.SetFocusItem(1);
        view->Settle();
        view->Press(Key::f4);
        ASSERT_TRUE(view->IsOpen());
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ::GetComboBoxInfo(Native().View().GetCombo(), &info);
        RECT inner{};
        RECT last{};
        ::GetClientRect(info.hwndList, &inner);
        ::SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(count - 1), Parameter(&last));
        EXPECT_LE(last.bottom, inner.bottom) << count;
        EXPECT_LT(inner.bottom - last.bottom, last.bottom - last.top) << count; // and nothing below
        view->LeaveCombo();
    }
}

TEST_F(NativeListTest, TheWheelScrollsAndClosesACombo) {
    std::map<int, CString> const choices{{1, L"one"}};
    Open(200);
    list.SetComboBox(0, 1, choices, 1);
    list.SetFocusItem(0);
    view->Settle();
    view->Press(Key::f4);
    ASSERT_TRUE(view->IsOpen());
    constexpr int notches = -5;
    ::SendMessageW(Window(), WM_MOUSEWHEEL, static_cast<WPARAM>(notches * WHEEL_DELTA) << 16 & 0xFFFF0000, 0);
    view->Settle();
    EXPECT_FALSE(view->IsOpen());
    EXPECT_GT(view->Scroll().y, 0);
    EXPECT_EQ(list.GetScrollPos(), view->Scroll());
}

// As screen readers do it.
TEST_F(NativeListTest, TheSystemMayMoveTheKeyboard) {
    Open(10);
    list.SetEnabled(6, false);
    list.SetFocusItem(1);
    view->Settle();
    auto const go_to = [this](int row) {
        LVITEMW state{};
        state.stateMask = state.state = LVIS_FOCUSED;
        ::SendMessageW(Window(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), Parameter(&state));
        view->Settle();
    };
    go_to(4);
    EXPECT_EQ(list.GetFocusItem(), 4);
    go_to(6); // takes no input
    EXPECT_EQ(list.GetFocusItem(), 4);
    EXPECT_EQ(view->Current().first, 4);
}

TEST_F(NativeListTest, BoxesAreStatesForScreenReaders) {
    Open(3);
    EXPECT_EQ(view->Check(0), -1);
    EXPECT_EQ(::SendMessageW(Window(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_CHECKBOXES, 0);
    list.SetCheckbox(0, 0, 1);
    list.SetCheckbox(1, 0, 0);
    list.InsertItem(3, L"another");
    view->Settle();
    EXPECT_EQ(view->Check(0), 1);
    EXPECT_EQ(view->Check(1), 0);
    EXPECT_EQ(view->Check(2), -1);
    EXPECT_NE(::SendMessageW(Window(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_CHECKBOXES, 0);
}

TEST_F(NativeListTest, StylesOfTheListAreThoseOfTheWindow) {
    list.SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
    Open(3);
    auto const style = [this] { return ::SendMessageW(Window(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0); };
    EXPECT_EQ(style() & (LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE | LVS_EX_BORDERSELECT),
              LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
    list.SetExtendedStyle(LVS_EX_BORDERSELECT);
    view->Settle();
    EXPECT_EQ(style() & (LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE | LVS_EX_BORDERSELECT),
              LVS_EX_BORDERSELECT);
}

TEST_F(NativeListTest, TakesOverAListWithoutData) {
    struct Case {
        wchar_t const* name;
        LONG style;
        bool taken;
    };
    Open(2);
    for (auto const& [name, style, taken] :
         {Case{WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA, true}, Case{WC_LISTVIEWW, LVS_REPORT, false},
          Case{WC_LISTVIEWW, LVS_LIST | LVS_OWNERDATA, false}, Case{L"LISTBOX", 0, false}}) {
        HWND const window = ::CreateWindowExW(0, name, L"", static_cast<DWORD>(WS_CHILD | style), 0, 0, 100,
                                              100, Native().Frame(), nullptr, nullptr, nullptr);
        {
            ListView other;
            EXPECT_EQ(other.TakeOver(window), taken);
            EXPECT_FALSE(taken && other.TakeOver(window)); // once
            EXPECT_EQ(other.GetWindow(), taken ? window : nullptr);
        }
        EXPECT_NE(::IsWindow(window), FALSE); // it is the host's
        ::DestroyWindow(window);
    }
    ListView none;
    EXPECT_FALSE(none.TakeOver(nullptr));
}

TEST_F(NativeListTest, SurvivesItsWindow) {
    Open(3);
    ListView& shown = Native().View();
    EXPECT_TRUE(list.HasFocus());
    ::DestroyWindow(shown.GetWindow());
    EXPECT_EQ(shown.GetWindow(), nullptr);
    EXPECT_FALSE(list.HasFocus());
    list.InsertItem(0, L"later");
    shown.Update();
    // And may have another.
    EXPECT_TRUE(shown.Create(Native().Frame(), {0, 0, 200, 200}));
    shown.SetList(&list);
    view->Settle();
    EXPECT_EQ(Shown(), (Texts{"later", "row 0", "row 1", "row 2"}));
}

// Whatever a host does in what it is told, the view is not touched when it is gone.
TEST_F(NativeListTest, MayDieInEverythingThatItTells) {
    class Fatal : public CXListCtrl {
    public:
        std::function<void()> end;

    protected:
        void OnLButtonDown(UINT, CPoint) override { end(); }
        LRESULT OnColumnClick(int) override {
            end();
            return 0;
        }
        void OnKeyDown(UINT) override { end(); }
        void OnSetFocus(CWnd*) override {
            if (m_armed)
                end();
        }
        void OnKillFocus(CWnd*) override {
            if (m_armed)
                end();
        }

    public:
        bool m_armed = false;
    };
    struct Way {
        char const* name;
        std::function<void(ViewDriver&, Fatal&)> go;
    };
    for (auto const& [name, go] : {Way{"click", [](ViewDriver&d, Fatal&) { d.Click(CPoint(5, 40)); }},
                                   Way{"heading", [](ViewDriver&d, Fatal&) { d.ClickHeading(0); }},
                                   Way{"key", [](ViewDriver&d, Fatal&) { d.Press(Key::down, {}); }},
                                   Way{"leave",
                                       [](ViewDriver&d, Fatal&f) {
                                           f.m_armed = true;
                                           d.FocusElsewhere();
                                       }},
                                   Way{"enter", [](ViewDriver&d, Fatal&f) {
                                           d.FocusElsewhere();
                                           f.m_armed = true;
                                           d.Click(CPoint(5, 40), {});
                                       }}}) {
        SCOPED_TRACE(name);
        NativeDriver driver;
        Fatal fatal;
        fatal.InsertColumn(0, L"Name", LVCFMT_LEFT, 100);
        fatal.InsertItem(0, L"one");
        fatal.InsertItem(1, L"two");
        bool ended = false;
        fatal.end = [&] {
            fatal.m_armed = false;
            if (!std::exchange(ended, true))
                driver.Drop();
        };
        driver.Show(fatal, {300, 200});
        go(driver, fatal);
        EXPECT_TRUE(ended);
        EXPECT_EQ(driver.ListWindow(), nullptr);
    }
}

TEST_F(NativeListTest, TwoListsInOneWindowKeepApart) {
    Open(3);
    CXListCtrl second_list;
    second_list.InsertColumn(0, L"Other", LVCFMT_LEFT, 100);
    second_list.InsertItem(0, L"b");
    ListView second;
    ASSERT_TRUE(second.Create(Native().Frame(), {150, 100, 300, 200}));
    second.SetList(&second_list);
    view->Settle();
    wchar_t text[16] = {};
    LVITEMW item{};
    item.pszText = text;
    item.cchTextMax = 16;
    ::SendMessageW(second.GetWindow(), LVM_GETITEMTEXTW, 0, Parameter(&item));
    EXPECT_STREQ(text, L"b");
    EXPECT_EQ(view->Text(0, 0), "row 0");
}
