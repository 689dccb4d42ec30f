// What an instrument parameter is set to, and where its spectral intervals lie at a speed that can be
// dragged.
//
// Mode, rotor and gear are those of `paramdb explain`: the mode of the key, where it has one, and else what
// fits the data best. Nothing of it looks into the store between Clear and Fill.
#pragma once

#include <paramdb/controls/clavis_combo_box.h>
#include <paramdb/views/qt/combo_view.h>

#include "tools/browser/control_owner.h"
#include "tools/drive_choice.h"

#include <QtWidgets/QWidget>
#include <optional>
#include <string>

class QDoubleSpinBox;
class QLabel;
class QPlainTextEdit;
class QSlider;

namespace paramdb::browser {

class RowView;
class TextModel;

class ParameterPane : public QWidget {
public:
    explicit ParameterPane(QWidget* parent = nullptr);
    ~ParameterPane() override;

    // Empties the pane; parameter, mode and speed stay.
    void Clear();
    void Fill();

    // -1 for none.
    void SetParameter(int parameter);
    [[nodiscard]] int Parameter() const noexcept { return m_parameter; }
    // The mode of the key; -1 for the one that fits best.
    void SetMode(int mode);
    // In 1/min, brought into 0 to 1,000,000.
    void SetSpeed(double speed);
    [[nodiscard]] double Speed() const noexcept { return m_speed; }
    // Of the spectrum, in Hz or orders as that has them; 0 for one that is not known.
    void SetLineDistance(double distance);
    [[nodiscard]] double LineDistance() const;

    [[nodiscard]] qt::ComboView& ParameterBox() noexcept { return *m_parameter_box; }
    [[nodiscard]] QSlider& SpeedSlider() noexcept { return *m_slider; }
    [[nodiscard]] QDoubleSpinBox& RpmBox() noexcept { return *m_rpm; }
    [[nodiscard]] QDoubleSpinBox& HzBox() noexcept { return *m_hz; }
    [[nodiscard]] RowView& Intervals() noexcept { return *m_intervals; }
    [[nodiscard]] QString SettingsText() const;
    [[nodiscard]] QString DriveText() const;

private:
    void OnMessage(UINT message);
    void FillParameters();
    void ShowParameter();
    void ShowIntervals();

    int m_parameter = -1;
    int m_mode = -1;
    double m_speed = 3000;
    bool m_is_filled = false;
    std::optional<std::wstring> m_definition; // of the orders; none for a parameter without
    tools::Drive m_drive;
    ControlOwner m_owner;
    CClavisComboBox m_parameters;
    TextModel* m_model;
    qt::ComboView* m_parameter_box;
    QLabel* m_instrument;
    QPlainTextEdit* m_settings;
    QSlider* m_slider;
    QDoubleSpinBox* m_rpm;
    QDoubleSpinBox* m_hz;
    QDoubleSpinBox* m_line_distance;
    QLabel* m_drive_text;
    RowView* m_intervals;
};

} // namespace paramdb::browser
