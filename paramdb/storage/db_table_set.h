// The table set: the parameter data as a host hands it over from its database.
//
// A map from the tag of a table, such as <TMode>, to rows of cells; single values stand under keys such as
// <QType><FBaseName>. The set knows nothing of what the tables mean.
#pragma once

#include <paramdb/storage/checked_map.h>
#include <paramdb/storage/db_table.h>

#include <string>

namespace ParamDb {

class CDbTableSet : public paramdb::CheckedMap<std::wstring, CDbTable> {
public:
    using CheckedMap::CheckedMap;

    // Adds copies of the other set's tables whose keys are missing here. A table that is here stays as it is,
    // even if it is empty.
    void merge(CDbTableSet const& other) { insert(other.begin(), other.end()); }
};

} // namespace ParamDb
