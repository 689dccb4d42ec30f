#include "host_window.h"

#include <paramdb/query/param_instance.h>
#include <paramdb/views/win32/screen.h>

#include <bit>

using paramdb::win32::DialogView;
using paramdb::win32::DpiOf;
using paramdb::win32::MessageFont;
using paramdb::win32::Scaled;

namespace {

constexpr wchar_t ClassName[] = L"paramdb win32 host";

enum id_t : int { modes_id = 101, editor_id, parameters_id, grid_id, button_id, state_id, label_id };

// The message has its number from the system, under its name.
UINT SelectionChanged() {
    static UINT const number = ::RegisterWindowMessageW(L"WM_PENTADCTRL_SELCHANGED");
    return number;
}

HWND MakeChild(HWND parent, wchar_t const* kind, wchar_t const* text, DWORD style, int id) {
    return ::CreateWindowExW(0, kind, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleW(nullptr),
                             nullptr);
}

// The number of cells that are selected.
int CountSelected(CPentadRangeSelectCtrl const& grid) {
    std::map<int, bool> columns[CPentadRangeSelectCtrl::m_size];
    grid.retrieve(columns);
    int count = 0;
    for (auto const& column : columns) {
        for (auto const& [id, selected] : column)
            count += selected;
    }
    return count;
}

} // namespace

HostWindow::Controls::Controls(HWND window) : frame(window), dialog(&frame) {
    CQtParamInstance const parameter_data;
    modes.Create(&frame, modes_id);
    modes.SetTitle(Clavis::ElementName(Clavis::qMode, 1));
    modes.HideVirtualModes(true);
    modes.Fill(Clavis::qMode, -1, 0);
    editor.Create(&frame, editor_id);
    editor.SetTitle(L"Key");
    editor.add_extra_row(L"Bench", L"EOL 1", 0, 1);
    editor.fill(CClavis());
    parameters.Create(&frame, parameters_id);
    parameters.Init(Clavis::qInstrParam);
    parameters.Fill({}, 0);
    grid.set_mask(0b101101); // all but instruments and parameters
    std::set<std::pair<int, CString>> lists[Clavis::ElementCount];
    for (unsigned int element = 0; element < Clavis::ElementCount; ++element) {
        if (element == Clavis::qInstrParam)
            continue;
        for (auto const& [id, name] : parameter_data.IdNameMap(element))
            lists[element].emplace(id[0], CString(static_cast<wchar_t const*>(name)));
    }
    grid.send_pentad_list(lists);
    grid.Create(&frame, grid_id); // fills it
}

HostWindow::HostWindow() {
    WNDCLASSW description{};
    description.lpfnWndProc = &Receive;
    description.hInstance = ::GetModuleHandleW(nullptr);
    description.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    description.hbrBackground = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_BTNFACE + 1});
    description.lpszClassName = ClassName;
    ::RegisterClassW(&description);
    int const dpi = DpiOf(nullptr);
    m_window =
        ::CreateWindowExW(0, ClassName, L"paramdb controls", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 20, 20,
                          Scaled(900, dpi), Scaled(560, dpi), nullptr, nullptr, description.hInstance, this);
    m_controls = std::make_unique<Controls>(m_window);
    m_controls->dialog.set_target([this](CClavis const& key) {
        m_controls->editor.fill(key);
        ShowState();
    });
    MakeViews();
    SetFonts();
    Arrange();
    ShowState();
}

HostWindow::~HostWindow() {
    ::SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    m_controls.reset();
    ::DestroyWindow(m_window);
}

void HostWindow::MakeViews() {
    RECT const somewhere{0, 0, 10, 10};
    m_label = MakeChild(m_window, L"STATIC", Clavis::ElementName(Clavis::qMode, 1), SS_CENTERIMAGE, label_id);
    m_modes_view.Create(m_window, {0, 0, 10, Scaled(22, DpiOf(m_window))}, modes_id);
    m_modes_view.SetCombo(&m_controls->modes);
    m_button = MakeChild(m_window, L"BUTTON", L"Edit key...", WS_TABSTOP | BS_PUSHBUTTON, button_id);
    m_editor_view.Create(m_window, somewhere, editor_id);
    m_editor_view.SetList(&m_controls->editor);
    m_parameters_view.Create(m_window, somewhere, parameters_id);
    m_parameters_view.SetList(&m_controls->parameters);
    m_grid_view.Create(m_window, somewhere, grid_id);
    m_grid_view.SetName(L"Ranges");
    m_grid_view.SetList(&m_controls->grid);
    m_state = MakeChild(m_window, L"STATIC", L"", SS_NOPREFIX, state_id);
}

void HostWindow::SetFonts() {
    auto const font = reinterpret_cast<WPARAM>(MessageFont(DpiOf(m_window)));
    for (HWND child = ::GetWindow(m_window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        ::SendMessageW(child, WM_SETFONT, font, TRUE);
}

void HostWindow::Arrange() {
    RECT inner{};
    ::GetClientRect(m_window, &inner);
    int const dpi = DpiOf(m_window);
    int const gap = Scaled(10, dpi);
    int const line = Scaled(24, dpi);
    int const state = Scaled(36, dpi);
    int const width = static_cast<int>(inner.right) - 3 * gap;
    int const left = width * 2 / 5;
    int const top = 2 * gap + line;
    int const height = static_cast<int>(inner.bottom) - top - state - 2 * gap;
    // The editor has eight rows at most with its heading; what is left is the check list's.
    int const editor = Scaled(170, dpi);
    auto const place = [](HWND window, int x, int y, int w, int h) {
        ::MoveWindow(window, x, y, w, h, TRUE);
    };
    int const label = Scaled(60, dpi);
    int const button = Scaled(90, dpi);
    place(m_label, gap, gap, label, line);
    ::SetWindowPos(m_modes_view.GetWindow(), nullptr, gap + label, gap + Scaled(1, dpi), left - label, line,
                   SWP_NOZORDER);
    place(m_button, 2 * gap + left, gap, button, line);
    place(m_editor_view.GetWindow(), gap, top, left, editor);
    place(m_parameters_view.GetWindow(), gap, top + editor + gap, left, height - editor - gap);
    place(m_grid_view.GetWindow(), 2 * gap + left, top, width - left, height);
    place(m_state, gap, top + height + gap, width + gap, state);
}

DialogView* HostWindow::EditKey(CClavis const& key) {
    m_controls->dialog.Display(key);
    return DialogView::Of(m_controls->dialog);
}

void HostWindow::ShowState() {
    CClavis const key = m_controls->editor.retrieve();
    std::set<int> ids;
    auto const parameters = static_cast<int>(m_controls->parameters.Retrieve(ids));
    CString text;
    text.Format(L"Key %d, %d, %d, %d, %d, %d    Test step %d    %d parameters    %d cells\n%s", key[0],
                key[1], key[2], key[3], key[4], key[5], m_controls->modes.Retrieve(), parameters,
                CountSelected(m_controls->grid), m_last.GetString());
    ::SetWindowTextW(m_state, text.GetString());
}

LRESULT CALLBACK HostWindow::Receive(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_NCCREATE) {
        auto* const host = static_cast<HostWindow*>(PointerIn<CREATESTRUCTW>(second)->lpCreateParams);
        ::SetWindowLongPtrW(window, GWLP_USERDATA, std::bit_cast<LONG_PTR>(host));
        host->m_window = window;
    }
    auto* const host = std::bit_cast<HostWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    return host && host->m_controls ? host->OnMessage(message, first, second)
                                    : ::DefWindowProcW(window, message, first, second);
}

LRESULT HostWindow::OnMessage(UINT message, WPARAM first, LPARAM second) {
    constexpr UINT dpi_changed = 0x02E0;
    if (message == SelectionChanged()) {
        // The element and its value.
        auto const element = static_cast<int>(first);
        auto const value = static_cast<int>(second);
        m_last.Format(L"%s: %s (%d)", Clavis::ElementName(element, 1).GetString(),
                      m_controls->editor.GetItemText(element, 1).GetString(), value);
        ShowState();
        return 0;
    }
    switch (message) {
    case WM_COMMAND:
        if (paramdb::win32::LowWord(first) == button_id)
            EditKey(m_controls->editor.retrieve());
        ShowState();
        return 0;
    case WM_NOTIFY: { // clicks in the lists
        LRESULT const answer = ::DefWindowProcW(m_window, message, first, second);
        ShowState();
        return answer;
    }
    case WM_SIZE:
        Arrange();
        return 0;
    case dpi_changed: {
        RECT const& wanted = *PointerIn<RECT const>(second);
        SetFonts();
        ::SetWindowPos(m_window, nullptr, static_cast<int>(wanted.left), static_cast<int>(wanted.top),
                       static_cast<int>(wanted.right - wanted.left),
                       static_cast<int>(wanted.bottom - wanted.top), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_CLOSE:
        ::PostQuitMessage(0);
        return 0;
    default:
        return ::DefWindowProcW(m_window, message, first, second);
    }
}
