#include <paramdb/controls/element_values.h>
#include <paramdb/controls/pentad_ctrl.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <array>
#include <map>

unsigned int const WM_PENTADCTRL_SELCHANGED = CWnd::RegisterWindowMessageW(L"WM_PENTADCTRL_SELCHANGED");

namespace {

enum column_t : int { name_column = 0, value_column = 1, id_column = 2 };

constexpr unsigned int SectionText = 7;
constexpr unsigned int ValueText = 8;
constexpr COLORREF ExtraTextColor = 0x646464;
constexpr COLORREF ExtraBackgroundColor = 0xFFEBE6;

// What the combos of an element offer, in all editors of the process. The lists refer to it as long as they
// stand, so it outlives them all.
std::map<int, CString>& Choices(Clavis::qOrder element) {
    static auto& choices = *new std::array<std::map<int, CString>, Clavis::ElementCount>;
    return choices[static_cast<std::size_t>(element)];
}

CString NumberText(int number) {
    CString text;
    text.Format(L"%d", number);
    return text;
}

} // namespace

void CPentadCtrl::PreSubclassWindow() {
    SetExtendedStyle(GetExtendedStyle() | LVS_EX_FULLROWSELECT);
    InsertColumn(name_column, CLibMgr().Text(SectionText), LVCFMT_LEFT, 90);
    InsertColumn(value_column, CLibMgr().Text(ValueText), LVCFMT_LEFT, 90);
    m_show_ids = CQtParamInstance::ShowIdsInDialogs();
    if (m_show_ids)
        InsertColumn(id_column, L"Id", LVCFMT_RIGHT, 35);
    CXListCtrl::PreSubclassWindow();
}

void CPentadCtrl::fill(CClavis const& key) {
    SetChangeCallback([this](int row, int column) { control_modified_callback(row, column); });
    DeleteAllItems();
    m_row_mask = m_visible_mask;
    if (m_ttnil_text.IsEmpty())
        m_ttnil_text = m_none_is_any ? L"(*)" : L"\u2014";
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        if (int const row = get_row_from_qEntry(element); row >= 0) {
            InsertItem(row, Clavis::ElementName(element, 1));
            SetItemText(row, value_column, L"");
        }
    }
    set_pentad_combo(key, Clavis::qMode);
    int const instrument = set_pentad_combo(key, Clavis::qInstrument);
    set_pentad_combo(key, Clavis::qChannel);
    set_pentad_combo(key, Clavis::qLocation);
    set_instrumentparam_combo(instrument, key[Clavis::qInstrParam]);
    set_pentad_combo(key, Clavis::qSignal);
    AddExtraRows();
    AutosizeColumnWidth();
}

CClavis CPentadCtrl::retrieve() const {
    CClavis key;
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        if (int const row = get_row_from_qEntry(element); row >= 0)
            key[element] = static_cast<int>(GetItemData64(row));
    }
    return key;
}

void CPentadCtrl::set_visible_mask(std::bitset<Clavis::ElementCount> mask) {
    m_visible_mask = mask;
    if (GetItemCount() == 0) // else the rows stand as they are until the next fill
        m_row_mask = mask;
}

void CPentadCtrl::add_extra_row(CString const& label, CString const& value, unsigned int slot, int id) {
    if (slot >= std::size(m_extra_labels))
        return;
    m_extra_labels[slot] = label;
    m_extra_values[slot] = value;
    m_extra_ids[slot] = id;
}

void CPentadCtrl::AddExtraRows() {
    for (std::size_t slot = 0; slot < std::size(m_extra_labels); ++slot) {
        if (m_extra_labels[slot].IsEmpty())
            continue;
        int const row = InsertItem(GetItemCount(), m_extra_labels[slot]);
        SetItemText(row, value_column, m_extra_values[slot]);
        if (m_show_ids)
            SetItemText(row, id_column, NumberText(m_extra_ids[slot]));
        SetRowColors(row, ExtraTextColor, ExtraBackgroundColor);
    }
}

// Lets a value that is not offered stand in the combo as itself.
void CPentadCtrl::OfferUnknown(Clavis::qOrder element, int id) {
    Choices(element)[id] = paramdb::UnknownValueText(element, id);
    SetItemData(get_row_from_qEntry(element), static_cast<std::uint64_t>(id));
}

void CPentadCtrl::FinishRow(Clavis::qOrder element, int row, int selected) {
    SetComboBox(row, value_column, Choices(element), selected);
    if (m_show_ids)
        SetItemText(row, id_column, NumberText(static_cast<int>(GetItemData64(row))));
    SetEnabled(row, !m_readonly_mask[static_cast<std::size_t>(element)]);
}

int CPentadCtrl::set_pentad_combo(CClavis const& key, Clavis::qOrder element) {
    int const row = get_row_from_qEntry(element);
    if (row < 0)
        return -1;
    CQtParamInstance const parameters;
    auto& choices = Choices(element);
    choices.clear();
    choices[-1] = m_ttnil_text;
    SetItemData(row, static_cast<std::uint64_t>(-1));
    int const wanted = key[element];
    bool found = false;
    for (auto const& [id, name] : parameters.IdNameMap(static_cast<unsigned int>(element))) {
        if (paramdb::IsLeftOut(parameters, element, id[0], m_hide_virtual_modes))
            continue;
        choices[id[0]] = static_cast<wchar_t const*>(name);
        if (id[0] == wanted) {
            SetItemData(row, static_cast<std::uint64_t>(wanted));
            found = true;
        }
    }
    if (wanted != -1 && !found)
        OfferUnknown(element, wanted);
    FinishRow(element, row, wanted);
    return wanted;
}

void CPentadCtrl::set_instrumentparam_combo(int instrument, int parameter) {
    constexpr auto element = Clavis::qInstrParam;
    int const row = get_row_from_qEntry(element);
    if (row < 0)
        return;
    CQtParamInstance const parameters;
    auto& choices = Choices(element);
    choices.clear();
    choices[-1] = m_ttnil_text;
    SetItemData(row, static_cast<std::uint64_t>(-1));
    if (instrument == -1) { // without one there is nothing to choose
        FinishRow(element, row, -1);
        return;
    }
    bool found = false;
    for (auto const& [id, values] : parameters.InstrumentParam()) {
        if (values.get<"instrument">() != instrument)
            continue;
        choices[id[0]] = values.get<"name">().c_str();
        if (id[0] == parameter) {
            SetItemData(row, static_cast<std::uint64_t>(parameter));
            found = true;
        }
    }
    if (parameter != -1 && !found)
        OfferUnknown(element, parameter);
    FinishRow(element, row, parameter);
}

void CPentadCtrl::control_modified_callback(int row, int column) {
    if (column != value_column)
        return;
    int const element = get_qEntry_from_row(row);
    int const value = GetComboCurSel(row, value_column);
    if (element == Clavis::qInstrument)
        set_instrumentparam_combo(value, -1); // a parameter never stays under another instrument
    SetItemData(row, static_cast<std::uint64_t>(value));
    if (m_show_ids)
        SetItemText(row, id_column, NumberText(value));
    PostChange(element, value);
}

// Posted, so that the receiver finds the rows settled.
void CPentadCtrl::PostChange(int element, int value) {
    CWnd* receiver = GetParent();
    if (!receiver)
        receiver = GetOwner();
    if (!receiver || !IsWindow(receiver->GetSafeHwnd()))
        return;
    auto const first = static_cast<WPARAM>(element);
    auto const second = static_cast<LPARAM>(value);
    receiver->PostMessageW(WM_PENTADCTRL_SELCHANGED, first, second);
    if (m_on_change_message != 0)
        receiver->PostMessageW(m_on_change_message, first, second);
}
