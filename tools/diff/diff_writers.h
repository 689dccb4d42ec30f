// Writing a comparison down: as text, as JSON, as a page.
//
// In JSON it is an object with a line for each row. The keys stay; new ones may be added.
//
//   a, b            {files, version: {major, minor}, rows}
//   equal           whether nothing differs
//   summary         {tables, added, removed, changed} of all tables, tables being those that differ
//   header          a list of {name, a, b}: "major_version", "minor_version", "learn_file", "calib_file",
//                   "base_type", "alias_type"
//   tables          those that differ, a list in the order of loads
//     tag
//     rows_a, rows_b
//     counts        {added, removed, changed}
//     added, removed
//                   lists in key order of {key, row, names}: objects with the columns; names has those of the
//                   ids and settings that have one
//     changed       a list in key order of {key, names, changes}; names is of the key and of B, and a change
//     is
//                   {column, a, b, name_a, name_b}, whose names are null for none
//   consequences    null unless both loads are complete
//     speed         in Hz, of the rotor whose turns orders count
//     line_distance null if not given
//     limits        {added, removed, changed}: rows of the tables that hold limits
//     topics        those that differ, a list: as tables, with a name in place of the tag; what is not there
//                   is null
#pragma once

#include "tools/diff/comparison.h"

#include <cstddef>
#include <iosfwd>

namespace paramdb::tools {

// A limit is for the rows of each table; 0 shows all.
void PrintDiffText(std::ostream& out, Comparison const& comparison, AnswerOptions const& options,
                   std::size_t limit);
void PrintDiffPage(std::ostream& out, Comparison const& comparison, AnswerOptions const& options,
                   std::size_t limit);
// Always complete.
void PrintDiffJson(std::ostream& out, Comparison const& comparison, AnswerOptions const& options);

} // namespace paramdb::tools
