// The listing of `paramdb tables`.
//
// In JSON it is an array with an object for each table, in the order in which loads visit them. The keys
// stay; new ones may be added.
//
//   tag               such as "<TMode>"
//   container, key, row
//                     names of classes
//   instrument_class  of a table in a family; null for any other
//   unique_keys       whether a second row with a key is passed over
//   key_columns, row_columns
//                     lists of {name, type}, in line order
//   rows              how many there are
//   bytes             about how much memory they take
#pragma once

#include <paramdb/tables/catalogue.h>

#include "tools/report.h"

#include <iosfwd>
#include <span>

namespace paramdb::tools {

enum class TableChoice { All, WithRows };

void PrintTableListing(std::ostream& out, std::span<CatalogueEntry const> tables, TableChoice choice,
                       ReportFormat format);

} // namespace paramdb::tools
