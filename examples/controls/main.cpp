// Loads a parameter file and shows its keys in all four selection controls.
//   controls_example FILE [--dark] [--pictures FOLDER]
#include <paramdb/paramdb.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/views.h>

#include "host_window.h"
#include "pictures.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <cstdio>

namespace {

QPalette DarkPalette() {
    QColor const text(0xE8, 0xE8, 0xE8);
    QPalette palette(QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x90, 0x90, 0x90));
    for (QPalette::ColorRole const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    return palette;
}

} // namespace

int main(int argc, char** argv) {
    QApplication const application(argc, argv);
    QStringList arguments = QApplication::arguments();
    if (arguments.removeAll(QStringLiteral("--dark")) > 0)
        QApplication::setPalette(DarkPalette());
    bool const pictures = arguments.size() == 4 && arguments[2] == QStringLiteral("--pictures");
    if (arguments.size() != 2 && !pictures) {
        std::fputs("usage: controls_example FILE [--dark] [--pictures FOLDER]\n", stderr);
        return 2;
    }
    CParameterLake::Lake().read(paramdb::qt::FromQString(arguments[1]).GetString());
    if (!CQtParamInstance().ReadTablesFromCandidateLake()) {
        std::fputs("not loaded\n", stderr);
        return 1;
    }
    paramdb::qt::Views const views;
    if (pictures)
        return TakePictures(arguments[3]) ? 0 : 1;
    HostWindow window;
    window.show();
    return QApplication::exec();
}
