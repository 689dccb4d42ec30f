#include <paramdb/platform/framework/dialog.h>

CDialog::CDialog(unsigned int resource, CWnd* parent) : m_resource(resource), m_parent_to_be(parent) {}

bool CDialog::Create() {
    if (GetSafeHwnd())
        return false;
    m_template = paramdb::FindDialogTemplate(m_resource);
    SetTitle(m_template.title);
    CWnd* const parent = m_parent_to_be.Get();
    return CWnd::Create(parent && parent->GetSafeHwnd() ? parent : nullptr);
}

void CDialog::PreSubclassWindow() {
    CDataExchange exchange{this, false};
    DoDataExchange(&exchange);
    CWnd::PreSubclassWindow();
}

void CDialog::EndDialog(int result) {
    if (!GetSafeHwnd())
        return;
    m_result = result;
    DestroyWindow();
}

void CDialog::OnCommand(int id) {
    if (id == IDOK)
        OnOK();
    else if (id == IDCANCEL)
        OnCancel();
}

LRESULT CDialog::OnMessage(UINT message, WPARAM first, LPARAM second) {
    constexpr WPARAM low_half = 0xFFFF;
    switch (message) {
    case WM_COMMAND:
        if (first >> 16 == 0) // a button, the return or the escape key; other notifications are higher
            OnCommand(static_cast<int>(first & low_half));
        return 0;
    case WM_CLOSE:
        OnCommand(IDCANCEL);
        return 0;
    default:
        return CWnd::OnMessage(message, first, second);
    }
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (!control.GetSafeHwnd())
        control.Create(exchange->m_pDlgWnd, id);
}
