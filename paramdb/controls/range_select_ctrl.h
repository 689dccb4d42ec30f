// A grid in which ranges of values are marked, column by column. Each column lists the values of its own from
// the top; the rows mean nothing.
//
// A click selects a cell and nothing else in its column, with the Shift key all cells from the last click in
// the column to here, with the Ctrl key it switches one cell; a click on a heading adds the whole column.
// Cells without text are never selected by a click.
//
// The selection is held in the colours of the cells and nowhere else: a cell is selected if its background is
// the system's colour 13, as with the keyboard on the grid, or 15, as without.
//
// Columns are given by list, of which there are N, or by position among the columns that the mask shows; the
// two differ behind a gap of the mask. A list is meant where it says list.
//
// A class derived from this one names the columns and says what the grid holds. The grid fills itself when
// its window is made. For the thread of the windows alone.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/core/export.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <iterator>
#include <map>
#include <set>
#include <utility>
#include <vector>

// What all grids have in common.
class PARAMDB_CONTROLS_API CRangeSelectCtrlBasics {
public:
    virtual ~CRangeSelectCtrlBasics() = 0;
};

template <unsigned int N>
class PARAMDB_CONTROLS_API CRangeSelectCtrl : public CXListCtrl, public CRangeSelectCtrlBasics {
public:
    static constexpr unsigned int m_size = N;

    using List = std::set<std::pair<int, CString>>; // ids with their texts

    // Shows these lists, each in the order of the set; nothing is selected. The last clicks stay.
    void fill(List const (&lists)[N]);
    // For each column its ids and whether they are selected; the first counts of an id that stands there
    // twice, and an empty cell is the id -1. Empty without a window.
    void retrieve(std::map<int, bool> (&out)[N]) const;
    // Selects all cells with a text.
    void full_selection();
    // Selects the cells with a text that are not selected and deselects the others.
    void invert_selection();

    // The lists that have a column, all at first; from the next fill on.
    [[nodiscard]] std::bitset<N> mask() const { return m_mask; }
    void set_mask(std::bitset<N> mask) { m_mask = mask; }

    // Fills the grid with what it is there for.
    virtual void fill() = 0;

protected:
    using cell_t = std::pair<int, int>; // row and column; -1 for none

    // The mouse: what a click with these keys (MK_...) does.
    virtual void l_button_down(unsigned int flags, CPoint point);

public:
    // The heading of a list.
    [[nodiscard]] virtual CString col_head_names(unsigned int list) = 0;

protected:
    void deselect_all(unsigned int column);
    // Adds all cells with a text to the selection and forgets the last click.
    void select_col(int column);
    void select_cell(cell_t const& cell);
    void toggle_cell(cell_t const& cell);
    [[nodiscard]] bool selected(cell_t const& cell) const;
    // The cell at a point; no column in a disabled row.
    [[nodiscard]] cell_t get_cell(CPoint const& point) const;
    // Gives all selected cells the selection colours that are in force.
    void set_selection_colors();
    // Adds a column for each list of the mask.
    void fill_header();

    LRESULT OnColumnClick(int column) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    void PreSubclassWindow() override;

    COLORREF m_selection_background = GetSysColor(13);
    COLORREF m_selection_text = GetSysColor(14);
    bool m_show_ids = false;
    std::vector<std::array<int, N>> m_rows; // the list's items point into it
    int m_last_click[N];
    std::bitset<N> m_mask = std::bitset<N>().set();

    CRangeSelectCtrl() { std::fill(std::begin(m_last_click), std::end(m_last_click), -1); }

private:
    [[nodiscard]] bool has_entry(cell_t const& cell) const;
    void write_colors(cell_t const& cell, COLORREF text, COLORREF background);
};

extern template class CRangeSelectCtrl<6>;
extern template class CRangeSelectCtrl<7>;
