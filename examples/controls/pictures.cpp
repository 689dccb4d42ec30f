#include "pictures.h"

#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/query/param_instance.h>

#include "host_window.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>

namespace {

// Lets everything that is under way come to rest.
void Settle() {
    constexpr int milliseconds = 150;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, milliseconds);
}

void Press(QWidget* widget, int key, QString const& text = {}) {
    for (QEvent::Type const type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(widget, &event);
    }
    Settle();
}

void Type(QWidget* widget, QString const& text) {
    for (QChar const letter : text)
        Press(widget, letter.toUpper().unicode(), letter);
}

void Click(QTableView& table, int row, int column, Qt::KeyboardModifiers keys) {
    QPointF const point = table.visualRect(table.model()->index(row, column)).center();
    QMouseEvent event(QEvent::MouseButtonPress, point, table.viewport()->mapToGlobal(point), Qt::LeftButton,
                      Qt::LeftButton, keys);
    QApplication::sendEvent(table.viewport(), &event);
    Settle();
}

// A key of things that are there.
CClavis SomeKey() {
    CQtParamInstance const parameters;
    CClavis key;
    for (auto const& [id, row] : parameters.InstrumentParam()) {
        key[Clavis::qInstrument] = row.get<"instrument">();
        key[Clavis::qInstrParam] = id[0];
        break;
    }
    for (int const element : {Clavis::qMode, Clavis::qLocation, Clavis::qSignal}) {
        constexpr int which = 3;
        int place = 0;
        for (auto const& [id, name] : parameters.IdNameMap(static_cast<unsigned int>(element))) {
            if (place++ == which)
                key[element] = id[0];
        }
    }
    return key;
}

// With a table of colours where there are few enough once the last bits are left out: that makes small files.
QImage Reduced(QPixmap const& picture) {
    constexpr QRgb first_bits = 0xFFF0F0F0;
    constexpr int most = 256;
    QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> numbers;
    QList<QRgb> colors;
    QImage reduced(image.size(), QImage::Format_Indexed8);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QRgb const key = image.pixel(x, y) & first_bits;
            if (!numbers.contains(key)) {
                if (colors.size() == most)
                    return image;
                numbers.insert(key, static_cast<int>(colors.size()));
                colors.push_back(image.pixel(x, y));
                reduced.setColorTable(colors);
            }
            reduced.setPixel(x, y, static_cast<uint>(numbers.value(key)));
        }
    }
    return reduced;
}

bool Save(QPixmap const& picture, QString const& folder, QString const& name) {
    return Reduced(picture).save(QDir(folder).filePath(name + QStringLiteral(".png")), "PNG");
}

bool KeyDialog(QString const& folder, QString const& name, CLibMgr::Language language) {
    CLibMgr::SetLanguage(language);
    CPentadDialog dialog;
    dialog.set_target([](CClavis const&) {});
    dialog.Display(SomeKey());
    Settle();
    bool saved = false;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (dynamic_cast<paramdb::qt::DialogView*>(window) && window->isVisible())
            saved = Save(window->grab(), folder, name);
    }
    dialog.OnBnClickedCancel();
    Settle();
    return saved;
}

} // namespace

bool TakePictures(QString const& folder) {
    constexpr int list_width = 380;
    constexpr int grid_width = 640;
    constexpr int height = 300;
    bool saved = true;
    // Letters in shades of grey: the same on every screen, and small files.
    QFont font = QApplication::font();
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QApplication::setFont(font);
    CLibMgr::SetLanguage(CLibMgr::Language::english);
    {
        HostWindow window;
        window.show();
        window.activateWindow();
        window.CheckList().setFixedSize(list_width, height);
        window.Grid().setFixedSize(grid_width, height);
        Settle();

        auto& list = window.CheckList().Table();
        list.setFocus();
        for (int row = 0; row < 4; ++row) {
            Press(&list, Qt::Key_Space);
            Press(&list, Qt::Key_Down);
        }
        saved &= Save(window.CheckList().grab(), folder, QStringLiteral("check_list"));
        Type(&list, QStringLiteral("2"));
        saved &= Save(window.CheckList().grab(), folder, QStringLiteral("check_list_filter"));
        window.CheckList().CloseFilter();

        auto& grid = window.Grid().Table();
        grid.setFocus();
        Settle();
        Click(grid, 1, 0, Qt::NoModifier);
        Click(grid, 5, 0, Qt::ShiftModifier);
        Click(grid, 2, 1, Qt::NoModifier);
        Click(grid, 4, 1, Qt::ControlModifier);
        Click(grid, 3, 2, Qt::NoModifier);
        Click(grid, 8, 2, Qt::ShiftModifier);
        saved &= Save(window.Grid().grab(), folder, QStringLiteral("range_grid"));

        window.Combo().setFocus();
        window.Combo().lineEdit()->selectAll();
        Type(&window.Combo(), QStringLiteral("coast"));
        Settle();
        QWidget& popup = *window.Combo().completer()->popup();
        // The window as it is, and what hangs below its combo.
        QPoint const below = window.mapFromGlobal(popup.mapToGlobal(QPoint()));
        QPixmap picture = window.grab(QRect(0, 0, grid_width, height));
        QPixmap const hanging = popup.grab();
        QPainter(&picture).drawPixmap(below, hanging);
        saved &= Save(picture, folder, QStringLiteral("combo_filter"));
        popup.hide();
    }
    saved &= KeyDialog(folder, QStringLiteral("key_dialog"), CLibMgr::Language::english);
    saved &= KeyDialog(folder, QStringLiteral("key_dialog_german"), CLibMgr::Language::german);
    CLibMgr::ResetLanguage();
    return saved;
}
