// The range selection grid for the elements of keys.
//
//     CPentadRangeSelectCtrl grid;
//     grid.set_mask(0b000101);      // modes and channels
//     grid.send_pentad_list(lists); // by element
//     grid.Create(&dialog);         // fills it
//     ...
//     std::map<int, bool> picked[6];
//     grid.retrieve(picked); // by column: [0] modes, [1] channels
//
// After that call send_pentad_list and fill() for other lists, and send_active_list for another selection.
#pragma once

#include <paramdb/controls/range_select_ctrl.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

class PARAMDB_CONTROLS_API CPentadRangeSelectCtrl : public CRangeSelectCtrl<6> {
public:
    // Keeps copies of the lists for the next fill().
    void send_pentad_list(List const (&lists)[6]);
    using CRangeSelectCtrl::fill;
    void fill() override { CRangeSelectCtrl::fill(m_lists); }
    // Makes the values that are true here the selection, by column as retrieve gives them.
    void send_active_list(std::map<int, bool> const (&lists)[6]);
    // The plural word for an element.
    CString col_head_names(unsigned int element) override;

private:
    List m_lists[6];
};
