// The ids that the tables of a check hold, for telling references that lead nowhere.
#pragma once

#include "tools/check/context.h"
#include "tools/named_id.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// The numbers that begin the keys of a table.
class IdTable {
public:
    // Names stand in the first text of the rows, or in those of another table with the same ids.
    IdTable(CheckContext const& context, CheckedTable const& table, std::string_view names = {});

    // Whether a file has the table at all. Files that are made to be merged over others lack most tables, and
    // nothing is told of ids that could stand in another file.
    bool IsThere() const { return m_table->Section() != nullptr; }
    bool Contains(std::int64_t id) const;
    std::string const& Tag() const { return m_tag; }

    // "2500 Spectrum", the id alone if it has no name.
    std::string Shown(int id) const;
    // A hint for a wrong id: the nearest ones, if there are any.
    std::string Hint(int id) const;

private:
    // Those that have a name, ascending.
    std::vector<NamedId> const& NamedRows() const;

    CheckContext const* m_context;
    CheckedTable const* m_table;
    std::string m_tag;
    std::string_view m_names;
    std::vector<int> m_ids;       // ascending
    std::vector<bool> m_is_there; // from the lowest id to the highest; empty where they lie far apart
    mutable bool m_has_names = false;
    mutable std::vector<NamedId> m_named;
};

// The tables of ids of a check, each made when it is first asked for.
class KnownIds {
public:
    explicit KnownIds(CheckContext const& context) : m_context(context) {}

    // That table, with the names of another one if it has none itself.
    IdTable const& Of(std::string_view table, std::string_view names = {});

private:
    CheckContext const& m_context;
    std::map<std::string_view, IdTable> m_tables;
};

// Whether what is derived from the tables is that of these files: the load ended behind it, if it ended
// early.
bool IsDerived(CheckContext const& context);

// Tells that findings stand for that many messages of the load, the first ones that begin so
// and have none yet.
void ExplainMessages(CheckContext const& context, FindingList& findings, std::wstring_view begin,
                     std::size_t count);

} // namespace paramdb::tools::check
