#include <paramdb/platform/framework/window_types.h>
#include <paramdb/views/win32/dialog_layout.h>

#include <algorithm>
#include <cwchar>

namespace paramdb::win32 {

namespace {

using Units = std::vector<std::uint16_t>;

void Add16(Units& units, int value) {
    units.push_back(static_cast<std::uint16_t>(value));
}

void Add32(Units& units, std::uint32_t value) {
    units.push_back(static_cast<std::uint16_t>(value & 0xFFFF));
    units.push_back(static_cast<std::uint16_t>(value >> 16));
}

// With the zero at its end.
void AddText(Units& units, wchar_t const* text) {
    std::transform(text, text + std::wcslen(text) + 1, std::back_inserter(units),
                   [](wchar_t unit) { return static_cast<std::uint16_t>(unit); });
}

void AddPlace(Units& units, int x, int y, int width, int height) {
    for (int const value : {x, y, width, height})
        Add16(units, value);
}

void AddItem(Units& units, CDialogItem const& item) {
    constexpr int atom_follows = 0xFFFF;
    constexpr int button_atom = 0x0080;
    if (units.size() % 2 != 0)
        Add16(units, 0); // items begin on a boundary of four bytes
    bool const list = item.kind == CDialogItem::Kind::list;
    bool const first_choice = item.kind == CDialogItem::Kind::default_button;
    LONG const own = list ? LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_BORDER
                     : first_choice ? BS_DEFPUSHBUTTON
                                    : BS_PUSHBUTTON;
    Add32(units, 0); // for the help
    Add32(units, 0); // extended style
    Add32(units, static_cast<std::uint32_t>(WS_CHILD | WS_VISIBLE | WS_TABSTOP | own));
    AddPlace(units, item.x, item.y, item.width, item.height);
    Add32(units, static_cast<std::uint32_t>(item.id));
    if (list) {
        AddText(units, WC_LISTVIEWW);
    } else {
        Add16(units, atom_follows);
        Add16(units, button_atom);
    }
    AddText(units, item.text.GetString());
    Add16(units, 0); // no bytes of its own
}

} // namespace

std::vector<std::uint16_t> DialogLayout(CDialogTemplate const& description) {
    constexpr int version = 1;
    constexpr int extended = 0xFFFF;
    Units units;
    Add16(units, version);
    Add16(units, extended);
    Add32(units, 0); // for the help
    Add32(units, 0); // extended style
    Add32(units, std::uint32_t{DS_SETFONT | DS_FIXEDSYS | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME |
                               WS_CLIPCHILDREN});
    Add16(units, static_cast<int>(description.items.size()));
    AddPlace(units, 0, 0, description.width, description.height);
    Add16(units, 0); // no menu
    Add16(units, 0); // the class of dialogs
    AddText(units, description.title.GetString());
    Add16(units, description.font_size);
    Add16(units, FW_NORMAL);
    Add16(units, DEFAULT_CHARSET << 8); // upright, any letters
    AddText(units, description.font.GetString());
    for (CDialogItem const& item : description.items)
        AddItem(units, item);
    return units;
}

} // namespace paramdb::win32
