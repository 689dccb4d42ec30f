// A list in which a whole key is edited: a row for each element, with a combo in the second column.
//
//     CPentadCtrl editor;
//     editor.Create(&dialog, 3000);
//     editor.fill(key);
//     ...
//     CClavis const edited = editor.retrieve();
//
// The instrument decides which instrument parameters are offered; otherwise the rows do not depend on each
// other. A value that no table has, or that is not offered, keeps a row of its own in its combo, so that a
// key comes back as it went in.
//
// After a change by the operator the parent, or without one the owner, gets WM_PENTADCTRL_SELCHANGED posted,
// with the element as the first and the value as the second parameter.
//
// The combos of all editors share their contents, one for each element: an open combo offers what the editor
// that was filled last put there. For the thread of the windows alone; no load may run meanwhile.
#pragma once

#include <paramdb/controls/element_rows.h>
#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

#include <bitset>

// The number of that message, registered under its own name at the start of the process.
extern PARAMDB_CONTROLS_API unsigned int const WM_PENTADCTRL_SELCHANGED;

class PARAMDB_CONTROLS_API CPentadCtrl : public CXListCtrl {
public:
    // Builds the rows with the values of the key. A parameter without instrument is dropped.
    void fill(CClavis const& key);
    // The key as it stands: -1 for the elements without a row.
    [[nodiscard]] CClavis retrieve() const;

    // Which elements have a row, all at first, and which rows cannot be edited, none at first; from the next
    // fill on.
    void set_visible_mask(std::bitset<Clavis::ElementCount> mask);
    [[nodiscard]] std::bitset<Clavis::ElementCount> get_visible_mask() const { return m_visible_mask; }
    void set_readonly_mask(std::bitset<Clavis::ElementCount> mask) { m_readonly_mask = mask; }
    [[nodiscard]] std::bitset<Clavis::ElementCount> get_readonly_mask() const { return m_readonly_mask; }

    // Whether virtual modes are left out, as at first; from the next fill on.
    void hide_virtual_modes(bool hide) { m_hide_virtual_modes = hide; }

    // How the value -1 reads. Without a text of the host's the next fill makes it "(*)" if -1 stands for any
    // value, else a dash, and that text stays.
    void set_none_is_any(bool none_is_any) { m_none_is_any = none_is_any; }
    void set_ttnil_text(CString const& text) { m_ttnil_text = text; }
    [[nodiscard]] CString& TtNilText() { return m_ttnil_text; }

    // A message that is posted behind WM_PENTADCTRL_SELCHANGED with the same parameters; 0 for none.
    void set_on_change_message(unsigned int message) { m_on_change_message = message; }

    // A row below those of the elements that only shows something, from the next fill on. There are six
    // slots, shown in their order; another slot is ignored, a later row takes the place of the one before. An
    // empty label shows no row. The id is shown where ids are.
    void add_extra_row(CString const& label, CString const& value, unsigned int slot, int id);

protected:
    void PreSubclassWindow() override;

private:
    void control_modified_callback(int row, int column);
    [[nodiscard]] int get_qEntry_from_row(int row) const { return paramdb::ElementOfRow(m_row_mask, row); }
    [[nodiscard]] int get_row_from_qEntry(int element) const {
        return paramdb::RowOfElement(m_row_mask, element);
    }
    int set_pentad_combo(CClavis const& key, Clavis::qOrder element);
    void set_instrumentparam_combo(int instrument, int parameter);

    void OfferUnknown(Clavis::qOrder element, int id);
    void FinishRow(Clavis::qOrder element, int row, int selected);
    void AddExtraRows();
    void PostChange(int element, int value);

    bool m_none_is_any = false;
    CString m_ttnil_text;
    bool m_show_ids = false;
    unsigned int m_on_change_message = 0;
    bool m_hide_virtual_modes = true;
    std::bitset<Clavis::ElementCount> m_readonly_mask;
    std::bitset<Clavis::ElementCount> m_visible_mask = std::bitset<Clavis::ElementCount>().set();
    CString m_extra_labels[Clavis::ElementCount];
    CString m_extra_values[Clavis::ElementCount];
    int m_extra_ids[Clavis::ElementCount] = {-1, -1, -1, -1, -1, -1};
    std::bitset<Clavis::ElementCount> m_row_mask = m_visible_mask; // that of the rows as they stand
};
