#include <memory>
#include <tests/views/qt/view_test.h>

using paramdb::qt::ListView;

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

class QtListView : public ViewTest {
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
        view.SetList(list.get());
        Show(view);
    }

    std::unique_ptr<Recorder> list = std::make_unique<Recorder>();
    ListView view;
};

constexpr UINT Button = MK_LBUTTON;

} // namespace

TEST_F(QtListView, ShowsWhatTheListHolds) {
    Open(3);
    EXPECT_EQ(Shown(view), (std::vector<std::string>{"row 0", "row 1", "row 2"}));
    EXPECT_EQ(Shown(view, 1), (std::vector<std::string>{"0", "1", "4"}));
    list->SetItemText(1, 0, L"other");
    list->InsertItem(3, L"new");
    list->DeleteItem(0);
    Settle();
    EXPECT_EQ(Shown(view), (std::vector<std::string>{"other", "row 2", "new"}));
    list->DeleteAllItems();
    Settle();
    EXPECT_TRUE(Shown(view).empty());
    Fill(2);
    Settle();
    EXPECT_EQ(Shown(view), (std::vector<std::string>{"row 0", "row 1"}));
}

TEST_F(QtListView, TellsTheListItsSizes) {
    Open(100);
    auto const& metrics = list->GetMetrics();
    auto& table = view.Table();
    EXPECT_EQ(metrics.row_height, table.rowHeight(0));
    EXPECT_EQ(metrics.header_height, table.horizontalHeader()->height());
    EXPECT_EQ(metrics.page,
              CSize(table.viewport()->width(), table.viewport()->height() + metrics.header_height));
    EXPECT_EQ(list->GetColumnWidth(0), 150);
    EXPECT_EQ(list->GetColumnWidth(0), table.columnWidth(0));
    EXPECT_EQ(list->GetColumnWidth(0) + list->GetColumnWidth(1),
              table.viewport()->width()); // the rest is its own
    m_window.resize(600, 400);
    Settle();
    EXPECT_EQ(list->GetColumnWidth(1), table.columnWidth(1));
    EXPECT_EQ(list->GetColumnWidth(0) + list->GetColumnWidth(1), table.viewport()->width());
    table.horizontalHeader()->resizeSection(0, 77); // as the user's hand does
    EXPECT_EQ(list->GetColumnWidth(0), 77);
}

// Every cell in sight, scrolled anywhere: the list finds the cell that was clicked at the place where it was
// clicked.
TEST_F(QtListView, ClicksArriveWhereTheyAreMeant) {
    Open(200);
    auto& table = view.Table();
    for (int const scroll : {0, 7, 333, 100'000}) {
        table.verticalScrollBar()->setValue(scroll);
        Settle();
        int const y_of_view = table.verticalScrollBar()->value();
        EXPECT_EQ(list->GetScrollPos(), CPoint(0, y_of_view));
        // Whole rows alone: one that sticks out is scrolled into sight first.
        for (int y = 2 * table.rowHeight(0); y < table.viewport()->height() - 2 * table.rowHeight(0);
             y += 5) {
            for (int const x : {1, 30, 149, 151, 200}) {
                QModelIndex const index = table.indexAt(QPoint(x, y));
                list->clicks.clear();
                QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, QPoint(x, y));
                ASSERT_EQ(list->clicks.size(), 1U);
                ASSERT_EQ(list->clicks[0],
                          (Recorder::Seen{Button, CPoint(x, y + list->GetMetrics().header_height),
                                          index.row(), index.column(), LVHT_ONITEMLABEL}));
                ASSERT_EQ(table.currentIndex(), index);
                ASSERT_EQ(table.verticalScrollBar()->value(), y_of_view);
            }
        }
    }
}

TEST_F(QtListView, ARowThatSticksOutIsScrolledIntoSight) {
    Open(200);
    auto& table = view.Table();
    table.verticalScrollBar()->setValue(table.rowHeight(0) / 2);
    Settle();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, QPoint(10, 1));
    EXPECT_EQ(list->clicks.at(0).item, 0);
    EXPECT_EQ(table.verticalScrollBar()->value(), 0);
    EXPECT_EQ(list->GetScrollPos(), CPoint(0, 0));
}

TEST_F(QtListView, KeysHeldArriveAsFlags) {
    Open(5);
    ClickCell(view, 1, 0, Qt::ControlModifier);
    ClickCell(view, 1, 0, Qt::ShiftModifier);
    ClickCell(view, 1, 0, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(list->clicks.size(), 3U);
    EXPECT_EQ(list->clicks[0].flags, Button | MK_CONTROL);
    EXPECT_EQ(list->clicks[1].flags, Button | MK_SHIFT);
    EXPECT_EQ(list->clicks[2].flags, Button | MK_CONTROL | MK_SHIFT);
    QTest::mouseClick(view.Table().viewport(), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_EQ(list->clicks.size(), 3U);
}

TEST_F(QtListView, AClickBesideTheRowsIsOne) {
    Open(2);
    QTest::mouseClick(view.Table().viewport(), Qt::LeftButton, {}, QPoint(20, 150));
    ASSERT_EQ(list->clicks.size(), 1U);
    EXPECT_EQ(list->clicks[0].item, -1);
}

TEST_F(QtListView, ChecksByBoxOrByRow) {
    Fill(4);
    for (int i = 0; i < 4; ++i)
        list->SetCheckbox(i, 0, 0);
    view.SetList(list.get());
    Show(view);
    int const box = list->GetMetrics().box_width;
    ClickCell(view, 1, 0, {}, QPoint(box - 1, 3));
    EXPECT_EQ(list->GetCheckbox(1, 0), 1);
    ClickCell(view, 1, 0, {}, QPoint(box, 3));
    EXPECT_EQ(list->GetCheckbox(1, 0), 1);
    list->CheckOnClick(true);
    ClickCell(view, 1, 1);
    EXPECT_EQ(list->GetCheckbox(1, 0), 0);
    QTest::mouseDClick(view.Table().viewport(), Qt::LeftButton, {},
                       view.Table().visualRect(view.Table().model()->index(2, 0)).center());
    EXPECT_EQ(list->GetCheckbox(2, 0), 1);
    list->SetEnabled(3, false);
    ClickCell(view, 3, 0);
    EXPECT_EQ(list->GetCheckbox(3, 0), 0);
    EXPECT_EQ(view.Table().currentIndex().row(), 2);
}

TEST_F(QtListView, HeadingsGoToTheList) {
    Fill(3);
    for (int i = 0; i < 3; ++i)
        list->SetCheckbox(i, 0, i == 1);
    view.SetList(list.get());
    Show(view);
    ClickHeading(view, 0);
    EXPECT_EQ(list->CountCheckedItems(), 3);
    ClickHeading(view, 0);
    EXPECT_EQ(list->CountCheckedItems(), 0);
    ClickHeading(view, 1);
    EXPECT_EQ(list->headings, (std::vector<int>{0, 0, 1}));
}

TEST_F(QtListView, TheListKnowsOfTheKeyboard) {
    Open(3);
    EXPECT_TRUE(list->HasFocus());
    view.OpenFilter(); // still the same list
    Settle();
    EXPECT_TRUE(list->HasFocus());
    m_elsewhere.setFocus();
    EXPECT_FALSE(list->HasFocus());
    ClickCell(view, 0, 0);
    EXPECT_TRUE(list->HasFocus());
}

TEST_F(QtListView, FollowsTheControl) {
    Open(3);
    list->SetFocusItem(2);
    EXPECT_EQ(view.Table().currentIndex().row(), 2);
    list->EnableWindow(false);
    EXPECT_FALSE(view.isEnabled());
    list->EnableWindow(true);
    list->ShowWindow(false);
    EXPECT_FALSE(view.isVisible());
    list->ShowWindow(true);
    EXPECT_TRUE(view.isVisible());
}

TEST_F(QtListView, ScrollsWithTheControl) {
    Open(500);
    list->SetScrollPos(CPoint(0, 1234));
    EXPECT_EQ(view.Table().verticalScrollBar()->value(), 1234);
    list->SetFocusItem(400);
    EXPECT_EQ(view.Table().verticalScrollBar()->value(), list->GetScrollPos().y);
    EXPECT_TRUE(view.Table().viewport()->rect().contains(
        view.Table().visualRect(view.Table().model()->index(400, 0))));
}

TEST_F(QtListView, ScrollsWithTheControlAlsoInNewRows) {
    Open(3);
    Fill(500);
    list->SetScrollPos(CPoint(0, 2000));
    Settle();
    EXPECT_EQ(view.Table().verticalScrollBar()->value(), 2000);
    EXPECT_EQ(list->GetScrollPos(), CPoint(0, 2000));
    Fill(400);
    list->SetFocusItem(300);
    Settle();
    EXPECT_EQ(view.Table().currentIndex().row(), 300);
    EXPECT_TRUE(view.Table().viewport()->rect().contains(
        view.Table().visualRect(view.Table().model()->index(300, 0))));
    EXPECT_EQ(list->GetScrollPos().y, view.Table().verticalScrollBar()->value());
}

TEST_F(QtListView, OutlivesTheControl) {
    Open(3);
    list.reset();
    Settle();
    EXPECT_EQ(view.GetList(), nullptr);
    EXPECT_TRUE(Shown(view).empty());
    QTest::mouseClick(view.Table().viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    QTest::keyClicks(&view.Table(), QStringLiteral("a "));
    Settle();
}

TEST_F(QtListView, DiesBeforeTheControl) {
    {
        ListView other;
        Fill(3);
        other.SetList(list.get());
        Show(other);
    }
    EXPECT_FALSE(list->HasFocus());
    list->InsertItem(0, L"later");
    list->SetCheckbox(0, 0, 1);
    Settle();
}

TEST_F(QtListView, SurvivesTheWindowOfTheControl) {
    list->Create();
    Open(3);
    list->DestroyWindow();
    Settle();
    EXPECT_TRUE(Shown(view).empty());
    list->Create();
    Fill(1);
    Settle();
    EXPECT_EQ(Shown(view), (std::vector<std::string>{"row 0"}));
}

TEST_F(QtListView, HasNamesForScreenReaders) {
    Open(1);
    EXPECT_EQ(view.Table().accessibleName(), QStringLiteral("Name"));
    EXPECT_EQ(view.FilterEdit().accessibleName(), paramdb::qt::FilterWord());
    list->SetTitle(L"Parameters");
    EXPECT_EQ(view.Table().accessibleName(), QStringLiteral("Parameters"));
}

TEST_F(QtListView, ManyChangesAtOnceArriveTogether) {
    Open(1000);
    for (int i = 0; i < 1000; ++i)
        list->SetItemText(i, 0, L"same");
    Settle();
    EXPECT_EQ(Shown(view), std::vector<std::string>(1000, "same"));
}

// A picture of a cell in the palette in force.
TEST_F(QtListView, DrawsColorsOfCells) {
    Fill(3);
    list->SetItemText(1, 1, L"", 0x000000, 0x80FFFF);
    view.SetList(list.get());
    Show(view);
    QImage const picture = view.Table().viewport()->grab().toImage();
    QRect const cell = view.Table().visualRect(view.Table().model()->index(1, 1));
    EXPECT_EQ(picture.pixelColor(cell.center() * picture.devicePixelRatio()), QColor(0xFF, 0xFF, 0x80));
}

// An empty box can be told from what is around it, on light and on dark.
TEST_F(QtListView, BoxesAreSeenOnEveryPalette) {
    Fill(2);
    list->SetCheckbox(0, 0, 0);
    view.SetList(list.get());
    Show(view);
    m_elsewhere.setFocus();
    QPalette dark;
    for (QPalette::ColorRole const role : {QPalette::Window, QPalette::Base, QPalette::Button})
        dark.setColor(role, QColor(0x23, 0x23, 0x23));
    dark.setColor(QPalette::Text, Qt::white);
    for (QPalette const& palette : {view.palette(), dark}) {
        view.setPalette(palette);
        Settle();
        QImage const picture = view.Table().viewport()->grab().toImage();
        QRect const row = view.Table().visualRect(view.Table().model()->index(0, 0));
        int farthest = 0;
        for (int x = 0; x < list->GetMetrics().box_width; ++x) {
            QPoint const point = QPoint(x, row.center().y()) * picture.devicePixelRatio();
            farthest = std::max(farthest, std::abs(picture.pixelColor(point).lightness() -
                                                   palette.color(QPalette::Base).lightness()));
        }
        EXPECT_GE(farthest, 60);
    }
}
