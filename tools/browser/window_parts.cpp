// MainWindow: its panes, menus and what is dragged into it.
#include <paramdb/query/param_instance.h>

#include "tools/browser/key_pane.h"
#include "tools/browser/main_window.h"
#include "tools/browser/message_pane.h"
#include "tools/browser/parameter_pane.h"
#include "tools/browser/range_pane.h"
#include "tools/browser/rotor_pane.h"
#include "tools/browser/row_view.h"
#include "tools/browser/table_list.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QVBoxLayout>

namespace paramdb::browser {
namespace {

// The files of a drag; empty if anything in it is none.
QStringList FilesOf(QMimeData const& data) {
    QStringList files;
    for (QUrl const& url : data.urls()) {
        if (!url.isLocalFile())
            return {};
        files += url.toLocalFile();
    }
    return files;
}

} // namespace

QWidget* MainWindow::MakeCenter() {
    auto* const center = new QWidget;
    m_heading = new QLabel;
    m_heading->setTextFormat(Qt::PlainText);
    m_rows = new RowView(QStringLiteral("Rows"));
    m_rows->setModel(&m_row_model);
    m_rows->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_find = new QLineEdit;
    m_find->setPlaceholderText(QStringLiteral("Find in rows"));
    m_find->setAccessibleName(QStringLiteral("Find in rows"));
    m_find->setClearButtonEnabled(true);
    m_find->installEventFilter(this);
    m_names = new QLabel;
    m_names->setTextFormat(Qt::PlainText);
    m_names->setAccessibleName(QStringLiteral("Names in the row"));
    m_names->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_names->setWordWrap(true);
    m_names->setMinimumHeight(2 * m_names->fontMetrics().lineSpacing());
    m_names->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    connect(m_rows->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](QModelIndex const& now) { ShowRow(now.row()); });
    connect(m_rows, &QAbstractItemView::activated, this,
            [this](QModelIndex const& row) { UseRow(row.row()); });

    auto* const layout = new QVBoxLayout(center);
    auto* const top = new QHBoxLayout;
    top->addWidget(m_heading, 1);
    top->addWidget(m_find, 1);
    layout->addLayout(top);
    layout->addWidget(m_rows, 1);
    layout->addWidget(m_names);
    return center;
}

void MainWindow::MakeDocks() {
    m_tables = new TableList([this](CatalogueEntry const& table) { ShowTable(table); });
    m_parameter = new ParameterPane;
    m_rotors = new RotorPane;
    m_ranges = new RangePane;
    m_messages = new MessagePane;
    m_key = new KeyPane([this](CClavis const& key) { UseKey(key); });
    m_panes = {{QStringLiteral("tables"), QStringLiteral("Tables"), m_tables, nullptr},
               {QStringLiteral("key"), QStringLiteral("Key"), m_key, nullptr},
               {QStringLiteral("parameter"), QStringLiteral("Parameter"), m_parameter, nullptr},
               {QStringLiteral("rotors"), QStringLiteral("Rotors"), m_rotors, nullptr},
               {QStringLiteral("ranges"), QStringLiteral("Ranges"), m_ranges, nullptr},
               {QStringLiteral("messages"), QStringLiteral("Messages"), m_messages, nullptr}};
    for (Pane& pane : m_panes) {
        pane.dock = new QDockWidget(pane.title, this);
        pane.dock->setObjectName(pane.name);
        auto* const frame = new QWidget;
        auto* const layout = new QVBoxLayout(frame);
        layout->addWidget(pane.widget);
        frame->setFocusProxy(pane.widget);
        pane.dock->setWidget(frame);
        addDockWidget(Qt::RightDockWidgetArea, pane.dock);
    }
}

QDockWidget* MainWindow::Dock(QString const& name) const {
    for (Pane const& pane : m_panes)
        if (pane.name == name)
            return pane.dock;
    return nullptr;
}

// Tables at the left, messages below, the key above the other panes, which stand behind each other.
void MainWindow::ResetLayout() {
    if (!m_first_layout.isEmpty()) {
        restoreState(m_first_layout);
        return;
    }
    auto* const tables = Dock(QStringLiteral("tables"));
    auto* const key = Dock(QStringLiteral("key"));
    auto* const parameter = Dock(QStringLiteral("parameter"));
    auto* const rotors = Dock(QStringLiteral("rotors"));
    auto* const messages = Dock(QStringLiteral("messages"));
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    addDockWidget(Qt::LeftDockWidgetArea, tables);
    addDockWidget(Qt::BottomDockWidgetArea, messages);
    splitDockWidget(key, parameter, Qt::Vertical);
    tabifyDockWidget(parameter, rotors);
    tabifyDockWidget(rotors, Dock(QStringLiteral("ranges")));
    parameter->raise();
    int const letter = fontMetrics().averageCharWidth();
    int const line = fontMetrics().height();
    resizeDocks({tables, parameter}, {letter * 46, letter * 90}, Qt::Horizontal);
    resizeDocks({messages}, {line * 7}, Qt::Vertical);
    resizeDocks({key, parameter}, {line * 17, line * 34}, Qt::Vertical);
}

void MainWindow::MakeMenus() {
    auto const add = [this](QMenu& menu, QString const& text, QKeySequence const& keys, auto action) {
        QAction* const item = menu.addAction(text);
        item->setShortcut(keys);
        connect(item, &QAction::triggered, this, action);
        return item;
    };
    QMenu& file = *menuBar()->addMenu(QStringLiteral("&File"));
    add(file, QStringLiteral("&Open\u2026"), QKeySequence::Open, [this] { AskForFiles(); });
    add(file, QStringLiteral("&Reload"), QKeySequence::Refresh, [this] { Reload(); });
    file.addSeparator();
    add(file, QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); });

    QMenu& edit = *menuBar()->addMenu(QStringLiteral("&Edit"));
    auto* const copy =
        add(edit, QStringLiteral("&Copy Rows"), QKeySequence::Copy, [this] { CopyRows(false); });
    auto* const copy_named = add(edit, QStringLiteral("Copy Rows with Column &Names"),
                                 QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), [this] { CopyRows(true); });
    edit.addSeparator();
    add(edit, QStringLiteral("&Find in Rows"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), [this] {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    });
    add(edit, QStringLiteral("Find N&ext"), QKeySequence(Qt::Key_F3), [this] { FindRow(false); });
    add(edit, QStringLiteral("Find &Previous"), QKeySequence(Qt::SHIFT | Qt::Key_F3),
        [this] { FindRow(true); });
    add(edit, QStringLiteral("&Use the Row's Key or Parameter"), QKeySequence(Qt::CTRL | Qt::Key_U),
        [this] { UseRow(m_rows->currentIndex().row()); });
    m_rows->addActions({copy, copy_named});
    m_rows->addAction(edit.actions().back());

    MakeViewMenu();

    QMenu& help = *menuBar()->addMenu(QStringLiteral("&Help"));
    add(help, QStringLiteral("&About paramdb Browser"), QKeySequence(), [this] { ShowAbout(); });
}

void MainWindow::MakeViewMenu() {
    QMenu& view = *menuBar()->addMenu(QStringLiteral("&View"));
    int number = 0;
    auto const add_place = [&](QString const& title, QWidget& widget, QDockWidget* dock) {
        QAction* const item = view.addAction(QStringLiteral("Go to %1").arg(title));
        item->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + number++)));
        connect(item, &QAction::triggered, this, [this, &widget, dock] { GoTo(widget, dock); });
    };
    for (Pane const& pane : m_panes) {
        add_place(pane.title, *pane.widget, pane.dock);
        if (pane.widget == m_tables)
            add_place(QStringLiteral("Rows"), *m_rows, nullptr);
    }
    view.addSeparator();
    QMenu& shown = *view.addMenu(QStringLiteral("&Panes"));
    for (Pane const& pane : m_panes)
        shown.addAction(pane.dock->toggleViewAction());
    m_show_ids = view.addAction(QStringLiteral("Show &Ids beside Names"));
    m_show_ids->setCheckable(true);
    connect(m_show_ids, &QAction::triggered, this, [this](bool show) { ShowIds(show); });
    QAction* const reset = view.addAction(QStringLiteral("&Reset Layout"));
    connect(reset, &QAction::triggered, this, [this] { ResetLayout(); });
}

void MainWindow::GoTo(QWidget& widget, QDockWidget* dock) {
    if (dock) {
        dock->show();
        dock->raise();
    }
    widget.setFocus(Qt::ShortcutFocusReason);
    if (&widget == m_tables)
        m_tables->SearchEdit().selectAll();
}

void MainWindow::CopyRows(bool with_names) {
    auto const* const view = dynamic_cast<RowView const*>(QApplication::focusWidget());
    (view ? view : m_rows)->Copy(with_names);
}

void MainWindow::AskForFiles() {
    Open(QFileDialog::getOpenFileNames(this, QStringLiteral("Open parameter files"), m_settings.Folder(),
                                       QStringLiteral("Parameter files (*.lake);;All files (*)")));
}

void MainWindow::ShowAbout() {
    QMessageBox::about(this, QStringLiteral("About paramdb Browser"),
                       QStringLiteral("paramdb browser %1\n\nShows what is in the parameter files of a "
                                      "noise and vibration analysis system.")
                           .arg(QStringLiteral(PARAMDB_VERSION)));
}

void MainWindow::ShowIds(bool show) {
    CQtParamInstance::ShowIdsInDialogs(show);
    if (m_loader.IsLoading() || !m_has_data)
        return;
    ClearPanes();
    FillPanes();
}

bool MainWindow::eventFilter(QObject* object, QEvent* event) {
    if (object != m_find || event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(object, event);
    auto const& key = *static_cast<QKeyEvent*>(event);
    bool const is_return = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (is_return)
        FindRow(key.modifiers().testFlag(Qt::ShiftModifier));
    else if (key.key() == Qt::Key_Down)
        m_rows->setFocus(Qt::TabFocusReason);
    else if (key.key() == Qt::Key_Escape)
        m_find->clear();
    else
        return false;
    return true;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!FilesOf(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    QStringList const files = FilesOf(*event->mimeData());
    if (files.isEmpty())
        return;
    event->acceptProposedAction();
    Open(files);
}

} // namespace paramdb::browser
