// Writing the fields of a row as text.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/tables/field.h>

#include <span>
#include <string>

namespace paramdb {

// Appends a field as a wide stream of the classic locale prints it: numbers in their default form, of
// floating ones six digits; a text as it is, without quotes.
PARAMDB_API void AppendField(std::wstring& line, ConstField field);

// Appends the fields with one blank between them.
PARAMDB_API void AppendFields(std::wstring& line, std::span<ConstField const> fields);

} // namespace paramdb
