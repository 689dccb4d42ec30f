#include "tools/check/load_messages.h"

#include "tools/messages.h"
#include "tools/report.h"

#include <algorithm>

namespace paramdb::tools::check {
namespace {

constexpr std::wstring_view ConversionBegin = L"Error converting parameter sea to parameter tables: ";

bool IsFault(LoadMessage const& message) {
    return message.style == FaultStyle || message.style == RefusalStyle;
}

// In one line: what is told over several has blanks between them.
std::string OneLine(std::wstring text) {
    std::replace_if(
        text.begin(), text.end(), [](wchar_t unit) { return unit == L'\n' || unit == L'\t'; }, L' ');
    while (text.ends_with(L' '))
        text.pop_back();
    return Printable(text);
}

} // namespace

void RowMessages::Explain(std::wstring_view tag, std::wstring_view line) {
    auto const& messages = m_context.Messages();
    std::wstring wanted = L"Error reading line '";
    wanted.append(line).append(L"' of table '").append(tag).append(L"'\n");
    std::size_t about_row = m_next;
    if (about_row < messages.size() && messages[about_row].text.starts_with(ConversionBegin))
        ++about_row;
    if (about_row == messages.size() || !messages[about_row].text.ends_with(wanted))
        return;
    for (; m_next <= about_row; ++m_next)
        m_findings.Explain(m_next);
}

void ReportOtherMessages(CheckContext const& context, FindingList& findings) {
    auto const& messages = context.Messages();
    for (std::size_t index = 0; index < messages.size(); ++index) {
        if (IsFault(messages[index]) && !findings.IsExplained(index))
            findings.Add("P191", Place(), "the load reports: " + OneLine(messages[index].text))
                .Hint("see which rows the message names");
    }
    if (context.LoadInfo().result == LoadResult::Incomplete)
        findings.Add("P191", Place(), "what is derived from the tables is missing after the load")
            .Hint("mend the other findings first");
}

} // namespace paramdb::tools::check
