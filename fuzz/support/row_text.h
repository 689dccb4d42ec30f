// The text of rows, as fuzzers take it apart and put it together.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

// A text without white space in front.
std::string_view Trimmed(std::string_view line);

// Whether a line opens a section under a key.
bool OpensSection(std::string_view line);

// The fields of a row, separated by white space. What stands in double quotes belongs to one field.
std::vector<std::string> FieldsOf(std::string_view line);

// The table of a tag, or null.
paramdb::TableDescription const* TableOf(std::string_view tag);

} // namespace fuzz
