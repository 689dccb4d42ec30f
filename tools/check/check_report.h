// The report of `paramdb check`: for people, for programs, and for two kinds of machines that show findings
// beside the lines.
//
// In JSON it is one object. The keys stay; new ones may be added.
//
//   files         list of {file, lines, sections}, in the order of the command line
//   result        of the load: "complete", "incomplete" or "refused"
//   findings      list, in the order of files and lines
//     code, name, severity
//                 "P201", "row-with-colon", "error", "warning" or "note"
//     file, line, column, length
//                 counted from 1, in characters; line, column and length are null for a file as a whole
//     message, hint
//                 without a full stop; the hint is null for none
//     source      the line itself; null for a file as a whole
//     related     list of {file, line, column, text}
//   summary       {errors, warnings, notes}
#pragma once

#include "tools/check/context.h"
#include "tools/check/finding.h"

#include <cstddef>
#include <iosfwd>
#include <vector>

namespace paramdb::tools::check {

enum class CheckFormat {
    Text,   // each finding with its line and a mark under the place, and a summary
    Json,   // see above
    Sarif,  // Static Analysis Results Interchange Format 2.1.0
    Github, // workflow commands that make annotations
};

struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
};

FindingCounts CountFindings(std::vector<Finding> const& findings);

void PrintFindings(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings,
                   CheckFormat format);

// The parts of the above.
void PrintFindingsText(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings);
void PrintFindingsJson(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings);
void PrintFindingsSarif(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings);
void PrintFindingsGithub(std::ostream& out, CheckContext const& context,
                         std::vector<Finding> const& findings);

} // namespace paramdb::tools::check
