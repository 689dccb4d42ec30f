// A table set as a parameter file: a lake, a sea, JSON or a folder of CSV files, as `paramdb convert` writes
// them.
#pragma once

#include <paramdb/storage/db_table_set.h>

#include <iosfwd>
#include <optional>
#include <string>

namespace paramdb::tools::db {

// Whether the name tells a kind of file and may be written; a folder must be missing or empty, or where
// replacing is allowed hold tables alone. If not, the reason goes to `err`.
bool MayWriteSet(std::string const& target, bool may_replace, std::ostream& err);

// The text of a lake with the set. None, with lines on `err`, where a lake cannot hold it.
std::optional<std::string> LakeOf(std::string const& source, ParamDb::CDbTableSet const& set,
                                  std::ostream& err);

// Writes the set, whose cells have the types of their columns, in one step. What the kind of file cannot
// hold, and a file that would not load as the set does, go to `err`, and nothing is written. `source` is what
// such a line names.
bool WriteSet(std::string const& target, std::string const& source, ParamDb::CDbTableSet& set,
              std::ostream& err);

} // namespace paramdb::tools::db
