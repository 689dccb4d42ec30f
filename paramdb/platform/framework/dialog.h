// A window made from a template, with controls that are members of its class.
//
//     class CKeyDialog : public CDialog {
//         void DoDataExchange(CDataExchange* exchange) override {
//             CDialog::DoDataExchange(exchange);
//             DDX_Control(exchange, 3000, m_list);
//         }
//         CXListCtrl m_list;
//     };
//
// Dialogs are not modal: Create shows one, and a button, or EndDialog, ends it.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/dialog_template.h>
#include <paramdb/platform/framework/wnd.h>

class CDialog;

// On its way through DoDataExchange.
struct CDataExchange {
    CDialog* m_pDlgWnd = nullptr;
    bool m_bSaveAndValidate = false; // out of the controls, not into them
};

class PARAMDB_API CDialog : public CWnd {
public:
    // A dialog on that template, to stand before that window; nothing is shown yet.
    explicit CDialog(unsigned int resource, CWnd* parent = nullptr);

    [[nodiscard]] unsigned int GetResource() const noexcept { return m_resource; }
    // The template in the language that was in force when the dialog was made.
    [[nodiscard]] CDialogTemplate const& GetTemplate() const noexcept { return m_template; }

    // Makes the window with its title and controls and shows it. False if there is one already. The parent
    // counts if it has a window.
    bool Create();

    // Closes the dialog and keeps the result, which is an id of a button as a rule. Nothing happens if it is
    // not open.
    void EndDialog(int result);
    [[nodiscard]] int GetResult() const noexcept { return m_result; }

    // For views: a button has been pressed, the return key (IDOK), the escape key or the frame's own button
    // (IDCANCEL).
    void Command(int id) { OnCommand(id); }

protected:
    // Ties members to the controls of the template with DDX_Control.
    virtual void DoDataExchange(CDataExchange* exchange) { static_cast<void>(exchange); }
    // Goes to OnOK and OnCancel for their ids; call the base for what is not known.
    virtual void OnCommand(int id);
    virtual void OnOK() { EndDialog(IDOK); }
    virtual void OnCancel() { EndDialog(IDCANCEL); }
    void PreSubclassWindow() override; // ties the members
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

private:
    friend PARAMDB_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

    unsigned int m_resource;
    CDialogTemplate m_template;
    CWndReference m_parent_to_be;
    int m_result = 0;
};

// Makes the control's window within the dialog, under the id of its template, if it has none yet.
PARAMDB_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
