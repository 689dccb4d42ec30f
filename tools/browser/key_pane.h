// The editor of a key, with the texts of the key that it holds.
//
// Nothing of it looks into the store between Clear and Fill.
#pragma once

#include <paramdb/controls/pentad_ctrl.h>
#include <paramdb/views/qt/list_view.h>

#include "tools/browser/control_owner.h"

#include <QtWidgets/QWidget>
#include <functional>

class QLabel;
class QLineEdit;

namespace paramdb::browser {

class KeyPane : public QWidget {
public:
    // The callback gets every key that the user makes.
    explicit KeyPane(std::function<void(CClavis const& key)> on_key, QWidget* parent = nullptr);
    ~KeyPane() override;

    // Empties the editor; the key stays.
    void Clear();
    // Shows the key with the names of the store.
    void Fill();

    void SetKey(CClavis const& key);
    [[nodiscard]] CClavis const& Key() const noexcept { return m_key; }

    [[nodiscard]] CPentadCtrl& Editor() noexcept { return m_editor; }
    [[nodiscard]] qt::ListView& View() noexcept { return *m_view; }
    // "Warm up / Spectrum / Mix / ..." and "4/1002/...", both to be copied.
    [[nodiscard]] QString NiceText() const;
    [[nodiscard]] QString PlainText() const;

private:
    void OnMessage(UINT message);
    void ShowTexts();

    std::function<void(CClavis const&)> m_on_key;
    CClavis m_key;
    bool m_is_filled = false;
    ControlOwner m_owner;
    CPentadCtrl m_editor;
    qt::ListView* m_view;
    QLabel* m_nice;
    QLineEdit* m_plain;
};

} // namespace paramdb::browser
