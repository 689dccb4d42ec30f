// The report of `paramdb merge`.
//
// In JSON it is one object. The keys stay; new ones may be added.
//
//   output      {file, bytes, lines, left_out}; left_out counts superseded lines
//   sections    list of {key, file, line, rows, replaced}: the sections of the top level, most of them
//   tables,
//               in the order in which their keys come first; replaced is a list of {file, line, rows}
//   keys        list of {key, value, file, line, passed_over}: the plain keys of which a later value does not
//               count; passed_over is a list of {value, file, line}
#pragma once

#include "tools/report.h"
#include "tools/rewrite/merging.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace paramdb::tools {

void PrintMergeReport(std::ostream& out, Merged const& merged, std::vector<MergeInput> const& inputs,
                      std::string const& target, ReportFormat format);

} // namespace paramdb::tools
