// A combo whose open list is wide enough for its texts.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/combo_box.h>

class PARAMDB_API CComboBoxX : public CComboBox {
public:
    using CComboBox::CComboBox;

    // How wide the open list wants to be, in pixels: its widest text and room around it.
    [[nodiscard]] int GetDroppedWidth() const;
};
