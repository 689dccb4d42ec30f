// A small table of texts: what panes show that compute all of their lines at once.
//
//     TextModel model({{"From", false}, {"Lower", true}});
//     model.SetRows({{"order 1", "0.5"}});
#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QStringList>
#include <vector>

namespace paramdb::browser {

class TextModel : public QAbstractTableModel {
public:
    struct Column {
        QString name;
        bool is_number = false; // stands at the right
    };

    explicit TextModel(std::vector<Column> columns) : m_columns(std::move(columns)) {}

    // As many rows as before keep their selection and their place on the screen. A cell that is missing is
    // empty.
    void SetRows(std::vector<QStringList> rows);

    [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<Column> m_columns;
    std::vector<QStringList> m_rows;
};

} // namespace paramdb::browser
