// CXListCtrl: where things are.
#include <paramdb/platform/control/x_list_ctrl.h>

#include <algorithm>
#include <limits>

namespace {

// Positions are computed in 64 bits, they leave 32 bits where a list is very long.
int ToPixel(std::int64_t position) {
    return static_cast<int>(std::clamp<std::int64_t>(position, std::numeric_limits<std::int32_t>::min(),
                                                     std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::int64_t CXListCtrl::LeftOf(int column) const noexcept {
    std::int64_t left = 0;
    for (int i = 0; i < column; ++i)
        left += m_columns[static_cast<std::size_t>(i)].width;
    return left;
}

bool CXListCtrl::GetSubItemRect(int item, int column, CRect& rect) const noexcept {
    if (!Cell(item, column))
        return false;
    std::int64_t const left = LeftOf(column) - m_scroll.x;
    std::int64_t const top =
        m_metrics.header_height + std::int64_t{item} * m_metrics.row_height - std::int64_t{m_scroll.y};
    rect = CRect(ToPixel(left), ToPixel(top), ToPixel(left + GetColumnWidth(column)),
                 ToPixel(top + m_metrics.row_height));
    return true;
}

int CXListCtrl::HitTest(LVHITTESTINFO* hit) const noexcept {
    hit->iItem = -1;
    hit->iSubItem = -1;
    if (hit->pt.x < 0) {
        hit->flags = LVHT_TOLEFT;
        return -1;
    }
    if (hit->pt.y < m_metrics.header_height) {
        hit->flags = LVHT_ABOVE;
        return -1;
    }
    hit->flags = LVHT_NOWHERE;
    std::int64_t const x = std::int64_t{hit->pt.x} + m_scroll.x;
    std::int64_t const row =
        (std::int64_t{hit->pt.y} - m_metrics.header_height + m_scroll.y) / m_metrics.row_height;
    if (row >= GetItemCount())
        return -1;
    std::int64_t left = 0;
    for (int column = 0; column < GetColumnCount(); ++column) {
        int const width = GetColumnWidth(column);
        if (x < left + width) {
            hit->iItem = static_cast<int>(row);
            hit->iSubItem = column;
            bool const on_box = GetCheckbox(hit->iItem, column) >= 0 && x - left < m_metrics.box_width;
            hit->flags = on_box ? LVHT_ONITEMSTATEICON : LVHT_ONITEMLABEL;
            return hit->iItem;
        }
        left += width;
    }
    return -1;
}

void CXListCtrl::SetMetrics(Metrics const& metrics) {
    m_metrics = metrics;
    m_metrics.row_height = std::max(metrics.row_height, 1);
    m_metrics.header_height = std::max(metrics.header_height, 0);
    KeepScrollInside();
    Notify([](CWndView& view) { view.OnContentChanged(); });
}

CSize CXListCtrl::GetContentSize() const noexcept {
    return {ToPixel(LeftOf(GetColumnCount())), ToPixel(std::int64_t{m_metrics.row_height} * GetItemCount())};
}

void CXListCtrl::SetScrollPos(CPoint position) {
    CSize const content = GetContentSize();
    std::int64_t const room_x = std::int64_t{content.cx} - m_metrics.page.cx;
    std::int64_t const room_y = std::int64_t{content.cy} + m_metrics.header_height - m_metrics.page.cy;
    auto const inside = [](int wanted, std::int64_t room) {
        return ToPixel(std::clamp<std::int64_t>(wanted, 0, std::max<std::int64_t>(room, 0)));
    };
    CPoint const scroll(inside(static_cast<int>(position.x), room_x),
                        inside(static_cast<int>(position.y), room_y));
    if (scroll == m_scroll)
        return;
    m_scroll = scroll;
    Notify([](CWndView& view) { view.OnScrollChanged(); });
}

// After the content has become smaller.
void CXListCtrl::KeepScrollInside() {
    if (!(m_scroll == CPoint()))
        SetScrollPos(m_scroll);
}

bool CXListCtrl::EnsureVisible(int item) {
    if (!Row(item))
        return false;
    std::int64_t const top = std::int64_t{item} * m_metrics.row_height;
    std::int64_t const visible = m_metrics.page.cy - m_metrics.header_height;
    std::int64_t const lowest = top + m_metrics.row_height - visible; // shows the row at the lower edge
    std::int64_t y = m_scroll.y;
    y = std::max(y, lowest);
    y = std::min(y, top);
    SetScrollPos(CPoint(static_cast<int>(m_scroll.x), ToPixel(y)));
    return true;
}
