#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/platform/framework/wnd.h>

#include <bit>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace {

using Windows = std::unordered_map<std::uintptr_t, CWnd*>;

// The windows that exist, by the number in their handles. Never destroyed: a window may be a static object.
Windows& ExistingWindows() {
    static auto& windows = *new Windows;
    return windows;
}

std::uintptr_t NumberOf(HWND window) noexcept {
    return reinterpret_cast<std::uintptr_t>(window);
}

HWND NewHandle() noexcept {
    static std::uintptr_t last = 0;
    return std::bit_cast<HWND>(++last);
}

CWndReference& FocusReference() {
    static auto& focus = *new CWndReference;
    return focus;
}

} // namespace

CWndReference::CWndReference(CWnd* wnd) {
    if (wnd)
        m_anchor = wnd->m_anchor;
}

void CWndView::Attach(CWnd& wnd) {
    if (m_wnd == &wnd)
        return;
    Detach();
    wnd.AddView(*this);
    m_wnd = &wnd;
}

void CWndView::Detach() {
    if (CWnd* const wnd = std::exchange(m_wnd, nullptr))
        wnd->RemoveView(*this);
}

CWnd::CWnd() : m_anchor(std::make_shared<CWnd*>(this)) {}

CWnd::~CWnd() {
    m_anchor.reset(); // from here on nobody reaches this object
    while (!m_children.empty()) {
        CWnd* const child = m_children.back();
        child->DestroyWindow();
        std::erase(m_children, child);
    }
    ReleaseWindow();
    while (!m_views.empty()) {
        CWndView* const view = m_views.back();
        m_views.pop_back();
        if (!view)
            continue;
        view->m_wnd = nullptr;
        view->OnControlGone();
    }
}

bool CWnd::IsWindow(HWND window) noexcept {
    return FromHandlePermanent(window) != nullptr;
}

CWnd* CWnd::FromHandlePermanent(HWND window) noexcept {
    auto const found = ExistingWindows().find(NumberOf(window));
    return found != ExistingWindows().end() ? found->second : nullptr;
}

bool CWnd::Create(CWnd* parent, int id) {
    if (m_hWnd || (parent && !parent->m_hWnd))
        return false;
    HWND const window = NewHandle();
    ExistingWindows().emplace(NumberOf(window), this);
    m_hWnd = window;
    m_id = id;
    m_parent = parent;
    if (parent)
        parent->m_children.push_back(this);
    PreSubclassWindow();
    Notify([](CWndView& view) { view.OnCreated(); });
    return true;
}

bool CWnd::DestroyWindow() {
    if (!m_hWnd)
        return false;
    while (!m_children.empty()) {
        CWnd* const child = m_children.back();
        child->DestroyWindow();
        std::erase(m_children, child);
    }
    ReleaseWindow();
    CWndReference const self = this;
    OnDestroy();
    if (self.Get())
        Notify([](CWndView& view) { view.OnDestroyed(); });
    return true;
}

// Takes the window out of every place that knows it.
void CWnd::ReleaseWindow() noexcept {
    if (!m_hWnd)
        return;
    if (GetFocus() == this)
        FocusReference() = {};
    ExistingWindows().erase(NumberOf(m_hWnd));
    m_hWnd = nullptr;
    if (CWnd* const parent = m_parent.Get())
        std::erase(parent->m_children, this);
    m_parent = {};
}

CWnd* CWnd::GetOwner() const noexcept {
    CWnd* const owner = m_owner.Get();
    return owner ? owner : GetParent();
}

CWnd* CWnd::GetDlgItem(int id) const noexcept {
    for (CWnd* const child : m_children) {
        if (child->m_id == id)
            return child;
    }
    return nullptr;
}

bool CWnd::PostMessageW(UINT message, WPARAM first, LPARAM second) {
    return CMessageQueue::Post(m_hWnd, message, first, second);
}

UINT CWnd::RegisterWindowMessageW(wchar_t const* name) {
    return paramdb::RegisteredMessage(name);
}

COLORREF CWnd::GetSysColor(int index) noexcept {
    return paramdb::SystemColor(index);
}

void CWnd::ShowWindow(bool show) {
    if (m_visible == show)
        return;
    m_visible = show;
    Notify([](CWndView& view) { view.OnVisibilityChanged(); });
}

void CWnd::EnableWindow(bool enable) {
    if (m_enabled == enable)
        return;
    m_enabled = enable;
    Notify([](CWndView& view) { view.OnEnabledChanged(); });
}

void CWnd::SetTitle(CString const& title) {
    m_title = title;
    Notify([](CWndView& view) { view.OnTitleChanged(); });
}

void CWnd::SetFocus() {
    CWndReference const self = this;
    CWndReference const old = GetFocus();
    if (old.Get() == this)
        return;
    FocusReference() = self;
    if (CWnd* const before = old.Get())
        before->SendMessageW(WM_KILLFOCUS, reinterpret_cast<WPARAM>(m_hWnd));
    if (self.Get() && GetFocus() == this) // the other may have taken it elsewhere
        SendMessageW(WM_SETFOCUS, old.Get() ? reinterpret_cast<WPARAM>(old.Get()->m_hWnd) : 0);
}

void CWnd::KillFocus() {
    if (!HasFocus())
        return;
    FocusReference() = {};
    SendMessageW(WM_KILLFOCUS);
}

bool CWnd::HasFocus() const noexcept {
    return GetFocus() == this;
}

CWnd* CWnd::GetFocus() noexcept {
    return FocusReference().Get();
}

LRESULT CWnd::OnMessage(UINT message, WPARAM first, LPARAM) {
    switch (message) {
    case WM_SETFOCUS:
        OnSetFocus(FromHandlePermanent(std::bit_cast<HWND>(first)));
        break;
    case WM_KILLFOCUS:
        OnKillFocus(FromHandlePermanent(std::bit_cast<HWND>(first)));
        break;
    default:
        break;
    }
    return 0;
}

void CWnd::AddView(CWndView& view) {
    m_views.push_back(&view);
}

void CWnd::RemoveView(CWndView& view) noexcept {
    for (CWndView*& known : m_views) {
        if (known == &view)
            known = nullptr;
    }
    if (m_notifying == 0)
        std::erase(m_views, nullptr);
}
