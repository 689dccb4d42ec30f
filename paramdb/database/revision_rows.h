// The revisions in a database: finding one, reading it, writing one.
#pragma once

#include <paramdb/database/report.h>
#include <paramdb/database/revision.h>
#include <paramdb/database/session.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/tables/table_rows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace paramdb::database {

struct FoundRevision {
    std::int64_t id = 0;
    ParamDb::Revision revision;
};

// The revisions of a set, or of all of them if the name is empty, in the order of names and numbers.
std::vector<FoundRevision> ListRevisions(Session& session, std::string const& set);

// The one that the connection tells. Throws DatabaseFault if there is none, naming those that there are.
FoundRevision FindRevision(Session& session, ConnectionText const& connection);

// Its tables, named texts and version, with the keys of a table set. Faults are reported; a row that has one
// is left out. Of a large revision a second session, which the function opens, reads a part in a thread of
// its own.
ParamDb::CDbTableSet ReadRevision(Session& session, std::int64_t revision_id,
                                  std::function<std::unique_ptr<Session>()> const& open_another,
                                  Report& report);

// What a revision is made of.
struct TableContent {
    SqlTable const* table;
    CQParamTableRows const* rows;
    std::int32_t table_type;
};
struct RevisionContent {
    std::vector<TableContent> tables;
    std::optional<std::int32_t> major = {};
    std::optional<std::int32_t> minor = {};
    std::vector<std::pair<std::string, std::wstring>> texts = {}; // by the names in the database
};

// Reports what cannot be written.
void CheckContent(RevisionContent const& content, Report& report);
// Reports ids of which there is no row.
void CheckReferences(RevisionContent const& content, Report& report);

struct NewRevision {
    std::string set;
    std::string who;
    std::string remark;
    // Of a copy: what the original has. Else the next number and the present time are taken.
    std::optional<std::int32_t> number = {};
    std::optional<std::string> when = {};
};

// Writes a revision within a transaction, its own row last. The tables must be there.
ParamDb::Revision WriteRevision(Session& session, RevisionContent const& content,
                                NewRevision const& revision);

// The present time as the database tells it.
std::string Now(Session& session);

} // namespace paramdb::database
