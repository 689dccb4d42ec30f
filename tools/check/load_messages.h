// The messages of the load as findings.
#pragma once

#include "tools/check/context.h"
#include "tools/check/finding.h"

#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// Goes through the messages about rows in the order in which tables report them, while a rule goes through
// the same rows.
class RowMessages {
public:
    RowMessages(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings) {}

    // Tells that a finding stands for the messages about this line of the table: the next one, and the one
    // about a number before it. Nothing if the next messages are about something else.
    void Explain(std::wstring_view tag, std::wstring_view line);

private:
    CheckContext const& m_context;
    FindingList& m_findings;
    std::size_t m_next = 0;
};

// Makes findings of the faults among the messages that no rule has explained.
void ReportOtherMessages(CheckContext const& context, FindingList& findings);

} // namespace paramdb::tools::check
