#include "tools/browser/table_search.h"

#include <paramdb/views/qt/qt_text.h>

#include "tools/browser/texts.h"
#include "tools/case_fold.h"

namespace paramdb::browser {
namespace {

constexpr std::size_t ShortestInRows = 2;

std::optional<QString> FindInColumns(std::vector<ColumnDescription> const& columns, QString const& sought) {
    for (ColumnDescription const& column : columns)
        if (QString const name = QString::fromStdString(std::string(column.name));
            name.contains(sought, Qt::CaseInsensitive))
            return QStringLiteral("column ") + name;
    return std::nullopt;
}

std::optional<QString> FindInRows(CQParamTableRows const& rows, std::wstring const& folded) {
    std::optional<QString> found;
    std::wstring buffer;
    auto const look = [&](CQParamTableRows::ConstFields fields) {
        for (ConstField const field : fields) {
            if (found || field.type() != FieldType::Text)
                continue;
            std::wstring_view const text = field.As<CFixedText>().view();
            tools::FoldCase(text, buffer);
            if (buffer.find(folded) != std::wstring::npos)
                found = Shown(text);
        }
    };
    rows.VisitRows([&](auto key, auto row) {
        look(key);
        look(row);
        return !found;
    });
    return found;
}

bool HasText(TableDescription const& table) {
    auto const has = [](std::vector<ColumnDescription> const& columns) {
        for (ColumnDescription const& column : columns)
            if (column.type == FieldType::Text)
                return true;
        return false;
    };
    return has(table.key_columns) || has(table.row_columns);
}

} // namespace

std::optional<QString> FindInTable(CatalogueEntry const& table, QString const& sought) {
    if (QString::fromWCharArray(table.description->tag).contains(sought, Qt::CaseInsensitive))
        return QString();
    if (auto const column = FindInColumns(table.description->key_columns, sought))
        return column;
    if (auto const column = FindInColumns(table.description->row_columns, sought))
        return column;
    CString const wide = qt::FromQString(sought);
    std::wstring const folded = tools::FoldCase(std::wstring_view(wide.GetString()));
    if (folded.size() < ShortestInRows || !HasText(*table.description))
        return std::nullopt;
    return FindInRows(*table.rows, folded);
}

} // namespace paramdb::browser
