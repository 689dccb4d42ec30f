// Tables of texts as CSV after RFC 4180.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

struct CsvRecord {
    std::size_t line = 1; // where it begins, counted from 1
    std::vector<std::string> cells;
    bool operator==(CsvRecord const&) const = default;
};

// The records of a text, whose lines may end with LF alone. None, with the line and what is wrong there, for
// a quote in a cell that does not begin with one, for anything behind a closing quote, and for a missing one.
struct CsvFault {
    std::size_t line = 0; // 0: no fault
    std::string text;
};
std::vector<CsvRecord> ReadCsv(std::string_view text, CsvFault& fault);

// Adds a record. A cell has quotes where it needs them, and where it is the only one and empty, since its
// line would be blank.
void AppendCsv(std::string& text, std::vector<std::string> const& cells);

} // namespace paramdb::tools
