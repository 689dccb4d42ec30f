#include <paramdb/controls/clavis_list_ctrl.h>
#include <paramdb/controls/element_values.h>
#include <paramdb/platform/core/lib_mgr.h>

namespace {

constexpr unsigned int AllValuesTexts = 11; // "all test steps" and so on, by element
constexpr int ColumnWidth = 100;

} // namespace

void CClavisListCtrl::Init(Clavis::qOrder element) {
    m_element = element;
    DeleteAllColumns();
    CString const heading = CLibMgr().Text(AllValuesTexts + static_cast<unsigned int>(element));
    InsertColumn(0, heading, LVCFMT_LEFT, ColumnWidth);
    SetExtendedStyle(GetExtendedStyle() | LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
    AutosizeColumnWidth();
    m_check_on_click = true;
}

void CClavisListCtrl::Fill(std::set<int> const& selection, unsigned int filter) {
    CQtParamInstance const parameters;
    DeleteAllItems();
    SetBatchInsertMode(true);
    SetHeaderCheckedState(0, header_follows);
    bool const all = selection.contains(-1);
    bool const show_ids = CQtParamInstance::ShowIdsInDialogs();

    auto const append = [&](int id, CString const& text) {
        int const item = InsertItem(GetItemCount(), text);
        SetItemData(item, static_cast<std::uint64_t>(id));
        SetCheckbox(item, 0, all || selection.contains(id) ? 1 : 0);
    };
    CString text;
    if (m_element == Clavis::qInstrParam) {
        for (auto const& [key, row] : parameters.InstrumentParam()) {
            int const id = key[0]; // no mask leaves a parameter out
            if (show_ids)
                text.Format(L"%s %s  [%d]", parameters.InstrumentName(row.get<"instrument">()),
                            row.get<"name">().c_str(), id);
            else
                parameters.FormatInstrParamText(text, -1, id);
            append(id, text);
        }
    } else {
        for (auto const& [key, name] : parameters.IdNameMap(static_cast<unsigned int>(m_element))) {
            int const id = key[0];
            if (paramdb::IsLeftOut(parameters, m_element, id, m_hide_virtual_modes) ||
                !paramdb::PassesFilter(parameters, m_element, id, filter))
                continue;
            text = static_cast<wchar_t const*>(name);
            if (show_ids)
                text.AppendFormat(L"  [%d]", id);
            append(id, text);
        }
    }
    SetBatchInsertMode(false);
    m_changes = false;
}

std::uint64_t CClavisListCtrl::Retrieve(std::set<int>& out) {
    m_changes = false;
    out.clear();
    int const count = GetItemCount();
    if (CountCheckedItems(0) == count) {
        out.insert(-1);
        return static_cast<std::uint64_t>(count);
    }
    for (int item = 0; item < count; ++item) {
        if (GetCheckbox(item, 0) > 0)
            out.insert(static_cast<int>(GetItemData64(item)));
    }
    return out.size();
}

void CClavisListCtrl::OnItemStateChange(int item, int column, unsigned int state) {
    m_changes = true;
    CXListCtrl::OnItemStateChange(item, column, state);
}
