// The tables that a database of parameter data has beside those of the catalogue.
//
//   paramdb_schema     one row: the version of this layout, and whether foreign keys are kept
//   paramdb_revision   a row for each revision of a set: who wrote it, when, with which remark
//   paramdb_content    which tables a revision has, with how many rows
//   paramdb_version    the database version of the data
//   paramdb_text       the four named texts
//   paramdb_number     the bits of numbers that a column does not keep: those that are none, which are NULL
//                      there, and zeros with a sign
//
// The row of a revision is written last, in the transaction of all its other rows, so a revision that can be
// seen is whole. Rows of a revision that can be seen are never changed; where the database knows triggers
// they refuse it.
#pragma once

#include <paramdb/database/session.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace paramdb::database {

inline constexpr std::int64_t SchemaVersion = 1;

enum class SchemaState { Missing, WithForeignKeys, WithoutForeignKeys };

// Looks whether the tables are there. Throws DatabaseFault for a version that is not known.
SchemaState FindSchema(Session& session);

// Makes all tables; part of the transaction in which it is called. Exporters that come at the same time wait
// for one another, so look again behind LockSchema.
void LockSchema(Session& session);
void MakeSchema(Session& session, bool with_foreign_keys);

// The columns that the tables have now, by the names of the tables.
using TableColumns = std::map<std::string, std::set<std::string>>;
TableColumns FindColumns(Session& session);

} // namespace paramdb::database
