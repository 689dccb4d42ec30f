#include <paramdb/views/qt/choice_box.h>
#include <paramdb/views/qt/list_delegate.h>
#include <paramdb/views/qt/list_model.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/theme.h>

#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolTip>
#include <algorithm>
#include <utility>
#include <vector>

namespace paramdb::qt {

namespace {

// A combo in a cell, with the numbers of its entries.
class CellEditor : public ChoiceBox {
public:
    using ChoiceBox::ChoiceBox;

    std::vector<int> numbers;
    bool done = false; // it has been committed and is about to go
};

// A list whose rows have the keyboard as a whole shows so; a grid has one cell that does.
bool ShowsWholeRow(CXListCtrl const* list) {
    return list && (list->GetExtendedStyle() & LVS_EX_FULLROWSELECT) != 0;
}

QRect TextPlace(QRect const& cell, CellSizes const& sizes, bool box, bool combo) {
    return cell.adjusted((box ? sizes.box : 0) + sizes.margin, 0, -sizes.margin - (combo ? sizes.box : 0), 0);
}

} // namespace

CellSizes::CellSizes(QWidget const& widget) {
    constexpr int least_row = 18;
    constexpr int air = 5;
    int const indicator = widget.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &widget);
    box = margin + indicator;
    row = std::max({widget.fontMetrics().height() + air, indicator + air, least_row});
}

void ListDelegate::paint(QPainter* painter, QStyleOptionViewItem const& option,
                         QModelIndex const& index) const {
    auto const* const view = dynamic_cast<QAbstractItemView const*>(option.widget);
    bool const enabled = (index.flags() & Qt::ItemIsEnabled) && (option.state & QStyle::State_Enabled);
    bool const has_keyboard = view && view->hasFocus();
    bool const current = view && (ShowsWholeRow(m_list) ? view->currentIndex().row() == index.row()
                                                        : view->currentIndex() == index);
    CellColors colors = ColorsOnScreen(index.data(ListModel::TextColorRole).toUInt(),
                                       index.data(ListModel::BackgroundColorRole).toUInt(), option.palette);
    if (current && ShowsWholeRow(m_list)) {
        colors = has_keyboard
                     ? CellColors{option.palette.color(QPalette::Active, QPalette::HighlightedText),
                                  option.palette.color(QPalette::Active, QPalette::Highlight)}
                     : CellColors{option.palette.color(QPalette::Text), InactiveSelection(option.palette)};
    } else if (!enabled && index.data(ListModel::TextColorRole).toUInt() == XDefaultColor) {
        colors.text = option.palette.color(QPalette::Disabled, QPalette::Text);
    }

    painter->save();
    QStyle const* const style = option.widget ? option.widget->style() : nullptr;
    CellSizes const sizes(*option.widget);
    if (colors.background.isValid())
        painter->fillRect(option.rect, colors.background);
    QVariant const check = index.data(Qt::CheckStateRole);
    if (check.isValid()) {
        int const side = sizes.box - sizes.margin;
        QStyleOptionViewItem box = option;
        box.rect = QRect(option.rect.left() + sizes.margin,
                         option.rect.top() + (option.rect.height() - side) / 2, side, side);
        box.palette = BoxPalette(option.palette);
        box.state &= ~(QStyle::State_HasFocus | QStyle::State_Selected);
        box.state |= check.toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
        style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, option.widget);
    }
    bool const combo = index.data(ListModel::ComboRole).toBool();
    if (combo && enabled) {
        constexpr int arrow = 9;
        QStyleOptionViewItem drawn = option;
        drawn.palette.setColor(QPalette::ButtonText, colors.text);
        drawn.palette.setColor(QPalette::WindowText, colors.text);
        drawn.rect = QRect(option.rect.right() - sizes.margin - arrow,
                           option.rect.top() + (option.rect.height() - arrow) / 2, arrow, arrow);
        style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &drawn, painter, option.widget);
    }
    QRect const place = TextPlace(option.rect, sizes, check.isValid(), combo);
    painter->setFont(option.font);
    painter->setPen(colors.text);
    painter->drawText(
        place, static_cast<int>(index.data(Qt::TextAlignmentRole).toUInt()) | Qt::TextSingleLine,
        option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, place.width()));
    if (current && has_keyboard && !ShowsWholeRow(m_list)) {
        painter->setPen(QPen(colors.text, 1, Qt::DotLine));
        painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
    }
    painter->restore();
}

QSize ListDelegate::sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const {
    CellSizes const sizes(*option.widget);
    bool const box = index.data(Qt::CheckStateRole).isValid() || index.data(ListModel::ComboRole).toBool();
    int const text = option.fontMetrics.horizontalAdvance(index.data(Qt::DisplayRole).toString());
    return {text + 2 * sizes.margin + (box ? sizes.box : 0), sizes.row};
}

bool ListDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, QStyleOptionViewItem const& option,
                             QModelIndex const& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    bool const fits = sizeHint(option, index).width() <= option.rect.width();
    QToolTip::showText(event->globalPos(), fits ? QString() : index.data(Qt::DisplayRole).toString(), view);
    return true;
}

QWidget* ListDelegate::createEditor(QWidget* parent, QStyleOptionViewItem const&,
                                    QModelIndex const& index) const {
    auto const* const model = dynamic_cast<ListModel const*>(index.model());
    int const item = model ? model->ItemOf(index.row()) : -1;
    auto const* const choices = m_list ? m_list->GetComboBox(item, index.column()) : nullptr;
    if (!choices)
        return nullptr;
    auto* const editor = new CellEditor(parent);
    QStringList texts;
    int selected = -1;
    for (auto const& [number, text] : *choices) {
        if (number == m_list->GetComboCurSel(item, index.column()))
            selected = static_cast<int>(texts.size());
        editor->numbers.push_back(number);
        texts.push_back(ToQString(text));
    }
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    editor->SetInCell(true);
    editor->SetChoices(std::move(texts), selected);
    editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
    editor->SetOnChosen([this, editor](int) { const_cast<ListDelegate*>(this)->Finish(editor); });
    return editor;
}

void ListDelegate::Finish(QWidget* editor) {
    auto* const box = dynamic_cast<CellEditor*>(editor);
    if (!box || std::exchange(box->done, true))
        return;
    Q_EMIT commitData(box);
    Q_EMIT closeEditor(box);
}

// The return key is the editor's own first: it may find what was typed. Then the editor goes, whatever came
// of it.
bool ListDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        int const key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_finishing = dynamic_cast<QWidget*>(watched);
            m_finish.Ask();
            return false;
        }
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

// The editor got its entries when it was made. What happens in other rows meanwhile is not to reach it.
void ListDelegate::setEditorData(QWidget*, QModelIndex const&) const {}

void ListDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, QModelIndex const& index) const {
    auto* const box = dynamic_cast<CellEditor*>(editor);
    if (!box)
        return;
    box->SetOnChosen({});
    if (box->Settle())
        model->setData(index, box->numbers[static_cast<std::size_t>(box->Chosen())], Qt::EditRole);
}

void ListDelegate::updateEditorGeometry(QWidget* editor, QStyleOptionViewItem const& option,
                                        QModelIndex const&) const {
    editor->setGeometry(option.rect);
}

} // namespace paramdb::qt
