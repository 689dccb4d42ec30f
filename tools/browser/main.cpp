// paramdb-browser FILE...: the window in which engineers look at parameter files.
#include <paramdb/views/qt/views.h>

#include "tools/browser/main_window.h"
#include "tools/browser/screenshot.h"
#include "tools/browser/table_list.h"
#include "tools/table_names.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <cstdio>
#include <memory>
#include <optional>

namespace {

using namespace paramdb::browser;

// A key as it is written in the files' names for it: "11/1002/3/1/1025/-1", elements left out at the end.
std::optional<CClavis> ReadKey(QString const& text) {
    QStringList const numbers = text.split(u'/');
    if (numbers.size() > Clavis::ElementCount)
        return std::nullopt;
    CClavis key;
    for (qsizetype element = 0; element < numbers.size(); ++element) {
        bool is_number = false;
        key[static_cast<int>(element)] = numbers[element].toInt(&is_number);
        if (!is_number)
            return std::nullopt;
    }
    return key;
}

struct Options {
    QCommandLineOption dark{QStringLiteral("dark"), QStringLiteral("Light letters on a dark ground.")};
    QCommandLineOption table{QStringLiteral("table"),
                             QStringLiteral("Goes to a table, such as TMode or RotorSpeed."),
                             QStringLiteral("TAG")};
    QCommandLineOption key{QStringLiteral("key"), QStringLiteral("Shows a key."),
                           QStringLiteral("M/I/C/L/P/S")};
    QCommandLineOption pane{
        QStringLiteral("pane"),
        QStringLiteral("Brings a pane to the front: tables, key, parameter, rotors, ranges or "
                       "messages."),
        QStringLiteral("NAME")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"),
                                  QStringLiteral("Writes a picture of the window and ends."),
                                  QStringLiteral("PNG")};
};

} // namespace

int main(int argc, char** argv) {
    constexpr int usage_error = 2;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("paramdb-browser"));
    QApplication::setApplicationVersion(QStringLiteral(PARAMDB_VERSION));

    Options const options;
    QCommandLineParser line;
    line.setApplicationDescription(
        QStringLiteral("Shows what is in parameter files. Later files are merged into "
                       "the first one."));
    line.addHelpOption();
    line.addVersionOption();
    line.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Parameter files"),
                               QStringLiteral("[FILE...]"));
    line.addOptions({options.dark, options.table, options.key, options.pane, options.screenshot});
    line.process(application);

    paramdb::TableDescription const* table = nullptr;
    if (line.isSet(options.table)) {
        std::string const name = line.value(options.table).toStdString();
        table = paramdb::tools::FindTable(name);
        if (!table) {
            std::string const fault = paramdb::tools::UnknownTable(name, "no such table");
            std::fprintf(stderr, "paramdb-browser: %s", fault.c_str());
            return usage_error;
        }
    }
    std::optional<CClavis> key;
    if (line.isSet(options.key) && !(key = ReadKey(line.value(options.key)))) {
        std::fprintf(stderr, "paramdb-browser: no key: %s\n", line.value(options.key).toUtf8().constData());
        return usage_error;
    }
    if (line.isSet(options.dark))
        UseDarkPalette();
    paramdb::qt::Views const views;

    // A picture always has the layout of the start.
    bool const is_picture = line.isSet(options.screenshot);
    QTemporaryDir const folder;
    std::unique_ptr<QSettings> const store =
        is_picture ? std::make_unique<QSettings>(folder.filePath(QStringLiteral("settings.ini")),
                                                 QSettings::IniFormat)
                   : std::make_unique<QSettings>(QStringLiteral("paramdb"), QStringLiteral("browser"));
    MainWindow window(*store);
    if (table)
        window.Tables().SetSelected(QString::fromWCharArray(table->tag));
    if (key)
        window.SetKey(*key);
    if (line.isSet(options.pane)) {
        QDockWidget* const dock = window.Dock(line.value(options.pane));
        if (!dock) {
            std::fprintf(stderr, "paramdb-browser: no such pane: %s\n",
                         line.value(options.pane).toUtf8().constData());
            return usage_error;
        }
        dock->show();
        dock->raise();
    }
    window.show();
    window.Open(line.positionalArguments());
    if (is_picture)
        return WriteScreenshot(window, line.value(options.screenshot)) ? 0 : usage_error;
    return QApplication::exec();
}
