#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/views/qt/dialog_view.h>
#include <paramdb/views/qt/event_loop.h>
#include <paramdb/views/qt/qt_text.h>

#include <QtGui/QCloseEvent>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QPushButton>
#include <algorithm>
#include <utility>

namespace paramdb::qt {

namespace {

// Dialog units in pixels: a quarter of the average letter's width, an eighth of a line's height.
class DialogUnits {
public:
    explicit DialogUnits(QFontMetrics const& metrics) : m_line(metrics.height()) {
        QString const letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
        int const count = static_cast<int>(letters.size());
        m_letter = (metrics.horizontalAdvance(letters) + count / 2) / count;
    }

    [[nodiscard]] int X(int units) const { return (units * m_letter + 2) / 4; }
    [[nodiscard]] int Y(int units) const { return (units * m_line + 4) / 8; }

private:
    int m_letter;
    int m_line;
};

} // namespace

DialogView::DialogView(CDialog& dialog, QWidget* parent) : QDialog(parent), m_dialog(&dialog) {
    setAttribute(Qt::WA_DeleteOnClose, false); // the dialog decides when it closes
    Attach(dialog);
    Build();
    DialogView::OnTitleChanged();
    setEnabled(dialog.IsWindowEnabled());
}

DialogView::~DialogView() {
    CDialog* const dialog = std::exchange(m_dialog, nullptr);
    Detach();
    if (dialog)
        CallControl([dialog] { dialog->EndDialog(IDCANCEL); });
}

void DialogView::Build() {
    CDialogTemplate const& layout = m_dialog->GetTemplate();
    DialogUnits const units(fontMetrics());
    m_first_size = QSize(units.X(layout.width), units.Y(layout.height));
    QWidget* first = nullptr;
    for (CDialogItem const& item : layout.items) {
        QWidget* widget = nullptr;
        if (item.kind == CDialogItem::Kind::list) {
            auto* const list = new ListView(this);
            list->SetList(dynamic_cast<CXListCtrl*>(m_dialog->GetDlgItem(item.id)));
            widget = list;
        } else {
            auto* const button = new QPushButton(ToQString(item.text), this);
            button->setDefault(item.kind == CDialogItem::Kind::default_button);
            button->setAutoDefault(true);
            connect(button, &QPushButton::clicked, this, [this, id = item.id] { Command(id); });
            widget = button;
        }
        if (first)
            setTabOrder(first, widget);
        first = widget;
        m_items.push_back(
            {item, widget,
             QRect(units.X(item.x), units.Y(item.y), units.X(item.width), units.Y(item.height))});
    }
    // A word may need more room than the template gives it: the button grows and those on its left make way.
    constexpr int gap = 6;
    int right = m_first_size.width();
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item) {
        if (item->description.kind == CDialogItem::Kind::list)
            continue;
        QSize const least = item->widget->sizeHint();
        int const edge = std::min(item->place.left() + item->place.width(), right);
        int const width = std::max(item->place.width(), least.width());
        int const height = std::max(item->place.height(), least.height());
        item->place = QRect(edge - width, item->place.top(), width, height);
        right = edge - width - gap;
    }
    setMinimumSize(m_first_size);
    resize(m_first_size);
    Arrange();
    if (!m_items.empty())
        m_items.front().widget->setFocus();
}

void DialogView::Arrange() {
    QSize const more = size() - m_first_size;
    for (Item const& item : m_items) {
        if (item.description.kind == CDialogItem::Kind::list)
            item.widget->setGeometry(item.place.adjusted(0, 0, more.width(), more.height()));
        else
            item.widget->setGeometry(item.place.translated(more.width(), more.height()));
    }
}

QAbstractButton* DialogView::Button(int id) const {
    for (Item const& item : m_items) {
        if (item.description.id == id)
            return dynamic_cast<QAbstractButton*>(item.widget);
    }
    return nullptr;
}

ListView* DialogView::List(int id) const {
    for (Item const& item : m_items) {
        if (item.description.id == id)
            return dynamic_cast<ListView*>(item.widget);
    }
    return nullptr;
}

void DialogView::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    Arrange();
}

void DialogView::closeEvent(QCloseEvent* event) {
    event->setAccepted(!m_dialog);
    if (m_dialog)
        Command(IDCANCEL);
}

void DialogView::Command(int id) {
    if (m_dialog)
        CallControl([this, id] { m_dialog->Command(id); });
}

void DialogView::OnTitleChanged() {
    setWindowTitle(ToQString(m_dialog->GetTitle()));
    for (Item const& item : m_items) {
        if (auto* const list = dynamic_cast<ListView*>(item.widget))
            list->SetName(windowTitle());
    }
}

void DialogView::OnControlGone() {
    m_dialog = nullptr;
    hide();
    deleteLater();
}

// The window has gone. The dialog may be displayed again, with a view of its own.
void DialogView::Leave() {
    Detach();
    m_dialog = nullptr;
    hide();
    deleteLater();
}

} // namespace paramdb::qt
