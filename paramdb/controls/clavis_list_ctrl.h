// A list with check boxes in which a set of values of a key element is picked.
//
//     CClavisListCtrl channels;
//     channels.Init(Clavis::qChannel);
//     channels.Fill({-1}, 0); // all of them, all checked
//     std::set<int> picked;
//     channels.Retrieve(picked);
//
// A set with -1 means all values, now and later. The rows are those of the tables at the time of the filling:
// fill anew after a load. For the thread of the windows alone; no load may run meanwhile.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

#include <cstdint>
#include <set>

class PARAMDB_CONTROLS_API CClavisListCtrl : public CXListCtrl {
public:
    // Makes the list one of that element, with its column and without items.
    void Init(Clavis::qOrder element);

    // Lists the values of the element by id and checks those of the selection. The filter is a mask as in
    // CClavisComboBox, 0 for everything; instrument parameters pass all. A selected value that is not listed
    // is dropped.
    void Fill(std::set<int> const& selection, unsigned int filter);

    // The checked values, -1 alone if all are, also in an empty list. The result is how many are checked.
    std::uint64_t Retrieve(std::set<int>& out);

    // Whether a check mark has changed since the last Fill or Retrieve.
    [[nodiscard]] bool Changes() const noexcept { return m_changes; }

    // Whether virtual modes are left out, from the next filling on.
    void HideVirtualModes(bool hide) { m_hide_virtual_modes = hide; }

protected:
    void OnItemStateChange(int item, int column, unsigned int state) override;

private:
    Clavis::qOrder m_element = Clavis::qMode;
    bool m_changes = false;
    bool m_hide_virtual_modes = false;
};
