// Putting an answer on the screen: as text with aligned columns, or as JSON.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace paramdb::tools {

enum class ReportFormat { Text, Json };

// Adds the option --format text|json to a verb.
void AddFormatOption(CLI::App& verb, ReportFormat& format);

// A text of the data, or a file name, for the terminal: UTF-8, with U+FFFD in place of control characters,
// which could otherwise play tricks there.
std::string Printable(std::wstring_view text);

// The number of characters of a UTF-8 text.
std::size_t TextWidth(std::string_view text);

// A count with its digits in groups of three: "12 345".
std::string Grouped(std::uint64_t number);
// A number with that many decimals, the same under every locale.
std::string Fixed(double number, int decimals);
// A time in a unit that fits it: "1.23 ms", "4.56 s".
std::string Duration(double seconds);

// Lines of cells that are padded to columns, with two blanks between. A width is counted in characters.
class TextTable {
public:
    enum class Align { Left, Right };

    explicit TextTable(std::vector<Align> columns) : m_columns(std::move(columns)) {}

    // Adds a line; cells that are left out are empty.
    void Add(std::vector<std::string> cells);
    void Print(std::ostream& out) const;

private:
    std::vector<Align> m_columns;
    std::vector<std::vector<std::string>> m_lines;
};

// Writes the document, indented, with a line end behind it. Bytes that are no UTF-8 become U+FFFD.
void PrintJson(std::ostream& out, nlohmann::ordered_json const& document);

} // namespace paramdb::tools
