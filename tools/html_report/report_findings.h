// The findings of `paramdb check` for a report.
#pragma once

#include "tools/check/context.h"
#include "tools/html_report/report_data.h"

#include <vector>

namespace paramdb::tools {

// Runs all rules over what was loaded; what the files say is meant as it is is left out.
std::vector<ReportFinding> FindingsOf(check::CheckContext const& context);

} // namespace paramdb::tools
