#include <paramdb/controls/pentad_dialog.h>
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/views/qt/choice_box.h>
#include <paramdb/views/qt/dialog_view.h>

#include <QtCore/QPointer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <memory>
#include <optional>
#include <tests/views/qt/view_test.h>
#include <tests/views/suites/gearbox.h>

using paramdb::qt::ChoiceBox;
using paramdb::qt::DialogView;
using paramdb::qt::ListView;

namespace {

// With the tables of the example.
class QtDialogView : public ViewTest {
protected:
    static void SetUpTestSuite() { Gearbox::Load(); }
    static void TearDownTestSuite() { Gearbox::Unload(); }

    QtDialogView() {
        dialog->set_target([this](CClavis const& key) { result = key; });
    }

    DialogView* Window() {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            auto* const view = dynamic_cast<DialogView*>(window);
            if (view && view->GetDialog() == dialog.get())
                return view;
        }
        return nullptr;
    }
    // Displays the dialog and gives its window.
    DialogView& Display(CClavis const& key) {
        dialog->Display(key);
        DialogView* const view = Window();
        EXPECT_NE(view, nullptr);
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view));
        Settle();
        return *view;
    }
    static ListView& List(DialogView& view) { return *view.List(CPentadDialog::ControlId); }
    static void Click(QWidget* button) {
        QTest::mouseClick(button, Qt::LeftButton);
        Settle();
    }
    static ChoiceBox* Editor(DialogView& view, int row) {
        auto& table = List(view).Table();
        return dynamic_cast<ChoiceBox*>(table.Editor(table.model()->index(row, 1)));
    }
    // Types a name into a row and takes it.
    static void Choose(DialogView& view, int row, QString const& name) {
        dialogKey(view, row);
        QTest::keyClicks(&List(view).Table(), name.left(1));
        QTest::keyClicks(Editor(view, row), name.mid(1));
        Press(*Editor(view, row), Qt::Key_Return);
        view.activateWindow();
        Settle();
    }
    static void dialogKey(DialogView& view, int row) {
        List(view).Table().setFocus();
        List(view).GetList()->SetFocusItem(row);
        Settle();
    }

    std::optional<CClavis> result;
    std::unique_ptr<CPentadDialog> dialog = std::make_unique<CPentadDialog>();
};

CClavis const ResultKey(4, -1, -1, -1, -1, -1);

} // namespace

TEST_F(QtDialogView, SpeaksEveryLanguageWithoutCuttingIt) {
    using Language = CLibMgr::Language;
    for (Language const language :
         {Language::english, Language::portuguese, Language::czech, Language::german, Language::french,
          Language::hungarian, Language::italian, Language::standard, Language::chinese, Language::spanish}) {
        SCOPED_TRACE(static_cast<int>(language));
        CLibMgr::SetLanguage(language);
        DialogView& view = Display(ResultKey);
        auto const* const ok = view.Button(IDOK);
        auto const* const cancel = view.Button(IDCANCEL);
        EXPECT_GE(cancel->width(), cancel->sizeHint().width());
        EXPECT_GE(cancel->height(), cancel->sizeHint().height());
        EXPECT_GT(cancel->x(), ok->geometry().right());
        EXPECT_LE(cancel->geometry().right(), view.width());
        EXPECT_GE(ok->x(), 0);
        EXPECT_EQ(view.windowTitle(), paramdb::qt::ToQString(dialog->GetTemplate().title));
        dialog->OnBnClickedCancel();
        Settle();
    }
}

TEST_F(QtDialogView, HandsOverWhatWasChosen) {
    DialogView& view = Display(ResultKey);
    CQtParamInstance const parameters;
    CClavis expected = ResultKey;
    expected[Clavis::qChannel] = parameters.IdNameMap(Clavis::qChannel).begin()->first[0];
    Choose(view, 2, paramdb::qt::ToQString(parameters.ChannelName(expected[Clavis::qChannel])));
    // The only choice of the parameter row is none until there is an instrument.
    dialogKey(view, 4);
    Press(List(view).Table(), Qt::Key_F4);
    ASSERT_NE(Editor(view, 4), nullptr);
    EXPECT_EQ(Editor(view, 4)->count(), 1);
    Press(*Editor(view, 4)->view(), Qt::Key_Escape);
    Press(*Editor(view, 4), Qt::Key_Escape);
    auto const first = parameters.InstrumentParam().begin();
    expected[Clavis::qInstrument] = first->second.get<"instrument">();
    Choose(view, 1, paramdb::qt::ToQString(parameters.InstrumentName(expected[Clavis::qInstrument])));
    dialogKey(view, 4);
    Press(List(view).Table(), Qt::Key_F4);
    ASSERT_NE(Editor(view, 4), nullptr);
    EXPECT_GT(Editor(view, 4)->count(), 1);
    Press(*Editor(view, 4)->view(), Qt::Key_Escape);
    Press(*Editor(view, 4), Qt::Key_Escape);
    EXPECT_EQ(dialog->retrieve(), expected);
    Click(view.Button(IDOK));
    EXPECT_EQ(result, expected);
}

TEST_F(QtDialogView, ReturnAndEscapeInAComboLeaveTheDialogOpen) {
    DialogView& view = Display(ResultKey);
    dialogKey(view, 0);
    Press(List(view).Table(), Qt::Key_F2);
    Press(*Editor(view, 0)->view(), Qt::Key_Escape);
    Press(*Editor(view, 0), Qt::Key_Escape);
    EXPECT_EQ(Window(), &view);
    dialogKey(view, 0);
    QTest::keyClicks(&List(view).Table(), QStringLiteral("x"));
    Press(*Editor(view, 0), Qt::Key_Return);
    EXPECT_EQ(Window(), &view);
    EXPECT_FALSE(result);
    // The line above the list takes them too.
    List(view).OpenFilter();
    Settle();
    Press(List(view).FilterEdit(), Qt::Key_Return);
    EXPECT_EQ(Window(), &view);
    Press(List(view).Table(), Qt::Key_Escape);
    EXPECT_EQ(Window(), &view);
}

TEST_F(QtDialogView, GoesWithTheDialog) {
    DialogView& view = Display(ResultKey);
    QPointer<DialogView> const alive = &view;
    dialog.reset();
    Settle();
    EXPECT_TRUE(alive.isNull());
}

TEST_F(QtDialogView, EveryRowIsInSight) {
    DialogView& view = Display(ResultKey);
    EXPECT_FALSE(List(view).Table().verticalScrollBar()->isVisible());
    EXPECT_FALSE(List(view).Table().horizontalScrollBar()->isVisible());
}
