// CQtParamInstance: the combo of the types.
#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/query/param_instance.h>

int CQtParamInstance::FillTypeNameCombo(CComboBox& combo, wchar_t const* select) const {
    CString wanted(select);
    if (int const selected = combo.GetCurSel(); wanted.IsEmpty() && selected >= 0)
        combo.GetLBText(selected, wanted);
    combo.ResetContent();
    for (auto const& [id, name] : TypeNames())
        combo.SetItemData(combo.AddString(name), id[0]); // sorting may have put the row anywhere
    int const count = static_cast<int>(TypeNames().size());
    if (wanted.IsEmpty())
        return count;
    if (count == 0)
        combo.AddString(wanted);
    int const index = count == 0 ? 0 : combo.FindStringExact(-1, wanted);
    if (index >= 0)
        combo.SetCurSel(index);
    return count;
}
