// Pictures of the controls for the documentation.
#pragma once

#include <QtCore/QString>

// Opens the controls one after the other, with the tables as loaded, and writes a PNG of each into the
// folder. False if a file cannot be written.
bool TakePictures(QString const& folder);
