#include <paramdb/views/qt/list_header.h>
#include <paramdb/views/qt/theme.h>

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

namespace paramdb::qt {

ListHeader::ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void ListHeader::paintSection(QPainter* painter, QRect const& rect, int section) const {
    constexpr int margin = 5; // as that of the cells
    if (!rect.isValid())
        return;
    QStyleOptionHeaderV2 option;
    initStyleOption(&option);
    initStyleOptionForIndex(&option, section);
    option.rect = rect;
    painter->save();
    style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);

    QRect place = rect.adjusted(margin, 0, -margin, 0);
    QVariant const mark = model()->headerData(section, orientation(), Qt::CheckStateRole);
    if (mark.isValid()) {
        QStyleOptionButton box;
        box.initFrom(this);
        int const side = style()->pixelMetric(QStyle::PM_IndicatorWidth, &box, this);
        box.rect = QRect(place.left(), rect.top() + (rect.height() - side) / 2, side, side);
        box.palette = BoxPalette(palette());
        box.state &= ~QStyle::State_HasFocus;
        box.state |= mark.toInt() == Qt::Checked            ? QStyle::State_On
                     : mark.toInt() == Qt::PartiallyChecked ? QStyle::State_NoChange
                                                            : QStyle::State_Off;
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, this);
        place.setLeft(place.left() + side + margin);
    }
    style()->drawItemText(painter, place, static_cast<int>(option.textAlignment), palette(), isEnabled(),
                          fontMetrics().elidedText(option.text, Qt::ElideRight, place.width()),
                          QPalette::ButtonText);
    painter->restore();
}

} // namespace paramdb::qt
