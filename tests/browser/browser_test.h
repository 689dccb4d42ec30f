// A test with the browser's window, its settings in a folder of their own, and the files that it opens.
#pragma once

#include <paramdb/platform/framework/message_queue.h>

#include "tools/browser/key_pane.h"
#include "tools/browser/main_window.h"
#include "tools/browser/message_pane.h"
#include "tools/browser/parameter_pane.h"
#include "tools/browser/range_pane.h"
#include "tools/browser/rotor_pane.h"
#include "tools/browser/row_view.h"
#include "tools/browser/table_list.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <tests/support/sources.h>
#include <vector>

// What gtest prints.
inline void PrintTo(QString const& text, std::ostream* out) {
    *out << text.toStdString();
}

inline QString const Gearbox = QStringLiteral(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake");
inline QString const Customer = QStringLiteral(PARAMDB_SOURCE_DIR "/examples/gearbox/customer.lake");

// Lets everything that is under way come to rest.
inline void Settle() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

// The cells of a view's row as they are shown, those of hidden columns included.
inline std::vector<std::string> Cells(QAbstractItemView const& view, int row) {
    std::vector<std::string> cells;
    for (int column = 0; column < view.model()->columnCount(); ++column)
        cells.push_back(view.model()->index(row, column).data().toString().toStdString());
    return cells;
}

inline void ClickRow(QTableView& view, int row, Qt::KeyboardModifiers keys = {}) {
    QModelIndex const index = view.model()->index(row, 0);
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, view.visualRect(index).center());
    Settle();
}

class BrowserTest : public LoadTest {
protected:
    static constexpr int Patience = 20'000; // ms

    ~BrowserTest() override {
        m_window.reset();
        CMessageQueue::Clear();
        CQtParamInstance::ShowIdsInDialogs(false);
    }

    // Makes the window and shows it.
    paramdb::browser::MainWindow& Show() {
        m_window.reset();
        m_window.emplace(m_store);
        m_window->show();
        m_window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*m_window));
        return *m_window;
    }
    // Opens files in the window and waits until they are loaded.
    void Open(QStringList const& files) {
        m_window->Open(files);
        WaitForLoad();
    }
    void WaitForLoad() {
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return !m_window->IsLoading() && m_window->Outcome(); }, Patience));
        Settle();
    }
    paramdb::browser::MainWindow& ShowGearbox() {
        Show();
        Open({Gearbox});
        return *m_window;
    }
    // An entry of a menu by its text.
    QAction& Action(char const* menu, char const* text) {
        for (QAction* const top : m_window->menuBar()->actions())
            if (top->text() == QString::fromUtf8(menu))
                for (QAction* const item : top->menu()->actions())
                    if (item->text() == QString::fromUtf8(text))
                        return *item;
        throw std::runtime_error(std::string("no action ") + text);
    }
    QString Write(char8_t const* name, std::string_view bytes) {
        auto const path = m_folder / name;
        test_support::WriteBytes(path, bytes);
        return QString::fromStdU16String(path.u16string());
    }
    // The row of a table in the list of tables.
    int RowOfTable(QString const& tag) {
        auto const& model = *m_window->Tables().View().model();
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.index(row, 0).data().toString() == tag)
                return row;
        ADD_FAILURE() << "no table " << tag.toStdString();
        return -1;
    }
    // The tags that the list of tables shows.
    std::vector<std::string> ShownTables() {
        std::vector<std::string> tags;
        auto& view = m_window->Tables().View();
        for (int row = 0; row < view.model()->rowCount(); ++row)
            if (!view.isRowHidden(row))
                tags.push_back(view.model()->index(row, 0).data().toString().toStdString());
        return tags;
    }

    test_support::TempDir m_folder;
    QSettings m_store{QString::fromStdU16String((m_folder / u8"settings.ini").u16string()),
                      QSettings::IniFormat};
    std::optional<paramdb::browser::MainWindow> m_window;
};
