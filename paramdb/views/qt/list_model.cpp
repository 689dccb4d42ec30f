#include <paramdb/views/qt/event_loop.h>
#include <paramdb/views/qt/list_model.h>
#include <paramdb/views/qt/qt_text.h>

#include <algorithm>
#include <utility>

namespace paramdb::qt {

void ListModel::SetList(CXListCtrl* list) {
    beginResetModel();
    m_list = list;
    m_filter.clear();
    m_shown.reset();
    m_rows = list ? list->GetItemCount() : 0;
    m_columns = list ? list->GetColumnCount() : 0;
    endResetModel();
}

void ListModel::Refresh(bool among_shown) {
    int const items = m_list ? m_list->GetItemCount() : 0;
    int const columns = m_list ? m_list->GetColumnCount() : 0;
    auto shown = Matches(among_shown);
    m_texts_changed = false;
    int const rows = shown ? static_cast<int>(shown->size()) : items;
    if (rows == m_rows && columns == m_columns && shown == m_shown) {
        if (rows > 0 && columns > 0)
            Q_EMIT dataChanged(index(0, 0), index(rows - 1, columns - 1));
        if (columns > 0)
            Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns - 1);
        return;
    }
    beginResetModel();
    m_rows = rows;
    m_columns = columns;
    m_shown = std::move(shown);
    endResetModel();
}

void ListModel::SetFilter(QString const& text) {
    if (m_filter == text)
        return;
    // What contains the longer text contains the shorter one, and is among what is shown already.
    bool const narrower =
        m_shown && !m_texts_changed && !m_filter.isEmpty() && text.contains(m_filter, Qt::CaseInsensitive);
    m_filter = text;
    Refresh(narrower);
}

std::optional<std::vector<int>> ListModel::Matches(bool among_shown) const {
    if (!m_list || m_filter.isEmpty())
        return std::nullopt;
    std::vector<int> items;
    auto const look = [&](int item) {
        for (int column = 0; column < m_list->GetColumnCount(); ++column) {
            if (ToQString(m_list->GetItemText(item, column)).contains(m_filter, Qt::CaseInsensitive)) {
                items.push_back(item);
                return;
            }
        }
    };
    if (among_shown) {
        for (int const item : *m_shown)
            look(item);
    } else {
        for (int item = 0; item < m_list->GetItemCount(); ++item)
            look(item);
    }
    return items;
}

void ListModel::TellChanged(int item, int column) {
    m_texts_changed = true;
    int const row = RowOf(item);
    if (row >= 0 && column < m_columns && m_columns > 0)
        Q_EMIT dataChanged(index(row, std::max(column, 0)), index(row, column < 0 ? m_columns - 1 : column));
}

void ListModel::TellHeaderChanged(int column) {
    if (column >= 0 && column < m_columns)
        Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

int ListModel::ItemOf(int row) const noexcept {
    if (row < 0 || row >= m_rows)
        return -1;
    return m_shown ? (*m_shown)[static_cast<std::size_t>(row)] : row;
}

int ListModel::RowOf(int item) const noexcept {
    if (!m_shown)
        return item >= 0 && item < m_rows ? item : -1;
    auto const found = std::lower_bound(m_shown->begin(), m_shown->end(), item);
    return found != m_shown->end() && *found == item ? static_cast<int>(found - m_shown->begin()) : -1;
}

int ListModel::rowCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int ListModel::columnCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : m_columns;
}

QVariant ListModel::data(QModelIndex const& index, int role) const {
    int const item = ItemOf(index.row());
    int const column = index.column();
    if (!m_list || item < 0 || item >= m_list->GetItemCount() || column >= m_list->GetColumnCount())
        return {};
    COLORREF text = XDefaultColor;
    COLORREF background = XDefaultColor;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return ToQString(m_list->GetItemText(item, column));
    case Qt::CheckStateRole: {
        int const state = m_list->GetCheckbox(item, column);
        return state < 0 ? QVariant() : QVariant(state > 0 ? Qt::Checked : Qt::Unchecked);
    }
    case Qt::TextAlignmentRole:
        return headerData(column, Qt::Horizontal, role);
    case Qt::EditRole:
        return m_list->GetComboCurSel(item, column);
    case TextColorRole:
        m_list->GetItemColors(item, column, text, background);
        return text;
    case BackgroundColorRole:
        m_list->GetItemColors(item, column, text, background);
        return background;
    case ComboRole:
        return m_list->GetComboBox(item, column) != nullptr;
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (!m_list || orientation != Qt::Horizontal || section < 0 || section >= m_list->GetColumnCount())
        return {};
    CXListColumn const& column = m_list->GetColumn(section);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return ToQString(column.heading);
    case Qt::CheckStateRole: {
        constexpr int some = 2;
        int const mark = m_list->GetHeaderMark(section);
        if (mark < 0)
            return {};
        return mark == some ? Qt::PartiallyChecked : mark > 0 ? Qt::Checked : Qt::Unchecked;
    }
    case Qt::TextAlignmentRole: {
        Qt::Alignment const side = column.format == LVCFMT_RIGHT    ? Qt::AlignRight
                                   : column.format == LVCFMT_CENTER ? Qt::AlignHCenter
                                                                    : Qt::AlignLeft;
        return QVariant(side | Qt::AlignVCenter);
    }
    default:
        return {};
    }
}

Qt::ItemFlags ListModel::flags(QModelIndex const& index) const {
    int const item = ItemOf(index.row());
    if (!m_list || item < 0 || !m_list->GetEnabled(item))
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (m_list->GetCheckbox(item, index.column()) >= 0)
        flags |= Qt::ItemIsUserCheckable;
    if (m_list->GetComboBox(item, index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool ListModel::setData(QModelIndex const& index, QVariant const& value, int role) {
    int const item = ItemOf(index.row());
    int const column = index.column();
    if (!m_list || item < 0)
        return false;
    bool done = false;
    CallControl([&] {
        if (role == Qt::EditRole)
            done = m_list->ChooseInCombo(item, column, value.toInt());
        else if (role == Qt::CheckStateRole)
            done = (m_list->GetCheckbox(item, column) > 0) == (value.toInt() == Qt::Checked) ||
                   m_list->ToggleCheckbox(item, column);
    });
    return done;
}

} // namespace paramdb::qt
