// What makes a control visible. A control holds all its content itself; a view attaches to it, draws it,
// follows its notifications and hands the user's doings back through the control's public functions.
//
//     class ListView : public CWndView { ... };
//     ListView view;
//     view.Attach(list); // now draw what list holds
//
// A view shows one control at a time; a control may have any number of views, also none. Either may go first:
// a view that dies is detached, and so are the views of a control that dies. A view may attach, detach and be
// destroyed inside any notification. Notifications come after the change, one at a time, on the thread of the
// windows; a view that is drawing anyway may take each of them as "draw anew".
#pragma once

#include <paramdb/platform/core/export.h>

class CWnd;

class PARAMDB_API CWndView {
public:
    CWndView() = default;
    CWndView(CWndView const&) = delete;
    CWndView& operator=(CWndView const&) = delete;
    virtual ~CWndView() { Detach(); }

    // Shows that control from now on, and no longer the one before.
    void Attach(CWnd& wnd);
    void Detach();
    // The control, or null.
    [[nodiscard]] CWnd* GetWnd() const noexcept { return m_wnd; }

    // The control's window has come into being; it has its first content.
    virtual void OnCreated() {}
    // The control's window is gone, and its content with it: close what shows it. It may be created again.
    virtual void OnDestroyed() {}
    // The control itself is dying. It has been detached and is not to be touched.
    virtual void OnControlGone() {}

    // It has been shown or hidden (IsWindowVisible), enabled or disabled (IsWindowEnabled), named (GetTitle).
    virtual void OnVisibilityChanged() {}
    virtual void OnEnabledChanged() {}
    virtual void OnTitleChanged() {}

    // Items have come, gone or moved: read all of them anew.
    virtual void OnContentChanged() {}
    // Items have been added in one run; nothing else is different.
    virtual void OnItemsInserted(int first, int count) {
        static_cast<void>(first);
        static_cast<void>(count);
        OnContentChanged();
    }
    // Text, colours, check box, combo or state of one cell are different; column -1 for the whole row.
    virtual void OnItemChanged(int item, int column) {
        static_cast<void>(item);
        static_cast<void>(column);
    }
    // Columns have come or gone, or their widths have changed.
    virtual void OnColumnsChanged() {}
    // The check mark in a heading may be different.
    virtual void OnHeaderChanged(int column) { static_cast<void>(column); }
    // The selected row of a combo, or the row of a list that has the keyboard.
    virtual void OnSelectionChanged() {}
    // The control has moved its content (GetScrollPos).
    virtual void OnScrollChanged() {}

private:
    friend class CWnd;

    CWnd* m_wnd = nullptr;
};
