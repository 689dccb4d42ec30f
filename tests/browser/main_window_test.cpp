#include "tools/browser/main_window.h"
#include "tools/browser/screenshot.h"

#include <QtGui/QClipboard>
#include <QtGui/QImage>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>
#include <tests/browser/browser_test.h>
#include <tests/tools/sample_lake.h>

namespace paramdb::browser {
namespace {

using BrowserWindow = BrowserTest;

TEST_F(BrowserWindow, StartsEmpty) {
    MainWindow& window = Show();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("paramdb browser"));
    EXPECT_EQ(window.StatusText(), QStringLiteral("Open a parameter file, or drag one in."));
    EXPECT_FALSE(window.Outcome());
    EXPECT_EQ(window.Tables().View().model()->rowCount(), 0);
    window.Open({});
    window.Reload();
    EXPECT_FALSE(window.IsLoading());
    window.CopyRows(true);
}

TEST_F(BrowserWindow, ShowsTheTableThatIsClicked) {
    MainWindow& window = ShowGearbox();
    ClickRow(window.Tables().View(), RowOfTable(QStringLiteral("<TRotorSpeed>")));
    EXPECT_EQ(window.Rows().model()->rowCount(), 155);
    EXPECT_EQ(Cells(window.Rows(), 5),
              (std::vector<std::string>{"0", "31", "0.2826086956521739", "13", "46"}));
    QTest::keyClick(&window.Tables().View(), Qt::Key_Down);
    EXPECT_EQ(window.Tables().Selected(), QStringLiteral("<TBaseOrder>"));
    EXPECT_EQ(window.Rows().model()->rowCount(), 39);
}

TEST_F(BrowserWindow, NarrowsTheTables) {
    MainWindow& window = ShowGearbox();
    TableList& tables = window.Tables();
    ClickRow(tables.View(), RowOfTable(QStringLiteral("<TRotorSpeed>")));
    tables.SearchEdit().setFocus();
    QTest::keyClicks(&tables.SearchEdit(), QStringLiteral("rotorsp"));
    EXPECT_EQ(ShownTables(),
              (std::vector<std::string>{"<TRotorSpeed>", "<TRotorSpeedSource>", "<TRotorSpeedReference>"}));
    EXPECT_EQ(tables.Selected(), QStringLiteral("<TRotorSpeed>"));
    EXPECT_EQ(window.Rows().model()->rowCount(), 155); // the rows stay

    tables.SearchEdit().selectAll();
    QTest::keyClicks(&tables.SearchEdit(), QStringLiteral("base_order"));
    EXPECT_EQ(Cells(tables.View(), RowOfTable(QStringLiteral("<TBaseOrder>"))),
              (std::vector<std::string>{"<TBaseOrder>", "39", "column base_order"}));
    tables.SearchEdit().selectAll();
    QTest::keyClicks(&tables.SearchEdit(), QStringLiteral("loose wheel of gear 2"));
    EXPECT_EQ(ShownTables(), (std::vector<std::string>{"<TLocation>"}));
    EXPECT_EQ(Cells(tables.View(), 2),
              (std::vector<std::string>{"<TLocation>", "65", "Loose wheel of gear 2"}));
    EXPECT_FALSE(tables.View().isColumnHidden(2));

    QTest::keyClick(&tables.SearchEdit(), Qt::Key_Down);
    EXPECT_EQ(tables.Selected(), QStringLiteral("<TLocation>"));
    EXPECT_TRUE(tables.View().hasFocus());
    tables.SearchEdit().setFocus();
    QTest::keyClick(&tables.SearchEdit(), Qt::Key_Escape);
    EXPECT_EQ(ShownTables().size(), 103U);
    EXPECT_TRUE(tables.View().isColumnHidden(2));
    QTest::keyClicks(&tables.SearchEdit(), QStringLiteral("nothing is called so"));
    EXPECT_TRUE(ShownTables().empty());
    QTest::keyClick(&tables.SearchEdit(), Qt::Key_Down);
    EXPECT_TRUE(tables.SearchEdit().hasFocus());
    EXPECT_TRUE(tables.Select(QStringLiteral("<TChannel>"))); // shows a table that was out of sight
    EXPECT_EQ(ShownTables(), (std::vector<std::string>{"<TChannel>"}));
    EXPECT_FALSE(tables.Select(QStringLiteral("<TNone>")));
}

TEST_F(BrowserWindow, HidesTablesWithoutRows) {
    MainWindow& window = Show();
    Open({Write(u8"sample.lake", SampleLake)});
    EXPECT_EQ(ShownTables().size(), 103U);
    window.Tables().HideEmptyBox().click();
    EXPECT_EQ(ShownTables(), (std::vector<std::string>{"<TMode>", "<TRotorSpeed>", "<TAuxStrings>"}));
}

TEST_F(BrowserWindow, CopiesRowsOfTheTableWithTheKeyboard) {
    MainWindow& window = ShowGearbox();
    window.Rows().setFocus();
    ClickRow(window.Rows(), 1);
    ClickRow(window.Rows(), 2, Qt::ShiftModifier);
    QTest::keyClick(&window.Rows(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("2\tWarm up\n3\tShifting\n"));
    QTest::keyClick(&window.Rows(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("mode\tname\n2\tWarm up\n3\tShifting\n"));
    ClickRow(window.Tables().View(), 1);
    QTest::keyClick(&window.Tables().View(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("<TChannel>\t9\n"));
}

TEST_F(BrowserWindow, FindsRows) {
    MainWindow& window = ShowGearbox();
    window.Tables().Select(QStringLiteral("<TMode>"));
    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(window.FindEdit().hasFocus());
    auto const row = [&] { return Cells(window.Rows(), window.Rows().currentIndex().row())[1]; };
    QTest::keyClicks(&window.FindEdit(), QStringLiteral("GEAR c"));
    QTest::keyClick(&window.FindEdit(), Qt::Key_Return);
    EXPECT_EQ(row(), "1. gear coast");
    QTest::keyClick(&window.FindEdit(), Qt::Key_Return);
    EXPECT_EQ(row(), "1. gear constant 1500");
    QTest::keyClick(&window.FindEdit(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(row(), "1. gear coast");
    QTest::keyClick(&window, Qt::Key_F3, Qt::ShiftModifier); // from the end
    EXPECT_EQ(row(), "6. gear constant 3000");
    QTest::keyClick(&window, Qt::Key_F3); // from the top
    EXPECT_EQ(row(), "1. gear coast");
    QTest::keyClicks(&window.FindEdit(), QStringLiteral("xyz"));
    QTest::keyClick(&window.FindEdit(), Qt::Key_Return);
    EXPECT_EQ(row(), "1. gear coast");
    EXPECT_EQ(window.statusBar()->currentMessage(), QStringLiteral("Not in the rows: GEAR cxyz"));
    QTest::keyClick(&window.FindEdit(), Qt::Key_Escape);
    EXPECT_EQ(window.FindEdit().text(), QString());
    QTest::keyClick(&window.FindEdit(), Qt::Key_Down);
    EXPECT_TRUE(window.Rows().hasFocus());
}

TEST_F(BrowserWindow, TakesKeyOrParameterOfARow) {
    MainWindow& window = ShowGearbox();
    window.Tables().Select(QStringLiteral("<TIpParamAndStore>"));
    window.Rows().setFocus();
    ClickRow(window.Rows(), 3);
    QTest::keyClick(&window.Rows(), Qt::Key_U, Qt::ControlModifier);
    EXPECT_EQ(window.Key().PlainText(), QStringLiteral("1/1008/3/202/1066/2"));
    EXPECT_EQ(window.Parameter().Parameter(), 1066);
    window.Tables().Select(QStringLiteral("<TInstrumentParam>"));
    window.Rows().setFocus();
    ClickRow(window.Rows(), 14);
    QTest::keyClick(&window.Rows(), Qt::Key_Return);
    EXPECT_EQ(window.Parameter().Parameter(), 1015);
    EXPECT_EQ(window.Key().PlainText(), QStringLiteral("1/1008/3/202/1066/2"));
}

TEST_F(BrowserWindow, ReachesEveryPaneByKeyboard) {
    MainWindow& window = ShowGearbox();
    QWidget* const panes[] = {&window.Tables(), &window.Rows(),   &window.Key(),     &window.Parameter(),
                              &window.Rotors(), &window.Ranges(), &window.Messages()};
    window.Dock(QStringLiteral("messages"))->close();
    Settle();
    int number = 0;
    for (QWidget* const pane : panes) {
        SCOPED_TRACE(number);
        QTest::keyClick(&window, static_cast<Qt::Key>(Qt::Key_1 + number++), Qt::ControlModifier);
        Settle();
        QWidget* const focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        EXPECT_TRUE(focus == pane || pane->isAncestorOf(focus));
        EXPECT_TRUE(focus->isVisible());
    }
    EXPECT_EQ(window.Dock(QStringLiteral("none")), nullptr);
}

TEST_F(BrowserWindow, RemembersItsLayout) {
    MainWindow& window = ShowGearbox();
    window.resize(1111, 777);
    window.Dock(QStringLiteral("messages"))->close();
    window.addDockWidget(Qt::LeftDockWidgetArea, window.Dock(QStringLiteral("rotors")));
    window.Tables().Select(QStringLiteral("<TBaseOrder>"));
    window.Tables().HideEmptyBox().setChecked(true);
    window.SetKey(CClavis(11, 1001, 1, 2, 1015, 1));
    window.Parameter().SetParameter(1025);
    window.Parameter().SetSpeed(4321);
    window.close();

    MainWindow& again = Show();
    Open({Gearbox});
    EXPECT_EQ(again.size(), QSize(1111, 777));
    EXPECT_FALSE(again.Dock(QStringLiteral("messages"))->isVisible());
    EXPECT_TRUE(again.Dock(QStringLiteral("key"))->isVisible());
    EXPECT_EQ(again.dockWidgetArea(again.Dock(QStringLiteral("rotors"))), Qt::LeftDockWidgetArea);
    EXPECT_EQ(again.Tables().Selected(), QStringLiteral("<TBaseOrder>"));
    EXPECT_TRUE(again.Tables().HideEmptyBox().isChecked());
    EXPECT_EQ(again.Key().PlainText(), QStringLiteral("11/1001/1/2/1015/1"));
    EXPECT_EQ(again.Parameter().Parameter(), 1025);
    EXPECT_EQ(again.Parameter().Speed(), 4321);
    EXPECT_EQ(again.Rotors().PhysicalModes().currentText(), QStringLiteral("1 Gear 1")); // of the key's mode

    Action("&View", "&Reset Layout").trigger();
    Settle();
    EXPECT_TRUE(again.Dock(QStringLiteral("messages"))->isVisible());
    EXPECT_EQ(again.dockWidgetArea(again.Dock(QStringLiteral("rotors"))), Qt::RightDockWidgetArea);
}

TEST_F(BrowserWindow, ShowsIdsBesideNames) {
    MainWindow& window = ShowGearbox();
    window.Dock(QStringLiteral("ranges"))->raise();
    Settle();
    window.SetKey(CClavis(11, 1001, 1, 2, 1015, 1));
    Action("&View", "Show &Ids beside Names").trigger();
    Settle();
    EXPECT_EQ(window.Key().Editor().GetColumnCount(), 3);
    EXPECT_EQ(window.Ranges().Grid().GetItemText(0, 0), L"Idle [1]");
    window.close();
    EXPECT_EQ(Show().Rows().model()->rowCount(), 0);
    EXPECT_TRUE(CQtParamInstance::ShowIdsInDialogs());
    Open({Gearbox});
    m_window->Dock(QStringLiteral("ranges"))->raise();
    Action("&View", "Show &Ids beside Names").trigger();
    Settle();
    EXPECT_EQ(m_window->Ranges().Grid().GetItemText(0, 0), L"Idle");
}

TEST_F(BrowserWindow, SaysWhatItIs) {
    Show();
    QString text;
    QTimer::singleShot(0, [&text] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        text = box->text();
        box->close();
    });
    Action("&Help", "&About paramdb Browser").trigger();
    EXPECT_TRUE(text.startsWith(QStringLiteral("paramdb browser "))) << text.toStdString();
    EXPECT_TRUE(text.contains(QChar(u'.')));
}

TEST_F(BrowserWindow, WritesAPictureOfItself) {
    QString const picture = QString::fromStdU16String((m_folder / u8"browser.png").u16string());
    MainWindow& window = Show();
    window.Open({Gearbox});
    EXPECT_TRUE(WriteScreenshot(window, picture));
    QImage const image(picture);
    EXPECT_EQ(image.size(), window.size() * window.devicePixelRatio());
    EXPECT_FALSE(WriteScreenshot(window, QStringLiteral("/no/such/folder/browser.png")));
    Open({Write(u8"empty.lake", "")});
    EXPECT_FALSE(WriteScreenshot(window, picture));
}

} // namespace
} // namespace paramdb::browser
