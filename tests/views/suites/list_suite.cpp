// Any list on the screen, with the mouse and in both directions.
#include <algorithm>
#include <memory>
#include <tests/views/suites/view_suite.h>

namespace {

// A list that writes down its clicks.
class Recorder : public CXListCtrl {
public:
    struct Seen {
        UINT flags;
        CPoint point;
        int item, column;
        UINT where;

        friend bool operator==(Seen const&, Seen const&) = default;
    };
    std::vector<Seen> clicks;
    std::vector<int> headings;

    void CheckOnClick(bool on) { m_check_on_click = on; }

protected:
    void OnLButtonDown(UINT flags, CPoint point) override {
        LVHITTESTINFO hit{};
        hit.pt = point;
        HitTest(&hit);
        clicks.push_back({flags, point, hit.iItem, hit.iSubItem, hit.flags});
        CXListCtrl::OnLButtonDown(flags, point);
    }
    LRESULT OnColumnClick(int column) override {
        headings.push_back(column);
        return CXListCtrl::OnColumnClick(column);
    }
};

constexpr UINT Button = MK_LBUTTON;

class ListSuite : public ViewSuite {
protected:
    void Fill(int rows) {
        list->DeleteAllColumns();
        list->InsertColumn(0, L"Name", LVCFMT_LEFT, 150);
        list->InsertColumn(1, L"Value", LVCFMT_LEFT, 100);
        for (int i = 0; i < rows; ++i) {
            list->InsertItem(i, (L"row " + std::to_wstring(i)).c_str());
            list->SetItemText(i, 1, std::to_wstring(i * i).c_str());
        }
        list->SetHeaderCheckedState(0, CXListCtrl::header_follows);
    }
    void Open(int rows) {
        Fill(rows);
        Show();
    }
    void Show() { view->Show(*list, {400, 300}); }
    // Where a row that is wholly in sight begins and the next that is not.
    [[nodiscard]] int WidthInSight() { return view->RowsInSight().Width(); }

    std::unique_ptr<Recorder> list = std::make_unique<Recorder>();
};

} // namespace

TEST_F(ListSuite, ShowsWhatTheListHolds) {
    Open(3);
    EXPECT_EQ(Shown(), (Texts{"row 0", "row 1", "row 2"}));
    EXPECT_EQ(Shown(1), (Texts{"0", "1", "4"}));
    EXPECT_EQ(view->Columns(), 2);
    EXPECT_EQ(view->Heading(0), "Name");
    EXPECT_EQ(view->Heading(1), "Value");
    list->SetItemText(1, 0, L"other");
    list->InsertItem(3, L"new");
    list->DeleteItem(0);
    view->Settle();
    EXPECT_EQ(Shown(), (Texts{"other", "row 2", "new"}));
    list->DeleteAllItems();
    view->Settle();
    EXPECT_TRUE(Shown().empty());
    Fill(2);
    view->Settle();
    EXPECT_EQ(Shown(), (Texts{"row 0", "row 1"}));
    list->DeleteAllColumns();
    view->Settle();
    EXPECT_EQ(view->Columns(), 0);
}

TEST_F(ListSuite, ShowsLettersOfEveryKind) {
    Fill(0);
    list->InsertItem(0, L"Pr\u00FCf\u00E4nderung \u6307\u5B9A");
    Show();
    EXPECT_EQ(view->Text(0, 0), "Pr\u00FCf\u00E4nderung \u6307\u5B9A");
}

TEST_F(ListSuite, TellsTheListItsSizes) {
    Open(100);
    auto const& metrics = list->GetMetrics();
    EXPECT_EQ(metrics.row_height, view->Cell(0, 0).Height());
    EXPECT_EQ(metrics.header_height, view->RowsInSight().top);
    EXPECT_EQ(metrics.page.cx, WidthInSight());
    EXPECT_LE(metrics.page.cy, view->RowsInSight().bottom);
    EXPECT_GT(metrics.page.cy, view->RowsInSight().bottom - metrics.row_height);
    EXPECT_EQ(list->GetColumnWidth(0), 150);
    EXPECT_EQ(view->ColumnWidth(0), 150);
    EXPECT_EQ(list->GetColumnWidth(0) + list->GetColumnWidth(1), WidthInSight()); // the rest is its own
    view->Resize({600, 400});
    EXPECT_EQ(list->GetColumnWidth(1), view->ColumnWidth(1));
    EXPECT_EQ(list->GetColumnWidth(0) + list->GetColumnWidth(1), WidthInSight());
    view->DragColumn(0, 77);
    EXPECT_EQ(list->GetColumnWidth(0), 77);
    EXPECT_EQ(view->ColumnWidth(0), 77);
}

// The list and the screen agree on where every cell is, scrolled anywhere.
TEST_F(ListSuite, CellsAreWhereTheListSaysTheyAre) {
    Open(200);
    for (int const scroll : {0, 7, 333, 100'000}) {
        view->ScrollTo(CPoint(0, scroll));
        EXPECT_EQ(list->GetScrollPos(), view->Scroll());
        for (int row = 0; row < 200; row += 13) {
            for (int column = 0; column < 2; ++column) {
                CRect rect;
                ASSERT_TRUE(list->GetSubItemRect(row, column, rect));
                CRect const cell = view->Cell(row, column);
                ASSERT_EQ(rect, cell) << row << ' ' << column << ": " << rect.left << ' ' << rect.top << ' '
                                      << rect.right << ' ' << rect.bottom << ", " << cell.left << ' '
                                      << cell.top << ' ' << cell.right << ' ' << cell.bottom;
            }
        }
    }
}

// Every cell in sight, scrolled anywhere: the list finds the cell that was clicked at the place where it was
// clicked.
TEST_F(ListSuite, ClicksArriveWhereTheyAreMeant) {
    Open(200);
    for (int const scroll : {0, 7, 333, 100'000}) {
        view->ScrollTo(CPoint(0, scroll));
        CPoint const where = view->Scroll();
        CRect const sight = view->RowsInSight();
        for (int row = 0; row < 200; ++row) {
            // Whole rows alone: one that sticks out is scrolled into sight first.
            CRect const cell = view->Cell(row, 0);
            if (cell.top < sight.top || cell.bottom > sight.bottom || row % 3 != 0)
                continue;
            for (int const x : {1, 149, 151}) {
                CPoint const point(x, static_cast<int>(cell.top) + row % cell.Height());
                list->clicks.clear();
                view->Click(point);
                int const column = x < 150 ? 0 : 1;
                ASSERT_EQ(list->clicks.size(), 1U);
                ASSERT_EQ(list->clicks[0], (Recorder::Seen{Button, point, row, column, LVHT_ONITEMLABEL}));
                ASSERT_EQ(view->Current(), std::pair(row, column));
                ASSERT_EQ(view->Scroll(), where);
            }
        }
    }
}

TEST_F(ListSuite, KeysHeldArriveAsFlags) {
    Open(5);
    ClickCell(1, 0, {.control = true});
    ClickCell(1, 0, {.shift = true});
    ClickCell(1, 0, {.control = true, .shift = true});
    ASSERT_EQ(list->clicks.size(), 3U);
    EXPECT_EQ(list->clicks[0].flags, Button | MK_CONTROL);
    EXPECT_EQ(list->clicks[1].flags, Button | MK_SHIFT);
    EXPECT_EQ(list->clicks[2].flags, Button | MK_CONTROL | MK_SHIFT);
    CRect const cell = view->Cell(2, 0);
    view->RightClick(CPoint(static_cast<int>(cell.left) + 5, static_cast<int>(cell.top) + 5));
    EXPECT_EQ(list->clicks.size(), 3U);
}

TEST_F(ListSuite, AClickBesideTheRowsIsOne) {
    Open(2);
    view->Click(CPoint(20, static_cast<int>(view->RowsInSight().bottom) - 20));
    ASSERT_EQ(list->clicks.size(), 1U);
    EXPECT_EQ(list->clicks[0].item, -1);
}

TEST_F(ListSuite, ChecksByBoxOrByRow) {
    Fill(4);
    for (int i = 0; i < 4; ++i)
        list->SetCheckbox(i, 0, 0);
    Show();
    int const box = list->GetMetrics().box_width;
    ClickCell(1, 0, {}, CPoint(box - 1, 3));
    EXPECT_EQ(list->GetCheckbox(1, 0), 1);
    EXPECT_EQ(view->Check(1), 1);
    EXPECT_EQ(view->Check(2), 0);
    ClickCell(1, 0, {}, CPoint(box, 3));
    EXPECT_EQ(list->GetCheckbox(1, 0), 1);
    list->CheckOnClick(true);
    ClickCell(1, 1);
    EXPECT_EQ(list->GetCheckbox(1, 0), 0);
    EXPECT_EQ(view->Check(1), 0);
    CRect const cell = view->Cell(2, 0);
    view->DoubleClick(CPoint(static_cast<int>(cell.left) + 60, static_cast<int>(cell.top) + 5));
    EXPECT_EQ(std::count_if(list->clicks.begin(), list->clicks.end(),
                            [](Recorder::Seen const& click) { return click.item == 2; }),
              2);
    EXPECT_EQ(list->GetCheckbox(2, 0), 0); // there and back
    list->SetEnabled(3, false);
    ClickCell(3, 0);
    EXPECT_EQ(list->GetCheckbox(3, 0), 0);
    EXPECT_EQ(view->Current().first, 2);
}

TEST_F(ListSuite, HeadingsGoToTheList) {
    Fill(3);
    for (int i = 0; i < 3; ++i)
        list->SetCheckbox(i, 0, i == 1);
    Show();
    view->ClickHeading(0);
    EXPECT_EQ(list->CountCheckedItems(), 3);
    EXPECT_EQ(view->Check(2), 1);
    view->ClickHeading(0);
    EXPECT_EQ(list->CountCheckedItems(), 0);
    view->ClickHeading(1);
    EXPECT_EQ(list->headings, (std::vector<int>{0, 0, 1}));
}

TEST_F(ListSuite, TheListKnowsOfTheKeyboard) {
    Open(3);
    EXPECT_TRUE(list->HasFocus());
    view->FocusElsewhere();
    EXPECT_FALSE(list->HasFocus());
    ClickCell(0, 0);
    EXPECT_TRUE(list->HasFocus());
}

TEST_F(ListSuite, FollowsTheControl) {
    Open(3);
    list->SetFocusItem(2);
    view->Settle();
    EXPECT_EQ(view->Current().first, 2);
    list->EnableWindow(false);
    EXPECT_FALSE(view->IsEnabled());
    list->EnableWindow(true);
    EXPECT_TRUE(view->IsEnabled());
    list->ShowWindow(false);
    EXPECT_FALSE(view->IsVisible());
    list->ShowWindow(true);
    EXPECT_TRUE(view->IsVisible());
}

TEST_F(ListSuite, ScrollsWithTheControl) {
    Open(500);
    int const height = list->GetMetrics().row_height;
    list->SetScrollPos(CPoint(0, 70 * height));
    view->Settle();
    EXPECT_EQ(view->Scroll(), CPoint(0, 70 * height));
    list->SetFocusItem(400);
    view->Settle();
    EXPECT_EQ(view->Scroll(), list->GetScrollPos());
    EXPECT_TRUE(IsInSight(400));
    list->SetFocusItem(499);
    view->Settle();
    EXPECT_EQ(view->Scroll(), list->GetScrollPos());
    EXPECT_TRUE(IsInSight(499));
}

TEST_F(ListSuite, ScrollsWithTheControlAlsoInNewRows) {
    Open(3);
    int const height = list->GetMetrics().row_height;
    Fill(500);
    list->SetScrollPos(CPoint(0, 110 * height));
    view->Settle();
    EXPECT_EQ(view->Scroll(), CPoint(0, 110 * height));
    EXPECT_EQ(list->GetScrollPos(), CPoint(0, 110 * height));
    Fill(400);
    list->SetFocusItem(300);
    view->Settle();
    EXPECT_EQ(view->Current().first, 300);
    EXPECT_TRUE(IsInSight(300));
    EXPECT_EQ(list->GetScrollPos(), view->Scroll());
}

TEST_F(ListSuite, OutlivesTheControl) {
    Open(3);
    list.reset();
    view->Settle();
    EXPECT_TRUE(Shown().empty());
    view->Click(CPoint(5, 40));
    view->Type("a ");
    view->Press(Key::down);
}

TEST_F(ListSuite, DiesBeforeTheControl) {
    Open(3);
    view->Drop();
    EXPECT_FALSE(list->HasFocus());
    list->InsertItem(0, L"later");
    list->SetCheckbox(0, 0, 1);
    view->Settle();
}

TEST_F(ListSuite, SurvivesTheWindowOfTheControl) {
    list->Create();
    Open(3);
    list->DestroyWindow();
    view->Settle();
    EXPECT_TRUE(Shown().empty());
    list->Create();
    Fill(1);
    view->Settle();
    EXPECT_EQ(Shown(), (Texts{"row 0"}));
}

TEST_F(ListSuite, HasANameForScreenReaders) {
    Open(1);
    EXPECT_EQ(view->Name(), "Name");
    list->SetTitle(L"Parameters");
    EXPECT_EQ(view->Name(), "Parameters");
}

TEST_F(ListSuite, ManyChangesAtOnceArriveTogether) {
    Open(1000);
    for (int i = 0; i < 1000; ++i)
        list->SetItemText(i, 0, L"same");
    view->Settle();
    EXPECT_EQ(Shown(), Texts(1000, "same"));
}

TEST_F(ListSuite, DrawsColorsOfCells) {
    Fill(3);
    list->SetItemText(1, 1, L"", 0x000000, 0x80FFFF);
    Show();
    view->FocusElsewhere();
    auto const middle = [this](int row, int column) {
        CRect const cell = view->Cell(row, column);
        return CPoint(static_cast<int>(cell.left) + cell.Width() / 2,
                      static_cast<int>(cell.top) + cell.Height() / 2);
    };
    EXPECT_EQ(view->Pixel(middle(1, 1)), 0x80FFFFU);
    EXPECT_EQ(view->Pixel(middle(2, 1)), view->Color(ViewDriver::Shade::paper));
    list->SetItemText(1, 1, L"", 0x000000, 0xC0C0FF);
    view->Settle();
    EXPECT_EQ(view->Pixel(middle(1, 1)), 0xC0C0FFU);
}

TEST_F(ListSuite, TheRowWithTheKeyboardIsSeen) {
    Fill(3);
    list->SetExtendedStyle(LVS_EX_FULLROWSELECT);
    Show();
    list->SetFocusItem(1);
    view->Settle();
    auto const right_end = [this](int row) {
        CRect const cell = view->Cell(row, 1);
        return CPoint(static_cast<int>(cell.right) - 8, static_cast<int>(cell.top) + cell.Height() / 2);
    };
    EXPECT_EQ(view->Pixel(right_end(1)), view->Color(ViewDriver::Shade::selected));
    EXPECT_EQ(view->Pixel(right_end(2)), view->Color(ViewDriver::Shade::paper));
    view->FocusElsewhere();
    EXPECT_EQ(view->Pixel(right_end(1)), view->Color(ViewDriver::Shade::selected_without_keyboard));
    view->Focus();
    EXPECT_EQ(view->Pixel(right_end(1)), view->Color(ViewDriver::Shade::selected));
}

// A click whose handling takes everything away.
TEST_F(ListSuite, TheListMayDieInItsChange) {
    Open(3);
    std::map<int, CString> const choices{{1, L"one"}, {2, L"two"}};
    list->SetComboBox(1, 1, choices, 1);
    list->SetChangeCallback([this](int, int) { list.reset(); });
    list->SetFocusItem(1);
    view->Settle();
    view->Press(Key::f4);
    ASSERT_TRUE(view->IsOpen());
    view->Press(Key::down);
    view->Press(Key::enter);
    EXPECT_EQ(list, nullptr);
    EXPECT_TRUE(Shown().empty());
}
