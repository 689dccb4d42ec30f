// The reports of `paramdb db`.
//
// In JSON, `list` is an array with an object for each set, in the order of names. The keys stay; new ones may
// be added.
//
//   set, revisions    the name, and how many revisions it has
//   newest, when, who, remark, tables, rows
//                     of the newest one
//
// `log` is an array with an object for each revision, the newest first: {set, revision, when, who, remark,
// tables, rows}. `import` and `export` give one such object; that of an import has two keys more:
// is_local_copy and faults.
#pragma once

#include <paramdb/database/import_tables.h>

#include "tools/report.h"

#include <iosfwd>
#include <vector>

namespace paramdb::tools::db {

// The revisions are in the order of names and numbers.
void PrintSets(std::ostream& out, std::vector<ParamDb::Revision> const& revisions, ReportFormat format);
void PrintLog(std::ostream& out, std::vector<ParamDb::Revision> const& revisions, ReportFormat format);
void PrintImport(std::ostream& out, ParamDb::Import const& import, ReportFormat format);
void PrintExport(std::ostream& out, ParamDb::Revision const& revision, ReportFormat format);

} // namespace paramdb::tools::db
