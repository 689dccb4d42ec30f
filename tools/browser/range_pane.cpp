#include "tools/browser/range_pane.h"

#include <paramdb/controls/element_values.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/views/qt/qt_text.h>

#include "tools/browser/texts.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

namespace paramdb::browser {
namespace {

CString ValueText(CQtParamInstance const& parameters, int element, int id) {
    if (id == -1)
        return L"(*)";
    wchar_t const* const name = parameters.ClavisElementName(element, id);
    CString text = name && *name ? CString(name) : UnknownValueText(static_cast<Clavis::qOrder>(element), id);
    if (CQtParamInstance::ShowIdsInDialogs())
        text.AppendFormat(L" [%d]", id);
    return text;
}

} // namespace

RangePane::RangePane(QWidget* parent)
    : QWidget(parent), m_owner([](UINT) {}), m_watcher(m_timer), m_view(new qt::ListView),
      m_count(new QLabel) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, [this] { CountKeys(); });
    m_watcher.Attach(m_grid);
    m_view->SetList(&m_grid);
    m_view->setAccessibleName(QStringLiteral("Range grid"));
    m_count->setTextFormat(Qt::PlainText);
    m_count->setAccessibleName(QStringLiteral("Selected keys"));

    auto* const buttons = new QHBoxLayout;
    auto const add_button = [&](QString const& text, auto action) {
        auto* const button = new QPushButton(text);
        connect(button, &QPushButton::clicked, this, action);
        buttons->addWidget(button);
    };
    add_button(QStringLiteral("Select &all"), [this] { m_grid.full_selection(); });
    add_button(QStringLiteral("Select n&one"), [this] { DeselectAll(); });
    add_button(QStringLiteral("&Invert"), [this] { m_grid.invert_selection(); });
    buttons->addStretch();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_count);
    layout->addLayout(buttons);
    setFocusProxy(m_view);
}

RangePane::~RangePane() {
    m_watcher.Detach();
    m_view->SetList(nullptr);
}

void RangePane::Clear() {
    if (m_is_filled)
        m_grid.retrieve(m_picked);
    m_is_filled = false;
    m_is_due = false;
    m_timer.stop();
    m_grid.DestroyWindow();
    m_keys.clear();
    m_selected = 0;
    m_count->clear();
}

void RangePane::Fill() {
    m_is_due = true;
    if (isVisible())
        FillNow();
}

void RangePane::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_is_due)
        FillNow();
}

void RangePane::FillNow() {
    m_is_due = false;
    CQtParamInstance const parameters;
    std::set<int> values[Clavis::ElementCount];
    for (auto const& [key, row] : parameters.IpParamAndStore()) {
        m_keys.push_back(key.ToClavis());
        for (int element = 0; element < Clavis::ElementCount; ++element)
            values[element].insert(m_keys.back()[element]);
    }
    CPentadRangeSelectCtrl::List lists[Clavis::ElementCount];
    for (int element = 0; element < Clavis::ElementCount; ++element)
        for (int const id : values[element])
            lists[element].emplace(id, ValueText(parameters, element, id));
    m_grid.send_pentad_list(lists);
    m_grid.Create(&m_owner);
    auto const has_any = [](auto const& column) {
        return std::any_of(column.begin(), column.end(), [](auto const& value) { return value.second; });
    };
    if (std::any_of(std::begin(m_picked), std::end(m_picked), has_any))
        m_grid.send_active_list(m_picked);
    m_is_filled = true;
    m_timer.stop();
    CountKeys();
}

QString RangePane::CountText() const {
    return m_count->text();
}

void RangePane::CountKeys() {
    if (!m_is_filled)
        return;
    std::map<int, bool> picked[Clavis::ElementCount];
    m_grid.retrieve(picked);
    std::size_t counts[Clavis::ElementCount];
    QStringList parts;
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        auto const& column = picked[element];
        auto const count =
            std::count_if(column.begin(), column.end(), [](auto& value) { return value.second; });
        counts[element] = static_cast<std::size_t>(count);
        if (count > 0)
            parts += browser::Count(counts[element]) + u' ' + qt::ToQString(Clavis::ElementName(element, 2));
    }
    auto const is_selected = [&](CClavis const& key) {
        for (int element = 0; element < Clavis::ElementCount; ++element) {
            if (counts[element] == 0)
                continue;
            auto const value = picked[element].find(key[element]);
            if (value == picked[element].end() || !value->second)
                return false;
        }
        return true;
    };
    m_selected = parts.isEmpty()
                     ? 0
                     : static_cast<std::size_t>(std::count_if(m_keys.begin(), m_keys.end(), is_selected));
    QString text = QStringLiteral("%1 of %2 keys selected")
                       .arg(browser::Count(m_selected), browser::Count(m_keys.size()));
    if (!parts.isEmpty())
        text += QStringLiteral(": ") + parts.join(QStringLiteral(", "));
    m_count->setText(text);
}

void RangePane::DeselectAll() {
    std::map<int, bool> const none[Clavis::ElementCount];
    m_grid.send_active_list(none);
}

} // namespace paramdb::browser
