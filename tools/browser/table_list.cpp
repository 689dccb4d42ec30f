#include "tools/browser/table_list.h"

#include "tools/browser/row_view.h"
#include "tools/browser/table_search.h"
#include "tools/browser/text_model.h"
#include "tools/browser/texts.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

namespace paramdb::browser {
namespace {

enum Column : int { TagColumn = 0, RowsColumn = 1, FoundColumn = 2 };

QString Tag(CatalogueEntry const& table) {
    return QString::fromWCharArray(table.description->tag);
}

} // namespace

TableList::TableList(std::function<void(CatalogueEntry const&)> on_choice, QWidget* parent)
    : QWidget(parent), m_on_choice(std::move(on_choice)),
      m_model(new TextModel(
          {{QStringLiteral("Table")}, {QStringLiteral("Rows"), true}, {QStringLiteral("Found in")}})),
      m_search(new QLineEdit), m_hide_empty(new QCheckBox(QStringLiteral("Hide e&mpty tables"))),
      m_view(new RowView(QStringLiteral("Tables"))) {
    m_model->setParent(this);
    m_search->setPlaceholderText(QStringLiteral("Search tables, columns and names"));
    m_search->setAccessibleName(QStringLiteral("Search tables, columns and names"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_view->setModel(m_model);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setColumnHidden(FoundColumn, true);
    QHeaderView& header = *m_view->horizontalHeader();
    header.setSectionResizeMode(TagColumn, QHeaderView::Stretch);
    header.setSectionResizeMode(RowsColumn, QHeaderView::ResizeToContents);
    header.setSectionResizeMode(FoundColumn, QHeaderView::Stretch);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_search);
    layout->addWidget(m_view);
    layout->addWidget(m_hide_empty);
    setFocusProxy(m_search);

    connect(m_search, &QLineEdit::textChanged, this, [this] { Narrow(); });
    connect(m_hide_empty, &QCheckBox::toggled, this, [this] { Narrow(); });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](QModelIndex const& now) { OnCurrent(now.row()); });
}

TableList::~TableList() = default;

void TableList::Fill(std::span<CatalogueEntry const> tables) {
    m_tables = tables;
    std::vector<QStringList> rows;
    for (CatalogueEntry const& table : tables)
        rows.push_back({Tag(table), Count(table.rows->RowCount())});
    QString const selected = m_selected;
    m_model->SetRows(std::move(rows));
    Narrow();
    if (!Select(selected) && !tables.empty())
        m_view->setCurrentIndex(m_model->index(0, TagColumn));
}

void TableList::Clear() {
    m_tables = {};
    m_model->SetRows({});
}

bool TableList::Select(QString const& tag) {
    for (std::size_t row = 0; row < m_tables.size(); ++row) {
        if (Tag(m_tables[row]) != tag)
            continue;
        auto const index = m_model->index(static_cast<int>(row), TagColumn);
        m_view->setRowHidden(index.row(), false);
        m_view->setCurrentIndex(index);
        m_view->scrollTo(index);
        return true;
    }
    return false;
}

bool TableList::eventFilter(QObject* object, QEvent* event) {
    if (object != m_search || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(object, event);
    int const key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
        m_search->clear();
        return true;
    }
    if (key != Qt::Key_Down && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    // To the table that is current if it is in sight, else to the first that is.
    int row = m_view->currentIndex().row();
    for (int other = 0; (row < 0 || m_view->isRowHidden(row)) && other < m_model->rowCount(); ++other)
        if (!m_view->isRowHidden(other))
            row = other;
    if (row >= 0 && !m_view->isRowHidden(row)) {
        m_view->setCurrentIndex(m_model->index(row, TagColumn));
        m_view->setFocus(Qt::TabFocusReason);
    }
    return true;
}

void TableList::Narrow() {
    QString const sought = m_search->text().trimmed();
    std::vector<QStringList> rows;
    for (std::size_t row = 0; row < m_tables.size(); ++row) {
        CatalogueEntry const& table = m_tables[row];
        auto const place = FindInTable(table, sought);
        rows.push_back({Tag(table), Count(table.rows->RowCount()), place.value_or(QString())});
        bool const hide = !place || (m_hide_empty->isChecked() && table.rows->RowCount() == 0);
        m_view->setRowHidden(static_cast<int>(row), hide);
    }
    m_model->SetRows(std::move(rows));
    m_view->setColumnHidden(FoundColumn, sought.isEmpty());
}

void TableList::OnCurrent(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= m_tables.size())
        return;
    CatalogueEntry const& table = m_tables[static_cast<std::size_t>(row)];
    m_selected = Tag(table);
    m_on_choice(table);
}

} // namespace paramdb::browser
