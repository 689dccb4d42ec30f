// The headings of a list: texts, and a check box where the column has one.
#pragma once

#include <QtWidgets/QHeaderView>

namespace paramdb::qt {

class ListHeader : public QHeaderView {
public:
    explicit ListHeader(QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, QRect const& rect, int section) const override;
};

} // namespace paramdb::qt
