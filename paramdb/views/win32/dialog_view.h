// A window for a dialog, made from its template with the system's own fonts and dialog units.
//
//     CPentadDialog dialog(&frame);
//     dialog.Display(key);                                 // a dialog on the screen has its window
//     paramdb::win32::DialogView::Show(dialog, host);      // or have Views make it, see views.h
//
// When the frame is made larger the lists grow and the buttons keep to their corner. Buttons, the return and
// the escape key and the frame's own button go to the dialog, which decides; the view goes away with the
// dialog's window or its own and deletes itself. A dialog whose window is taken away by somebody else is
// closed, with no word to it.
//
// The keys of dialogs, Tab and the like, need the message loop's help: HandleDialogKey for each message, or
// Views, which sees to it in every loop of the thread. For the thread of the windows alone.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/dialog.h>
#include <paramdb/views/win32/life.h>
#include <paramdb/views/win32/list_view.h>

#include <memory>
#include <vector>

namespace paramdb::win32 {

class PARAMDB_VIEWS_API DialogView : private CWndView {
public:
    // Shows a dialog in the window that it has or in a new one before the owner, on top. Null if the system
    // makes none.
    static DialogView* Show(CDialog& dialog, HWND owner);
    // The view of a dialog, or null.
    [[nodiscard]] static DialogView* Of(CDialog const& dialog);

    DialogView(DialogView const&) = delete;
    DialogView& operator=(DialogView const&) = delete;

    [[nodiscard]] HWND GetWindow() const noexcept { return m_window; }
    // The dialog; null once it has gone.
    [[nodiscard]] CDialog* GetDialog() const noexcept { return m_dialog; }
    // The list of an id of the template; null on a miss.
    [[nodiscard]] ListView* List(int id) const;

private:
    struct Item {
        CDialogItem description;
        HWND window;
        RECT place; // at the first size
        std::unique_ptr<ListView> list;
    };

    explicit DialogView(CDialog& dialog);
    ~DialogView() override;

    void OnDestroyed() override { Leave(); }
    void OnControlGone() override { Leave(); }
    void OnVisibilityChanged() override;
    void OnEnabledChanged() override;
    void OnTitleChanged() override;

    static INT_PTR CALLBACK Receive(HWND window, UINT message, WPARAM first, LPARAM second);
    INT_PTR OnMessage(UINT message, WPARAM first, LPARAM second);
    void Build();
    void MakeRoomForWords();
    void Center() const;
    void Arrange();
    void Rescale(int dpi);
    void Command(int id);
    void Leave();

    CDialog* m_dialog;
    HWND m_window = nullptr;
    std::vector<Item> m_items;
    int m_dpi = 0;
    SIZE m_first_size{};  // of the inner part
    SIZE m_least_frame{}; // of the window, with its frame
};

// Gives a message to the dialog that it belongs to, if it is a key of one. True if that was all: the loop is
// not to dispatch it any more.
PARAMDB_VIEWS_API bool HandleDialogKey(MSG& message);

} // namespace paramdb::win32
