// Parameter data for loads from either source, and all that a load leaves.
#pragma once

#include <paramdb/distillery/param_distillery.h>
#include <paramdb/storage/db_table_set.h>

#include <string>
#include <vector>

namespace derivation {

class Random;

/// The version that every load needs.
ParamDb::CDbTableSet Versions();

/// The lines of a lake with the same content: tables as sections, anything else as a named value.
std::string LakeText(ParamDb::CDbTableSet const& data);

/// Rows for all tables. Few different numbers make rows refer to one another and keys come twice.
ParamDb::CDbTableSet RandomData(Random& random);

/// All that a load leaves but the initialized flag, as lines: tables, named texts and derived structures.
std::vector<std::wstring> State(CQtParamDistillery& distillery);

} // namespace derivation
