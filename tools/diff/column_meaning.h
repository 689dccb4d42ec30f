// What the numbers of a column are: ids that have names, or values of a setting that have words.
#pragma once

#include "tools/diff/row_table.h"
#include "tools/kinds.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

struct ColumnMeaning {
    Kind const* kind = nullptr; // whose ids they are; null for none
    int setting = -1;           // of QVIpCalcParameter, whose words they have; -1 for none
};

// That of each column of a table. The tag counts where a column of the same name means something else in
// another table; it may be empty.
std::vector<ColumnMeaning> MeaningsOf(std::wstring_view tag, RowColumns const& columns);

// The word for a value of a setting, in the language in force; none for a value beyond its words.
std::optional<std::wstring> SettingWord(int setting, std::int32_t value);

} // namespace paramdb::tools
