#include <paramdb/platform/core/utf8.h>
#include <paramdb/views/win32/native_window.h>
#include <paramdb/views/win32/screen.h>

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <tests/views/win32/native_driver.h>
#include <tests/views/win32/native_input.h>

using paramdb::win32::ComboView;
using paramdb::win32::DialogView;
using paramdb::win32::ListView;
using paramdb::win32::Parameter;

namespace {

constexpr wchar_t FrameClass[] = L"paramdb test frame";
constexpr int LineHeight = 24; // of what takes the keyboard away, at the bottom

WORD VirtualKey(Key key) {
    switch (key) {
    case Key::up:
        return VK_UP;
    case Key::down:
        return VK_DOWN;
    case Key::left:
        return VK_LEFT;
    case Key::right:
        return VK_RIGHT;
    case Key::page_up:
        return VK_PRIOR;
    case Key::page_down:
        return VK_NEXT;
    case Key::home:
        return VK_HOME;
    case Key::end:
        return VK_END;
    case Key::space:
        return VK_SPACE;
    case Key::enter:
        return VK_RETURN;
    case Key::escape:
        return VK_ESCAPE;
    case Key::tab:
        return VK_TAB;
    case Key::f2:
        return VK_F2;
    case Key::f4:
        return VK_F4;
    default:
        return 'A';
    }
}

int Ask(HWND window, UINT message, int first = 0, LPARAM second = 0) {
    return static_cast<int>(::SendMessageW(window, message, static_cast<WPARAM>(first), second));
}

CRect PlaceIn(HWND parent, HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    ::MapWindowPoints(nullptr, parent, PointerIn<POINT>(Parameter(&place)), 2);
    return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
            static_cast<int>(place.bottom)};
}

HWND WindowOf(CDialog const& dialog) {
    DialogView const* const view = DialogView::Of(dialog);
    return view ? view->GetWindow() : nullptr;
}

} // namespace

NativeDriver::NativeDriver() {
    m_views.emplace();
    WNDCLASSW description{};
    description.lpfnWndProc = &::DefWindowProcW;
    description.hInstance = ::GetModuleHandleW(nullptr);
    description.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    description.hbrBackground = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_BTNFACE + 1});
    description.lpszClassName = FrameClass;
    ::RegisterClassW(&description);
    m_frame = ::CreateWindowExW(0, FrameClass, L"test", WS_OVERLAPPEDWINDOW, 20, 20, 400, 300, nullptr,
                                nullptr, description.hInstance, nullptr);
    m_elsewhere = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10, 10,
                                    m_frame, nullptr, description.hInstance, nullptr);
}

NativeDriver::~NativeDriver() {
    Drop();
    ::DestroyWindow(m_frame);
    TakeMessages();
}

void NativeDriver::Show(CXListCtrl& list, CSize size) {
    m_made = std::make_unique<ListView>();
    m_list = m_made.get();
    ASSERT_TRUE(m_list->Create(m_frame, {0, 0, 10, 10}, 3000));
    m_list->SetList(&list);
    Open(size);
}

void NativeDriver::Show(CComboBox& combo) {
    m_combo = std::make_unique<ComboView>();
    ASSERT_TRUE(m_combo->Create(m_frame, {10, 10, 210, 34}, 17));
    m_combo->SetCombo(&combo);
    Open({400, 100});
}

void NativeDriver::Open(CSize size) {
    ParkPointer();
    Resize(size);
    ::ShowWindow(m_frame, SW_SHOW);
    ::SetForegroundWindow(m_frame);
    TakeMessages();
    ASSERT_EQ(::GetForegroundWindow(), m_frame);
    Focus();
}

void NativeDriver::Drop() {
    m_made.reset();
    m_list = nullptr;
    m_combo.reset();
    TakeMessages();
}

void NativeDriver::Resize(CSize size) {
    RECT frame{0, 0, size.cx, size.cy};
    ::AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
    ::SetWindowPos(m_frame, nullptr, 0, 0, static_cast<int>(frame.right - frame.left),
                   static_cast<int>(frame.bottom - frame.top), SWP_NOMOVE | SWP_NOZORDER);
    int const width = static_cast<int>(size.cx);
    int const height = static_cast<int>(size.cy) - LineHeight;
    ::MoveWindow(m_elsewhere, 0, height, width, LineHeight, TRUE);
    if (m_made)
        ::MoveWindow(m_made->GetWindow(), 0, 0, width, height, TRUE);
    TakeMessages();
}

HWND NativeDriver::Shown() const {
    return m_list ? m_list->GetWindow() : m_combo ? m_combo->GetWindow() : nullptr;
}

void NativeDriver::Focus() {
    ::SetForegroundWindow(::GetAncestor(Shown(), GA_ROOT));
    ::SetFocus(Shown());
    TakeMessages();
}

void NativeDriver::FocusElsewhere() {
    ::SetFocus(m_elsewhere);
    TakeMessages();
}

bool NativeDriver::IsVisible() {
    return ::IsWindowVisible(Shown()) != FALSE;
}

bool NativeDriver::IsEnabled() {
    return ::IsWindowEnabled(Shown()) != FALSE;
}

// A combo's own text is its choice; its name stands in a label directly before it.
std::string NativeDriver::Name() {
    if (m_list)
        return TextOf(Shown());
    HWND const label = ::GetWindow(Shown(), GW_HWNDPREV);
    wchar_t name[32] = {};
    ::GetClassNameW(label, name, static_cast<int>(std::size(name)));
    return CString(name).CompareNoCase(L"Static") == 0 && ::IsWindowVisible(label) != FALSE ? TextOf(label)
                                                                                            : std::string();
}

void NativeDriver::Press(Key key, Held held) {
    PressKey(VirtualKey(key), held);
}

void NativeDriver::Type(std::string const& letters) {
    for (char const letter : letters)
        TypeLetter(static_cast<wchar_t>(letter));
}

HWND NativeDriver::Header() const {
    return reinterpret_cast<HWND>(::SendMessageW(ListWindow(), LVM_GETHEADER, 0, 0));
}

int NativeDriver::Rows() {
    return m_list ? Ask(ListWindow(), LVM_GETITEMCOUNT) : 0;
}

int NativeDriver::Columns() {
    return Ask(Header(), HDM_GETITEMCOUNT);
}

std::string NativeDriver::Text(int row, int column) {
    wchar_t text[256] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = static_cast<int>(std::size(text));
    Ask(ListWindow(), LVM_GETITEMTEXTW, row, Parameter(&item));
    return paramdb::ToUtf8(text);
}

std::string NativeDriver::Heading(int column) {
    wchar_t text[256] = {};
    HDITEMW item{};
    item.mask = HDI_TEXT;
    item.pszText = text;
    item.cchTextMax = static_cast<int>(std::size(text));
    Ask(Header(), HDM_GETITEMW, column, Parameter(&item));
    return paramdb::ToUtf8(text);
}

int NativeDriver::ColumnWidth(int column) {
    return Ask(ListWindow(), LVM_GETCOLUMNWIDTH, column);
}

int NativeDriver::Check(int row) {
    return (Ask(ListWindow(), LVM_GETITEMSTATE, row, LVIS_STATEIMAGEMASK) >> 12) - 1;
}

std::pair<int, int> NativeDriver::Current() {
    int const row = Ask(ListWindow(), LVM_GETNEXTITEM, -1, LVNI_FOCUSED);
    return {row, row < 0 ? -1 : m_list->GetColumn()};
}

CRect NativeDriver::Cell(int row, int column) {
    RECT cell{};
    cell.left = LVIR_BOUNDS;
    cell.top = column;
    if (column == 0) {
        Ask(ListWindow(), LVM_GETITEMRECT, row, Parameter(&cell));
        cell.right = cell.left + ColumnWidth(0); // the bounds of the first cell are those of the row
    } else {
        Ask(ListWindow(), LVM_GETSUBITEMRECT, row, Parameter(&cell));
    }
    return {static_cast<int>(cell.left), static_cast<int>(cell.top), static_cast<int>(cell.right),
            static_cast<int>(cell.bottom)};
}

CRect NativeDriver::RowsInSight() {
    RECT client{};
    ::GetClientRect(ListWindow(), &client);
    return {0, PlaceIn(ListWindow(), Header()).Height(), static_cast<int>(client.right),
            static_cast<int>(client.bottom)};
}

CPoint NativeDriver::Scroll() {
    int const height = Rows() > 0 ? Cell(0, 0).Height() : 1;
    return {::GetScrollPos(ListWindow(), SB_HORZ), Ask(ListWindow(), LVM_GETTOPINDEX) * height};
}

void NativeDriver::ScrollTo(CPoint position) {
    CPoint const now = Scroll();
    int const height = Cell(0, 0).Height();
    int const y = static_cast<int>(position.y) / height * height;
    Ask(ListWindow(), LVM_SCROLL, static_cast<int>(position.x - now.x), y - now.y);
    // What the scroll bars say when they are let go.
    Ask(ListWindow(), WM_VSCROLL, SB_ENDSCROLL);
    Ask(ListWindow(), WM_HSCROLL, SB_ENDSCROLL);
    TakeMessages();
}

void NativeDriver::DragColumn(int column, int width) {
    RECT item{};
    Ask(Header(), HDM_GETITEMRECT, column, Parameter(&item));
    LONG const y = (item.top + item.bottom) / 2;
    LONG const by = width - (item.right - item.left);
    DragIn(Header(), {item.right, y}, {item.right + by, y});
}

void NativeDriver::Click(CPoint point, Held held) {
    ClickWindow(ListWindow(), point, held);
}

void NativeDriver::DoubleClick(CPoint point) {
    ClickWindow(ListWindow(), point);
    ClickWindow(ListWindow(), point);
}

void NativeDriver::RightClick(CPoint point) {
    ClickWindow(ListWindow(), point, {}, MouseButton::right);
}

void NativeDriver::ClickHeading(int column) {
    RECT item{};
    Ask(Header(), HDM_GETITEMRECT, column, Parameter(&item));
    ClickWindow(Header(), {(item.left + item.right) / 2, (item.top + item.bottom) / 2});
}

COLORREF NativeDriver::Pixel(CPoint point) {
    ::UpdateWindow(ListWindow());
    HDC const context = ::GetDC(ListWindow());
    COLORREF const color = ::GetPixel(context, static_cast<int>(point.x), static_cast<int>(point.y));
    ::ReleaseDC(ListWindow(), context);
    return color;
}

COLORREF NativeDriver::Color(Shade shade) {
    return ::GetSysColor(shade == Shade::paper      ? COLOR_WINDOW
                         : shade == Shade::selected ? COLOR_HIGHLIGHT
                                                    : COLOR_BTNFACE);
}

HWND NativeDriver::Combo() const {
    return m_combo ? m_combo->GetWindow() : m_list ? m_list->GetCombo() : nullptr;
}

bool NativeDriver::IsOpen() {
    return Combo() && Ask(Combo(), CB_GETDROPPEDSTATE) != 0;
}

std::vector<std::string> NativeDriver::Offered() {
    std::vector<std::string> texts;
    for (int i = 0; i < Ask(Combo(), CB_GETCOUNT); ++i) {
        std::wstring text(static_cast<std::size_t>(Ask(Combo(), CB_GETLBTEXTLEN, i)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(Ask(Combo(), CB_GETLBTEXT, i, Parameter(text.data()))));
        texts.push_back(paramdb::ToUtf8(text));
    }
    return texts;
}

std::string NativeDriver::Chosen() {
    int const index = Ask(Combo(), CB_GETCURSEL);
    return index < 0 ? std::string() : Offered()[static_cast<std::size_t>(index)];
}

void NativeDriver::ClickOffered(int index) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ::GetComboBoxInfo(Combo(), &info);
    Ask(info.hwndList, LB_SETTOPINDEX, index);
    RECT entry{};
    Ask(info.hwndList, LB_GETITEMRECT, index, Parameter(&entry));
    ClickWindow(info.hwndList, {entry.left + 10, (entry.top + entry.bottom) / 2});
}

void NativeDriver::LeaveCombo() {
    PressKey(VK_ESCAPE);
}

bool NativeDriver::HasWindow(CDialog const& dialog) {
    return ::IsWindow(WindowOf(dialog)) != FALSE;
}

void NativeDriver::UseList(CDialog const& dialog, int id) {
    ParkPointer();
    m_list = DialogView::Of(dialog)->List(id);
    TakeMessages();
}

std::string NativeDriver::Title(CDialog const& dialog) {
    return TextOf(WindowOf(dialog));
}

std::string NativeDriver::ButtonText(CDialog const& dialog, int id) {
    return TextOf(::GetDlgItem(WindowOf(dialog), id));
}

CRect NativeDriver::Item(CDialog const& dialog, int id) {
    return PlaceIn(WindowOf(dialog), ::GetDlgItem(WindowOf(dialog), id));
}

CSize NativeDriver::Size(CDialog const& dialog) {
    RECT inner{};
    ::GetClientRect(WindowOf(dialog), &inner);
    return {static_cast<int>(inner.right), static_cast<int>(inner.bottom)};
}

void NativeDriver::Enlarge(CDialog const& dialog, CSize by) {
    RECT frame{};
    ::GetWindowRect(WindowOf(dialog), &frame);
    ::SetWindowPos(WindowOf(dialog), nullptr, 0, 0, static_cast<int>(frame.right - frame.left + by.cx),
                   static_cast<int>(frame.bottom - frame.top + by.cy), SWP_NOMOVE | SWP_NOZORDER);
    TakeMessages();
}

void NativeDriver::ClickButton(CDialog const& dialog, int id) {
    ClickWindow(::GetDlgItem(WindowOf(dialog), id), {10, 10});
}

void NativeDriver::Close(CDialog const& dialog) {
    // What the button in the frame sends.
    ::PostMessageW(WindowOf(dialog), WM_SYSCOMMAND, SC_CLOSE, 0);
    TakeMessages();
}

void NativeDriver::TakeAway(CDialog const& dialog) {
    ::DestroyWindow(WindowOf(dialog));
    TakeMessages();
}

std::unique_ptr<ViewDriver> MakeViewDriver() {
    return std::make_unique<NativeDriver>();
}
