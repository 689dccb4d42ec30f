#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/views/qt/combo_view.h>
#include <paramdb/views/qt/event_loop.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/theme.h>

#include <QtGui/QScreen>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <utility>

namespace paramdb::qt {

ComboView::ComboView(QWidget* parent) : ChoiceBox(parent) {
    InstallTheme();
    SetOnChosen([this](int index) { Pick(index); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget const* now) {
        if (!m_combo)
            return;
        while (now && now != this)
            now = now->parentWidget();
        CallControl([this, now] {
            if (now)
                m_combo->SetFocus();
            else
                m_combo->KillFocus();
        });
    });
}

ComboView::~ComboView() {
    disconnect(qApp, nullptr, this, nullptr);
    SetOnChosen({});
    if (m_combo)
        m_combo->KillFocus();
}

void ComboView::SetCombo(CComboBox* combo) {
    if (m_combo == combo)
        return;
    Detach();
    m_combo = combo;
    if (combo) {
        Attach(*combo);
        setEnabled(combo->IsWindowEnabled());
        if (!combo->IsWindowVisible())
            hide();
        OnTitleChanged();
        if (hasFocus())
            combo->SetFocus();
    }
    Update();
}

void ComboView::OnControlGone() {
    m_combo = nullptr;
    Update();
}

// A name that the host has given the view itself stays.
void ComboView::OnTitleChanged() {
    if (!m_combo->GetTitle().IsEmpty())
        setAccessibleName(ToQString(m_combo->GetTitle()));
}

void ComboView::OnItemChanged(int, int) {
    Later();
}

void ComboView::OnSelectionChanged() {
    Later();
}

// Many changes of the control make one of the view.
void ComboView::Later() {
    m_update.Ask();
}

void ComboView::Update() {
    m_update.Forget();
    QStringList texts;
    CString text;
    for (int row = 0; m_combo && row < m_combo->GetCount(); ++row) {
        m_combo->GetLBText(row, text);
        texts.push_back(ToQString(text));
    }
    SetChoices(std::move(texts), m_combo ? m_combo->GetCurSel() : -1);
}

void ComboView::showPopup() {
    if (IsStale())
        Update();
    if (auto const* const wide = dynamic_cast<CComboBoxX const*>(m_combo))
        view()->setMinimumWidth(std::min(wide->GetDroppedWidth(), screen()->availableGeometry().width() / 2));
    ChoiceBox::showPopup();
}

void ComboView::Pick(int index) {
    if (IsStale()) { // it was picked from what is no longer there
        Update();
        return;
    }
    if (m_combo)
        CallControl([this, index] { m_combo->Choose(index); });
}

} // namespace paramdb::qt
