// The rows of any table of the catalogue, for a view: key columns first, then those of the row.
//
//     RowModel model;
//     model.SetTable(&entry); // walks over the rows once; texts are made as they come into sight
//     ...
//     model.SetTable(nullptr); // before the store is loaded, cleared or purged
//
// For each field a reference into the store is kept, so that any cell is reached at once: 100,000 rows of ten
// columns take 16 MB and some milliseconds. For the thread of the windows alone.
#pragma once

#include <paramdb/keys/q_clavis.h>
#include <paramdb/tables/catalogue.h>

#include <QtCore/QAbstractTableModel>
#include <optional>
#include <vector>

namespace paramdb::browser {

class RowModel : public QAbstractTableModel {
public:
    // Shows that table of the store; none for null.
    void SetTable(CatalogueEntry const* table);
    [[nodiscard]] CatalogueEntry const* Table() const noexcept { return m_table; }

    // What the ids in a row are called: "mode: 1. gear drive, channel: Mix". Empty without names.
    [[nodiscard]] QString Names(int row) const;
    // The next row behind `row` in which a cell contains the text, whatever its case, going on from the top;
    // before it and from the bottom if `back` is set. -1 if there is none; an empty text is nowhere.
    [[nodiscard]] int FindRow(QString const& text, int row, bool back) const;
    // The instrument parameter that a row is of, or the whole key; none where the table has no such columns.
    [[nodiscard]] std::optional<int> Parameter(int row) const;
    [[nodiscard]] std::optional<CClavis> Key(int row) const;

    [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] ConstField FieldAt(int row, int column) const;
    [[nodiscard]] std::optional<int> Number(int row, std::string_view column) const;

    CatalogueEntry const* m_table = nullptr;
    std::vector<ColumnDescription> m_columns;
    std::vector<ConstField> m_fields; // row by row
};

} // namespace paramdb::browser
