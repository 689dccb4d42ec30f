// Opening and reloading: what the window does around a load.
#include "tools/browser/loader.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtWidgets/QLineEdit>
#include <fstream>
#include <tests/browser/browser_test.h>
#include <tests/tools/sample_lake.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace paramdb::browser {
namespace {

class BrowserLoading : public BrowserTest {
protected:
    std::vector<std::string> MessageTexts() {
        std::vector<std::string> texts;
        for (Message const& message : m_window->Messages().Messages())
            texts.push_back(message.text.toStdString());
        return texts;
    }
};

TEST_F(BrowserLoading, LoadsTheExample) {
    MainWindow& window = ShowGearbox();
    EXPECT_EQ(window.Outcome()->end, LoadEnd::Complete);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("gearbox.lake \u2013 paramdb browser"));
    EXPECT_EQ(window.StatusText(), QStringLiteral("Loaded \u2013 103 of 103 tables with 5 907 rows"));
    EXPECT_TRUE(window.Messages().Messages().empty());
    EXPECT_EQ(window.Tables().View().model()->rowCount(), 103);
    EXPECT_EQ(Cells(window.Tables().View(), 0), (std::vector<std::string>{"<TMode>", "30", ""}));
    EXPECT_EQ(window.Tables().Selected(), QStringLiteral("<TMode>"));
    EXPECT_EQ(Cells(window.Rows(), 0), (std::vector<std::string>{"1", "Idle"}));
}

TEST_F(BrowserLoading, MergesLaterFiles) {
    MainWindow& window = Show();
    Open({Gearbox, Customer});
    EXPECT_EQ(window.Outcome()->end, LoadEnd::Complete);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("gearbox.lake, customer.lake \u2013 paramdb browser"));
    EXPECT_EQ(window.StatusText(), QStringLiteral("Loaded \u2013 103 of 103 tables with 4 905 rows"));
}

TEST_F(BrowserLoading, SaysWhyAFileDoesNotLoad) {
    struct Case {
        QString file;
        LoadEnd end;
        QString status;
        std::string message; // its end
    };
    QString const none = QStringLiteral("Not loaded, see the messages, messages: 1");
    std::vector<Case> const cases{
        {Write(u8"garbage.lake", std::string("\x01\x00\xFF\x80 garbage: \n\n}", 17)), LoadEnd::Unreadable,
         none, "garbage.lake: no parameter file: it holds binary data"},
        {Write(u8"empty.lake", ""), LoadEnd::Unreadable, none, "empty.lake: the file is empty"},
        {QStringLiteral("/no/such/file.lake"), LoadEnd::Unreadable, none, ""},
        {Write(u8"old.lake", RefusedLake), LoadEnd::Refused,
         QStringLiteral("Not loaded, the version is refused, messages: 1"), ""},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.file.toStdString());
        MainWindow& window = Show();
        Open({test.file});
        EXPECT_EQ(window.Outcome()->end, test.end);
        EXPECT_EQ(window.StatusText(), test.status);
        ASSERT_EQ(MessageTexts().size(), 1U);
        EXPECT_TRUE(MessageTexts()[0].ends_with(test.message)) << MessageTexts()[0];
        EXPECT_EQ(window.Messages().Messages()[0].style, 4);
        EXPECT_EQ(window.Tables().View().model()->rowCount(), 0);
    }
}

TEST_F(BrowserLoading, KeepsTheDataOfBeforeWhenNothingCameInItsPlace) {
    MainWindow& window = ShowGearbox();
    window.Tables().Select(QStringLiteral("<TRotorSpeed>"));
    for (QString const& file :
         {Write(u8"garbage.lake", "no key in here"), Write(u8"old.lake", RefusedLake)}) {
        SCOPED_TRACE(file.toStdString());
        Open({file});
        EXPECT_TRUE(window.StatusText().contains(
            QStringLiteral("; the data of before is shown \u2013 103 of 103 tables with 5 907 rows")));
        EXPECT_EQ(window.Tables().Selected(), QStringLiteral("<TRotorSpeed>"));
        EXPECT_EQ(window.Rows().model()->rowCount(), 155);
        EXPECT_EQ(window.Messages().Messages().size(), 1U);
    }
}

TEST_F(BrowserLoading, ListsTheMessagesOfALoad) {
    MainWindow& window = Show();
    Open({Write(u8"faulty.lake", FaultyLake)});
    ASSERT_FALSE(MessageTexts().empty());
    EXPECT_EQ(Cells(window.Messages().View(), 0)[0], "Fault");
    EXPECT_EQ(window.Messages().MoreText(), QString());
    EXPECT_EQ(Cells(window.Tables().View(), RowOfTable(QStringLiteral("<TTrigger>")))[1], "1");
    Open({Gearbox});
    EXPECT_TRUE(MessageTexts().empty()); // those of before are gone
}

TEST_F(BrowserLoading, LoadsGarbageOfAllKindsWithoutACrash) {
    constexpr unsigned seed = 20'261;
    std::mt19937 random(seed);
    std::string const gearbox = test_support::ReadBytes(Gearbox.toStdString());
    Show();
    for (int round = 0; round < 4; ++round) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        std::string text = gearbox;
        for (int change = 0; change < 200; ++change)
            text[random() % text.size()] = static_cast<char>(' ' + random() % 96);
        Open({Write(u8"random.lake", text)});
        m_window->SetKey(CClavis(11, 1001, 1, 2, 1015, 1));
        m_window->grab();
    }
}

TEST_F(BrowserLoading, ReloadsWhenTheFileChanges) {
    QString const file = Write(u8"sample.lake", SampleLake);
    MainWindow& window = Show();
    Open({file});
    window.Tables().Select(QStringLiteral("<TRotorSpeed>"));
    ClickRow(window.Rows(), 2);
    CClavis const key(3, -1, -1, -1, -1, -1);
    window.SetKey(key);
    std::string changed = SampleLake;
    changed.replace(changed.find("\t2 1 inf"), 1, "\t1 3 1 1 1\n\t");
    Write(u8"new", changed); // and into the place of the old one, as editors do it
    std::filesystem::rename(m_folder / u8"new", m_folder / u8"sample.lake");
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.Rows().model()->rowCount() == 4 && !window.IsLoading(); },
                                Patience));
    // Table, row and key are where they were.
    EXPECT_EQ(window.Tables().Selected(), QStringLiteral("<TRotorSpeed>"));
    EXPECT_EQ(window.Rows().currentIndex().row(), 2);
    EXPECT_EQ(window.Key().Key(), key);
}

TEST_F(BrowserLoading, ReloadsOnDemand) {
    QString const file = Write(u8"sample.lake", SampleLake);
    MainWindow& window = Show();
    Open({file});
    Action("&File", "&Reload").trigger();
    EXPECT_TRUE(window.IsLoading());
    EXPECT_EQ(window.Rows().model()->rowCount(), 0); // nobody looks into the store meanwhile
    EXPECT_EQ(window.StatusText(), QStringLiteral("Loading\u2026"));
    EXPECT_EQ(window.Key().Editor().GetItemCount(), 0);
    window.Open({Gearbox}); // during a load: after it
    window.SetKey(CClavis(11, 1001, 1, 2, 1015, 1));
    WaitForLoad();
    EXPECT_EQ(window.windowTitle(), QStringLiteral("gearbox.lake \u2013 paramdb browser"));
    EXPECT_EQ(window.Rows().model()->rowCount(), 30);
    EXPECT_EQ(window.Key().PlainText(), QStringLiteral("11/1001/1/2/1015/1"));
}

TEST_F(BrowserLoading, TakesAwayWhatIsBeingEdited) {
    MainWindow& window = ShowGearbox();
    auto& table = window.Key().View().Table();
    table.setFocus();
    QTest::keyClicks(&table, QStringLiteral("1"));
    Settle();
    ASSERT_NE(table.Editor(table.model()->index(0, 1)), nullptr);
    window.Reload();
    EXPECT_TRUE(window.IsLoading());
    Settle();
    WaitForLoad();
    EXPECT_EQ(window.Key().Key(), CClavis());
    EXPECT_EQ(window.Key().Editor().GetItemCount(), 6);
    window.Parameter().ParameterBox().setFocus();
    window.Parameter().ParameterBox().showPopup();
    Settle();
    window.Reload();
    Settle();
    WaitForLoad();
    EXPECT_EQ(window.Parameter().Parameter(), -1);
}

TEST_F(BrowserLoading, MayBeClosedDuringALoad) {
    for (int round = 0; round < 3; ++round) {
        Show().Open({Gearbox});
        m_window.reset();
    }
}

TEST_F(BrowserLoading, OpensWhatIsDraggedIn) {
    MainWindow& window = Show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Gearbox), QUrl::fromLocalFile(Customer)});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &drop);
    WaitForLoad();
    EXPECT_EQ(window.Files(), (QStringList{Gearbox, Customer}));

    data.setUrls({QUrl(QStringLiteral("https://example.org/gearbox.lake"))});
    QDragEnterEvent other(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    other.ignore();
    QApplication::sendEvent(&window, &other);
    EXPECT_FALSE(other.isAccepted());
}

#ifndef _WIN32
// A pipe is a file that takes as long to read as its writer likes.
TEST_F(BrowserLoading, StaysAliveDuringALongLoad) {
    auto const path = m_folder / u8"pipe.lake";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    MainWindow& window = Show();
    Open({Gearbox});
    window.Open({QString::fromStdU16String(path.u16string())});
    for (int turn = 0; turn < 20; ++turn) {
        SCOPED_TRACE(turn);
        QTest::qWait(5);
        ASSERT_TRUE(window.IsLoading());
        EXPECT_EQ(window.StatusText(), QStringLiteral("Loading\u2026"));
        window.Tables().SearchEdit().setText(QString::number(turn));
        window.SetKey(CClavis(turn, 1001, 1, 2, 1015, 1));
        window.Parameter().SetSpeed(100 * turn);
        window.grab();
    }
    std::string lake = SampleLake + "<TInstrumentParam>: {\n";
    for (int id = 1; id <= 20'000; ++id)
        lake += "\t" + std::to_string(id) + " 1001 \"Parameter " + std::to_string(id) + "\" 0 1 0\n";
    std::ofstream(path, std::ios::binary) << lake << "}\n";
    WaitForLoad();
    EXPECT_EQ(window.Outcome()->end, LoadEnd::Complete);
    window.Tables().Select(QStringLiteral("<TInstrumentParam>"));
    EXPECT_EQ(window.Rows().model()->rowCount(), 20'000);
    EXPECT_EQ(window.Key().PlainText(), QStringLiteral("19/1001/1/2/1015/1"));
    QTest::qWait(400);
    EXPECT_FALSE(window.IsLoading()); // a pipe is not read again
}
#endif

} // namespace
} // namespace paramdb::browser
