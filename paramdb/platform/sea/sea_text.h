// The text form of a sea, as resource_sea.h tells it, to and from bytes. A helper of CResourceSea.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/sea/resource_sea.h>

#include <string>
#include <string_view>
#include <vector>

namespace paramdb {

struct SeaContent {
    CResourceSea::ListMap lists;
    CResourceSea::ValueMap values;
    std::vector<int> bad_lines; // numbers from 1, ascending
};

// Reads any bytes; what makes no sense is left out and named in bad_lines. The last of two equal values
// counts.
[[nodiscard]] PARAMDB_API SeaContent ReadSeaText(std::string_view bytes);

// Writes with the platform's line end. ReadSeaText gives back what is written here.
[[nodiscard]] PARAMDB_API std::string WriteSeaText(CResourceSea::ListMap const& lists,
                                                   CResourceSea::ValueMap const& values);

} // namespace paramdb
