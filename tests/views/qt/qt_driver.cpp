// Hands and eyes for the Qt views.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/views/qt/choice_box.h>
#include <paramdb/views/qt/combo_view.h>
#include <paramdb/views/qt/dialog_view.h>
#include <paramdb/views/qt/list_view.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/theme.h>
#include <paramdb/views/qt/views.h>

#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>
#include <gtest/gtest.h>
#include <tests/views/suites/view_driver.h>

namespace {

using paramdb::qt::ChoiceBox;
using paramdb::qt::ComboView;
using paramdb::qt::DialogView;
using paramdb::qt::ListView;

Qt::Key QtKey(Key key) {
    switch (key) {
    case Key::up:
        return Qt::Key_Up;
    case Key::down:
        return Qt::Key_Down;
    case Key::left:
        return Qt::Key_Left;
    case Key::right:
        return Qt::Key_Right;
    case Key::page_up:
        return Qt::Key_PageUp;
    case Key::page_down:
        return Qt::Key_PageDown;
    case Key::home:
        return Qt::Key_Home;
    case Key::end:
        return Qt::Key_End;
    case Key::space:
        return Qt::Key_Space;
    case Key::enter:
        return Qt::Key_Return;
    case Key::escape:
        return Qt::Key_Escape;
    case Key::tab:
        return Qt::Key_Tab;
    case Key::f2:
        return Qt::Key_F2;
    case Key::f4:
        return Qt::Key_F4;
    default:
        return Qt::Key_A;
    }
}

Qt::KeyboardModifiers Modifiers(Held held) {
    Qt::KeyboardModifiers keys;
    keys.setFlag(Qt::ControlModifier, held.control);
    keys.setFlag(Qt::ShiftModifier, held.shift);
    keys.setFlag(Qt::AltModifier, held.alt);
    return keys;
}

CRect ToRect(QRect const& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

class QtDriver : public ViewDriver {
public:
    QtDriver() { new QVBoxLayout(&m_window); }
    ~QtDriver() override {
        Drop();
        m_elsewhere.setParent(nullptr); // it outlives the window that it stands in
    }

    void Show(CXListCtrl& list, CSize size) override {
        m_made = std::make_unique<ListView>();
        m_list = m_made.get();
        m_list->SetList(&list);
        Open(*m_list, size);
    }
    void Show(CComboBox& combo) override {
        m_combo = std::make_unique<ComboView>();
        m_combo->SetCombo(&combo);
        Open(*m_combo, {400, 100});
    }
    void Drop() override {
        m_made.reset();
        m_list = nullptr;
        m_combo.reset();
        Settle();
    }
    void Resize(CSize size) override {
        m_window.resize(static_cast<int>(size.cx), static_cast<int>(size.cy));
        Settle();
    }
    void Settle() override {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    void Focus() override {
        View().activateWindow();
        View().setFocus();
        Settle();
    }
    void FocusElsewhere() override {
        m_elsewhere.setFocus();
        Settle();
    }
    bool IsVisible() override { return View().isVisible(); }
    bool IsEnabled() override { return View().isEnabled(); }
    std::string Name() override {
        return (m_list ? Table().accessibleName() : m_combo->accessibleName()).toStdString();
    }

    void Press(Key key, Held held) override {
        if (QWidget* const widget = Keyboard()) {
            // Between widgets the tab key goes by way of the window.
            QTest::keyClick(widget, QtKey(key), Modifiers(held));
        }
        Settle();
    }
    void Type(std::string const& letters) override {
        for (QChar const letter : QString::fromStdString(letters)) {
            if (QWidget* const widget = Keyboard())
                QTest::keyClicks(widget, QString(letter));
            Settle();
        }
    }

    int Rows() override { return m_list ? Table().model()->rowCount() : 0; }
    int Columns() override { return Table().model()->columnCount(); }
    std::string Text(int row, int column) override {
        return Table().model()->index(row, column).data().toString().toStdString();
    }
    std::string Heading(int column) override {
        return Table().model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString();
    }
    int ColumnWidth(int column) override { return Table().columnWidth(column); }
    int Check(int row) override {
        QVariant const state = Table().model()->index(row, 0).data(Qt::CheckStateRole);
        return !state.isValid() ? -1 : state.toInt() == Qt::Checked ? 1 : 0;
    }
    std::pair<int, int> Current() override {
        QModelIndex const index = Table().currentIndex();
        return {index.row(), index.column()};
    }
    CRect Cell(int row, int column) override {
        QRect const cell = Table().visualRect(Table().model()->index(row, column));
        return ToRect(cell.translated(0, HeaderHeight()));
    }
    CRect RowsInSight() override { return ToRect(Table().viewport()->rect().translated(0, HeaderHeight())); }
    CPoint Scroll() override {
        return {Table().horizontalScrollBar()->value(), Table().verticalScrollBar()->value()};
    }
    void ScrollTo(CPoint position) override {
        Table().horizontalScrollBar()->setValue(static_cast<int>(position.x));
        Table().verticalScrollBar()->setValue(static_cast<int>(position.y));
        Settle();
    }
    void DragColumn(int column, int width) override {
        Table().horizontalHeader()->resizeSection(column, width);
        Settle();
    }
    void Click(CPoint point, Held held) override {
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, Modifiers(held), InRows(point));
        Settle();
    }
    void DoubleClick(CPoint point) override {
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, InRows(point));
        QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, InRows(point));
        Settle();
    }
    void RightClick(CPoint point) override {
        QTest::mouseClick(Table().viewport(), Qt::RightButton, {}, InRows(point));
        Settle();
    }
    void ClickHeading(int column) override {
        QHeaderView& header = *Table().horizontalHeader();
        int const x = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(x, header.height() / 2));
        Settle();
    }
    COLORREF Pixel(CPoint point) override {
        QImage const picture = Table().viewport()->grab().toImage();
        return paramdb::qt::FromQColor(picture.pixelColor(InRows(point) * picture.devicePixelRatio()));
    }
    COLORREF Color(Shade shade) override {
        QPalette const palette = View().palette();
        switch (shade) {
        case Shade::selected:
            return paramdb::qt::FromQColor(palette.color(QPalette::Active, QPalette::Highlight));
        case Shade::selected_without_keyboard:
            return paramdb::qt::FromQColor(paramdb::qt::InactiveSelection(palette));
        default:
            return paramdb::qt::FromQColor(palette.color(QPalette::Base));
        }
    }

    bool IsOpen() override {
        ChoiceBox const* const box = Box();
        return box && (box->view()->isVisible() || m_list);
    }
    std::vector<std::string> Offered() override {
        std::vector<std::string> texts;
        ChoiceBox const* const box = Box();
        for (int i = 0; box && i < box->count(); ++i)
            texts.push_back(box->itemText(i).toStdString());
        return texts;
    }
    std::string Chosen() override {
        ChoiceBox const* const box = Box();
        return box ? box->currentText().toStdString() : std::string();
    }
    void ClickOffered(int index) override {
        QAbstractItemView& popup = *Box()->view();
        QModelIndex const entry = popup.model()->index(index, 0);
        popup.scrollTo(entry);
        QTest::qWait(QApplication::doubleClickInterval() / 10); // a click at once is that of the opening
        QTest::mouseClick(popup.viewport(), Qt::LeftButton, {}, popup.visualRect(entry).center());
        Settle();
        Settle();
    }
    void LeaveCombo() override {
        if (ChoiceBox* const box = Box(); box && box->view()->isVisible())
            Press(Key::escape, {});
        if (m_list && Box()) // the editor stays behind the list that it had opened
            Press(Key::escape, {});
    }

    bool HasWindow(CDialog const& dialog) override { return Find(dialog) != nullptr; }
    void UseList(CDialog const& dialog, int id) override {
        DialogView* const window = Find(dialog);
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
        m_list = window->List(id);
        Settle();
    }
    std::string Title(CDialog const& dialog) override { return Find(dialog)->windowTitle().toStdString(); }
    std::string ButtonText(CDialog const& dialog, int id) override {
        return Find(dialog)->Button(id)->text().toStdString();
    }
    CRect Item(CDialog const& dialog, int id) override {
        DialogView const& window = *Find(dialog);
        return ToRect(window.Button(id) ? window.Button(id)->geometry() : window.List(id)->geometry());
    }
    CSize Size(CDialog const& dialog) override { return {Find(dialog)->width(), Find(dialog)->height()}; }
    void Enlarge(CDialog const& dialog, CSize by) override {
        DialogView& window = *Find(dialog);
        window.resize(window.width() + static_cast<int>(by.cx), window.height() + static_cast<int>(by.cy));
        Settle();
    }
    void ClickButton(CDialog const& dialog, int id) override {
        QTest::mouseClick(Find(dialog)->Button(id), Qt::LeftButton);
        Settle();
    }
    void Close(CDialog const& dialog) override {
        Find(dialog)->close();
        Settle();
    }
    void TakeAway(CDialog const& dialog) override {
        delete Find(dialog);
        Settle();
    }

    int RandomSteps() const override { return 400; }

private:
    void Open(QWidget& view, CSize size) {
        m_window.layout()->addWidget(&view);
        m_window.layout()->addWidget(&m_elsewhere);
        m_window.resize(static_cast<int>(size.cx), static_cast<int>(size.cy));
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        view.setFocus();
        Settle();
    }
    QWidget& View() { return m_list ? static_cast<QWidget&>(*m_list) : *m_combo; }
    paramdb::qt::ListTable& Table() { return m_list->Table(); }
    int HeaderHeight() { return Table().horizontalHeader()->height(); }
    QPoint InRows(CPoint point) {
        return {static_cast<int>(point.x), static_cast<int>(point.y) - HeaderHeight()};
    }
    // The combo in the cell that has the keyboard, or the one that is shown.
    ChoiceBox* Box() {
        if (m_combo)
            return m_combo.get();
        return m_list ? dynamic_cast<ChoiceBox*>(Table().Editor(Table().currentIndex())) : nullptr;
    }
    // Who gets keys now.
    QWidget* Keyboard() {
        if (ChoiceBox* const box = Box()) {
            if (box->view()->isVisible())
                return box->view();
            if (box->isVisible())
                return box;
        }
        return QApplication::focusWidget();
    }
    static DialogView* Find(CDialog const& dialog) {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            auto* const view = dynamic_cast<DialogView*>(window);
            if (view && view->GetDialog() == &dialog)
                return view;
        }
        return nullptr;
    }

    paramdb::qt::Views m_views;
    QLineEdit m_elsewhere;
    QWidget m_window;
    std::unique_ptr<ListView> m_made;
    std::unique_ptr<ComboView> m_combo;
    ListView* m_list = nullptr; // the one that was made, or a dialog's
};

} // namespace

std::unique_ptr<ViewDriver> MakeViewDriver() {
    return std::make_unique<QtDriver>();
}
