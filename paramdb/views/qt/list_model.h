// The rows and columns of a list control as Qt's views want them, narrowed to those with a certain text.
//
// The model keeps no copy: it reads the control at every question, and only the shape, how many rows and
// columns there are and which are shown, is fixed between two calls of Refresh. A row here is a place on the
// screen, an item one of the control's; without a filter they are the same.
#pragma once

#include <paramdb/platform/control/x_list_ctrl.h>
#include <paramdb/platform/core/export.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QString>
#include <optional>
#include <vector>

namespace paramdb::qt {

class PARAMDB_VIEWS_API ListModel : public QAbstractTableModel {
public:
    // What Qt has no role for: colours of a cell (COLORREF, XDefaultColor for none), whether it has a combo.
    enum Role : int { TextColorRole = Qt::UserRole, BackgroundColorRole, ComboRole };

    // Shows that list, none for null.
    void SetList(CXListCtrl* list);
    // Takes over what the list holds now. Where the shape is the same, views keep their place.
    void Refresh() { Refresh(false); }
    // One cell is different, or a whole row for the column -1.
    void TellChanged(int item, int column);
    void TellHeaderChanged(int column);

    // Shows only the items of which a cell contains the text, whatever its case; all for an empty one.
    void SetFilter(QString const& text);
    [[nodiscard]] QString const& GetFilter() const noexcept { return m_filter; }
    [[nodiscard]] bool IsFiltered() const noexcept { return m_shown.has_value(); }

    // The item of a row and the other way, -1 on a miss.
    [[nodiscard]] int ItemOf(int row) const noexcept;
    [[nodiscard]] int RowOf(int item) const noexcept;

    [[nodiscard]] int rowCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] int columnCount(QModelIndex const& parent = {}) const override;
    [[nodiscard]] QVariant data(QModelIndex const& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(QModelIndex const& index) const override;
    // Qt::CheckStateRole switches the check box, Qt::EditRole chooses a number in the combo; the list
    // decides.
    bool setData(QModelIndex const& index, QVariant const& value, int role) override;

private:
    void Refresh(bool among_shown);
    [[nodiscard]] std::optional<std::vector<int>> Matches(bool among_shown) const;

    CXListCtrl* m_list = nullptr;
    int m_rows = 0;
    int m_columns = 0;
    QString m_filter;
    std::optional<std::vector<int>> m_shown; // items in ascending order
    bool m_texts_changed = false;            // since they were looked through
};

} // namespace paramdb::qt
