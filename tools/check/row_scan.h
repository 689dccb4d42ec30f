// Where the fields of a row lie in its line, and where its reader would stumble over it.
//
// The reader of rows is lenient: it takes a number where one begins and goes on right behind it, and keeps to
// itself what is missing and what is left over. Here nothing is passed over.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// A line is read up to 199 characters from where a text begins, that one not counted.
inline constexpr std::size_t TextLimit = 199;

// The types of the fields of a row, those of the key first.
std::vector<FieldType> FieldTypesOf(TableDescription const& table);

struct RowScan {
    enum class Fault {
        None,
        Invalid,    // no number where one is expected
        OutOfRange, // a number that is too large for its field
        TooLong,    // too many characters behind the beginning of a text
    };

    Fault fault = Fault::None;
    std::vector<std::string_view> fields; // that the line has, up to the fault; a text without its quotes
    std::string_view at_fault;            // what begins where the reader stumbles, up to the next blank
    std::string_view surplus;             // what is left behind the last field, without blanks around
    std::optional<std::size_t> glued;     // the first field that has no blank behind it but should
    std::string_view open_quote;          // from the quote that is never closed on
    std::string_view at_limit;            // the first text with as many characters behind it as are allowed
    std::optional<std::size_t> nan;       // the first field that is no number ("nan")
};

// Looks at the trimmed text of a line as the reader would.
RowScan ScanRow(std::string_view line, std::vector<FieldType> const& types);

// True for a line that has exactly these fields and nothing to tell about. May be false for one that is fine
// but written in an unusual way; much faster than ScanRow.
bool IsPlainRow(std::string_view line, std::vector<FieldType> const& types);

} // namespace paramdb::tools::check
