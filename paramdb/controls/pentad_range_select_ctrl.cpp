#include <paramdb/controls/pentad_range_select_ctrl.h>

#include <algorithm>

void CPentadRangeSelectCtrl::send_pentad_list(List const (&lists)[6]) {
    std::copy(std::begin(lists), std::end(lists), std::begin(m_lists));
}

void CPentadRangeSelectCtrl::send_active_list(std::map<int, bool> const (&lists)[6]) {
    for (unsigned int column = 0; column < m_size; ++column) {
        deselect_all(column);
        m_last_click[column] = -1;
    }
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        for (std::size_t column = 0; column < m_size; ++column) {
            int const id = m_rows[row][column];
            if (id < 0)
                continue;
            auto const wanted = lists[column].find(id);
            if (wanted != lists[column].end() && wanted->second)
                select_cell({static_cast<int>(row), static_cast<int>(column)});
        }
    }
}

CString CPentadRangeSelectCtrl::col_head_names(unsigned int element) {
    constexpr int plural = 2;
    return Clavis::ElementName(static_cast<int>(element), plural);
}
