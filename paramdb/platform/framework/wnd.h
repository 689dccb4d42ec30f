// The base of everything with a place on the screen.
//
// A window here is state, not pixels: it is created and destroyed, has a parent, takes messages, and tells
// the views that are attached to it what has changed (wnd_view.h). It works the same with a view and without.
//
//     CXListCtrl list;
//     list.Create(&dialog, 3000); // runs PreSubclassWindow
//     list.DestroyWindow();       // its content is gone; it may be created again
//
// Functions that the system has too are static members, so that the system's headers may stand beside this
// one. For one thread, that of the windows, alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/geometry.h>
#include <paramdb/platform/framework/wnd_view.h>

#include <memory>
#include <vector>

class CWnd;

// A pointer to a window object that becomes null when the object dies.
class PARAMDB_API CWndReference {
public:
    CWndReference() = default;
    CWndReference(CWnd* wnd);
    [[nodiscard]] CWnd* Get() const noexcept {
        auto const anchor = m_anchor.lock();
        return anchor ? *anchor : nullptr;
    }

private:
    std::weak_ptr<CWnd*> m_anchor;
};

class PARAMDB_API CWnd {
public:
    CWnd();
    CWnd(CWnd const&) = delete;
    CWnd& operator=(CWnd const&) = delete;
    virtual ~CWnd(); // without telling anybody but the views

    // The handle of the window, null while there is none; never the same twice.
    [[nodiscard]] HWND GetSafeHwnd() const noexcept { return m_hWnd; }
    // Whether a handle belongs to a window that exists.
    [[nodiscard]] static bool IsWindow(HWND window) noexcept;
    // The object of a handle, or null.
    [[nodiscard]] static CWnd* FromHandlePermanent(HWND window) noexcept;

    // Makes the window, within a parent that has one or without, and prepares it with PreSubclassWindow.
    // False if there is one already or the parent has none. `id` is the number by which a dialog knows its
    // controls.
    bool Create(CWnd* parent = nullptr, int id = 0);
    // Destroys the window, those within it first. False if there is none.
    virtual bool DestroyWindow();

    // The window that this one stands in; null without one, and once that has died.
    [[nodiscard]] CWnd* GetParent() const noexcept { return m_parent.Get(); }
    // The window that gets to hear of changes: the one that was set, while it lives, else the parent.
    [[nodiscard]] CWnd* GetOwner() const noexcept;
    void SetOwner(CWnd* owner) { m_owner = owner; }
    [[nodiscard]] int GetDlgCtrlID() const noexcept { return m_id; }
    // The window with that id directly within this one, or null.
    [[nodiscard]] CWnd* GetDlgItem(int id) const noexcept;

    // Handles a message at once. Works without a window too.
    LRESULT SendMessageW(UINT message, WPARAM first = 0, LPARAM second = 0) {
        return OnMessage(message, first, second);
    }
    // Has a message handled later, see CMessageQueue. False without a window.
    bool PostMessageW(UINT message, WPARAM first = 0, LPARAM second = 0);
    // See message_queue.h.
    static UINT RegisterWindowMessageW(wchar_t const* name);

    // The system's colours, see sys_color.h.
    [[nodiscard]] static COLORREF GetSysColor(int index) noexcept;

    // A window is shown as long as nobody hides it and takes input as long as nobody disables it.
    void ShowWindow(bool show);
    [[nodiscard]] bool IsWindowVisible() const noexcept { return m_visible; }
    void EnableWindow(bool enable);
    [[nodiscard]] bool IsWindowEnabled() const noexcept { return m_enabled; }

    // What a frame shows as its name.
    [[nodiscard]] CString const& GetTitle() const noexcept { return m_title; }
    void SetTitle(CString const& title);

    // Gives the keyboard to this window: the one that had it gets OnKillFocus, this one OnSetFocus, each with
    // the other. Nothing happens if it has it. A view calls it when the user enters, KillFocus when he leaves
    // for something that is no window here.
    void SetFocus();
    void KillFocus();
    [[nodiscard]] bool HasFocus() const noexcept;
    // The window with the keyboard, or null.
    [[nodiscard]] static CWnd* GetFocus() noexcept;

protected:
    // Prepares a window that has just been made. The base does nothing; call it last.
    virtual void PreSubclassWindow() {}
    // Lets go of what belonged to the window; it is gone already. Not called by the destructor.
    virtual void OnDestroy() {}
    // Handles a message and answers it; call the base for what is not known. The base knows the focus
    // messages.
    virtual LRESULT OnMessage(UINT message, WPARAM first, LPARAM second);
    // The keyboard has come from or goes to another window, null for none here.
    virtual void OnSetFocus(CWnd* old) { static_cast<void>(old); }
    virtual void OnKillFocus(CWnd* next) { static_cast<void>(next); }

    // Calls a function for each view, whatever views do meanwhile: Notify([](CWndView& view) { ... }).
    template <class Tell>
    void Notify(Tell const& tell);

private:
    friend class CWndReference;
    friend class CWndView;

    void AddView(CWndView& view);
    void RemoveView(CWndView& view) noexcept;
    void ReleaseWindow() noexcept;

    HWND m_hWnd = nullptr;
    int m_id = 0;
    bool m_visible = true;
    bool m_enabled = true;
    CString m_title;
    CWndReference m_parent;
    CWndReference m_owner;
    std::vector<CWnd*> m_children;  // windows within this one, in the order of their making
    std::vector<CWndView*> m_views; // null for one that left during a notification
    int m_notifying = 0;
    std::shared_ptr<CWnd*> m_anchor; // lives as long as the object, for references from elsewhere
};

template <class Tell>
void CWnd::Notify(Tell const& tell) {
    if (m_views.empty())
        return;
    // Puts the views in order at the end, unless one of them has destroyed this object.
    struct Guard {
        CWndReference self;
        ~Guard() {
            CWnd* const wnd = self.Get();
            if (wnd && --wnd->m_notifying == 0)
                std::erase(wnd->m_views, nullptr);
        }
    };
    ++m_notifying;
    Guard const guard{this};
    for (std::size_t i = 0; guard.self.Get() && i < m_views.size(); ++i) {
        if (m_views[i])
            tell(*m_views[i]);
    }
}
