#include <paramdb/views/qt/filter_line.h>
#include <paramdb/views/qt/qt_text.h>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <utility>

namespace paramdb::qt {

FilterLine::FilterLine(std::function<void(QString const&)> on_text,
                       std::function<bool(QKeyEvent const&)> on_key, QWidget* parent)
    : QWidget(parent), m_on_key(std::move(on_key)), m_edit(new QLineEdit(this)), m_count(new QLabel(this)) {
    constexpr int below = 4;
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, below);
    row->addWidget(m_edit, 1);
    row->addWidget(m_count);
    m_edit->setClearButtonEnabled(true);
    m_edit->setPlaceholderText(FilterWord());
    m_edit->setAccessibleName(FilterWord());
    m_edit->installEventFilter(this);
    setFocusProxy(m_edit);
    connect(m_edit, &QLineEdit::textChanged, this, std::move(on_text));
}

void FilterLine::ShowCount(int left, int all) {
    m_count->setText(left < 0 ? QString() : QStringLiteral("%1 / %2").arg(left).arg(all));
    m_count->setVisible(left >= 0);
}

bool FilterLine::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        auto const& key = static_cast<QKeyEvent const&>(*event);
        switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
            if (m_on_key(key))
                return true;
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace paramdb::qt
