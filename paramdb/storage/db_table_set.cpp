#include <paramdb/storage/db_table_set.h>

#include <stdexcept>

namespace ParamDb {

CDbTable const& CDbTableSet::at(std::wstring const& key) const {
    auto const found = find(key);
    if (found == end())
        throw std::out_of_range("invalid map<K, T> key");
    return found->second;
}

CDbTable& CDbTableSet::at(std::wstring const& key) {
    return const_cast<CDbTable&>(static_cast<CDbTableSet const&>(*this).at(key));
}

} // namespace ParamDb
