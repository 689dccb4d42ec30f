#include <paramdb/controls/clavis_combo_box.h>
#include <paramdb/controls/element_values.h>
#include <paramdb/platform/core/lib_mgr.h>

namespace {

constexpr unsigned int NotAssignedText = 9;

} // namespace

void CClavisComboBox::Fill(Clavis::qOrder element, int select, int filter) {
    CQtParamInstance const parameters;
    bool const show_ids = CQtParamInstance::ShowIdsInDialogs();
    m_element = element;
    ResetContent();
    SetItemData(AddString(CLibMgr().Text(NotAssignedText)), -1);
    int index = select == -1 ? 0 : -1;

    auto const offer = [&](int id, CString text) {
        if (show_ids)
            text.AppendFormat(L" [%d]", id);
        int const row = AddString(text);
        SetItemData(row, id);
        if (id == select)
            index = row;
    };
    if (element == Clavis::qInstrParam) {
        for (auto const& [key, row] : parameters.InstrumentParam()) {
            if (filter == -1 || row.get<"instrument">() == filter)
                offer(key[0], row.get<"name">().c_str());
        }
    } else {
        for (auto const& [key, name] : parameters.IdNameMap(static_cast<unsigned int>(element))) {
            int const id = key[0];
            bool const offered =
                !paramdb::IsLeftOut(parameters, element, id, m_hide_virtual_modes) &&
                paramdb::PassesFilter(parameters, element, id, static_cast<unsigned int>(filter));
            if (offered)
                offer(id, static_cast<wchar_t const*>(name));
            else if (id == select)
                index = 0;
        }
    }

    if (select >= 0 && index == -1) {
        index = AddString(paramdb::UnknownValueText(element, select));
        SetItemData(index, select);
    }
    SetCurSel(index);
}

int CClavisComboBox::Retrieve() const {
    int const row = GetCurSel();
    return row >= 0 ? static_cast<int>(GetItemData(row)) : -1;
}
