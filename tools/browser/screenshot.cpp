#include "tools/browser/screenshot.h"

#include "tools/browser/main_window.h"

#include <QtCore/QEventLoop>
#include <QtGui/QImage>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>
#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <utility>
#include <vector>

namespace paramdb::browser {

namespace {

// The picture in its 256 most frequent colours, in which it takes a third of the room; others become the
// nearest of them.
QImage WithFewColors(QImage const& picture) {
    constexpr std::size_t most = 256;
    QImage const plain = picture.convertToFormat(QImage::Format_RGB32);
    std::unordered_map<QRgb, int> counts;
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x)
            ++counts[plain.pixel(x, y)];
    std::vector<std::pair<int, QRgb>> colors;
    for (auto const& [color, count] : counts)
        colors.emplace_back(-count, color);
    std::sort(colors.begin(), colors.end());
    colors.resize(std::min(colors.size(), most));
    QList<QRgb> table;
    for (auto const& [count, color] : colors)
        table += color;
    return plain.convertToFormat(QImage::Format_Indexed8, table, Qt::ThresholdDither | Qt::AvoidDither);
}

} // namespace

bool WriteScreenshot(MainWindow& window, QString const& file) {
    QApplication::processEvents();
    while (window.IsLoading())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    for (int turn = 0; turn < 5; ++turn) // what one event posts for the next
        QApplication::processEvents();
    if (!window.Outcome() || window.Outcome()->end != LoadEnd::Complete) {
        std::fprintf(stderr, "paramdb-browser: %s\n", window.StatusText().toUtf8().constData());
        return false;
    }
    constexpr int smallest = 0; // of the file; the picture is the same
    if (!WithFewColors(window.grab().toImage()).save(file, "PNG", smallest)) {
        std::fprintf(stderr, "paramdb-browser: cannot write %s\n", file.toUtf8().constData());
        return false;
    }
    return true;
}

void UseDarkPalette() {
    QColor const ground(0x2B, 0x2B, 0x2B);
    QColor const text(0xE6, 0xE6, 0xE6);
    QColor const dim(0x8C, 0x8C, 0x8C);
    QPalette palette(QColor(0x3A, 0x3A, 0x3A), ground);
    palette.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x26, 0x26));
    palette.setColor(QPalette::ToolTipBase, ground);
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x65, 0xA8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6C, 0xB0, 0xF0));
    palette.setColor(QPalette::PlaceholderText, dim);
    for (auto const role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    for (auto const role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dim);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(palette);
}

} // namespace paramdb::browser
