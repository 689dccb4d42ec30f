// Tables by what people type for them: <TMode>, TMode or Mode.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// The table of that name; null if there is none.
TableDescription const* FindTable(std::string_view name);

// The table with its rows in the process-wide store.
CatalogueEntry const& EntryOf(TableDescription const& table);

// The tag in UTF-8.
std::string TagOf(TableDescription const& table);

// The tags that a wrong name may stand for, the nearest first and three at most: those that a few letters
// make of it, and those that hold it as a part. None where nothing is like it.
std::vector<std::string> TagsLike(std::string_view name);

// What to tell about a wrong name: "NAME: FAULT", with the tags that are like it and an end of line.
std::string UnknownTable(std::string_view name, std::string_view fault);

} // namespace paramdb::tools
