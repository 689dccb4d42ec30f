// All that a parameter file of any kind says: version, named texts and the rows of tables.
//
// Rows stand in the order in which they are read, which counts where two rows have one key or two ids one
// name. A table that is there without rows is not the same as one that is missing, and so it is with a value.
#pragma once

#include <paramdb/storage/db_table_set.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// The values beside the tables, by their keys in a lake or table set, and by the names they have in reports.
struct ValueName {
    wchar_t const* key;
    std::string_view name;
};
inline constexpr std::array<ValueName, 2> VersionNames{
    {{L"<DbDesign.CacheVersion>", "major"}, {L"<DbDesign.CacheMinorVersion>", "minor"}}};
inline constexpr std::array<ValueName, 4> TextNames{{{L"<QLearn><FLearnArcName>", "learn_file"},
                                                     {L"<QCalib><FCalibFileName>", "calib_file"},
                                                     {L"<QType><FBaseName>", "base_type"},
                                                     {L"<QType><FAliasName>", "alias_type"}}};

// The number of the version part, or of the text, with that key; none for any other key.
std::optional<std::size_t> VersionOfKey(std::wstring_view key);
std::optional<std::size_t> TextOfKey(std::wstring_view key);

struct ParameterSet {
    std::array<std::optional<std::int32_t>, VersionNames.size()> version;
    std::array<std::optional<std::wstring>, TextNames.size()> texts;
    // By the place of the table in the catalogue, counted from 0; the cells have the types of the columns.
    std::map<std::size_t, std::vector<ParamDb::row_t>> tables;

    std::size_t RowCount() const;
    // Everything the same, numbers to the bit.
    bool operator==(ParameterSet const& other) const;
};

// The same as a host would hand it to the library.
ParamDb::CDbTableSet TableSetOf(ParameterSet const& parameters);

} // namespace paramdb::tools
