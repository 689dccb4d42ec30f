// Any list on the screen: what the Qt view alone does.
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <tests/views/qt/view_test.h>

using paramdb::qt::ListView;

namespace {

// A list that writes down which rows are clicked.
class Recorder : public CXListCtrl {
public:
    std::vector<int> clicked;

protected:
    void OnLButtonDown(UINT flags, CPoint point) override {
        LVHITTESTINFO hit{};
        hit.pt = point;
        clicked.push_back(HitTest(&hit));
        CXListCtrl::OnLButtonDown(flags, point);
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

} // namespace

TEST_F(QtListView, ARowThatSticksOutIsScrolledIntoSight) {
    Open(200);
    auto& table = view.Table();
    table.verticalScrollBar()->setValue(table.rowHeight(0) / 2);
    Settle();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, QPoint(10, 1));
    EXPECT_EQ(list->clicked.at(0), 0);
    EXPECT_EQ(table.verticalScrollBar()->value(), 0);
    EXPECT_EQ(list->GetScrollPos(), CPoint(0, 0));
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

TEST_F(QtListView, ScrollsWithTheControl) {
    Open(500);
    list->SetScrollPos(CPoint(0, 1234));
    EXPECT_EQ(view.Table().verticalScrollBar()->value(), 1234);
    list->SetFocusItem(400);
    EXPECT_EQ(view.Table().verticalScrollBar()->value(), list->GetScrollPos().y);
    EXPECT_TRUE(view.Table().viewport()->rect().contains(
        view.Table().visualRect(view.Table().model()->index(400, 0))));
}

TEST_F(QtListView, HasNamesForScreenReaders) {
    Open(1);
    EXPECT_EQ(view.Table().accessibleName(), QStringLiteral("Name"));
    EXPECT_EQ(view.FilterEdit().accessibleName(), paramdb::qt::FilterWord());
    list->SetTitle(L"Parameters");
    EXPECT_EQ(view.Table().accessibleName(), QStringLiteral("Parameters"));
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
