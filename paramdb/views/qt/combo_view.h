// A window for a combo control.
//
//     CClavisComboBox modes;
//     paramdb::qt::ComboView view;
//     view.SetCombo(&modes);
//     layout->addWidget(&view);
//
// It shows the rows and the selected one, and has the control choose what the user picks (CComboBox::Choose).
// Typing any part of a name narrows the list, see ChoiceBox. The control may be filled anew meanwhile, and
// may die first.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/views/qt/choice_box.h>
#include <paramdb/views/qt/soon.h>

namespace paramdb::qt {

class PARAMDB_VIEWS_API ComboView : public ChoiceBox, private CWndView {
public:
    explicit ComboView(QWidget* parent = nullptr);
    ~ComboView() override;

    // Shows that combo, and no longer the one before; none for null.
    void SetCombo(CComboBox* combo);
    [[nodiscard]] CComboBox* GetCombo() const noexcept { return m_combo; }

    // Brings the view up to date at once with what the control has told; it does so by itself with the next
    // event.
    void Update();

    void showPopup() override;

private:
    void OnCreated() override { Later(); }
    void OnDestroyed() override { Later(); }
    void OnControlGone() override;
    void OnVisibilityChanged() override { setVisible(m_combo->IsWindowVisible()); }
    void OnEnabledChanged() override { setEnabled(m_combo->IsWindowEnabled()); }
    void OnTitleChanged() override;
    void OnContentChanged() override { Later(); }
    void OnItemChanged(int item, int column) override;
    void OnSelectionChanged() override;

    void Later();
    [[nodiscard]] bool IsStale() const noexcept { return m_update.IsAsked(); }
    void Pick(int index);

    CComboBox* m_combo = nullptr;
    Soon m_update{[this] { Update(); }};
};

} // namespace paramdb::qt
