// The rows of the tables of one revision, read by one session or by two at once.
#pragma once

#include <paramdb/database/schema.h>
#include <paramdb/database/session.h>
#include <paramdb/storage/db_table.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace paramdb::database {

// The bits of numbers that columns do not keep, by column and row.
using SpecialNumbers = std::map<std::pair<std::string, std::string>, std::int64_t>;

// A table to be read, and what came of it.
struct TableJob {
    SqlTable const* table;
    std::uint64_t expected_rows;
    SpecialNumbers const* numbers; // null for none
    ParamDb::CDbTable rows = {};
    std::vector<std::string> faults = {};
};

// Reads all of them. Where there are many rows a second session is opened and reads beside this one in a
// thread of its own; if that fails, this one reads alone. Needs a transaction.
void ReadTables(Session& session, std::int64_t revision_id,
                std::function<std::unique_ptr<Session>()> const& open_another, std::vector<TableJob>& jobs);

} // namespace paramdb::database
