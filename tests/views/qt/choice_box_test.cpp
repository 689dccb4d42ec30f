#include <paramdb/views/qt/choice_box.h>

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <tests/views/qt/view_test.h>

using paramdb::qt::ChoiceBox;

namespace {

class QtChoiceBox : public ViewTest {
protected:
    QtChoiceBox() {
        box.SetOnChosen([this](int index) { chosen.push_back(index); });
        box.SetChoices({"(not assigned)", "Ramp up", "Ramp down", "Idle", "IDLE warm", "Idle"}, 1);
        Show(box);
    }

    void Begin(char const* text) {
        box.lineEdit()->selectAll();
        Type(box, text);
    }
    std::vector<std::string> Offered() {
        std::vector<std::string> texts;
        auto const& model = *box.completer()->completionModel();
        for (int row = 0; row < model.rowCount(); ++row)
            texts.push_back(model.index(row, 0).data().toString().toStdString());
        return texts;
    }
    void Leave() {
        m_window.activateWindow(); // not every platform does when a popup closes
        m_elsewhere.setFocus();
        Settle();
    }
    std::string Text() { return box.lineEdit()->text().toStdString(); }

    std::vector<int> chosen;
    ChoiceBox box;
};

using Texts = std::vector<std::string>;

} // namespace

TEST_F(QtChoiceBox, ShowsItsChoice) {
    EXPECT_EQ(Text(), "Ramp up");
    EXPECT_EQ(box.Chosen(), 1);
    box.SetChoices({"a", "b"}, -1);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(box.Chosen(), -1);
    box.SetChoices({}, -1);
    EXPECT_EQ(box.count(), 0);
    EXPECT_TRUE(chosen.empty()); // nobody picked anything
}

TEST_F(QtChoiceBox, TypingNarrowsToWhatContainsIt) {
    Begin("MP");
    EXPECT_EQ(Offered(), (Texts{"Ramp up", "Ramp down"}));
    EXPECT_TRUE(box.completer()->popup()->isVisible());
    EXPECT_TRUE(chosen.empty());
}

TEST_F(QtChoiceBox, ReturnTakesTheOnlyOneThatContainsIt) {
    Begin("down");
    Press(box, Qt::Key_Return);
    EXPECT_EQ(chosen, (std::vector<int>{2}));
    EXPECT_EQ(box.Chosen(), 2);
    EXPECT_EQ(Text(), "Ramp down");
}

TEST_F(QtChoiceBox, ReturnTakesTheMarkedOne) {
    Begin("ramp");
    QWidget& popup = *box.completer()->popup();
    Press(popup, Qt::Key_Down);
    Press(popup, Qt::Key_Down);
    Press(popup, Qt::Key_Return);
    EXPECT_EQ(chosen, (std::vector<int>{2}));
    EXPECT_EQ(Text(), "Ramp down");
}

TEST_F(QtChoiceBox, AClickInTheNarrowedListChooses) {
    Begin("warm");
    QAbstractItemView& popup = *box.completer()->popup();
    QTest::mouseClick(popup.viewport(), Qt::LeftButton, {},
                      popup.visualRect(box.completer()->completionModel()->index(0, 0)).center());
    Settle();
    EXPECT_EQ(chosen, (std::vector<int>{4}));
    EXPECT_EQ(Text(), "IDLE warm");
}

TEST_F(QtChoiceBox, ReturnTakesTheOneWithExactlyThatText) {
    Begin("idle");
    Press(box, Qt::Key_Return);
    EXPECT_EQ(chosen, (std::vector<int>{3})); // though others contain it
    EXPECT_EQ(Text(), "Idle");
}

TEST_F(QtChoiceBox, WhatIsNoEntryGoesBack) {
    for (char const* text : {"ramp", "nothing", ""}) {
        SCOPED_TRACE(text);
        Begin(text);
        if (*text == '\0')
            Press(box, Qt::Key_Delete);
        Press(box, Qt::Key_Return);
        EXPECT_TRUE(chosen.empty());
        EXPECT_EQ(box.Chosen(), 1);
        EXPECT_EQ(Text(), "Ramp up");
    }
}

TEST_F(QtChoiceBox, LeavingSettles) {
    Begin("warm");
    box.completer()->popup()->hide();
    Leave();
    EXPECT_EQ(chosen, (std::vector<int>{4}));
    EXPECT_EQ(Text(), "IDLE warm");
    box.setFocus();
    Begin("nothing");
    Leave();
    EXPECT_EQ(chosen.size(), 1U);
    EXPECT_EQ(Text(), "IDLE warm");
}

TEST_F(QtChoiceBox, TheSecondOfTwoEqualTextsStays) {
    box.SetChoices({"Idle", "Ramp", "Idle"}, 2);
    Press(box, Qt::Key_Return);
    m_elsewhere.setFocus();
    Settle();
    EXPECT_TRUE(chosen.empty());
    EXPECT_EQ(box.Chosen(), 2);
}

TEST_F(QtChoiceBox, ArrowsChooseUnlessTheyOpen) {
    Press(box, Qt::Key_Down);
    EXPECT_EQ(chosen, (std::vector<int>{2}));
    box.SetInCell(true);
    Press(box, Qt::Key_Down);
    EXPECT_EQ(chosen.size(), 1U);
    EXPECT_TRUE(box.view()->isVisible());
    Press(*box.view(), Qt::Key_Down);
    Press(*box.view(), Qt::Key_Return);
    EXPECT_EQ(chosen, (std::vector<int>{2, 3}));
}

TEST_F(QtChoiceBox, TypingOverTheOpenListNarrows) {
    box.showPopup();
    Settle();
    Type(*box.view(), "w");
    EXPECT_FALSE(box.view()->isVisible());
    EXPECT_EQ(Text(), "w");
    EXPECT_EQ(Offered(), (Texts{"Ramp down", "IDLE warm"}));
}

TEST_F(QtChoiceBox, TheWheelChoosesOnlyWithTheKeyboard) {
    m_elsewhere.setFocus();
    Settle();
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.Chosen(), 1);
}

TEST_F(QtChoiceBox, KnowsKeysThatType) {
    struct Case {
        Qt::KeyboardModifiers keys;
        char const* text;
        bool types;
    };
    for (auto const& [keys, text, types] :
         {Case{{}, "a", true}, Case{Qt::ShiftModifier, "A", true}, Case{{}, "7", true},
          Case{{}, "\u00E4", true}, Case{Qt::ControlModifier | Qt::AltModifier, "@", true},
          Case{Qt::ControlModifier, "a", false}, Case{Qt::AltModifier, "a", false},
          Case{Qt::MetaModifier, "a", false}, Case{{}, " ", false}, Case{{}, "", false},
          Case{{}, "\t", false}, Case{{}, "\r", false}, Case{{}, "\b", false}}) {
        QKeyEvent const key(QEvent::KeyPress, Qt::Key_unknown, keys, QString::fromUtf8(text));
        EXPECT_EQ(ChoiceBox::Types(key), types) << text << ' ' << keys;
    }
}
