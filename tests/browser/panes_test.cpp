// The panes beside the rows, in the window with the example.
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <cmath>
#include <limits>
#include <tests/browser/browser_test.h>

namespace paramdb::browser {
namespace {

CClavis const MeshKey(11, 1001, 1, 2, 1015, 1);

class BrowserPanes : public BrowserTest {
protected:
    BrowserPanes() { ShowGearbox(); }

    void BringUp(char const* dock) {
        m_window->Dock(QString::fromUtf8(dock))->raise();
        Settle();
    }
    // Has the user choose an entry of a row of the key editor, by typing a part of its name.
    void Choose(Clavis::qOrder element, char const* part) {
        auto& table = m_window->Key().View().Table();
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Home);
        for (int row = 0; row < element; ++row)
            QTest::keyClick(&table, Qt::Key_Down);
        QString const text = QString::fromUtf8(part);
        QTest::keyClicks(&table, text.left(1));
        Settle();
        auto* const box = dynamic_cast<qt::ChoiceBox*>(table.Editor(table.model()->index(element, 1)));
        ASSERT_NE(box, nullptr);
        QTest::keyClicks(box, text.mid(1));
        QTest::keyClick(box, Qt::Key_Return);
        Settle();
        Settle();
    }
    // Presses the handle of the speed and drags it to a value.
    void DragSpeed(int to) {
        QSlider& slider = m_window->Parameter().SpeedSlider();
        QStyleOptionSlider option;
        option.initFrom(&slider);
        option.minimum = slider.minimum();
        option.maximum = slider.maximum();
        option.sliderPosition = slider.value();
        option.sliderValue = slider.value();
        QPoint const handle =
            slider.style()
                ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
                .center();
        option.sliderPosition = to;
        option.sliderValue = to;
        QPoint const target =
            slider.style()
                ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
                .center();
        QTest::mousePress(&slider, Qt::LeftButton, {}, handle);
        QTest::mouseMove(&slider, (handle + target) / 2);
        QTest::mouseMove(&slider, target);
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, target);
        Settle();
    }
    QPushButton& Button(QWidget& pane, char const* text) {
        for (auto* const button : pane.findChildren<QPushButton*>())
            if (button->text() == QString::fromUtf8(text))
                return *button;
        throw std::runtime_error(std::string("no button ") + text);
    }
};

TEST_F(BrowserPanes, EditTheKeyAndSayWhatItIsCalled) {
    KeyPane& pane = m_window->Key();
    EXPECT_EQ(pane.PlainText(), QStringLiteral("-1/-1/-1/-1/-1/-1"));
    Choose(Clavis::qMode, "1. gear coast");
    EXPECT_EQ(pane.PlainText(), QStringLiteral("12/-1/-1/-1/-1/-1"));
    m_window->SetKey(MeshKey);
    EXPECT_EQ(pane.NiceText(),
              QStringLiteral("1. gear drive / Spectral value Mesh H1 / Output shaft Synchronous "
                             "input shaft / Accelerometer input side"));
    EXPECT_EQ(m_window->Parameter().Parameter(), 1015);
    Choose(Clavis::qInstrParam, "Mesh H2 side");
    EXPECT_EQ(pane.Key(), CClavis(11, 1001, 1, 2, 1022, 1));
    EXPECT_EQ(pane.NiceText(),
              QStringLiteral("1. gear drive / Spectral value Mesh H2 side bands / Output shaft Synchronous "
                             "input shaft / Accelerometer input side"));
    EXPECT_EQ(m_window->Parameter().Parameter(), 1022); // follows the key
}

TEST_F(BrowserPanes, EmptyTheKey) {
    m_window->SetKey(MeshKey);
    Button(m_window->Key(), "Empty &key").click();
    EXPECT_EQ(m_window->Key().Key(), CClavis());
    EXPECT_EQ(m_window->Key().Editor().retrieve(), CClavis());
    EXPECT_EQ(m_window->Parameter().Parameter(), 1015); // it says nothing of a parameter
}

TEST_F(BrowserPanes, KeepAKeyThatTheFileDoesNotKnow) {
    CClavis const unknown(4711, 1, 2, 3, 99'999, 5);
    m_window->SetKey(unknown);
    EXPECT_EQ(m_window->Key().Editor().retrieve(), unknown);
    EXPECT_EQ(m_window->Parameter().Parameter(), 99'999);
    EXPECT_EQ(m_window->Parameter().DriveText(), QStringLiteral("No spectral intervals."));
}

TEST_F(BrowserPanes, ShowSettingsAndIntervalsOfAParameter) {
    ParameterPane& pane = m_window->Parameter();
    EXPECT_EQ(pane.DriveText(), QStringLiteral("No parameter is chosen."));
    m_window->SetKey(MeshKey);
    EXPECT_EQ(pane.SettingsText(),
              QStringLiteral("Trigger: Speed (#1)\nBase order ref.: Engaged gear, driving wheel (#90)\n"
                             "Interpretation: Maximum (#6)\nDefinition: H1-L2;H1+L2\n"
                             "Source instrument: Spectrum (#2500)\n"
                             "Source parameter: Order spectrum (#1001)"));
    EXPECT_EQ(
        pane.DriveText(),
        QStringLiteral("Orders: H1-L2;H1+L2\nMode: 11 1. gear drive\nRotor: 1 Input shaft (the speed "
                       "source of its channel 21 Mix engaged gear)\nGear: 90 Engaged gear, driving wheel "
                       "(its base order reference)\nBase order: 13, ratio: 1/1, 1"));
    ASSERT_EQ(pane.Intervals().model()->rowCount(), 1);
    EXPECT_EQ(Cells(pane.Intervals(), 0),
              (std::vector<std::string>{"650", "650", "13", "13", "orders", "", "1 x base order - 2 lines",
                                        "1 x base order + 2 lines", ""}));
    pane.SetLineDistance(0.25);
    EXPECT_EQ(Cells(pane.Intervals(), 0),
              (std::vector<std::string>{"625", "675", "12.5", "13.5", "orders", "50 to 54",
                                        "1 x base order - 2 lines", "1 x base order + 2 lines", ""}));
}

TEST_F(BrowserPanes, FollowTheSpeedThatIsDragged) {
    ParameterPane& pane = m_window->Parameter();
    m_window->SetKey(MeshKey);
    ASSERT_EQ(pane.Speed(), 3000);
    DragSpeed(6000);
    double const dragged = pane.Speed();
    EXPECT_NEAR(dragged, 6000, 150); // as fine as the pixels are
    EXPECT_EQ(pane.RpmBox().value(), dragged);
    EXPECT_NEAR(pane.HzBox().value(), dragged / 60, 0.0005);
    double const hz = pane.Intervals().model()->index(0, 0).data().toDouble();
    EXPECT_NEAR(hz, 13 * dragged / 60, 0.001);

    pane.SpeedSlider().setFocus();
    QTest::keyClick(&pane.SpeedSlider(), Qt::Key_Home);
    EXPECT_EQ(pane.Speed(), 0);
    EXPECT_EQ(Cells(pane.Intervals(), 0)[0], "0");
    QTest::keyClick(&pane.SpeedSlider(), Qt::Key_PageUp);
    QTest::keyClick(&pane.SpeedSlider(), Qt::Key_Right);
    EXPECT_EQ(pane.Speed(), 510);
    EXPECT_EQ(pane.HzBox().value(), 8.5);
    EXPECT_EQ(Cells(pane.Intervals(), 0)[0], "110.5");
}

TEST_F(BrowserPanes, TakeTheSpeedInEitherUnit) {
    ParameterPane& pane = m_window->Parameter();
    m_window->SetKey(MeshKey);
    pane.RpmBox().selectAll();
    QTest::keyClicks(&pane.RpmBox(), QStringLiteral("1200"));
    EXPECT_EQ(pane.HzBox().value(), 20);
    EXPECT_EQ(pane.SpeedSlider().value(), 1200);
    EXPECT_EQ(Cells(pane.Intervals(), 0)[0], "260");
    pane.HzBox().selectAll();
    QTest::keyClicks(&pane.HzBox(), QStringLiteral("1000"));
    EXPECT_EQ(pane.Speed(), 60'000);
    EXPECT_EQ(pane.RpmBox().value(), 60'000);
    EXPECT_EQ(pane.SpeedSlider().value(), pane.SpeedSlider().maximum());
    EXPECT_EQ(Cells(pane.Intervals(), 0)[0], "13000");
}

TEST_F(BrowserPanes, BringAnySpeedIntoTheirRange) {
    ParameterPane& pane = m_window->Parameter();
    m_window->SetKey(MeshKey);
    double const infinite = std::numeric_limits<double>::infinity();
    for (auto const& [speed, taken] :
         {std::pair(-1.0, 0.0), std::pair(std::nan(""), 0.0), std::pair(1e300, 1e6), std::pair(infinite, 1e6),
          std::pair(-infinite, 0.0)}) {
        SCOPED_TRACE(speed);
        pane.SetSpeed(speed);
        EXPECT_EQ(pane.Speed(), taken);
        EXPECT_EQ(pane.RpmBox().value(), taken);
    }
}

TEST_F(BrowserPanes, FindAParameterByAPartOfItsName) {
    qt::ComboView& box = m_window->Parameter().ParameterBox();
    box.setFocus();
    box.lineEdit()->selectAll();
    QTest::keyClicks(&box, QStringLiteral("final drive H1 side"));
    QTest::keyClick(&box, Qt::Key_Return);
    Settle();
    EXPECT_EQ(m_window->Parameter().Parameter(), 1027);
    EXPECT_EQ(m_window->Parameter().Intervals().model()->rowCount(), 2);
}

TEST_F(BrowserPanes, ListRotorsWithTheirRatios) {
    RotorPane& pane = m_window->Rotors();
    EXPECT_EQ(pane.PhysicalModes().currentText(), QStringLiteral("0 Neutral"));
    EXPECT_EQ(pane.View().model()->rowCount(), 7);
    BringUp("rotors");
    pane.PhysicalModes().setFocus();
    for (int step = 0; step < 4; ++step)
        QTest::keyClick(&pane.PhysicalModes(), Qt::Key_Down);
    EXPECT_EQ(pane.PhysicalModes().currentText(), QStringLiteral("4 Gear 4"));
    auto const cells = Cells(pane.View(), 1);
    EXPECT_EQ(std::vector(cells.begin(), cells.begin() + 7),
              (std::vector<std::string>{"2", "Output shaft", "37/35", "1.0571428571428572", "1 Input shaft",
                                        "source", "10 Speed input shaft"}));
    m_window->SetKey(CClavis(21, -1, -1, -1, -1, -1));
    EXPECT_EQ(pane.PhysicalModes().currentText(), QStringLiteral("2 Gear 2")); // that of the key's mode
    m_window->SetKey(CClavis(1, -1, -1, -1, -1, -1));
    EXPECT_EQ(pane.PhysicalModes().currentText(), QStringLiteral("0 Neutral"));
}

TEST_F(BrowserPanes, CountTheKeysInTheRanges) {
    RangePane& pane = m_window->Ranges();
    BringUp("ranges");
    std::vector<CClavis> keys;
    for (auto const& [key, row] : CQtParamInstance().IpParamAndStore())
        keys.push_back(key.ToClavis());
    ASSERT_EQ(pane.KeyCount(), keys.size());
    EXPECT_EQ(pane.CountText(), QStringLiteral("0 of 1 827 keys selected"));

    auto const click = [&](int row, int column, Qt::KeyboardModifiers modifiers) {
        auto& table = pane.View().Table();
        QModelIndex const index = table.model()->index(row, column);
        table.scrollTo(index);
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, table.visualRect(index).center());
        Settle();
    };
    auto const count = [&](auto const& fits) {
        return static_cast<std::size_t>(std::count_if(keys.begin(), keys.end(), fits));
    };
    click(0, 0, {}); // "Idle" of the modes
    EXPECT_EQ(pane.SelectedCount(), count([](CClavis const& key) { return key[0] == 1; }));
    EXPECT_EQ(pane.CountText(), QStringLiteral("13 of 1 827 keys selected: 1 Test steps"));
    click(2, 0, Qt::ShiftModifier); // up to "Shifting"
    EXPECT_EQ(pane.SelectedCount(), count([](CClavis const& key) { return key[0] <= 3; }));
    click(0, 1, {}); // and of them the spectral values
    EXPECT_EQ(pane.SelectedCount(), count([](CClavis const& key) { return key[0] <= 3 && key[1] == 1001; }));
    click(1, 0, Qt::ControlModifier); // without "Warm up"
    EXPECT_EQ(pane.SelectedCount(),
              count([](CClavis const& key) { return (key[0] == 1 || key[0] == 3) && key[1] == 1001; }));

    Button(pane, "Select &all").click();
    Settle();
    EXPECT_EQ(pane.SelectedCount(), keys.size());
    Button(pane, "&Invert").click();
    Settle();
    EXPECT_EQ(pane.CountText(), QStringLiteral("0 of 1 827 keys selected"));
    click(0, 0, {});
    Button(pane, "Select n&one").click();
    Settle();
    EXPECT_EQ(pane.SelectedCount(), 0U);
}

TEST_F(BrowserPanes, AreReachedByTheirLetters) {
    ParameterPane& pane = m_window->Parameter();
    QTest::keyClick(&*m_window, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(pane.SpeedSlider().hasFocus());
    QTest::keyClick(&*m_window, Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(pane.ParameterBox().hasFocus());
    QTest::keyClick(&*m_window, Qt::Key_M, Qt::AltModifier);
    // A button stays down for a moment.
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window->Tables().HideEmptyBox().isChecked(); }, Patience));
    m_window->SetKey(MeshKey);
    QTest::keyClick(&*m_window, Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_window->Key().Key() == CClavis(); }, Patience));
}

TEST_F(BrowserPanes, HaveAccessibleNames) {
    for (auto* const widget : m_window->findChildren<QWidget*>()) {
        bool const takes_keyboard = widget->focusPolicy() != Qt::NoFocus && !widget->focusProxy();
        bool const is_content = dynamic_cast<QAbstractItemView*>(widget) ||
                                dynamic_cast<QComboBox*>(widget) || dynamic_cast<QAbstractSpinBox*>(widget) ||
                                dynamic_cast<QSlider*>(widget) || dynamic_cast<QLineEdit*>(widget);
        bool const is_inner =
            widget->parentWidget() && (dynamic_cast<QComboBox*>(widget->parentWidget()) ||
                                       dynamic_cast<QAbstractSpinBox*>(widget->parentWidget()) ||
                                       widget->parentWidget()->inherits("QComboBoxPrivateContainer"));
        if (takes_keyboard && is_content && !is_inner && widget->isVisible()) {
            EXPECT_NE(widget->accessibleName(), QString())
                << widget->metaObject()->className() << " in "
                << widget->parentWidget()->objectName().toStdString();
        }
    }
}

} // namespace
} // namespace paramdb::browser
