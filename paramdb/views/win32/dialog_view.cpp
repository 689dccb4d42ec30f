#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/views/win32/dialog_layout.h>
#include <paramdb/views/win32/dialog_view.h>
#include <paramdb/views/win32/event_loop.h>
#include <paramdb/views/win32/native_window.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/theme.h>

#include <algorithm>
#include <utility>

namespace paramdb::win32 {

namespace {

// The dialog is on a screen of other pixels now; older headers lack it.
constexpr UINT DpiChanged = 0x02E0;

// Those on the screen. They take themselves out.
std::vector<DialogView*>& Open() {
    static auto& open = *new std::vector<DialogView*>;
    return open;
}

} // namespace

DialogView* DialogView::Of(CDialog const& dialog) {
    auto const found = std::find_if(Open().begin(), Open().end(),
                                    [&](DialogView const* view) { return view->m_dialog == &dialog; });
    return found != Open().end() ? *found : nullptr;
}

DialogView* DialogView::Show(CDialog& dialog, HWND owner) {
    DialogView* view = Of(dialog);
    if (!view) {
        InstallTheme();
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
        ::InitCommonControlsEx(&classes);
        view = new DialogView(dialog);
        auto const layout = DialogLayout(dialog.GetTemplate());
        // It gives itself to the window with the first message of that, and goes with it.
        if (!::CreateDialogIndirectParamW(ThisModule(),
                                          PointerIn<DLGTEMPLATE const>(Parameter(layout.data())), owner,
                                          &Receive, Parameter(view))) {
            delete view;
            return nullptr;
        }
    }
    HWND const window = view->m_window;
    ::ShowWindow(window, SW_SHOW);
    ::SetForegroundWindow(window);
    return ::IsWindow(window) != FALSE ? view : nullptr; // who lost the keyboard may have closed it
}

DialogView::DialogView(CDialog& dialog) : m_dialog(&dialog) {
    Attach(dialog);
    Open().push_back(this);
}

DialogView::~DialogView() {
    std::erase(Open(), this);
}

INT_PTR CALLBACK DialogView::Receive(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) {
        ::SetWindowLongPtrW(window, DWLP_USER, second);
        auto* const view = PointerIn<DialogView>(second);
        view->m_window = window;
        view->Build();
        return TRUE; // the system gives the keyboard to the first item
    }
    auto* const view = PointerIn<DialogView>(static_cast<LPARAM>(::GetWindowLongPtrW(window, DWLP_USER)));
    return view ? view->OnMessage(message, first, second) : FALSE;
}

INT_PTR DialogView::OnMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_COMMAND:
        if (HighWord(first) == BN_CLICKED)
            Command(LowWord(first));
        return TRUE;
    case WM_CLOSE:
        Command(IDCANCEL);
        return TRUE;
    case WM_SIZE:
        Arrange();
        return TRUE;
    case DpiChanged:
        Rescale(LowWord(first));
        return FALSE; // the system does the rest
    case WM_GETMINMAXINFO:
        PointerIn<MINMAXINFO>(second)->ptMinTrackSize = {m_least_frame.cx, m_least_frame.cy};
        return TRUE;
    case WM_NCDESTROY: {
        ::SetWindowLongPtrW(m_window, DWLP_USER, 0);
        m_window = nullptr;
        CDialog* const dialog = std::exchange(m_dialog, nullptr);
        Detach();
        delete this;
        if (dialog) // somebody has taken the window away
            CallControl([dialog] { dialog->EndDialog(IDCANCEL); });
        return TRUE;
    }
    default:
        return FALSE;
    }
}

void DialogView::Build() {
    CDialogTemplate const& layout = m_dialog->GetTemplate();
    for (CDialogItem const& description : layout.items) {
        Item item{description, ::GetDlgItem(m_window, description.id), {}, nullptr};
        ::GetWindowRect(item.window, &item.place);
        ::MapWindowPoints(nullptr, m_window, PointerIn<POINT>(Parameter(&item.place)), 2);
        if (description.kind == CDialogItem::Kind::list) {
            item.list = std::make_unique<ListView>();
            item.list->TakeOver(item.window);
            item.list->SetList(dynamic_cast<CXListCtrl*>(m_dialog->GetDlgItem(description.id)));
        }
        m_items.push_back(std::move(item));
    }
    RECT inner{};
    RECT frame{};
    ::GetClientRect(m_window, &inner);
    ::GetWindowRect(m_window, &frame);
    m_first_size = {inner.right, inner.bottom};
    m_least_frame = {frame.right - frame.left, frame.bottom - frame.top};
    m_dpi = DpiOf(m_window);
    MakeRoomForWords();
    Arrange();
    Center();
    OnTitleChanged();
    OnEnabledChanged();
}

// A word may need more room than the template gives it: the button grows and those on its left make way.
void DialogView::MakeRoomForWords() {
    int const dpi = DpiOf(m_window);
    int const gap = Scaled(6, dpi);
    int const air = Scaled(16, dpi); // beside a word, both sides together
    auto right = static_cast<int>(m_first_size.cx);
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item) {
        if (item->list)
            continue;
        auto const wanted = static_cast<int>(FontContext(item->window).SizeOf(item->description.text).cx);
        int const edge = std::min(static_cast<int>(item->place.right), right);
        int const width = std::max(static_cast<int>(item->place.right - item->place.left), wanted + air);
        item->place.left = edge - width;
        item->place.right = edge;
        right = edge - width - gap;
    }
}

// In the middle of the owner, or of the screen.
void DialogView::Center() const {
    HWND const owner = ::GetWindow(m_window, GW_OWNER);
    RECT around{};
    ::GetWindowRect(owner ? owner : ::GetDesktopWindow(), &around);
    int const x = static_cast<int>(around.left + around.right - m_least_frame.cx) / 2;
    int const y = static_cast<int>(around.top + around.bottom - m_least_frame.cy) / 2;
    ::SetWindowPos(m_window, nullptr, std::max(x, 0), std::max(y, 0), 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void DialogView::Arrange() {
    RECT inner{};
    ::GetClientRect(m_window, &inner);
    int const wider = std::max(static_cast<int>(inner.right - m_first_size.cx), 0);
    int const higher = std::max(static_cast<int>(inner.bottom - m_first_size.cy), 0);
    for (Item const& item : m_items) {
        RECT place = item.place;
        if (item.list) {
            place.right += wider;
            place.bottom += higher;
        } else {
            ::OffsetRect(&place, wider, higher);
        }
        ::SetWindowPos(item.window, nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
                       static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top),
                       SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
}

// Before the system makes windows and font larger or smaller.
void DialogView::Rescale(int dpi) {
    if (dpi <= 0 || dpi == m_dpi)
        return;
    auto const scale = [this, dpi](LONG& length) { length = ::MulDiv(static_cast<int>(length), dpi, m_dpi); };
    for (LONG* const length : {&m_first_size.cx, &m_first_size.cy, &m_least_frame.cx, &m_least_frame.cy})
        scale(*length);
    for (Item& item : m_items) {
        for (LONG* const edge : {&item.place.left, &item.place.top, &item.place.right, &item.place.bottom})
            scale(*edge);
    }
    m_dpi = dpi;
}

ListView* DialogView::List(int id) const {
    for (Item const& item : m_items) {
        if (item.description.id == id)
            return item.list.get();
    }
    return nullptr;
}

// The dialog may end in it, and this view with it.
void DialogView::Command(int id) {
    if (m_dialog)
        CallControl([dialog = m_dialog, id] { dialog->Command(id); });
}

void DialogView::OnVisibilityChanged() {
    ::ShowWindow(m_window, m_dialog->IsWindowVisible() ? SW_SHOW : SW_HIDE);
}

void DialogView::OnEnabledChanged() {
    ::EnableWindow(m_window, m_dialog->IsWindowEnabled());
}

void DialogView::OnTitleChanged() {
    ::SetWindowTextW(m_window, m_dialog->GetTitle().GetString());
    for (Item const& item : m_items) {
        if (item.list)
            item.list->SetName(m_dialog->GetTitle());
    }
}

// The dialog's window has gone, or the dialog itself. It may be displayed again, with a view of its own.
void DialogView::Leave() {
    Detach();
    m_dialog = nullptr;
    ::DestroyWindow(m_window); // and with it this object
}

bool HandleDialogKey(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return false;
    HWND const frame = message.hwnd ? ::GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    bool const ours = std::any_of(Open().begin(), Open().end(), [frame](DialogView const* view) {
        return frame && view->GetWindow() == frame;
    });
    return ours && ::IsDialogMessageW(frame, &message) != FALSE;
}

} // namespace paramdb::win32
