#include "tools/browser/rotor_pane.h"

#include <paramdb/query/param_instance.h>

#include "tools/browser/row_view.h"
#include "tools/browser/text_model.h"
#include "tools/browser/texts.h"
#include "tools/rotor_listing.h"
#include "tools/short_number.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QVBoxLayout>

namespace paramdb::browser {
namespace {

QString Text(tools::NamedId const& id) {
    return QString::fromStdString(tools::Shown(id));
}

QString Fraction(numeric::CRatio const& ratio) {
    return ratio.is_exact() ? QStringLiteral("%1/%2").arg(ratio.numerator()).arg(ratio.denominator())
                            : QString();
}

QString Kind(tools::SpeedSourceKind kind) {
    switch (kind) {
    case tools::SpeedSourceKind::Source:
        return QStringLiteral("source");
    case tools::SpeedSourceKind::Reference:
        return QStringLiteral("reference");
    case tools::SpeedSourceKind::None:
        break;
    }
    return {};
}

// "71 Mesh 4 (37), 90 Bearing (5.4)": order sources with their base orders.
QString Sources(std::vector<tools::OrderSourceEntry> const& sources) {
    QStringList texts;
    for (tools::OrderSourceEntry const& entry : sources) {
        QString text = Text(entry.source);
        if (entry.base_order)
            text +=
                QStringLiteral(" (%1)").arg(QString::fromStdString(tools::ShortNumber(*entry.base_order)));
        texts += text;
    }
    return texts.join(QStringLiteral(", "));
}

} // namespace

RotorPane::RotorPane(QWidget* parent)
    : QWidget(parent), m_model(new TextModel({{QStringLiteral("Rotor"), true},
                                              {QStringLiteral("Name")},
                                              {QStringLiteral("Fraction"), true},
                                              {QStringLiteral("Ratio"), true},
                                              {QStringLiteral("Speed source")},
                                              {QStringLiteral("Kind")},
                                              {QStringLiteral("Signal")},
                                              {QStringLiteral("Order sources (base order)")}})),
      m_modes(new QComboBox), m_view(new RowView(QStringLiteral("Rotors"))) {
    m_model->setParent(this);
    m_view->setModel(m_model);
    m_modes->setAccessibleName(QStringLiteral("Physical mode"));
    auto* const form = new QFormLayout;
    form->addRow(QStringLiteral("&Physical mode"), m_modes);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(form);
    layout->addWidget(m_view);
    setFocusProxy(m_modes);
    connect(m_modes, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_physical_mode = m_modes->itemData(index).toInt();
        ShowRotors();
    });
}

RotorPane::~RotorPane() = default;

void RotorPane::Clear() {
    m_is_filled = false;
    QSignalBlocker const quiet(m_modes);
    m_modes->clear();
    m_model->SetRows({});
}

void RotorPane::Fill() {
    {
        QSignalBlocker const quiet(m_modes);
        CQtParamInstance const parameters;
        int last = -1;
        bool is_first = true;
        for (auto const& [key, row] : parameters.RotorSpeed()) {
            if (is_first || key[0] != last)
                m_modes->addItem(Text(tools::Named(parameters.PhysMode(), key[0])), key[0]);
            last = key[0];
            is_first = false;
        }
        if (m_physical_mode == -1)
            m_physical_mode = parameters.PhysModeId(m_first_mode);
        int const index = m_modes->findData(m_physical_mode);
        m_modes->setCurrentIndex(std::max(index, m_modes->count() > 0 ? 0 : -1));
        m_physical_mode = m_modes->currentIndex() < 0 ? -1 : m_modes->currentData().toInt();
    }
    m_is_filled = true;
    ShowRotors();
}

void RotorPane::ShowMode(int mode) {
    m_first_mode = mode;
    if (!m_is_filled || mode == -1)
        return;
    int const index = m_modes->findData(CQtParamInstance().PhysModeId(mode));
    if (index >= 0)
        m_modes->setCurrentIndex(index);
}

void RotorPane::ShowRotors() {
    std::vector<QStringList> rows;
    if (m_is_filled && m_modes->currentIndex() >= 0) {
        for (auto const& mode : tools::CollectRotors(CQtParamInstance(), m_physical_mode))
            for (tools::RotorEntry const& entry : mode.rotors)
                rows.push_back(
                    {QString::number(entry.rotor.id), Shown(entry.rotor.name), Fraction(entry.fraction),
                     QString::fromStdString(tools::ShortNumber(entry.ratio)), Text(entry.speed_source),
                     Kind(entry.speed_source_kind), Text(entry.signal), Sources(entry.order_sources)});
    }
    m_model->SetRows(std::move(rows));
    m_view->FitColumns();
}

} // namespace paramdb::browser
