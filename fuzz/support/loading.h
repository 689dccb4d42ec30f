// Loads of one input, each into a distillery of its own, so that inputs do not depend on one another.
#pragma once

#include <paramdb/query/param_instance.h>

#include <string_view>

namespace fuzz {

// Whether the database version stands in the text; without it no load gets far.
bool HasVersion(std::string_view text);
// The text with the version of today ahead of it, if it has none.
std::string WithVersion(std::string_view text);

// Fills the lake of the process with this file, and empties the table set.
void FillLake(std::string_view bytes);

// Reads every table from the lake, whatever its version, and derives all that follows, also where a load
// would stop.
bool ReadAndDerive(CQtParamDistillery& distillery);

} // namespace fuzz
