// The table set: the parameter data as a host hands it over from its database.
//
// A map from the tag of a table, such as <TMode>, to rows of cells; single values stand under keys such as
// <QType><FBaseName>. The set knows nothing of what the tables mean.
#pragma once

#include <paramdb/storage/db_table.h>

#include <map>
#include <string>

namespace ParamDb {

class CDbTableSet : public std::map<std::wstring, CDbTable> {
public:
    using std::map<std::wstring, CDbTable>::map;

    // The table of that key. Throws std::out_of_range("invalid map<K, T> key") on a miss.
    CDbTable& at(std::wstring const& key);
    CDbTable const& at(std::wstring const& key) const;

    // Adds copies of the other set's tables whose keys are missing here. A table that is here stays as it is, even
    // if it is empty.
    void merge(CDbTableSet const& other) { insert(other.begin(), other.end()); }
};

} // namespace ParamDb
