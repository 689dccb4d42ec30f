// Text on its way between the controls and Qt, and the few words that the views bring themselves.
//
// A wide character holds one UTF-16 code unit on every platform, as QChar does; nothing else changes on the
// way. Any thread.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

#include <QtCore/QString>

namespace paramdb::qt {

// Unit by unit. A single unit above U+FFFF, possible where a wide character is wider, becomes the two it
// stands for; one that stands for nothing becomes U+FFFD.
[[nodiscard]] PARAMDB_VIEWS_API QString ToQString(CString const& text);
[[nodiscard]] PARAMDB_VIEWS_API CString FromQString(QString const& text);

// "Filter", the name of the line that narrows a list, in the language in force.
[[nodiscard]] PARAMDB_VIEWS_API QString FilterWord();

} // namespace paramdb::qt
