// ListView: bringing window and control to the same rows, columns and sizes.
#include <paramdb/controls/range_select_ctrl.h>
#include <paramdb/views/win32/glyphs.h>
#include <paramdb/views/win32/list_view.h>
#include <paramdb/views/win32/screen.h>

#include <algorithm>
#include <string>
#include <utility>

namespace paramdb::win32 {

namespace {

constexpr int TextMargin = 5; // beside a text, on each side, on a plain screen

// An image of nothing: it gives rows their height and marks their place.
HIMAGELIST Room(int width, int height) {
    HIMAGELIST const images = ::ImageList_Create(width, height, ILC_COLOR | ILC_MASK, 1, 0);
    HDC const context = ::CreateCompatibleDC(nullptr);
    HBITMAP const picture = ::CreateBitmap(width, height, 1, 1, nullptr);
    HGDIOBJ const before = ::SelectObject(context, picture);
    ::PatBlt(context, 0, 0, width, height, WHITENESS);
    ::SelectObject(context, before);
    ::ImageList_Add(images, picture, picture); // where the mask is white there is nothing
    ::DeleteObject(picture);
    ::DeleteDC(context);
    return images;
}

} // namespace

void ListView::SyncStyle() {
    UINT style = LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
    if (m_list) {
        style |= m_list->GetExtendedStyle() & ~UINT{LVS_EX_CHECKBOXES};
        // Screen readers find the boxes of the first column by it.
        if (m_list->GetColumnCount() > 0 && m_list->GetColumn(0).boxes > 0)
            style |= LVS_EX_CHECKBOXES;
    }
    if (static_cast<UINT>(Ask(LVM_GETEXTENDEDLISTVIEWSTYLE)) != style)
        Ask(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
}

// Rows have room for a line and for a box.
void ListView::SyncFont() {
    constexpr int air = 4;
    int const dpi = DpiOf(m_window);
    int const row = std::max(FontContext(m_window).LineHeight(), BoxSide(dpi)) + Scaled(air, dpi);
    auto const give = [this](int height) {
        HIMAGELIST const before = std::exchange(m_row_room, Room(1, height));
        Ask(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(m_row_room));
        ::ImageList_Destroy(before);
    };
    give(row);
    if (int const more = RowHeight() - row; more > 0 && more < row)
        give(row - more); // what the system adds
    // With the margins of a heading that is a little more than the mark.
    HIMAGELIST const mark_before =
        std::exchange(m_mark_room, Room(BoxSide(dpi) - Scaled(TextMargin, dpi), BoxSide(dpi)));
    ::SendMessageW(Header(), HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_mark_room));
    ::ImageList_Destroy(mark_before);
    Later();
}

void ListView::SyncColumns() {
    int const count = m_list ? m_list->GetColumnCount() : 0;
    auto now = static_cast<int>(::SendMessageW(Header(), HDM_GETITEMCOUNT, 0, 0));
    while (now > count)
        Ask(LVM_DELETECOLUMN, static_cast<WPARAM>(--now));
    for (int i = 0; i < count; ++i) {
        CXListColumn const& from = m_list->GetColumn(i);
        std::wstring heading(from.heading.GetString());
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_FMT;
        column.pszText = heading.data();
        column.fmt = from.format & LVCFMT_JUSTIFYMASK;
        auto const place = static_cast<WPARAM>(i);
        Ask(i < now ? LVM_SETCOLUMNW : LVM_INSERTCOLUMNW, place, Parameter(&column));
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(Header(), HDM_GETITEMW, place, Parameter(&item));
        item.mask |= HDI_IMAGE;
        item.iImage = 0;
        item.fmt = m_list->GetHeaderMark(i) >= 0 ? item.fmt | HDF_IMAGE : item.fmt & ~HDF_IMAGE;
        ::SendMessageW(Header(), HDM_SETITEMW, place, Parameter(&item));
    }
}

void ListView::SyncRows() {
    int const count = m_list ? m_list->GetItemCount() : 0;
    if (static_cast<int>(Ask(LVM_GETITEMCOUNT)) != count)
        Ask(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOSCROLL);
}

// The columns get their widths; what room is left goes to the one with the values.
void ListView::SyncWidths() {
    std::size_t const count = m_widths.size();
    if (!m_list || count == 0 || count != static_cast<std::size_t>(m_list->GetColumnCount()))
        return;
    Mark const own(m_own);
    std::vector<int> widths = m_widths;
    if (!IsGrid()) {
        RECT client{};
        ::GetClientRect(m_window, &client);
        int rest = static_cast<int>(client.right);
        for (int const width : widths)
            rest -= width;
        widths[count > 1 ? 1 : 0] += std::max(rest, 0);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (static_cast<int>(Ask(LVM_GETCOLUMNWIDTH, i)) != widths[i])
            Ask(LVM_SETCOLUMNWIDTH, i, widths[i]);
        auto const width = static_cast<int>(Ask(LVM_GETCOLUMNWIDTH, i));
        if (m_list->GetColumnWidth(static_cast<int>(i)) != width)
            m_list->SetColumnWidth(static_cast<int>(i), width);
    }
}

void ListView::SyncMetrics() {
    if (!m_list || !m_window)
        return;
    int const dpi = DpiOf(m_window);
    RECT client{};
    RECT header{};
    ::GetClientRect(m_window, &client);
    ::GetWindowRect(Header(), &header);
    CXListCtrl::Metrics wanted;
    wanted.row_height = RowHeight();
    wanted.header_height = static_cast<int>(header.bottom - header.top);
    wanted.box_width = Scaled(TextMargin, dpi) + BoxSide(dpi);
    wanted.cell_margin = 2 * Scaled(TextMargin, dpi);
    // The window scrolls by whole rows, so whole rows are all that it shows.
    int const rows = (static_cast<int>(client.bottom) - wanted.header_height) / wanted.row_height;
    wanted.page =
        CSize(static_cast<int>(client.right), wanted.header_height + std::max(rows, 1) * wanted.row_height);
    CXListCtrl::Metrics const& now = m_list->GetMetrics();
    bool const same = now.row_height == wanted.row_height && now.header_height == wanted.header_height &&
                      now.box_width == wanted.box_width && now.cell_margin == wanted.cell_margin &&
                      now.page == wanted.page;
    if (!same) {
        Mark const own(m_own);
        m_list->SetMetrics(wanted);
    }
    SyncScroll();
}

void ListView::SyncScroll() {
    if (m_own || !m_list || !m_window)
        return;
    Mark const own(m_own);
    m_list->SetScrollPos(WindowScroll());
}

void ListView::FollowScroll() {
    {
        Mark const own(m_own);
        CPoint const wanted = m_list->GetScrollPos();
        CPoint const now = WindowScroll();
        int const height = RowHeight();
        int const rows = (static_cast<int>(wanted.y) + height / 2) / height;
        Ask(LVM_SCROLL, static_cast<WPARAM>(wanted.x - now.x), rows * height - now.y);
    }
    SyncScroll();
}

// An open combo goes when its cell is not where it was.
void ListView::SyncCombo() {
    if (!m_combo.IsOpen())
        return;
    RECT const cell = CellRect(m_combo_place);
    bool const stays = m_list && m_list->GetComboBox(m_combo_place.item, m_combo_place.column) &&
                       m_list->GetEnabled(m_combo_place.item) && ::EqualRect(&cell, &m_combo_cell) != FALSE;
    if (!stays)
        m_combo.Close();
}

LRESULT ListView::Ask(UINT message, WPARAM first, LPARAM second) const {
    return ::SendMessageW(m_window, message, first, second);
}

HWND ListView::Header() const {
    return reinterpret_cast<HWND>(Ask(LVM_GETHEADER));
}

int ListView::RowHeight() const {
    RECT row{};
    row.left = LVIR_BOUNDS;
    if (Ask(LVM_GETITEMCOUNT) > 0 && Ask(LVM_GETITEMRECT, 0, Parameter(&row)) != FALSE)
        return std::max(static_cast<int>(row.bottom - row.top), 1);
    // Without a row: what a second one would add.
    auto const height = [this](WPARAM rows) {
        return HighWord(static_cast<WPARAM>(Ask(LVM_APPROXIMATEVIEWRECT, rows, -1)));
    };
    return std::max(height(2) - height(1), 1);
}

RECT ListView::CellRect(Place place) const {
    RECT cell{};
    cell.left = LVIR_BOUNDS;
    Ask(LVM_GETITEMRECT, static_cast<WPARAM>(place.item), Parameter(&cell));
    for (int column = 0; column < place.column; ++column)
        cell.left += static_cast<LONG>(Ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
    cell.right = cell.left + static_cast<LONG>(Ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(place.column)));
    return cell;
}

CPoint ListView::WindowScroll() const {
    auto const top = static_cast<int>(Ask(LVM_GETTOPINDEX));
    return {::GetScrollPos(m_window, SB_HORZ), top * RowHeight()};
}

bool ListView::IsGrid() const {
    return dynamic_cast<CRangeSelectCtrlBasics const*>(m_list) != nullptr;
}

} // namespace paramdb::win32
