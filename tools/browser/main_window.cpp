#include "tools/browser/main_window.h"

#include <paramdb/query/param_instance.h>

#include "tools/browser/key_pane.h"
#include "tools/browser/message_pane.h"
#include "tools/browser/parameter_pane.h"
#include "tools/browser/range_pane.h"
#include "tools/browser/rotor_pane.h"
#include "tools/browser/row_view.h"
#include "tools/browser/table_list.h"
#include "tools/browser/texts.h"

#include <QtCore/QFileInfo>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStatusBar>
#include <utility>

namespace paramdb::browser {

MainWindow::MainWindow(QSettings& store)
    : m_settings(store), m_sink([this](std::vector<Message> messages) {
          m_messages->Add(std::move(messages));
          m_messages->SetTotal(m_sink.Count());
      }),
      m_loader({.on_progress =
                    [this](QString const& step, int percent) {
                        m_progress->setRange(0, 100);
                        m_progress->setValue(percent);
                        m_progress->setFormat(step + QStringLiteral(" %p %"));
                    },
                .on_end = [this](LoadOutcome const& outcome) { End(outcome); }},
               m_sink),
      m_watch([this] { Reload(); }) {
    setAcceptDrops(true);
    setCentralWidget(MakeCenter());
    MakeDocks();
    MakeMenus();
    m_status = new QLabel;
    m_status->setTextFormat(Qt::PlainText);
    m_progress = new QProgressBar;
    m_progress->setAccessibleName(QStringLiteral("Progress of the load"));
    m_progress->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    m_progress->hide();
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_progress);
    resize(fontMetrics().averageCharWidth() * 240, fontMetrics().height() * 58);
    ResetLayout();
    m_first_layout = saveState();
    Restore();
    m_tables->setFocus();
    ShowState();
}

MainWindow::~MainWindow() {
    // Their selections change while they go.
    m_rows->selectionModel()->disconnect(this);
    m_rows->setModel(nullptr);
}

void MainWindow::Open(QStringList const& files) {
    if (files.isEmpty())
        return;
    m_files.clear();
    for (QString const& file : files)
        m_files += QFileInfo(file).absoluteFilePath();
    m_settings.SetFolder(QFileInfo(m_files.front()).absolutePath());
    Reload();
}

void MainWindow::Reload() {
    if (m_files.isEmpty())
        return;
    if (m_loader.IsLoading())
        m_load_again = true;
    else
        Start();
}

void MainWindow::Start() {
    m_outcome.reset();
    ClearPanes();
    m_sink.Reset();
    m_messages->Clear();
    m_progress->setRange(0, 0);
    m_progress->show();
    m_watch.SetFiles(m_files);
    m_loader.Start(m_files);
    ShowState();
}

void MainWindow::End(LoadOutcome const& outcome) {
    m_outcome = outcome;
    m_has_data = m_has_data || outcome.end == LoadEnd::Complete || outcome.end == LoadEnd::Incomplete;
    m_messages->SetTotal(m_sink.Count());
    if (std::exchange(m_load_again, false)) {
        Start();
        return;
    }
    m_progress->hide();
    if (m_has_data)
        FillPanes();
    ShowState();
}

void MainWindow::ClearPanes() {
    if (m_row_model.Table())
        m_row_to_show = m_rows->currentIndex().row();
    m_tables->Clear();
    m_row_model.SetTable(nullptr);
    m_names->clear();
    m_key->Clear();
    m_parameter->Clear();
    m_rotors->Clear();
    m_ranges->Clear();
}

void MainWindow::FillPanes() {
    int const row = m_row_to_show;
    m_tables->Fill(CQtParamInstance().Entries());
    if (row >= 0 && row < m_row_model.rowCount())
        m_rows->setCurrentIndex(m_row_model.index(row, 0));
    m_parameter->Fill();
    m_rotors->Fill();
    m_ranges->Fill();
    m_key->Fill();
}

void MainWindow::ShowTable(CatalogueEntry const& table) {
    m_row_model.SetTable(&table);
    m_rows->FitColumns();
    m_names->clear();
    QString const columns = table.description->has_unique_keys ? QString() : QStringLiteral(", keys repeat");
    m_heading->setText(QStringLiteral("%1 %2 rows%3")
                           .arg(QString::fromWCharArray(table.description->tag),
                                browser::Count(table.rows->RowCount()), columns));
    if (m_row_model.rowCount() > 0)
        m_rows->setCurrentIndex(m_row_model.index(0, 0));
}

void MainWindow::ShowRow(int row) {
    m_names->setText(m_row_model.Names(row));
    m_names->setToolTip(Tip(m_names->text()));
}

void MainWindow::FindRow(bool back) {
    int const row = m_row_model.FindRow(m_find->text(), m_rows->currentIndex().row(), back);
    if (row >= 0)
        m_rows->setCurrentIndex(m_row_model.index(row, 0));
    else if (!m_find->text().isEmpty())
        statusBar()->showMessage(QStringLiteral("Not in the rows: %1").arg(m_find->text()), 3000);
}

void MainWindow::UseRow(int row) {
    if (auto const key = m_row_model.Key(row)) {
        SetKey(*key);
        GoTo(*m_key, Dock(QStringLiteral("key")));
    } else if (auto const parameter = m_row_model.Parameter(row)) {
        m_parameter->SetParameter(*parameter);
        GoTo(*m_parameter, Dock(QStringLiteral("parameter")));
    }
}

void MainWindow::SetKey(CClavis const& key) {
    m_key->SetKey(key);
    UseKey(key);
}

void MainWindow::UseKey(CClavis const& key) {
    m_parameter->SetMode(key[Clavis::qMode]);
    m_rotors->ShowMode(key[Clavis::qMode]);
    if (int const parameter = key[Clavis::qInstrParam]; parameter != -1)
        m_parameter->SetParameter(parameter);
}

QString MainWindow::StatusText() const {
    return m_status->text();
}

void MainWindow::ShowState() {
    QStringList names;
    for (QString const& file : m_files)
        names += QFileInfo(file).fileName();
    QString const program = QStringLiteral("paramdb browser");
    setWindowTitle(names.isEmpty()
                       ? program
                       : QStringLiteral("%1 \u2013 %2").arg(names.join(QStringLiteral(", ")), program));

    QString text;
    if (m_loader.IsLoading()) {
        text = QStringLiteral("Loading\u2026");
    } else if (!m_outcome) {
        text = QStringLiteral("Open a parameter file, or drag one in.");
    } else {
        std::size_t tables = 0;
        std::size_t rows = 0;
        CQtParamInstance const parameters;
        for (CatalogueEntry const& table : parameters.Entries()) {
            tables += table.rows->RowCount() > 0 ? 1 : 0;
            rows += table.rows->RowCount();
        }
        QString const kept = m_has_data ? QStringLiteral("; the data of before is shown") : QString();
        switch (m_outcome->end) {
        case LoadEnd::Complete:
            text = QStringLiteral("Loaded");
            break;
        case LoadEnd::Incomplete:
            text = QStringLiteral("Loaded in part, see the messages");
            break;
        case LoadEnd::Refused:
            text = QStringLiteral("Not loaded, the version is refused") + kept;
            break;
        case LoadEnd::Unreadable:
            text = QStringLiteral("Not loaded, see the messages") + kept;
            break;
        }
        if (m_has_data)
            text += QStringLiteral(" \u2013 %1 of %2 tables with %3 rows")
                        .arg(browser::Count(tables), browser::Count(parameters.Entries().size()),
                             browser::Count(rows));
        if (m_sink.Count() > 0)
            text += QStringLiteral(", messages: %1").arg(browser::Count(m_sink.Count()));
    }
    m_status->setText(text);
    if (m_row_model.Table() == nullptr)
        m_heading->setText(m_loader.IsLoading() ? text : QStringLiteral("No table"));
}

void MainWindow::Restore() {
    restoreGeometry(m_settings.Geometry());
    restoreState(m_settings.Layout());
    m_tables->HideEmptyBox().setChecked(m_settings.HideEmptyTables());
    m_tables->SetSelected(m_settings.Table());
    CQtParamInstance::ShowIdsInDialogs(m_settings.ShowIds());
    m_show_ids->setChecked(m_settings.ShowIds());
    SetKey(m_settings.Key());
    m_parameter->SetParameter(m_settings.Parameter());
    m_parameter->SetSpeed(m_settings.Speed());
    m_parameter->SetLineDistance(m_settings.LineDistance());
}

void MainWindow::Save() {
    m_settings.SetGeometry(saveGeometry());
    m_settings.SetLayout(saveState());
    m_settings.SetHideEmptyTables(m_tables->HideEmptyBox().isChecked());
    m_settings.SetTable(m_tables->Selected());
    m_settings.SetShowIds(m_show_ids->isChecked());
    m_settings.SetKey(m_key->Key());
    m_settings.SetParameter(m_parameter->Parameter());
    m_settings.SetSpeed(m_parameter->Speed());
    m_settings.SetLineDistance(m_parameter->LineDistance());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    Save();
    event->accept();
}

} // namespace paramdb::browser
