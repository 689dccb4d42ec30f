// The window of paramdb-browser: panes around the rows of a table, and who may look into the store when.
//
//     QSettings store("paramdb", "browser");
//     MainWindow window(store);
//     window.show();
//     window.Open({"gearbox.lake"});
//
// Before a load all panes are emptied, and filled after it; in between the store belongs to the loader.
#pragma once

#include "tools/browser/file_watch.h"
#include "tools/browser/loader.h"
#include "tools/browser/message_sink.h"
#include "tools/browser/row_model.h"
#include "tools/browser/settings.h"

#include <QtWidgets/QMainWindow>
#include <functional>
#include <optional>
#include <vector>

class QDockWidget;
class QLabel;
class QLineEdit;
class QMenu;
class QProgressBar;

namespace paramdb::browser {

class KeyPane;
class MessagePane;
class ParameterPane;
class RangePane;
class RotorPane;
class RowView;
class TableList;

class MainWindow : public QMainWindow {
public:
    // The store is not owned and must outlive the window.
    explicit MainWindow(QSettings& store);
    ~MainWindow() override;

    // Loads these files instead of those of before. During a load: after it.
    void Open(QStringList const& files);
    void Reload();
    [[nodiscard]] QStringList const& Files() const noexcept { return m_files; }
    [[nodiscard]] bool IsLoading() const noexcept { return m_loader.IsLoading(); }
    // How the last load ended; none before and during a load.
    [[nodiscard]] std::optional<LoadOutcome> const& Outcome() const noexcept { return m_outcome; }

    // Shows a key in the editor, its parameter and the rotors of its mode.
    void SetKey(CClavis const& key);

    // The rows as text, with tabs, onto the clipboard: those of the table that has the keyboard.
    void CopyRows(bool with_names);

    // What the status bar says of the data.
    [[nodiscard]] QString StatusText() const;

    [[nodiscard]] TableList& Tables() noexcept { return *m_tables; }
    [[nodiscard]] RowView& Rows() noexcept { return *m_rows; }
    [[nodiscard]] KeyPane& Key() noexcept { return *m_key; }
    [[nodiscard]] ParameterPane& Parameter() noexcept { return *m_parameter; }
    [[nodiscard]] RotorPane& Rotors() noexcept { return *m_rotors; }
    [[nodiscard]] RangePane& Ranges() noexcept { return *m_ranges; }
    [[nodiscard]] MessagePane& Messages() noexcept { return *m_messages; }
    // Where a text is looked for in the rows; the return key goes to the next one, with the shift key to the
    // one before.
    [[nodiscard]] QLineEdit& FindEdit() noexcept { return *m_find; }
    // The dock around a pane, by its object name: "tables", "key", "parameter", "rotors", "ranges",
    // "messages". Null on a miss.
    [[nodiscard]] QDockWidget* Dock(QString const& name) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Pane {
        QString name;
        QString title;
        QWidget* widget;
        QDockWidget* dock;
    };

    [[nodiscard]] QWidget* MakeCenter();
    void MakeDocks();
    void MakeMenus();
    void MakeViewMenu();
    void GoTo(QWidget& widget, QDockWidget* dock);
    void ResetLayout();
    void Restore();
    void Save();

    void AskForFiles();
    void ShowAbout();
    void ShowIds(bool show);

    void Start();
    void End(LoadOutcome const& outcome);
    void ClearPanes();
    void FillPanes();
    void ShowTable(CatalogueEntry const& table);
    void ShowRow(int row);
    void FindRow(bool back);
    void UseRow(int row);
    void UseKey(CClavis const& key);
    void ShowState();

    Settings m_settings;
    QStringList m_files;
    std::optional<LoadOutcome> m_outcome;
    bool m_load_again = false;
    bool m_has_data = false;
    int m_row_to_show = -1; // kept over a reload
    RowModel m_row_model;
    MessageSink m_sink;
    Loader m_loader;
    FileWatch m_watch;

    std::vector<Pane> m_panes;
    QByteArray m_first_layout;
    QLabel* m_heading = nullptr;
    QLineEdit* m_find = nullptr;
    RowView* m_rows = nullptr;
    QLabel* m_names = nullptr;
    TableList* m_tables = nullptr;
    KeyPane* m_key = nullptr;
    ParameterPane* m_parameter = nullptr;
    RotorPane* m_rotors = nullptr;
    RangePane* m_ranges = nullptr;
    MessagePane* m_messages = nullptr;
    QLabel* m_status = nullptr;
    QProgressBar* m_progress = nullptr;
    QAction* m_show_ids = nullptr;
};

} // namespace paramdb::browser
