// Parameters from JSON text, event by event: a document of a million rows is never in memory as a whole.
#pragma once

#include "tools/convert/forms.h"

#include <string_view>

namespace paramdb::tools {

// Fills parameters, losses and faults of the result.
void ReadJson(std::string_view bytes, ReadResult& result);

} // namespace paramdb::tools
