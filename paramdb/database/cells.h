// Values of a database as the cells that the readers of tables want.
#pragma once

#include <paramdb/storage/cell.h>
#include <paramdb/tables/field.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::database {

// The longest text that a table takes.
inline constexpr std::size_t LongestText = 198;

enum class CellFault : std::uint8_t { None, Null, NoNumber, Fraction, OutOfRange, NoText, NotUtf8, TooLong };

// A value that does not fit its column. Its cell holds 0 or an empty text.
struct ColumnFault {
    std::size_t column;
    CellFault fault;
    std::string value; // in short, for a message
};
using ColumnFaults = std::vector<ColumnFault>;

// What is wrong, in words: "300 is out of range for int".
std::string FaultText(ColumnFault const& fault, FieldType type);

// Each appends a cell for a column of that type; a fault goes to the list.
void AddNull(ParamDb::row_t& row, FieldType type, ColumnFaults& faults);
void AddInteger(ParamDb::row_t& row, FieldType type, std::int64_t value, ColumnFaults& faults);
void AddReal(ParamDb::row_t& row, FieldType type, double value, ColumnFaults& faults);
// What the database holds as a text, in UTF-8. A column of numbers refuses it.
void AddText(ParamDb::row_t& row, FieldType type, std::string_view value, ColumnFaults& faults);
// A value of any type that came as its text.
void AddParsed(ParamDb::row_t& row, FieldType type, std::string_view value, ColumnFaults& faults);
// Bytes and the like, which no column takes.
void AddForeign(ParamDb::row_t& row, FieldType type, ColumnFaults& faults);

// A value for messages and for the keys of special numbers: numbers in their shortest exact form.
std::string CellText(ParamDb::cell_t const& cell);
std::string FieldText(ConstField field);
// The elements of a key with slashes between.
std::string KeyText(std::span<ParamDb::cell_t const> key);
std::string KeyText(std::span<ConstField const> key);

} // namespace paramdb::database
