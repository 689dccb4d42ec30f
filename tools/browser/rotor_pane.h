// The rotors of a physical mode with their ratios, speed sources and order sources.
#pragma once

#include <QtWidgets/QWidget>

class QComboBox;

namespace paramdb::browser {

class RowView;
class TextModel;

class RotorPane : public QWidget {
public:
    explicit RotorPane(QWidget* parent = nullptr);
    ~RotorPane() override;

    // Empties the pane; the physical mode is chosen again by the next Fill.
    void Clear();
    void Fill();
    // Goes to the physical mode of a mode; nothing happens if that has no rotors. Before the first Fill: with
    // it.
    void ShowMode(int mode);

    [[nodiscard]] QComboBox& PhysicalModes() noexcept { return *m_modes; }
    [[nodiscard]] RowView& View() noexcept { return *m_view; }

private:
    void ShowRotors();

    bool m_is_filled = false;
    int m_physical_mode = -1;
    int m_first_mode = -1; // to begin with
    TextModel* m_model;
    QComboBox* m_modes;
    RowView* m_view;
};

} // namespace paramdb::browser
