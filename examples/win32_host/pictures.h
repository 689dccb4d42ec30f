// Pictures of the controls for the documentation.
#pragma once

#include "host_window.h"

#include <string>

// Shows the window and the dialog with something in them, and writes a bitmap of each into the folder. False
// if a file cannot be written.
bool TakePictures(HostWindow& host, std::wstring const& folder);
