// The option --quiet: the answer alone, without messages of the load, progress and summaries.
//
// A stream keeps it, as it keeps colours (colour.h): who writes something that is not asked for looks here
// first. What tells why there is no answer is written all the same.
#pragma once

#include <iosfwd>

namespace paramdb::tools {

// Whether the stream is to be spared; no stream is unless it was told to.
bool IsQuiet(std::ostream& stream);
void SetQuiet(std::ostream& stream, bool is_quiet);

} // namespace paramdb::tools
