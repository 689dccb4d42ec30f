// What is to be exported, gathered and checked.
#pragma once

#include <paramdb/database/revision_rows.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/tables/catalogue.h>

#include <memory>

namespace paramdb::database {

// The rows of a table set as a load would read them. What a load would refuse is reported as a fault; what it
// would pass over, as a note.
class SetContent {
public:
    SetContent(ParamDb::CDbTableSet const& set, Report& report);

    RevisionContent const& content() const { return m_content; }

private:
    bool TakeTable(std::wstring const& key, ParamDb::CDbTable const& rows, Report& report);
    bool TakeSingleValue(std::wstring const& key, ParamDb::CDbTable const& rows, Report& report);

    std::unique_ptr<CParamTables> m_tables;
    std::vector<CatalogueEntry> m_entries;
    RevisionContent m_content;
};

// The tables of a loaded store, which has to stay as it is meanwhile.
RevisionContent StoreContent(CQtParamInstance const& parameters);

} // namespace paramdb::database
