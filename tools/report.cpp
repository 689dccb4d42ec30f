#include "tools/report.h"

#include <paramdb/platform/core/utf8.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

bool IsControl(wchar_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

} // namespace

void AddFormatOption(CLI::App& verb, ReportFormat& format) {
    static std::map<std::string, ReportFormat> const formats{{"text", ReportFormat::Text},
                                                             {"json", ReportFormat::Json}};
    verb.add_option_function<std::string>(
            "--format", [&format](std::string const& name) { format = formats.at(name); },
            "How the report is printed (default: text)")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORM");
}

std::string Printable(std::wstring_view text) {
    std::wstring shown(text);
    std::replace_if(shown.begin(), shown.end(), IsControl, L'\xFFFD');
    return ToUtf8(shown);
}

std::size_t TextWidth(std::string_view text) {
    // Bytes that do not continue a character.
    auto const begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::ranges::count_if(text, begins));
}

std::string Grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3;) {
        place -= 3;
        digits.insert(place, 1, ' ');
    }
    return digits;
}

std::string Fixed(double number, int decimals) {
    char digits[400]; // the longest double has 309 digits before its point
    auto const end = std::to_chars(digits, std::end(digits), number, std::chars_format::fixed, decimals).ptr;
    return {digits, end};
}

std::string Duration(double seconds) {
    return seconds < 1 ? Fixed(seconds * 1e3, 2) + " ms" : Fixed(seconds, 2) + " s";
}

void TextTable::Add(std::vector<std::string> cells) {
    cells.resize(m_columns.size());
    m_lines.push_back(std::move(cells));
}

void TextTable::Print(std::ostream& out) const {
    std::vector<std::size_t> widths(m_columns.size());
    for (auto const& line : m_lines) {
        for (std::size_t column = 0; column < line.size(); ++column)
            widths[column] = std::max(widths[column], TextWidth(line[column]));
    }
    for (auto const& cells : m_lines) {
        std::string line;
        for (std::size_t column = 0; column < cells.size(); ++column) {
            std::string const padding(widths[column] - TextWidth(cells[column]), ' ');
            bool const right = m_columns[column] == Align::Right;
            line += (column == 0 ? "" : "  ") + (right ? padding + cells[column] : cells[column] + padding);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

void PrintJson(std::ostream& out, nlohmann::ordered_json const& document) {
    out << document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

} // namespace paramdb::tools
