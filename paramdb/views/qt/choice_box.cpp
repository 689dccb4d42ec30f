#include <paramdb/views/qt/choice_box.h>

#include <QtCore/QAbstractProxyModel>
#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QStyledItemDelegate>
#include <utility>

namespace paramdb::qt {

namespace {

// All entries have the same height; measuring each one would take long where there are many.
void MakeUniform(QAbstractItemView* view) {
    if (auto* const list = dynamic_cast<QListView*>(view))
        list->setUniformItemSizes(true);
}

// Entries with the same air as the rows of lists.
class EntryDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const override {
        constexpr int air = 5;
        return QStyledItemDelegate::sizeHint(option, index)
            .expandedTo(QSize(0, option.fontMetrics.height() + air));
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, QModelIndex const& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->showDecorationSelected = true;
    }
};

} // namespace

void ChoiceModel::Set(QStringList texts) {
    beginResetModel();
    m_texts = std::move(texts);
    endResetModel();
}

int ChoiceModel::rowCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_texts.size());
}

QVariant ChoiceModel::data(QModelIndex const& index, int role) const {
    if (index.row() >= m_texts.size() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return m_texts.at(index.row());
}

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    constexpr int rows_at_once = 16;
    constexpr int least_letters = 12;
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setDuplicatesEnabled(true); // the second of two equal texts is not to become the first
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(least_letters);
    setMaxVisibleItems(rows_at_once);
    setFocusPolicy(Qt::StrongFocus);
    MakeUniform(view());
    view()->installEventFilter(this);
    setModel(&m_choices);

    completer()->setFilterMode(Qt::MatchContains);
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setCaseSensitivity(Qt::CaseInsensitive);
    completer()->setMaxVisibleItems(rows_at_once);
    MakeUniform(completer()->popup());
    completer()->popup()->setItemDelegate(new EntryDelegate(this));

    connect(this, &QComboBox::activated, this, [this](int index) { Report(index); });
    connect(lineEdit(), &QLineEdit::returnPressed, this, [this] {
        if (Marked() < 0) // else the completer is about to choose it
            Settle();
    });
}

void ChoiceBox::SetChoices(QStringList texts, int selected) {
    QSignalBlocker const quiet(this);
    m_choices.Set(std::move(texts));
    setCurrentIndex(selected);
    setEditText(selected >= 0 ? itemText(selected) : QString());
    lineEdit()->setCursorPosition(0);
}

void ChoiceBox::Report(int index) {
    auto const on_chosen = m_on_chosen; // it may set another
    if (on_chosen)
        on_chosen(index);
}

// The entry on which the keyboard stands in the narrowed list, -1 without one.
int ChoiceBox::Marked() const {
    QModelIndex const marked = completer()->popup()->currentIndex();
    auto const* const proxy = dynamic_cast<QAbstractProxyModel const*>(completer()->completionModel());
    return proxy && completer()->popup()->isVisible() && marked.isValid() ? proxy->mapToSource(marked).row()
                                                                          : -1;
}

int ChoiceBox::Typed() const {
    QString const text = lineEdit()->text();
    if (currentIndex() >= 0 && text == itemText(currentIndex()))
        return currentIndex();
    if (int const marked = Marked(); marked >= 0)
        return marked;
    if (text.isEmpty())
        return -1;
    int matches = 0;
    int last = -1;
    for (int i = 0; i < count(); ++i) {
        QString const entry = itemText(i);
        if (entry.compare(text, Qt::CaseInsensitive) == 0)
            return i;
        if (entry.contains(text, Qt::CaseInsensitive)) {
            ++matches;
            last = i;
        }
    }
    return matches == 1 ? last : -1;
}

bool ChoiceBox::Settle() {
    int const index = Typed();
    completer()->popup()->hide();
    bool const other = index >= 0 && index != currentIndex();
    if (other)
        setCurrentIndex(index);
    setEditText(itemText(currentIndex()));
    if (other)
        Report(index);
    return index >= 0;
}

void ChoiceBox::BeginTyping(QKeyEvent const& key) {
    lineEdit()->setFocus(Qt::OtherFocusReason);
    lineEdit()->selectAll();
    QKeyEvent copy(key.type(), key.key(), key.modifiers(), key.text());
    QCoreApplication::sendEvent(lineEdit(), &copy);
}

bool ChoiceBox::Types(QKeyEvent const& key) {
    bool const control = (key.modifiers() & Qt::ControlModifier) != 0;
    bool const alt = (key.modifiers() & Qt::AltModifier) != 0;
    bool const command =
        control != alt || (key.modifiers() & Qt::MetaModifier) != 0; // both together are AltGr
    return !command && !key.text().isEmpty() && key.text().at(0).isPrint() && !key.text().at(0).isSpace();
}

void ChoiceBox::showPopup() {
    completer()->popup()->hide();
    setEditText(itemText(currentIndex()));
    QComboBox::showPopup();
}

// Typing over the open list narrows it, just as typing without it.
bool ChoiceBox::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view() && event->type() == QEvent::KeyPress) {
        auto const& key = static_cast<QKeyEvent const&>(*event);
        if (Types(key)) {
            hidePopup();
            BeginTyping(key);
            return true;
        }
    }
    return QComboBox::eventFilter(watched, event);
}

void ChoiceBox::keyPressEvent(QKeyEvent* event) {
    if (m_in_cell && (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up)) {
        showPopup();
        return;
    }
    // The return key that ends the typing is not also that of a dialog around. The completer wants to see the
    // one that takes a marked entry.
    bool const ends = (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && Marked() < 0 &&
                      (m_in_cell || lineEdit()->text() != itemText(currentIndex()));
    QComboBox::keyPressEvent(event);
    if (ends)
        event->accept();
}

void ChoiceBox::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        Settle();
}

// Scrolling past must not choose.
void ChoiceBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace paramdb::qt
