// What a list holds: columns, rows, and a cell for each pair of them. A helper of CXListCtrl, and what its
// views see.
#pragma once

#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/window_types.h>

#include <cstdint>
#include <map>
#include <vector>

// The colour of what has none of its own.
inline constexpr COLORREF XDefaultColor = static_cast<COLORREF>(-1);

// One column. A width is in pixels.
struct CXListColumn {
    CString heading;
    int format = LVCFMT_LEFT;
    int width = 0;
    int header_check = 0; // CXListCtrl::HeaderCheck
    int boxes = 0;        // cells of the column with a check box, and how many of them are checked
    int checked = 0;
};

// One cell. Its combo, if it has one, offers the texts of a map that belongs to somebody else.
struct CXListCell {
    CString text;
    COLORREF text_color = XDefaultColor;
    COLORREF background_color = XDefaultColor;
    int check = -1; // -1 no box, 0 off, 1 on
    int combo_selection = -1;
    std::map<int, CString> const* combo = nullptr;
};

struct CXListRow {
    std::vector<CXListCell> cells; // one for each column
    std::uint64_t data = 0;
    bool enabled = true;
};
