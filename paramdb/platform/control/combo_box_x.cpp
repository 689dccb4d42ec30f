#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/platform/framework/sys_color.h>

#include <algorithm>

int CComboBoxX::GetDroppedWidth() const {
    constexpr int room = 24; // margins and the scroll bar
    int widest = 0;
    CString text;
    for (int row = 0; row < GetCount(); ++row) {
        GetLBText(row, text);
        widest = std::max(widest, paramdb::TextWidth(text));
    }
    return widest + room;
}
