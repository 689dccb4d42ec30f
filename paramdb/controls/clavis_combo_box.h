// A combo in which one value of a key element is picked.
//
//     CClavisComboBox modes;
//     modes.Fill(Clavis::qMode, 4, 0); // offers all modes and selects the mode 4
//     int const mode = modes.Retrieve();
//
// The rows are those of the tables at the time of the filling: fill anew after a load. For the thread of the
// windows alone; no load may run meanwhile.
#pragma once

#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

class PARAMDB_CONTROLS_API CClavisComboBox : public CComboBoxX {
public:
    // Offers "(not assigned)", as -1, and the values of the element by id, and selects one. A value that is
    // left out here gives the first row, a value that no table has a row of its own at the end, "(Mode 17)"
    // in the words of the language; a negative one other than -1 selects nothing.
    //
    // The filter is a mask of what may be offered, 0 for everything: for modes of their flags, for
    // instruments of ResultType, for locations of their flags, for signals of their type; a value without
    // properties is left out then. For instrument parameters it is the instrument, -1 for all.
    void Fill(Clavis::qOrder element, int select, int filter);

    // The selected value; -1 if none is.
    [[nodiscard]] int Retrieve() const;

    // Whether virtual modes are left out, from the next filling on.
    void HideVirtualModes(bool hide) { m_hide_virtual_modes = hide; }

private:
    Clavis::qOrder m_element = Clavis::qMode;
    bool m_hide_virtual_modes = false;
};
