#include "tools/browser/row_model.h"

#include <paramdb/query/param_instance.h>

#include "tools/browser/texts.h"
#include "tools/kinds.h"

#include <QtGui/QFont>
#include <algorithm>

namespace paramdb::browser {
namespace {

// The kind of what a column holds ids of; null for none.
tools::Kind const* KindOfColumn(std::string_view column) {
    struct Alias {
        std::string_view column;
        std::string_view kind;
    };
    static constexpr Alias aliases[] = {
        {"physical_mode", "physmode"}, {"rotor", "location"},
        {"gear", "location"},          {"physical_gear", "location"},
        {"speed_source", "location"},  {"order_source", "location"},
        {"parent_channel", "channel"}, {"configuration", "sensorconfig"},
    };
    auto const* const alias = std::find_if(std::begin(aliases), std::end(aliases),
                                           [&](Alias const& entry) { return entry.column == column; });
    return tools::FindKind(alias == std::end(aliases) ? column : alias->kind);
}

bool IsNumber(ColumnDescription const& column) {
    return column.type != FieldType::Text;
}

} // namespace

void RowModel::SetTable(CatalogueEntry const* table) {
    beginResetModel();
    m_table = table;
    m_columns.clear();
    m_fields.clear();
    m_fields.shrink_to_fit();
    if (table) {
        m_columns = table->description->key_columns;
        auto const& row_columns = table->description->row_columns;
        m_columns.insert(m_columns.end(), row_columns.begin(), row_columns.end());
        m_fields.reserve(table->rows->RowCount() * m_columns.size());
        table->rows->VisitRows([this](auto key, auto row) {
            m_fields.insert(m_fields.end(), key.begin(), key.end());
            m_fields.insert(m_fields.end(), row.begin(), row.end());
            return true;
        });
    }
    endResetModel();
}

ConstField RowModel::FieldAt(int row, int column) const {
    return m_fields[static_cast<std::size_t>(row) * m_columns.size() + static_cast<std::size_t>(column)];
}

QString RowModel::Names(int row) const {
    if (row < 0 || row >= rowCount())
        return {};
    CQtParamInstance const parameters;
    QStringList names;
    for (int column = 0; column < columnCount(); ++column) {
        ConstField const field = FieldAt(row, column);
        auto const& description = m_columns[static_cast<std::size_t>(column)];
        tools::Kind const* const kind = KindOfColumn(description.name);
        if (!kind || field.type() != FieldType::Int)
            continue;
        auto const name = tools::NameOf(*kind, parameters, field.As<std::int32_t>());
        if (name && !name->empty())
            names +=
                QString::fromStdString(std::string(description.name)) + QStringLiteral(": ") + Shown(*name);
    }
    return names.join(QStringLiteral(", "));
}

int RowModel::FindRow(QString const& text, int row, bool back) const {
    int const count = rowCount();
    if (count == 0 || text.isEmpty())
        return -1;
    int found = row < 0 && back ? 0 : std::clamp(row, -1, count - 1);
    for (int step = 0; step < count; ++step) {
        found = (found + (back ? count - 1 : 1)) % count;
        for (int column = 0; column < columnCount(); ++column)
            if (CellText(FieldAt(found, column)).contains(text, Qt::CaseInsensitive))
                return found;
    }
    return -1;
}

std::optional<int> RowModel::Number(int row, std::string_view column) const {
    auto const found =
        std::find_if(m_columns.begin(), m_columns.end(), [&](ColumnDescription const& description) {
            return description.name == column && description.type == FieldType::Int;
        });
    if (found == m_columns.end() || row < 0 || row >= rowCount())
        return std::nullopt;
    return FieldAt(row, static_cast<int>(found - m_columns.begin())).As<std::int32_t>();
}

std::optional<int> RowModel::Parameter(int row) const {
    return Number(row, "parameter");
}

std::optional<CClavis> RowModel::Key(int row) const {
    static constexpr std::string_view columns[] = {"mode",     "instrument", "channel",
                                                   "location", "parameter",  "signal"};
    CClavis key;
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        auto const value = Number(row, columns[element]);
        if (!value)
            return std::nullopt;
        key[element] = *value;
    }
    return key;
}

int RowModel::rowCount(QModelIndex const& parent) const {
    return parent.isValid() || m_columns.empty() ? 0 : static_cast<int>(m_fields.size() / m_columns.size());
}

int RowModel::columnCount(QModelIndex const& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant RowModel::data(QModelIndex const& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return CellText(FieldAt(index.row(), index.column()));
    if (role == Qt::TextAlignmentRole) {
        bool const is_number = IsNumber(m_columns[static_cast<std::size_t>(index.column())]);
        return static_cast<int>(Qt::AlignVCenter | (is_number ? Qt::AlignRight : Qt::AlignLeft));
    }
    if (role == Qt::ToolTipRole)
        return Tip(Names(index.row()));
    return {};
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    ColumnDescription const& column = m_columns[static_cast<std::size_t>(section)];
    bool const is_key = static_cast<std::size_t>(section) < m_table->description->key_columns.size();
    if (role == Qt::DisplayRole)
        return QString::fromStdString(std::string(column.name));
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (IsNumber(column) ? Qt::AlignRight : Qt::AlignLeft));
    if (role == Qt::FontRole) {
        QFont font;
        font.setBold(is_key);
        return font;
    }
    if (role == Qt::ToolTipRole)
        return QString::fromWCharArray(FieldTypeName(column.type)) +
               (is_key ? QStringLiteral(", key") : QString());
    return {};
}

} // namespace paramdb::browser
