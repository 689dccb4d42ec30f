#include <paramdb/platform/framework/combo_box.h>

#include <algorithm>

void CComboBox::ResetContent() {
    m_rows.clear();
    m_selected = CB_ERR;
    Notify([](CWndView& view) { view.OnContentChanged(); });
}

int CComboBox::AddString(wchar_t const* text) {
    auto place = m_rows.end();
    if (m_sorted) {
        place =
            std::upper_bound(m_rows.begin(), m_rows.end(), text, [](wchar_t const* added, Row const& row) {
                return row.text.CompareNoCase(added) > 0;
            });
    }
    int const index = static_cast<int>(place - m_rows.begin());
    m_rows.insert(place, Row{text, 0});
    if (m_selected >= index)
        ++m_selected;
    Notify([index](CWndView& view) { view.OnItemsInserted(index, 1); });
    return index;
}

int CComboBox::GetLBText(int index, CString& text) const {
    if (!Has(index))
        return CB_ERR;
    text = m_rows[static_cast<std::size_t>(index)].text;
    return text.GetLength();
}

std::intptr_t CComboBox::GetItemData(int index) const noexcept {
    return Has(index) ? m_rows[static_cast<std::size_t>(index)].data : CB_ERR;
}

int CComboBox::SetItemData(int index, std::intptr_t data) noexcept {
    if (!Has(index))
        return CB_ERR;
    m_rows[static_cast<std::size_t>(index)].data = data;
    return 0;
}

int CComboBox::SetCurSel(int index) {
    int const selected = Has(index) ? index : CB_ERR;
    if (m_selected != selected) {
        m_selected = selected;
        Notify([](CWndView& view) { view.OnSelectionChanged(); });
    }
    return selected;
}

int CComboBox::FindStringExact(int after, wchar_t const* text) const {
    int const count = GetCount();
    int const first = after >= 0 && after < count - 1 ? after + 1 : 0;
    for (int i = 0; i < count; ++i) {
        int const index = first + i < count ? first + i : first + i - count;
        if (m_rows[static_cast<std::size_t>(index)].text.CompareNoCase(text) == 0)
            return index;
    }
    return CB_ERR;
}

void CComboBox::Choose(int index) {
    constexpr WPARAM selection_changed = 1; // CBN_SELCHANGE, in the upper half of the first parameter
    if (!Has(index))
        return;
    CWndReference const self = this;
    SetCurSel(index);
    if (!self.Get())
        return;
    if (CWnd* const parent = GetParent()) {
        auto const id = static_cast<WPARAM>(static_cast<std::uint16_t>(GetDlgCtrlID()));
        parent->SendMessageW(WM_COMMAND, selection_changed << 16 | id,
                             reinterpret_cast<LPARAM>(GetSafeHwnd()));
    }
}

void CComboBox::OnDestroy() {
    ResetContent();
}

LRESULT CComboBox::OnMessage(UINT message, WPARAM first, LPARAM second) {
    int const index = static_cast<int>(static_cast<LPARAM>(first));
    auto const text = [second] { return PointerIn<wchar_t const>(second); };
    switch (message) {
    case CB_RESETCONTENT:
        ResetContent();
        return 0;
    case CB_GETCOUNT:
        return GetCount();
    case CB_ADDSTRING:
        return AddString(text());
    case CB_GETITEMDATA:
        return GetItemData(index);
    case CB_SETITEMDATA:
        return SetItemData(index, second);
    case CB_GETCURSEL:
        return GetCurSel();
    case CB_SETCURSEL:
        return SetCurSel(index);
    case CB_FINDSTRINGEXACT:
        return FindStringExact(index, text());
    case CB_GETLBTEXTLEN:
        return Has(index) ? m_rows[static_cast<std::size_t>(index)].text.GetLength() : CB_ERR;
    case CB_GETLBTEXT: {
        if (!Has(index))
            return CB_ERR;
        CString const& found = m_rows[static_cast<std::size_t>(index)].text;
        std::copy_n(found.GetString(), found.GetLength() + 1, PointerIn<wchar_t>(second));
        return found.GetLength();
    }
    default:
        return CWnd::OnMessage(message, first, second);
    }
}
