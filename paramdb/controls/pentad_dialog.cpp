#include <paramdb/controls/pentad_dialog.h>

void CPentadDialog::Display(CClavis const& key) {
    if (m_is_shown)
        return;
    m_is_shown = true;
    DisplayDialog();
    m_control.fill(key);
}

void CPentadDialog::OnBnClickedOk() {
    CWndReference const self = this;
    Target const target = m_target; // it may destroy the dialog
    target(m_control.retrieve());
    if (!self.Get())
        return;
    m_is_shown = false;
    EndDialog(IDOK);
}

void CPentadDialog::OnBnClickedCancel() {
    m_is_shown = false;
    EndDialog(IDCANCEL);
}

void CPentadDialog::DoDataExchange(CDataExchange* exchange) {
    CDialog3d::DoDataExchange(exchange);
    DDX_Control(exchange, ControlId, m_control);
}

// Also when its parent has taken it along.
void CPentadDialog::OnDestroy() {
    m_is_shown = false;
    CDialog3d::OnDestroy();
}
