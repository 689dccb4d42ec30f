#include <paramdb/storage/parameter_table_set.h>

namespace ParamDb {

CDbTableSet& CParameterTableSet::TableSet() {
    static CDbTableSet set;
    return set;
}

} // namespace ParamDb
