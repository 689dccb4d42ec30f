// A combo of which an entry is found by typing any part of its name.
//
// The open list shows everything; typing narrows it to the entries that contain what was typed, whatever its
// case. What is chosen is always an entry: with the return key, or on leaving, the marked one, else the one
// with exactly the typed text, else the only one that contains it; otherwise the text goes back to what was
// chosen before.
#pragma once

#include <paramdb/platform/core/export.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QStringList>
#include <QtWidgets/QComboBox>
#include <functional>

namespace paramdb::qt {

// The entries; far quicker to change than those of a combo's own.
class PARAMDB_VIEWS_API ChoiceModel : public QAbstractListModel {
public:
    void Set(QStringList texts);
    [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;

private:
    QStringList m_texts;
};

class PARAMDB_VIEWS_API ChoiceBox : public QComboBox {
public:
    explicit ChoiceBox(QWidget* parent = nullptr);

    // Offers these entries and shows one, none for -1. Tells nobody.
    void SetChoices(QStringList texts, int selected);
    // The chosen entry, -1 for none.
    [[nodiscard]] int Chosen() const { return currentIndex(); }

    // Told when the user has chosen an entry, also the one that was chosen already.
    void SetOnChosen(std::function<void(int index)> on_chosen) { m_on_chosen = std::move(on_chosen); }

    // For an editor that stands in a cell: the arrow keys open the list, they do not choose, and the return
    // key is its own, also with nothing typed.
    void SetInCell(bool in_cell) { m_in_cell = in_cell; }
    // Begins as if the key had been pressed here, with nothing typed before.
    void BeginTyping(QKeyEvent const& key);
    // Makes what was typed an entry. True if one is chosen now.
    bool Settle();

    // Whether a key types a character.
    [[nodiscard]] static bool Types(QKeyEvent const& key);

    void showPopup() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] int Marked() const;
    [[nodiscard]] int Typed() const;
    void Report(int index);

    ChoiceModel m_choices;
    std::function<void(int)> m_on_chosen;
    bool m_in_cell = false;
};

} // namespace paramdb::qt
