#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/framework/sys_color.h>

#include <gtest/gtest.h>
#include <memory>
#include <tests/support/view_log.h>

namespace {

// The texts of a column, top to bottom.
std::vector<std::wstring> TextsOf(CXListCtrl const& list, int column = 0) {
    std::vector<std::wstring> texts;
    for (int item = 0; item < list.GetItemCount(); ++item)
        texts.push_back(list.GetItemText(item, column).GetString());
    return texts;
}

using Texts = std::vector<std::wstring>;

class XListTest : public testing::Test {
protected:
    XListTest() {
        list.InsertColumn(0, L"first", LVCFMT_LEFT, 50);
        list.InsertColumn(1, L"second", LVCFMT_RIGHT, 60);
    }
    void Add(std::initializer_list<wchar_t const*> texts) {
        for (wchar_t const* const text : texts)
            list.InsertItem(list.GetItemCount(), text);
    }

    CXListCtrl list;
};

TEST_F(XListTest, Columns) {
    ViewLog view(list);
    EXPECT_EQ(list.InsertColumn(99, L"abc"), 2);
    EXPECT_EQ(list.InsertColumn(0, L"front", LVCFMT_CENTER, 7), 0);
    EXPECT_EQ(list.InsertColumn(-1, L"x"), -1);
    ASSERT_EQ(list.GetColumnCount(), 4);
    EXPECT_EQ(list.GetColumn(0).heading, L"front");
    EXPECT_EQ(list.GetColumn(0).format, LVCFMT_CENTER);
    EXPECT_EQ(list.GetColumn(1).heading, L"first");
    EXPECT_EQ(list.GetColumnWidth(1), 50);
    EXPECT_EQ(list.GetColumnWidth(3), 3 * 7 + 12); // that of its heading
    EXPECT_TRUE(list.SetColumnWidth(1, 70));
    EXPECT_TRUE(list.SetColumnWidth(2, -1));
    EXPECT_EQ(list.GetColumnWidth(1), 70);
    EXPECT_EQ(list.GetColumnWidth(2), 0);
    EXPECT_FALSE(list.SetColumnWidth(4, 1));
    EXPECT_EQ(list.GetColumnWidth(4), 0);
    EXPECT_TRUE(list.DeleteColumn(0));
    EXPECT_FALSE(list.DeleteColumn(3));
    EXPECT_EQ(list.GetColumn(0).heading, L"first");
    EXPECT_EQ(view.Take(), Events(5, "columns"));
    EXPECT_THROW(static_cast<void>(list.GetColumn(3)), std::out_of_range);
}

TEST_F(XListTest, ColumnsTakeTheirCellsAlong) {
    Add({L"a", L"b"});
    list.SetItemText(1, 1, L"right");
    list.InsertColumn(1, L"middle");
    EXPECT_EQ(list.GetItemText(1, 0), L"b");
    EXPECT_EQ(list.GetItemText(1, 1), L"");
    EXPECT_EQ(list.GetItemText(1, 2), L"right");
    list.DeleteColumn(0);
    EXPECT_EQ(TextsOf(list, 1), (Texts{L"", L"right"}));
    ViewLog view(list);
    list.DeleteAllColumns();
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_EQ(list.GetColumnCount(), 0);
    EXPECT_EQ(view.Take(), (Events{"content", "columns"}));
    list.InsertItem(0, L"no cell");
    EXPECT_EQ(list.GetItemText(0, 0), L"");
    list.InsertColumn(0, L"late");
    EXPECT_EQ(list.GetItemText(0, 0), L"");
    list.DeleteColumn(0); // the last one
    EXPECT_EQ(list.GetItemCount(), 0);
}

TEST_F(XListTest, Items) {
    EXPECT_EQ(list.InsertItem(0, L"b"), 0);
    EXPECT_EQ(list.InsertItem(0, L"a"), 0);
    EXPECT_EQ(list.InsertItem(99, L"d"), 2);
    EXPECT_EQ(list.InsertItem(2, L"c", 1, 2), 2);
    EXPECT_EQ(list.InsertItem(-1, L"x"), -1);
    EXPECT_EQ(TextsOf(list), (Texts{L"a", L"b", L"c", L"d"}));
    COLORREF text = 9;
    COLORREF background = 9;
    EXPECT_TRUE(list.GetItemColors(2, 0, text, background));
    EXPECT_EQ(text, 1u);
    EXPECT_EQ(background, 2u);
    EXPECT_TRUE(list.DeleteItem(1));
    EXPECT_FALSE(list.DeleteItem(3));
    EXPECT_FALSE(list.DeleteItem(-1));
    EXPECT_EQ(TextsOf(list), (Texts{L"a", L"c", L"d"}));
    EXPECT_TRUE(list.DeleteAllItems());
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_EQ(list.GetColumnCount(), 2);
}

TEST_F(XListTest, ItemsFromAStructure) {
    wchar_t text[] = L"text";
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.pszText = text;
    item.lParam = -4;
    EXPECT_EQ(list.InsertItem(&item), 0);
    EXPECT_EQ(list.GetItemText(0, 0), L"text");
    EXPECT_EQ(list.GetItemData64(0), static_cast<std::uint64_t>(-4));
    item.mask = LVIF_PARAM;
    item.lParam = reinterpret_cast<LPARAM>(&item);
    item.iItem = 1;
    EXPECT_EQ(list.SendMessageW(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_EQ(list.GetItemText(1, 0), L"");
    EXPECT_EQ(list.GetItemDataPtr(1), &item);
    item.mask = LVIF_TEXT;
    EXPECT_EQ(list.InsertItem(&item), 1);
    EXPECT_EQ(list.GetItemDataPtr(1), nullptr);
    EXPECT_EQ(list.SendMessageW(LVM_GETITEMCOUNT), 3);
    EXPECT_EQ(list.SendMessageW(LVM_DELETEALLITEMS), 1);
    EXPECT_EQ(list.SendMessageW(LVM_GETITEMCOUNT), 0);
}

TEST_F(XListTest, TextsAndColours) {
    Add({L"a"});
    COLORREF text = 9;
    COLORREF background = 9;
    EXPECT_TRUE(list.GetItemColors(0, 1, text, background));
    EXPECT_EQ(text, XDefaultColor);
    EXPECT_EQ(background, XDefaultColor);
    EXPECT_TRUE(list.SetItemText(0, 1, L"b", 1, 2));
    list.GetItemColors(0, 1, text, background);
    EXPECT_EQ(text, 1u);
    EXPECT_EQ(background, 2u);
    EXPECT_TRUE(list.SetItemText(0, 1, nullptr)); // without colours
    list.GetItemColors(0, 1, text, background);
    EXPECT_EQ(background, XDefaultColor);
    EXPECT_EQ(list.GetItemText(0, 1), L"");
    EXPECT_TRUE(list.SetRowColors(0, 3, 4));
    for (int const column : {0, 1}) {
        list.GetItemColors(0, column, text, background);
        EXPECT_EQ(text, 3u);
        EXPECT_EQ(background, 4u);
    }
    EXPECT_EQ(list.GetItemText(0, 0), L"a");
}

TEST_F(XListTest, WhatIsNotThere) {
    Add({L"a"});
    ViewLog view(list);
    COLORREF text = 9;
    COLORREF background = 9;
    struct Case {
        int item, column;
    };
    for (auto const& [item, column] : {Case{-1, 0}, Case{1, 0}, Case{0, -1}, Case{0, 2}}) {
        EXPECT_FALSE(list.SetItemText(item, column, L"x"));
        EXPECT_EQ(list.GetItemText(item, column), L"");
        EXPECT_FALSE(list.GetItemColors(item, column, text, background));
        EXPECT_EQ(text, 9u);
        EXPECT_EQ(background, 9u);
    }
    for (int const item : {-1, 1}) {
        EXPECT_FALSE(list.SetRowColors(item, 1, 2));
        EXPECT_FALSE(list.SetItemData(item, 1));
        EXPECT_EQ(list.GetItemData64(item), 0u);
        EXPECT_EQ(list.GetItemDataPtr(item), nullptr);
        EXPECT_FALSE(list.SetEnabled(item, true));
        EXPECT_FALSE(list.GetEnabled(item));
    }
    for (int const column : {-1, 2}) {
        EXPECT_EQ(list.GetColumnWidth(column), 0);
        EXPECT_FALSE(list.SetColumnWidth(column, 9));
        EXPECT_FALSE(list.DeleteColumn(column));
        EXPECT_FALSE(list.SetHeaderCheckedState(column, 1));
    }
    EXPECT_EQ(list.InsertColumn(-1, L"x"), -1);
    EXPECT_EQ(view.Take(), Events{});
}

TEST_F(XListTest, DataAndEnabling) {
    Add({L"a", L"b"});
    ViewLog view(list);
    EXPECT_EQ(list.GetItemData64(0), 0u);
    EXPECT_TRUE(list.SetItemData(0, 0xFFFFFFFFFFFFFFFFu));
    EXPECT_EQ(list.GetItemData64(0), 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(static_cast<int>(list.GetItemData64(0)), -1);
    EXPECT_EQ(view.Take(), Events{}); // nobody sees it
    EXPECT_TRUE(list.GetEnabled(1));
    EXPECT_TRUE(list.SetEnabled(1, true));
    EXPECT_TRUE(list.SetEnabled(1, false));
    EXPECT_FALSE(list.GetEnabled(1));
    EXPECT_EQ(view.Take(), Events{"item 1 -1"});
}

TEST_F(XListTest, ExtendedStyle) {
    ViewLog view(list);
    EXPECT_EQ(list.SetExtendedStyle(0x60), 0u);
    EXPECT_EQ(list.SetExtendedStyle(0x8000, 0x8020), 0x60u);
    EXPECT_EQ(list.GetExtendedStyle(), 0x8040u);
    EXPECT_EQ(list.SendMessageW(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, 1), 0x8040);
    EXPECT_EQ(list.SendMessageW(LVM_GETEXTENDEDLISTVIEWSTYLE), 1);
    EXPECT_EQ(list.SendMessageW(LVM_SETEXTENDEDLISTVIEWSTYLE, 2, 3), 1);
    EXPECT_EQ(list.GetExtendedStyle(), 3u);
    list.SetExtendedStyle(3);
    EXPECT_EQ(view.Take(), Events(4, "content"));
}

TEST_F(XListTest, ColumnsFitTheirWidestCell) {
    Add({L"a", L"a long text of the first"});
    list.SetItemText(0, 1, L"x");
    list.AutosizeColumnWidth(0);
    EXPECT_EQ(list.GetColumnWidth(0), 24 * 7 + 12);
    EXPECT_EQ(list.GetColumnWidth(1), 60);
    paramdb::SetTextWidth([](CString const& text) { return text.GetLength() * 10; });
    list.AutosizeColumnWidth();
    EXPECT_EQ(list.GetColumnWidth(0), 24 * 10 + 12);
    EXPECT_EQ(list.GetColumnWidth(1), 6 * 10 + 12); // the heading
    list.SetCheckbox(1, 0, 1);
    list.SetHeaderCheckedState(1, 3);
    list.AutosizeColumnWidth();
    EXPECT_EQ(list.GetColumnWidth(0), 24 * 10 + 12 + 18);
    EXPECT_EQ(list.GetColumnWidth(1), 6 * 10 + 12 + 18);
    paramdb::SetTextWidth({});
}

TEST_F(XListTest, ViewsHearOfEveryChange) {
    ViewLog view(list);
    Add({L"a", L"b"});
    list.SetItemText(1, 1, L"x");
    list.SetRowColors(0, 1, 2);
    list.DeleteItem(0);
    list.DeleteAllItems();
    list.DeleteAllItems();
    EXPECT_EQ(view.Take(),
              (Events{"inserted 0 1", "inserted 1 1", "item 1 1", "item 0 -1", "content", "content"}));
}

TEST_F(XListTest, InABatchTheyHearOnce) {
    ViewLog view(list);
    list.SetBatchInsertMode(true);
    Add({L"a", L"b", L"c"});
    list.SetItemText(1, 1, L"x");
    list.SetCheckbox(2, 0, 1);
    list.DeleteItem(0);
    EXPECT_EQ(view.Take(), Events{});
    list.SetBatchInsertMode(false);
    EXPECT_EQ(view.Take(), Events{"content"});
    list.SetBatchInsertMode(true);
    list.SetBatchInsertMode(false);
    list.SetBatchInsertMode(false);
    EXPECT_EQ(view.Take(), Events{});
    EXPECT_EQ(TextsOf(list), (Texts{L"b", L"c"}));
}

TEST_F(XListTest, ItsContentGoesWithItsWindow) {
    list.Create();
    Add({L"a"});
    list.SetBatchInsertMode(true);
    ViewLog view(list);
    list.DestroyWindow();
    EXPECT_EQ(list.GetColumnCount(), 0);
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_EQ(view.Take(), (Events{"content", "columns", "destroyed"}));
}

TEST_F(XListTest, AViewMayDestroyTheListWhileItsColumnsGo) {
    struct Destroyer : CWndView {
        std::unique_ptr<CXListCtrl> doomed = std::make_unique<CXListCtrl>();
        void OnContentChanged() override { doomed.reset(); }
    } view;
    CXListCtrl& doomed = *view.doomed;
    doomed.InsertColumn(0, L"a");
    doomed.InsertItem(0, L"row");
    view.Attach(doomed);
    EXPECT_TRUE(doomed.DeleteAllColumns());
    EXPECT_EQ(view.doomed, nullptr);
}

} // namespace
