// Pictures of the window, for the documentation.
#pragma once

#include <QtCore/QString>

namespace paramdb::browser {

class MainWindow;

// Waits for the end of the load, paints the window and writes the picture. False, and a line on standard
// error, if the files did not load or the picture cannot be written.
bool WriteScreenshot(MainWindow& window, QString const& file);

// Gives the application light letters on a dark ground, whatever the desktop says.
void UseDarkPalette();

} // namespace paramdb::browser
