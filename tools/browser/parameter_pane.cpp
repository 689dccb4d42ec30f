#include "tools/browser/parameter_pane.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/browser/row_view.h"
#include "tools/browser/text_model.h"
#include "tools/browser/texts.h"
#include "tools/interval_report.h"
#include "tools/short_number.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace paramdb::browser {
namespace {

constexpr double HighestSpeed = 1'000'000; // 1/min
constexpr int SliderStep = 10;             // 1/min
constexpr int SliderEnd = 12'000;          // 1/min
constexpr double SecondsInMinute = 60;

QString Text(std::string const& text) {
    return QString::fromStdString(text);
}

QDoubleSpinBox* MakeSpeedBox(QString const& unit, QString const& accessible_name, double highest,
                             int decimals) {
    auto* const box = new QDoubleSpinBox;
    box->setRange(0, highest);
    box->setDecimals(decimals);
    box->setSuffix(u' ' + unit);
    box->setAccessibleName(accessible_name);
    return box;
}

QStringList BandCells(tools::IntervalReport const& report, std::size_t place) {
    tools::IntervalBand const& band = report.bands[place];
    auto const& [lower, upper] = report.meaning.intervals[place];
    bool const is_there = band.fault.empty();
    auto const number = [&](bool has, float value) {
        return has ? Text(tools::ShortNumber(value)) : QString();
    };
    auto const [lower_hz, upper_hz] = band.hz.value_or(std::pair(band.lower, band.upper));
    bool const has_hz = is_there && (band.hz || band.unit == tools::BandUnit::Hz);
    return {number(has_hz, lower_hz),
            number(has_hz, upper_hz),
            number(is_there, band.lower),
            number(is_there, band.upper),
            Text(tools::UnitWord(band.unit)),
            is_there && band.lines ? QStringLiteral("%1 to %2").arg(band.lines->first).arg(band.lines->second)
                                   : QString(),
            Text(tools::SumText(report.meaning.positions[lower])),
            Text(tools::SumText(report.meaning.positions[upper])),
            Text(band.fault)};
}

QString PartText(tools::DrivePart const& part) {
    if (part.id.id == -1)
        return QStringLiteral("none");
    QString text = Text(tools::Shown(part.id));
    if (!part.reason.empty())
        text += QStringLiteral(" (%1)").arg(Text(part.reason));
    return text;
}

} // namespace

ParameterPane::ParameterPane(QWidget* parent)
    : QWidget(parent), m_owner([this](UINT message) { OnMessage(message); }),
      m_model(new TextModel({{QStringLiteral("Lower Hz"), true},
                             {QStringLiteral("Upper Hz"), true},
                             {QStringLiteral("Lower"), true},
                             {QStringLiteral("Upper"), true},
                             {QStringLiteral("Unit")},
                             {QStringLiteral("Lines"), true},
                             {QStringLiteral("From")},
                             {QStringLiteral("To")},
                             {QStringLiteral("Fault")}})),
      m_parameter_box(new qt::ComboView), m_instrument(new QLabel), m_settings(new QPlainTextEdit),
      m_slider(new QSlider(Qt::Horizontal)),
      m_rpm(MakeSpeedBox(QStringLiteral("1/min"), QStringLiteral("Speed in 1/min"), HighestSpeed, 1)),
      m_hz(MakeSpeedBox(QStringLiteral("Hz"), QStringLiteral("Speed in Hz"), HighestSpeed / SecondsInMinute,
                        3)),
      m_line_distance(new QDoubleSpinBox), m_drive_text(new QLabel),
      m_intervals(new RowView(QStringLiteral("Spectral intervals"))) {
    m_model->setParent(this);
    m_intervals->setModel(m_model);
    m_parameter_box->SetCombo(&m_parameters);
    m_parameter_box->setAccessibleName(QStringLiteral("Instrument parameter"));
    m_settings->setReadOnly(true);
    m_settings->setTabChangesFocus(true);
    m_settings->setAccessibleName(QStringLiteral("Settings of the parameter"));
    m_slider->setRange(0, SliderEnd);
    m_slider->setSingleStep(SliderStep);
    m_slider->setPageStep(50 * SliderStep);
    m_slider->setAccessibleName(QStringLiteral("Speed"));
    m_rpm->setSingleStep(SliderStep);
    m_line_distance->setRange(0, 10'000);
    m_line_distance->setDecimals(6);
    m_line_distance->setSingleStep(0.5);
    m_line_distance->setSpecialValueText(QStringLiteral("not known"));
    m_line_distance->setAccessibleName(QStringLiteral("Line distance"));
    for (QLabel* const label : {m_instrument, m_drive_text}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }

    auto* const speed = new QHBoxLayout;
    speed->addWidget(m_slider, 1);
    speed->addWidget(m_rpm);
    speed->addWidget(m_hz);
    auto* const form = new QFormLayout;
    form->addRow(QStringLiteral("&Parameter"), m_parameter_box);
    form->addRow(QStringLiteral("Instrument"), m_instrument);
    auto* const speed_form = new QFormLayout;
    auto* const speed_label = new QLabel(QStringLiteral("&Speed"));
    speed_label->setBuddy(m_slider);
    speed_form->addRow(speed_label, speed);
    speed_form->addRow(QStringLiteral("&Line distance"), m_line_distance);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(form);
    layout->addWidget(m_settings, 1);
    layout->addWidget(m_drive_text);
    layout->addLayout(speed_form);
    layout->addWidget(m_intervals, 1);
    setFocusProxy(m_parameter_box);

    SetSpeed(m_speed);
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) { SetSpeed(value); });
    connect(m_rpm, &QDoubleSpinBox::valueChanged, this, [this](double value) { SetSpeed(value); });
    connect(m_hz, &QDoubleSpinBox::valueChanged, this,
            [this](double value) { SetSpeed(value * SecondsInMinute); });
    connect(m_line_distance, &QDoubleSpinBox::valueChanged, this, [this] { ShowIntervals(); });
}

ParameterPane::~ParameterPane() {
    m_parameter_box->SetCombo(nullptr);
}

void ParameterPane::Clear() {
    m_is_filled = false;
    m_parameters.DestroyWindow();
    m_definition.reset();
    m_drive = {};
    m_instrument->clear();
    m_settings->clear();
    m_drive_text->clear();
    m_model->SetRows({});
}

void ParameterPane::Fill() {
    m_parameters.Create(&m_owner);
    m_is_filled = true;
    m_parameters.Fill(Clavis::qInstrParam, m_parameter, -1);
    ShowParameter();
}

void ParameterPane::SetParameter(int parameter) {
    m_parameter = parameter;
    if (!m_is_filled || m_parameters.Retrieve() == parameter) {
        ShowParameter();
        return;
    }
    m_parameters.Fill(Clavis::qInstrParam, parameter, -1);
    ShowParameter();
}

void ParameterPane::SetMode(int mode) {
    if (m_mode == mode)
        return;
    m_mode = mode;
    ShowParameter();
}

void ParameterPane::SetSpeed(double speed) {
    m_speed = speed > 0 ? std::min(speed, HighestSpeed) : 0; // also for what is no number
    QSignalBlocker const quiet[] = {QSignalBlocker(m_slider), QSignalBlocker(m_rpm), QSignalBlocker(m_hz)};
    m_slider->setValue(static_cast<int>(std::lround(std::min(m_speed, double{SliderEnd}))));
    if (!m_rpm->hasFocus() || std::abs(m_rpm->value() - m_speed) > 0.05)
        m_rpm->setValue(m_speed);
    if (!m_hz->hasFocus() || std::abs(m_hz->value() - m_speed / SecondsInMinute) > 0.0005)
        m_hz->setValue(m_speed / SecondsInMinute);
    ShowIntervals();
}

void ParameterPane::SetLineDistance(double distance) {
    m_line_distance->setValue(distance);
}

double ParameterPane::LineDistance() const {
    return m_line_distance->value();
}

QString ParameterPane::SettingsText() const {
    return m_settings->toPlainText();
}

QString ParameterPane::DriveText() const {
    return m_drive_text->text();
}

void ParameterPane::OnMessage(UINT message) {
    if (message != WM_COMMAND || !m_is_filled)
        return;
    m_parameter = m_parameters.Retrieve();
    ShowParameter();
}

void ParameterPane::ShowParameter() {
    if (!m_is_filled)
        return;
    m_definition.reset();
    m_drive = {};
    m_instrument->clear();
    m_settings->clear();
    if (m_parameter != -1) {
        CQtParamInstance parameters;
        int const instrument = parameters.InstrumentParameterToInstrument(m_parameter);
        m_instrument->setText(Text(tools::Shown(tools::Named(parameters.Instrument(), instrument))));
        try {
            CString const settings = parameters.IpDisplayText(m_parameter, L"", L"\n");
            m_settings->setPlainText(QString::fromStdString(ToUtf8(settings.GetString())).trimmed());
        } catch (std::out_of_range const& fault) { // a host would meet it, too
            m_settings->setPlainText(QStringLiteral("cannot be shown: ") + QString(fault.what()));
        }
        wchar_t const* const definition =
            parameters.SpecIntervalDefinition(static_cast<unsigned int>(m_parameter));
        if (definition)
            m_definition = definition;
        tools::DriveOptions options;
        if (m_mode != -1)
            options.mode = m_mode;
        m_drive = tools::ChooseDrive(parameters, options,
                                     {.parameter = m_parameter,
                                      .gear = tools::BaseOrderReference(parameters, m_parameter),
                                      .trigger = parameters.TriggerId(m_parameter)});
    }
    ShowIntervals();
    m_intervals->FitColumns();
}

void ParameterPane::ShowIntervals() {
    if (!m_is_filled)
        return;
    if (!m_definition) {
        m_drive_text->setText(m_parameter == -1 ? QStringLiteral("No parameter is chosen.")
                                                : QStringLiteral("No spectral intervals."));
        m_model->SetRows({});
        return;
    }
    tools::DriveOptions options;
    options.speed = static_cast<float>(m_speed / SecondsInMinute);
    if (LineDistance() > 0)
        options.line_distance = static_cast<float>(LineDistance());
    auto const report =
        tools::MakeIntervalReport(CQtParamInstance(), m_parameter, *m_definition, m_drive, options, 0);
    QStringList lines{
        QStringLiteral("Orders: ") + Shown(*m_definition), QStringLiteral("Mode: ") + PartText(m_drive.mode),
        QStringLiteral("Rotor: ") + PartText(m_drive.rotor),
        QStringLiteral("Gear: ") + PartText(m_drive.gear),
        QStringLiteral("Base order: %1, ratio: %2")
            .arg(Text(tools::ShortNumber(report.base_order)), Text(tools::RatioText(report.ratio)))};
    std::vector<QStringList> rows;
    if (report.meaning.verdict == tools::OrderVerdict::Good)
        for (std::size_t place = 0; place < report.bands.size(); ++place)
            rows.push_back(BandCells(report, place));
    else
        lines += QStringLiteral("No intervals: the definition is ") +
                 Text(std::string(tools::VerdictWord(report.meaning.verdict)));
    m_drive_text->setText(lines.join(u'\n'));
    m_model->SetRows(std::move(rows));
}

} // namespace paramdb::browser
