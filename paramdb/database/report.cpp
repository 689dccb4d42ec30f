#include <paramdb/database/report.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/pr_win.h>

namespace paramdb::database {

void Report::Note(std::string const& text) {
    Output(1, text);
}

void Report::Fault(std::string const& text) {
    ++m_faults;
    Output(3, text);
}

void Report::Fail(std::string const& reason) {
    Output(4, m_operation + " failed: " + reason);
}

void Report::Output(int style, std::string const& text) const {
    PrWin::Output(8, style, m_function + L": " + FromUtf8(text) + L"\n");
}

std::string PlaceText(std::string_view table, std::string_view column, std::string_view key) {
    std::string text = "table '" + std::string(table) + "'";
    if (!column.empty())
        text.append(", column '").append(column).append("'");
    if (!key.empty())
        text.append(", key '").append(key).append("'");
    return text + ": ";
}

std::string Count(std::size_t number, std::string_view one) {
    return std::to_string(number) + " " + std::string(one) + (number == 1 ? "" : "s");
}

} // namespace paramdb::database
