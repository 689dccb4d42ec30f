// The protocol window: every message of the library goes through here, and the host decides where it is
// shown.
//
// Categories: 8 for almost everything, 16 for mode information, 1 for text copying. Styles: 1 a plain line, 3
// an error in data, 4 a refusal. Texts end with a line feed of their own. Both functions may be called from
// any thread, and a sink may itself call either of them; two threads may be inside one sink at the same time.
#pragma once

#include <paramdb/platform/core/export.h>

#include <functional>
#include <string>

namespace PrWin {

using Sink = std::function<void(int category, int style, std::wstring const& text)>;

// Installs a sink and returns the one before, empty if there was none. An empty sink brings back the standard
// error stream. A message that is under way on another thread may still reach the old sink.
PARAMDB_API Sink SetSink(Sink sink);

// Hands a message to the sink, or writes its text to standard error in UTF-8 if there is none. An exception
// of the sink passes through.
PARAMDB_API void Output(int category, int style, std::wstring const& text);

} // namespace PrWin
