#include "tools/browser/row_view.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QHeaderView>
#include <algorithm>

namespace paramdb::browser {

RowView::RowView(QString const& accessible_name, QWidget* parent) : QTableView(parent) {
    setAccessibleName(accessible_name);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 3);
    horizontalHeader()->setHighlightSections(false);
}

QString RowView::SelectedText(bool with_names) const {
    if (!selectionModel())
        return {};
    QModelIndexList rows = selectionModel()->selectedRows();
    if (rows.isEmpty())
        return {};
    std::sort(rows.begin(), rows.end());
    QString text;
    auto const add_line = [&](auto const& cell) {
        bool is_first = true;
        for (int column = 0; column < model()->columnCount(); ++column) {
            if (isColumnHidden(column))
                continue;
            if (!is_first)
                text += u'\t';
            text += cell(column);
            is_first = false;
        }
        text += u'\n';
    };
    if (with_names)
        add_line([this](int column) { return model()->headerData(column, Qt::Horizontal).toString(); });
    for (QModelIndex const& row : rows)
        add_line([&row](int column) { return row.siblingAtColumn(column).data().toString(); });
    return text;
}

void RowView::Copy(bool with_names) const {
    if (QString const text = SelectedText(with_names); !text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void RowView::FitColumns() {
    if (!model())
        return;
    // Looking at all of a long table would take its time.
    horizontalHeader()->setResizeContentsPrecision(100);
    int const widest = fontMetrics().averageCharWidth() * 50;
    int const room = fontMetrics().averageCharWidth() * 2;
    for (int column = 0; column < model()->columnCount(); ++column) {
        resizeColumnToContents(column);
        setColumnWidth(column, std::min(widest, columnWidth(column) + room));
    }
}

} // namespace paramdb::browser
