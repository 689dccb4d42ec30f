#include <paramdb/database/revision_rows.h>
#include <paramdb/database/sql_text.h>
#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <set>
#include <unordered_set>

namespace paramdb::database {
namespace {

// A number that columns do not keep.
struct SpecialNumber {
    std::string table;
    std::string column;
    std::string key;
    std::int64_t bits;
};

// The bits of a field that no column keeps: one that is no number, or a zero with a sign.
std::optional<std::int64_t> SpecialBits(ConstField field) {
    if (field.type() == FieldType::Float) {
        float const value = field.As<float>();
        if (std::isnan(value) || (value == 0 && std::signbit(value)))
            return std::bit_cast<std::uint32_t>(value);
    } else if (field.type() == FieldType::Double) {
        double const value = field.As<double>();
        if (std::isnan(value) || (value == 0 && std::signbit(value)))
            return static_cast<std::int64_t>(std::bit_cast<std::uint64_t>(value));
    }
    return std::nullopt;
}

bool IsNoNumber(ConstField field) {
    return (field.type() == FieldType::Float && std::isnan(field.As<float>())) ||
           (field.type() == FieldType::Double && std::isnan(field.As<double>()));
}

// Writes the rows and collects the numbers that they do not keep. Returns how many there are.
std::int64_t WriteRows(Session& session, TableContent const& content, std::int64_t revision_id,
                       std::vector<SpecialNumber>& numbers) {
    SqlTable const& table = *content.table;
    if (content.rows->RowCount() == 0)
        return 0;
    auto const writer = session.Write(table, revision_id);
    std::int64_t count = 0;
    content.rows->VisitRows([&](auto key, auto row) {
        ++count;
        writer->Add(key, row);
        std::size_t column = 0;
        for (auto const fields : {key, row})
            for (ConstField const& field : fields) {
                std::string const& name = table.columns[column++].name;
                if (auto const bits = SpecialBits(field)) {
                    std::string const row_number = table.HasRowNumber() ? "/" + std::to_string(count) : "";
                    numbers.push_back({table.name, name, KeyText(key) + row_number, *bits});
                }
            }
        return true;
    });
    writer->Finish();
    return count;
}

// Many in one statement, as many parameters as every database takes.
void WriteNumbers(Session& session, std::span<SpecialNumber const> numbers, std::int64_t id) {
    constexpr std::size_t most = 150;
    while (!numbers.empty()) {
        std::string rows;
        SqlParameters parameters;
        auto const add = [&](char const* separator, SqlParameter parameter) {
            parameters.push_back(std::move(parameter));
            rows += separator + (":p" + std::to_string(parameters.size()));
        };
        auto const block = numbers.first(std::min(most, numbers.size()));
        for (SpecialNumber const& number : block) {
            add(rows.empty() ? "(" : ", (", id);
            add(", ", number.table);
            add(", ", number.column);
            add(", ", number.key);
            add(", ", number.bits);
            rows += ")";
        }
        session.Execute(
            "INSERT INTO paramdb_number (revision_id, table_name, column_name, row_key, bits) VALUES " + rows,
            parameters);
        numbers = numbers.subspan(block.size());
    }
}

// A text of a message or a name, for a column.
std::string SqlText(std::wstring const& text) {
    std::string bytes;
    if (!EncodeSqlText(text, bytes))
        throw DatabaseFault(FaultKind::Other, "a text holds a zero character");
    return bytes;
}

std::int64_t NewId(Session& session) {
    char const* const query = session.dialect() == Dialect::Postgres
                                  ? "SELECT nextval('paramdb_revision_id')"
                                  : "SELECT COALESCE(MAX(id), 0) + 1 FROM paramdb_revision";
    return session.QueryNumber(query).value_or(1);
}

// The next number of the set. Exporters to the same set wait here for one another, until their end.
std::int32_t NewNumber(Session& session, std::string const& set) {
    if (session.dialect() == Dialect::Postgres)
        session.Query("SELECT 1 FROM pg_advisory_xact_lock(7305042, hashtext(:p1))", 1, {set});
    auto const last =
        session.QueryNumber("SELECT MAX(revision) FROM paramdb_revision WHERE set_name = :p1", {set});
    if (last.value_or(0) >= std::numeric_limits<std::int32_t>::max())
        throw DatabaseFault(FaultKind::Other, "set '" + set + "' has no numbers left");
    return static_cast<std::int32_t>(last.value_or(0) + 1);
}

std::string OwnTime() {
    using namespace std::chrono;
    auto const now = floor<seconds>(system_clock::now());
    auto const day = floor<days>(now);
    year_month_day const date(day);
    hh_mm_ss const time(now - day);
    auto const two = [](auto number) {
        std::string const digits = std::to_string(number);
        return digits.size() < 2 ? "0" + digits : digits;
    };
    return std::to_string(static_cast<int>(date.year())) + "-" + two(static_cast<unsigned>(date.month())) +
           "-" + two(static_cast<unsigned>(date.day())) + "T" + two(time.hours().count()) + ":" +
           two(time.minutes().count()) + ":" + two(time.seconds().count()) + "Z";
}

void WriteVersion(Session& session, RevisionContent const& content, std::int64_t id) {
    if (!content.major && !content.minor)
        return;
    std::string columns = "revision_id";
    std::string values = ":p1";
    SqlParameters parameters{id};
    auto const add = [&](char const* name, std::optional<std::int32_t> number) {
        if (!number)
            return;
        parameters.emplace_back(std::int64_t{*number});
        columns.append(", ").append(name);
        values += ", :p" + std::to_string(parameters.size());
    };
    add("major", content.major);
    add("minor", content.minor);
    session.Execute("INSERT INTO paramdb_version (" + columns + ") VALUES (" + values + ")", parameters);
}

} // namespace

void CheckContent(RevisionContent const& content, Report& report) {
    for (TableContent const& table : content.tables) {
        auto const columns = table.table->columns;
        bool const has_float_key =
            std::any_of(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(table.table->key_size),
                        [](SqlColumn const& column) {
                            return column.type == FieldType::Float || column.type == FieldType::Double;
                        });
        if (!has_float_key)
            continue;
        table.rows->VisitRows([&](auto key, auto) {
            for (std::size_t column = 0; column < key.size(); ++column)
                if (IsNoNumber(key[column]))
                    report.Fault(PlaceText(table.table->name, columns[column].name, KeyText(key)) +
                                 "a key that is no number");
            return true;
        });
    }
}

void CheckReferences(RevisionContent const& content, Report& report) {
    // The ids of the tables that are referred to; all of them have one number as key.
    std::map<std::string, std::unordered_set<std::int32_t>> ids;
    for (SqlTable const& table : SqlTables())
        for (SqlColumn const& column : table.columns)
            if (!column.referred_table.empty())
                ids[column.referred_table];
    for (TableContent const& table : content.tables)
        if (auto const found = ids.find(table.table->name); found != ids.end())
            table.rows->VisitRows([&](auto key, auto) {
                found->second.insert(key.front().template As<std::int32_t>());
                return true;
            });
    for (TableContent const& table : content.tables)
        table.rows->VisitRows([&](auto key, auto row) {
            std::size_t index = 0;
            for (auto const fields : {key, row})
                for (ConstField const& field : fields) {
                    SqlColumn const& column = table.table->columns[index++];
                    if (column.referred_table.empty())
                        continue;
                    std::int32_t const id = field.As<std::int32_t>();
                    if (id != -1 && !ids[column.referred_table].contains(id))
                        report.Fault(PlaceText(table.table->name, column.name, KeyText(key)) +
                                     std::to_string(id) + " is no key of table '" + column.referred_table +
                                     "'");
                }
            return true;
        });
}

std::string Now(Session& session) {
    char const* query = nullptr;
    if (session.dialect() == Dialect::Sqlite)
        query = "SELECT strftime('%Y-%m-%dT%H:%M:%SZ', 'now')";
    else if (session.dialect() == Dialect::Postgres)
        query = "SELECT to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD\"T\"HH24:MI:SS\"Z\"')";
    else
        return OwnTime();
    auto const rows = session.Query(query, 1);
    return rows.empty() ? OwnTime() : rows.front()[0].value_or(OwnTime());
}

ParamDb::Revision WriteRevision(Session& session, RevisionContent const& content,
                                NewRevision const& revision) {
    ParamDb::Revision written{.set = FromUtf8(revision.set),
                              .who = FromUtf8(revision.who),
                              .when = {},
                              .remark = FromUtf8(revision.remark)};
    std::int64_t const id = NewId(session);
    std::vector<SpecialNumber> numbers;
    for (TableContent const& table : content.tables) {
        std::int64_t const rows = WriteRows(session, table, id, numbers);
        session.Execute("INSERT INTO paramdb_content (revision_id, table_name, row_count, table_type) VALUES "
                        "(:p1, :p2, :p3, :p4)",
                        {id, table.table->name, rows, std::int64_t{table.table_type}});
        ++written.tables;
        written.rows += static_cast<std::uint64_t>(rows);
    }
    WriteNumbers(session, numbers, id);
    WriteVersion(session, content, id);
    for (auto const& [name, value] : content.texts)
        session.Execute("INSERT INTO paramdb_text (revision_id, name, value) VALUES (:p1, :p2, :p3)",
                        {id, name, SqlText(value)});
    std::string const when = revision.when ? *revision.when : Now(session);
    written.number = revision.number ? *revision.number : NewNumber(session, revision.set);
    written.when = FromUtf8(when);
    session.Execute("INSERT INTO paramdb_revision (id, set_name, revision, who, made, remark) VALUES "
                    "(:p1, :p2, :p3, :p4, :p5, :p6)",
                    {id, revision.set, std::int64_t{written.number}, revision.who, when, revision.remark});
    return written;
}

} // namespace paramdb::database
