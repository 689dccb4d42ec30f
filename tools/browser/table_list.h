// The list of all tables with a line to search them.
//
// What is typed is looked for in tags, in column names, and, from two characters on, in the texts of the
// rows, without regard to case; tables without it disappear, and beside the others stands where it was found.
// The down key goes from the line to the list.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <QtWidgets/QWidget>
#include <functional>
#include <span>

class QCheckBox;
class QLineEdit;

namespace paramdb::browser {

class RowView;
class TextModel;

class TableList : public QWidget {
public:
    // The callback gets the table that the user goes to.
    explicit TableList(std::function<void(CatalogueEntry const& table)> on_choice, QWidget* parent = nullptr);
    ~TableList() override;

    // Lists these tables, which must stay where they are until Clear, and goes to the one of before, else to
    // the first.
    void Fill(std::span<CatalogueEntry const> tables);
    void Clear();

    // Goes to a table by its tag, "<TMode>"; false if there is none. One that the search has hidden is shown.
    bool Select(QString const& tag);
    // The tag of the table that the user went to last; kept over Clear and Fill.
    [[nodiscard]] QString Selected() const { return m_selected; }
    // The tag to go to with the next Fill.
    void SetSelected(QString const& tag) { m_selected = tag; }

    [[nodiscard]] QLineEdit& SearchEdit() noexcept { return *m_search; }
    [[nodiscard]] QCheckBox& HideEmptyBox() noexcept { return *m_hide_empty; }
    [[nodiscard]] RowView& View() noexcept { return *m_view; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void Narrow();
    void OnCurrent(int row);

    std::function<void(CatalogueEntry const&)> m_on_choice;
    std::span<CatalogueEntry const> m_tables;
    QString m_selected;
    TextModel* m_model;
    QLineEdit* m_search;
    QCheckBox* m_hide_empty;
    RowView* m_view;
};

} // namespace paramdb::browser
