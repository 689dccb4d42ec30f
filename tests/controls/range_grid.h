// A range selection grid with lists of a test's own, and what it shows.
#pragma once

#include <paramdb/controls/range_select_ctrl.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

template <unsigned int N>
class Grid : public CRangeSelectCtrl<N> {
    using Base = CRangeSelectCtrl<N>;

public:
    typename Base::List lists[N];

    using Base::deselect_all;
    using Base::fill;
    using Base::get_cell;
    using Base::m_last_click;
    using Base::select_cell;
    using Base::selected;

    void fill() override { Base::fill(lists); }
    CString col_head_names(unsigned int list) override { return L"list " + std::to_wstring(list); }
};

using Texts = std::vector<std::vector<std::wstring>>;
using Ids = std::vector<std::vector<int>>;
using Cells = std::set<std::pair<int, int>>;

inline Texts TextsOf(CXListCtrl const& grid) {
    Texts texts;
    for (int row = 0; row < grid.GetItemCount(); ++row) {
        texts.emplace_back();
        for (int column = 0; column < grid.GetColumnCount(); ++column)
            texts.back().push_back(grid.GetItemText(row, column).GetString());
    }
    return texts;
}

// The ids that the rows point to.
inline Ids IdsOf(CXListCtrl const& grid) {
    Ids ids;
    for (int row = 0; row < grid.GetItemCount(); ++row) {
        auto const* const data = static_cast<int const*>(grid.GetItemDataPtr(row));
        ids.emplace_back(data, data + grid.GetColumnCount());
    }
    return ids;
}

// The cells in a colour of the selection.
inline Cells SelectionOf(CXListCtrl const& grid) {
    Cells cells;
    for (int row = 0; row < grid.GetItemCount(); ++row) {
        for (int column = 0; column < grid.GetColumnCount(); ++column) {
            COLORREF text = 0;
            COLORREF background = 0;
            EXPECT_TRUE(grid.GetItemColors(row, column, text, background));
            if (background == CWnd::GetSysColor(13) || background == CWnd::GetSysColor(15))
                cells.emplace(row, column);
        }
    }
    return cells;
}

inline void ClickCell(CXListCtrl& grid, int row, int column, UINT flags = 0) {
    CRect rect;
    ASSERT_TRUE(grid.GetSubItemRect(row, column, rect)) << row << " " << column;
    grid.Click(flags, CPoint(static_cast<int>(rect.left), static_cast<int>(rect.bottom) - 1));
}
