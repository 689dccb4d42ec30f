// Cells as text and back, without loss.
#pragma once

#include <paramdb/storage/cell.h>
#include <paramdb/tables/field.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace paramdb::tools {

// A text field holds at most this many characters: a load refuses a longer one.
inline constexpr std::size_t LongestText = 198;

// A number in the shortest form from which the same bits are read again: "0.1", "-0", "inf", "-nan". A NaN
// keeps its sign alone. Not for texts.
std::string NumberText(ParamDb::cell_t const& number);

// The number of that type that is the whole text; none if it is no such number.
std::optional<ParamDb::cell_t> NumberOf(FieldType type, std::wstring_view text);

// What is wrong with a text as a field; empty if nothing is.
std::string TextFault(std::wstring_view text);

// A unit as "U+20AC".
std::string UnitText(wchar_t unit);

// The first surrogate of the text that has no other half, which UTF-8 cannot hold; none if there is none.
std::optional<wchar_t> LoneSurrogate(std::wstring_view text);

// "<TMode>, row 3, name": where a cell stands; rows and columns are counted from 0.
std::string CellPlace(std::size_t table, std::size_t row, std::size_t column);
// "<TMode>, row 3".
std::string RowPlace(std::size_t table, std::size_t row);

} // namespace paramdb::tools
