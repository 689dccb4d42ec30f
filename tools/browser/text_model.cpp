#include "tools/browser/text_model.h"

#include "tools/browser/texts.h"

namespace paramdb::browser {

void TextModel::SetRows(std::vector<QStringList> rows) {
    if (rows.size() == m_rows.size()) {
        m_rows = std::move(rows);
        if (!m_rows.empty())
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int TextModel::rowCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TextModel::columnCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant TextModel::data(QModelIndex const& index, int role) const {
    if (!index.isValid())
        return {};
    auto const column = static_cast<std::size_t>(index.column());
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter |
                                (m_columns[column].is_number ? Qt::AlignRight : Qt::AlignLeft));
    QString const text = m_rows[static_cast<std::size_t>(index.row())].value(index.column());
    if (role == Qt::DisplayRole)
        return text;
    if (role == Qt::ToolTipRole)
        return Tip(text);
    return {};
}

QVariant TextModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    auto const& column = m_columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return column.name;
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (column.is_number ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

} // namespace paramdb::browser
