// ListView: drawing.
#include <paramdb/views/win32/glyphs.h>
#include <paramdb/views/win32/list_view.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/theme.h>

#include <algorithm>

namespace paramdb::win32 {

namespace {

void Fill(HDC context, RECT const& place, COLORREF color) {
    ::SetDCBrushColor(context, color);
    ::FillRect(context, &place, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
}

} // namespace

// What the window wants to know of a row, for screen readers and for its own drawing.
void ListView::Answer(LVITEMW& item) const {
    if ((item.mask & LVIF_TEXT) != 0 && item.pszText && item.cchTextMax > 0) {
        CString const text = m_list ? m_list->GetItemText(item.iItem, item.iSubItem) : CString();
        ::lstrcpynW(item.pszText, text.GetString(), item.cchTextMax);
    }
    if ((item.mask & LVIF_IMAGE) != 0)
        item.iImage = I_IMAGENONE;
    if ((item.mask & LVIF_STATE) != 0 && (item.stateMask & LVIS_STATEIMAGEMASK) != 0) {
        int const check = m_list ? m_list->GetCheckbox(item.iItem, 0) : -1;
        item.state |= static_cast<UINT>(INDEXTOSTATEIMAGEMASK(check + 1));
    }
}

// A list whose rows have the keyboard as a whole shows so; a grid has one cell that does.
bool ListView::ShowsWholeRow() const {
    return m_list && (m_list->GetExtendedStyle() & LVS_EX_FULLROWSELECT) != 0;
}

LRESULT ListView::OnDraw(NMCUSTOMDRAW const& draw) const {
    switch (draw.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        DrawRow(draw.hdc, static_cast<int>(draw.dwItemSpec));
        return CDRF_SKIPDEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

void ListView::DrawRow(HDC context, int item) const {
    if (!m_list || item >= m_list->GetItemCount())
        return;
    HGDIOBJ const font = ::SelectObject(context, reinterpret_cast<HGDIOBJ>(Ask(WM_GETFONT)));
    int const mode = ::SetBkMode(context, TRANSPARENT);
    COLORREF const text = ::GetTextColor(context);
    RECT cell = CellRect({item, 0});
    for (int column = 0; column < m_list->GetColumnCount(); ++column) {
        cell.right = cell.left + static_cast<LONG>(Ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
        if (cell.right > cell.left && ::RectVisible(context, &cell) != FALSE)
            DrawCell(context, cell, {item, column});
        cell.left = cell.right;
    }
    ::SetTextColor(context, text);
    ::SetBkMode(context, mode);
    ::SelectObject(context, font);
}

void ListView::DrawCell(HDC context, RECT const& cell, Place place) const {
    auto const [item, column] = place;
    int const dpi = DpiOf(m_window);
    bool const enabled = m_list->GetEnabled(item) && ::IsWindowEnabled(m_window) != FALSE;
    bool const keyboard = HasKeyboard();
    bool const current = item == m_current && (ShowsWholeRow() || column == m_column);
    COLORREF text_color = 0;
    COLORREF background_color = 0;
    m_list->GetItemColors(item, column, text_color, background_color);
    CellColors colors = ColorsOnScreen(text_color, background_color, enabled);
    if (current && ShowsWholeRow())
        colors = keyboard ? CellColors{::GetSysColor(COLOR_HIGHLIGHTTEXT), ::GetSysColor(COLOR_HIGHLIGHT)}
                          : CellColors{::GetSysColor(COLOR_WINDOWTEXT), ::GetSysColor(COLOR_BTNFACE)};
    Fill(context, cell, colors.background);

    int const margin = m_list->GetMetrics().cell_margin / 2;
    RECT place_of_text = cell;
    place_of_text.left += margin;
    place_of_text.right -= margin;
    if (int const check = m_list->GetCheckbox(item, column); check >= 0) {
        DrawBox(m_window, context, place_of_text, check > 0 ? BoxState::on : BoxState::off, enabled);
        place_of_text.left += m_list->GetMetrics().box_width;
    }
    if (m_list->GetComboBox(item, column) && enabled) {
        DrawArrow(context, place_of_text, colors.text, dpi);
        place_of_text.right -= ArrowSide(dpi) + margin;
    }
    int const format = m_list->GetColumn(column).format;
    UINT const side = format == LVCFMT_RIGHT ? DT_RIGHT : format == LVCFMT_CENTER ? DT_CENTER : DT_LEFT;
    CString const text = m_list->GetItemText(item, column);
    ::SetTextColor(context, colors.text);
    if (place_of_text.right > place_of_text.left)
        ::DrawTextW(context, text.GetString(), text.GetLength(), &place_of_text,
                    side | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if (current && keyboard && !ShowsWholeRow()) {
        // The dotted frame takes its colours from the context and turns round what is below it.
        ::SetTextColor(context, RGB(255, 255, 255));
        ::SetBkColor(context, RGB(0, 0, 0));
        RECT const frame{cell.left + 1, cell.top + 1, cell.right - 1, cell.bottom - 1};
        ::DrawFocusRect(context, &frame);
    }
}

// The headings are the system's; the marks come on top of them.
LRESULT ListView::OnHeaderDraw(NMCUSTOMDRAW const& draw) const {
    if (draw.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYPOSTPAINT;
    if (draw.dwDrawStage != CDDS_POSTPAINT || !m_list)
        return CDRF_DODEFAULT;
    auto const count = static_cast<int>(::SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0));
    for (int column = 0; column < std::min(count, m_list->GetColumnCount()); ++column) {
        int const mark = m_list->GetHeaderMark(column);
        RECT place{};
        if (mark < 0 || ::SendMessageW(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(column),
                                       Parameter(&place)) == FALSE)
            continue;
        place.left += m_list->GetMetrics().cell_margin / 2;
        place.right = std::max(place.left, place.right);
        DrawBox(Header(), draw.hdc, place,
                mark == 0   ? BoxState::off
                : mark == 1 ? BoxState::on
                            : BoxState::some,
                ::IsWindowEnabled(m_window) != FALSE);
    }
    return CDRF_DODEFAULT;
}

} // namespace paramdb::win32
