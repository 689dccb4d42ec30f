// A table on the screen in which whole rows are selected, and copied as text.
//
// The tab key leaves it, so that everything beside it can be reached by keyboard.
#pragma once

#include <QtWidgets/QTableView>

namespace paramdb::browser {

class RowView : public QTableView {
public:
    explicit RowView(QString const& accessible_name, QWidget* parent = nullptr);

    // The selected rows, one in each line, with tabs between the cells that are shown; with a line of column
    // names first if wanted. Empty without a selection.
    [[nodiscard]] QString SelectedText(bool with_names) const;
    // Puts that text onto the clipboard, which stays as it is if there is none.
    void Copy(bool with_names) const;

    // Makes columns as wide as the rows in sight want them, within reason.
    void FitColumns();
};

} // namespace paramdb::browser
