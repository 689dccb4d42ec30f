#include <paramdb/database/revision_rows.h>
#include <paramdb/database/schema.h>
#include <paramdb/database/sql_text.h>
#include <paramdb/database/table_reader.h>
#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <map>
#include <utility>

namespace paramdb::database {
namespace {

using ParamDb::CDbTable;
using ParamDb::CDbTableSet;
using ParamDb::row_t;

std::string Text(std::optional<std::string> const& value) {
    return value.value_or("");
}

// The number that a text of the database is; none for any other.
std::optional<std::int64_t> Number(std::optional<std::string> const& text) {
    row_t row;
    ColumnFaults faults;
    if (text)
        AddParsed(row, FieldType::Int64, *text, faults);
    return row.empty() || !faults.empty() ? std::nullopt : std::optional(std::get<std::int64_t>(row.front()));
}

std::int64_t NumberOrThrow(std::optional<std::string> const& text, char const* table, char const* column) {
    auto const number = Number(text);
    if (!number)
        throw DatabaseFault(FaultKind::Other,
                            PlaceText(table, column) + text.value_or("NULL") + " is no number");
    return *number;
}

class RevisionReader {
public:
    RevisionReader(Session& session, std::int64_t revision_id, Report& report)
        : m_session(session), m_revision_id(revision_id), m_report(report), m_columns(FindColumns(session)) {}

    CDbTableSet Read(std::function<std::unique_ptr<Session>()> const& open_another) {
        ReadNumbers();
        ReadContent();
        ReadTables(m_session, m_revision_id, open_another, m_jobs);
        for (TableJob& job : m_jobs) {
            for (std::string const& fault : job.faults)
                m_report.Fault(fault);
            m_set[job.table->Tag()] = std::move(job.rows);
        }
        ReadVersion();
        ReadTexts();
        return std::move(m_set);
    }

private:
    void ReadNumbers() {
        for (auto const& row :
             m_session.Query("SELECT table_name, column_name, row_key, bits FROM paramdb_number "
                             "WHERE revision_id = :p1",
                             4, {m_revision_id}))
            m_numbers[Text(row[0])][{Text(row[1]), Text(row[2])}] =
                NumberOrThrow(row[3], "paramdb_number", "bits");
    }

    // Which tables there are to read. A table that is not there as it should be is reported.
    void ReadContent() {
        for (auto const& row :
             m_session.Query("SELECT table_name, row_count, table_type FROM paramdb_content "
                             "WHERE revision_id = :p1 ORDER BY table_name",
                             3, {m_revision_id})) {
            std::string const name = Text(row[0]);
            SqlTable const* const table = FindSqlTable(name);
            std::int64_t const rows = NumberOrThrow(row[1], "paramdb_content", "row_count");
            if (table == nullptr) {
                m_report.Fault(PlaceText(name) + "there is no such table in parameter data");
            } else if (IsThere(*table)) {
                auto const numbers = m_numbers.find(name);
                TableJob& job = m_jobs.emplace_back(
                    TableJob{table, static_cast<std::uint64_t>(std::max<std::int64_t>(0, rows)),
                             numbers == m_numbers.end() ? nullptr : &numbers->second});
                job.rows.table_type() = static_cast<CDbTable::table_type_t>(Number(row[2]).value_or(0));
            }
        }
    }

    // Whether the database has the table with all columns. Reports what is missing.
    bool IsThere(SqlTable const& table) {
        auto const found = m_columns.find(table.name);
        if (found == m_columns.end()) {
            m_report.Fault(PlaceText(table.name) + "the table is missing");
            return false;
        }
        bool is_whole = true;
        auto const demand = [&](std::string const& column) {
            if (found->second.contains(column))
                return;
            m_report.Fault(PlaceText(table.name, column) + "the column is missing");
            is_whole = false;
        };
        demand(RevisionColumn);
        for (SqlColumn const& column : table.columns)
            demand(column.name);
        if (table.HasRowNumber())
            demand(RowNumberColumn);
        return is_whole;
    }

    void ReadVersion() {
        auto const rows = m_session.Query("SELECT major, minor FROM paramdb_version WHERE revision_id = :p1",
                                          2, {m_revision_id});
        if (rows.empty())
            return;
        ReadVersionNumber(MajorVersionKey, "major", rows.front()[0]);
        ReadVersionNumber(MinorVersionKey, "minor", rows.front()[1]);
    }

    void ReadVersionNumber(wchar_t const* key, char const* column, std::optional<std::string> const& text) {
        if (!text)
            return;
        row_t row;
        ColumnFaults faults;
        AddParsed(row, FieldType::Int, *text, faults);
        if (faults.empty())
            m_set[key].push_back(std::move(row));
        else
            m_report.Fault(PlaceText("paramdb_version", column) + FaultText(faults.front(), FieldType::Int));
    }

    void ReadTexts() {
        for (auto const& row : m_session.Query("SELECT name, value FROM paramdb_text WHERE revision_id = :p1 "
                                               "ORDER BY name",
                                               2, {m_revision_id})) {
            std::string const name = Text(row[0]);
            auto const texts = NamedTexts();
            auto const known = std::find_if(texts.begin(), texts.end(),
                                            [&](NamedText const& text) { return text.name == name; });
            std::wstring value;
            if (known == texts.end())
                m_report.Fault(PlaceText("paramdb_text", "name", name) +
                               "there is no such text in parameter data");
            else if (!row[1])
                m_report.Fault(PlaceText("paramdb_text", "value", name) + "NULL where text is wanted");
            else if (!DecodeSqlText(*row[1], value))
                m_report.Fault(PlaceText("paramdb_text", "value", name) + "the text is no UTF-8");
            else
                m_set[known->key].push_back({std::move(value)});
        }
    }

    Session& m_session;
    std::int64_t m_revision_id;
    Report& m_report;
    TableColumns m_columns;
    std::map<std::string, SpecialNumbers> m_numbers; // by table
    std::vector<TableJob> m_jobs;
    CDbTableSet m_set;
};

// "'a', 'b'"
std::string NameList(std::vector<FoundRevision> const& revisions) {
    std::string list;
    std::wstring const* last = nullptr;
    for (FoundRevision const& found : revisions) {
        if (last != nullptr && *last == found.revision.set)
            continue;
        last = &found.revision.set;
        list += (list.empty() ? "'" : ", '") + ToUtf8(*last) + "'";
    }
    return list;
}

} // namespace

std::vector<FoundRevision> ListRevisions(Session& session, std::string const& set) {
    std::string query =
        "SELECT r.id, r.set_name, r.revision, r.who, r.made, r.remark, "
        "(SELECT COUNT(*) FROM paramdb_content c WHERE c.revision_id = r.id), "
        "(SELECT COALESCE(SUM(c.row_count), 0) FROM paramdb_content c WHERE c.revision_id = r.id) "
        "FROM paramdb_revision r";
    SqlParameters parameters;
    if (!set.empty()) {
        query += " WHERE r.set_name = :p1";
        parameters.emplace_back(set);
    }
    std::vector<FoundRevision> revisions;
    for (auto const& row : session.Query(query + " ORDER BY r.set_name, r.revision", 8, parameters)) {
        auto const number = [&](std::size_t column, char const* name) {
            return NumberOrThrow(row[column], "paramdb_revision", name);
        };
        FoundRevision& found = revisions.emplace_back();
        found.id = number(0, "id");
        found.revision.set = FromUtf8(Text(row[1]));
        found.revision.number = static_cast<std::int32_t>(number(2, "revision"));
        found.revision.who = FromUtf8(Text(row[3]));
        found.revision.when = FromUtf8(Text(row[4]));
        found.revision.remark = FromUtf8(Text(row[5]));
        found.revision.tables = static_cast<std::uint64_t>(number(6, "tables"));
        found.revision.rows = static_cast<std::uint64_t>(number(7, "rows"));
    }
    return revisions;
}

FoundRevision FindRevision(Session& session, ConnectionText const& connection) {
    if (FindSchema(session) == SchemaState::Missing)
        throw DatabaseFault(FaultKind::Other, "the database holds no parameter data");
    auto const all = ListRevisions(session, connection.set);
    if (all.empty()) {
        if (connection.set.empty())
            throw DatabaseFault(FaultKind::Other, "the database holds no set");
        auto const others = NameList(ListRevisions(session, {}));
        throw DatabaseFault(FaultKind::Other, "there is no set '" + connection.set + "'" +
                                                  (others.empty() ? "" : ", there is " + others));
    }
    if (all.front().revision.set != all.back().revision.set)
        throw DatabaseFault(FaultKind::Other, "the set is not told, there is " + NameList(all));
    if (!connection.revision)
        return all.back();
    for (FoundRevision const& found : all)
        if (found.revision.number == *connection.revision)
            return found;
    throw DatabaseFault(FaultKind::Other, "set '" + ToUtf8(all.back().revision.set) + "' has no revision " +
                                              std::to_string(*connection.revision) + ", the newest is " +
                                              std::to_string(all.back().revision.number));
}

ParamDb::CDbTableSet ReadRevision(Session& session, std::int64_t revision_id,
                                  std::function<std::unique_ptr<Session>()> const& open_another,
                                  Report& report) {
    return RevisionReader(session, revision_id, report).Read(open_another);
}

} // namespace paramdb::database
