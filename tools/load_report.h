// The report of `paramdb load`.
//
// In JSON it is one object. The keys stay; new ones may be added.
//
//   sources       list of {file, bytes, lines, sections}, in the order of merging; bytes is null for a pipe
//   version       {major, minor, verdict}; numbers as found, 0 where there is none; "accepted" or "refused"
//   result        "complete", "incomplete" (what is derived from the tables is missing) or "refused"
//   texts         {learn_file, calib_file, base_type, alias_type}, each null after a refusal
//   totals        {bytes, lines, sections, tables, all_tables, rows}; bytes is null if it is for a source,
//                 tables (those with a row), all_tables and rows are null after a refusal
//   messages      list of {category, style, count}, in that order
//   seconds       {read, load, total}
//   throughput    {megabytes_per_second, lines_per_second} over the total time, a megabyte having 10^6 bytes;
//                 null where a part is unknown
#pragma once

#include "tools/loading.h"
#include "tools/report.h"

#include <iosfwd>

namespace paramdb::tools {

void PrintLoadReport(std::ostream& out, Load const& load, ReportFormat format);

} // namespace paramdb::tools
