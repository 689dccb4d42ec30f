#include <paramdb/database/soci_session.h>
#include <paramdb/database/sql_text.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <future>
#include <thread>
#include <utility>

namespace paramdb::database {
namespace {

// Rows that go to or come from a backend at once.
constexpr std::size_t BlockSize = 1000;

// Parameters at addresses that stay.
class BoundParameters {
public:
    BoundParameters(soci::statement& statement, SqlParameters const& parameters) {
        for (SqlParameter const& parameter : parameters) {
            if (auto const* const number = std::get_if<std::int64_t>(&parameter))
                statement.exchange(soci::use(m_numbers.emplace_back(*number)));
            else
                statement.exchange(soci::use(m_texts.emplace_back(std::get<std::string>(parameter))));
        }
    }

private:
    std::deque<long long> m_numbers;
    std::deque<std::string> m_texts;
};

class SociReader : public RowReader {
public:
    SociReader(SociSession& session, SqlTable const& table, std::int64_t revision_id)
        : m_session(session), m_table(table), m_columns(table.columns.size()), m_statement(session.sql()),
          m_parameters(m_statement, {revision_id}) {
        m_session.Guard([&] {
            for (Column& column : m_columns) {
                column.values.resize(BlockSize);
                column.indicators.resize(BlockSize);
                m_statement.exchange(soci::into(column.values, column.indicators));
            }
            m_statement.alloc();
            m_statement.prepare(SelectSql(table));
            m_statement.define_and_bind();
            m_rows = m_statement.execute(true) ? m_columns.front().values.size() : 0;
        });
    }
    ~SociReader() override {
        try {
            m_session.Guard([&] { m_statement.clean_up(); });
        } catch (DatabaseFault const&) {
            // Whoever reads has been told of the fault that matters.
        }
    }

    bool Next(ParamDb::row_t& row, ColumnFaults& faults) override {
        if (m_next == m_rows) {
            if (m_rows < BlockSize)
                return false;
            m_session.Guard([&] { m_rows = m_statement.fetch() ? m_columns.front().values.size() : 0; });
            m_next = 0;
            if (m_rows == 0)
                return false;
        }
        row.reserve(m_columns.size());
        for (std::size_t index = 0; index < m_columns.size(); ++index) {
            Column const& column = m_columns[index];
            FieldType const type = m_table.columns[index].type;
            if (column.indicators[m_next] == soci::i_null)
                AddNull(row, type, faults);
            else
                AddParsed(row, type, column.values[m_next], faults);
        }
        ++m_next;
        return true;
    }

private:
    struct Column {
        std::vector<std::string> values;
        std::vector<soci::indicator> indicators;
    };

    SociSession& m_session;
    SqlTable const& m_table;
    std::vector<Column> m_columns;
    soci::statement m_statement;
    BoundParameters m_parameters;
    std::size_t m_rows = 0;
    std::size_t m_next = 0;
};

// The values of one column for a block of rows; only one of the vectors is in use.
struct ValueColumn {
    std::vector<int> ints;
    std::vector<long long> longs;
    std::vector<double> reals;
    std::vector<soci::indicator> indicators; // of the reals
    std::vector<std::string> texts;

    void Bind(soci::statement& statement, FieldType type) {
        Resize(type, BlockSize);
        switch (type) {
        case FieldType::Int:
            statement.exchange(soci::use(ints));
            break;
        case FieldType::Unsigned:
        case FieldType::Int64:
            statement.exchange(soci::use(longs));
            break;
        case FieldType::Float:
        case FieldType::Double:
            statement.exchange(soci::use(reals, indicators));
            break;
        case FieldType::Text:
            statement.exchange(soci::use(texts));
            break;
        }
    }

    void Resize(FieldType type, std::size_t rows) {
        if (type == FieldType::Int)
            ints.resize(rows);
        else if (type == FieldType::Text)
            texts.resize(rows);
        else if (type == FieldType::Float || type == FieldType::Double) {
            reals.resize(rows);
            indicators.resize(rows);
        } else
            longs.resize(rows);
    }

    void Set(std::size_t row, ConstField field) {
        field.Visit([&]<class Value>(Value const& value) {
            if constexpr (std::is_same_v<Value, std::int32_t>) {
                ints[row] = value;
            } else if constexpr (std::is_integral_v<Value>) {
                longs[row] = value;
            } else if constexpr (std::is_floating_point_v<Value>) {
                bool const is_none = std::isnan(value);
                reals[row] = is_none ? 0 : static_cast<double>(value);
                indicators[row] = is_none ? soci::i_null : soci::i_ok;
            } else if (!EncodeSqlText(value.view(), texts[row])) {
                throw DatabaseFault(FaultKind::Other, "a text holds what no database keeps");
            }
        });
    }
};

class SociWriter : public RowWriter {
public:
    SociWriter(SociSession& session, SqlTable const& table, std::int64_t revision_id)
        : m_session(session), m_table(table), m_revisions(BlockSize, revision_id),
          m_columns(table.columns.size()), m_statement(session.sql()) {
        m_session.Guard([&] {
            std::string names;
            m_statement.exchange(soci::use(m_revisions));
            for (std::size_t index = 0; index < m_columns.size(); ++index) {
                m_columns[index].Bind(m_statement, table.columns[index].type);
                names += ", :c" + std::to_string(index + 1);
            }
            if (table.HasRowNumber()) {
                m_row_numbers.resize(BlockSize);
                m_statement.exchange(soci::use(m_row_numbers));
                names += ", :n";
            }
            m_statement.alloc();
            m_statement.prepare("INSERT INTO " + Quoted(table.name) + " (" + InsertColumns(table) +
                                ") VALUES (:p1" + names + ")");
            m_statement.define_and_bind();
        });
    }
    ~SociWriter() override {
        try {
            m_session.Guard([&] { m_statement.clean_up(); });
        } catch (DatabaseFault const&) {
            // Whoever writes has been told of the fault that matters.
        }
    }

    void Add(std::span<ConstField const> key, std::span<ConstField const> row) override {
        std::size_t index = 0;
        for (auto const fields : {key, row})
            for (ConstField const& field : fields)
                m_columns[index++].Set(m_rows, field);
        ++m_all_rows;
        if (m_table.HasRowNumber())
            m_row_numbers[m_rows] = m_all_rows;
        if (++m_rows == BlockSize)
            WriteBlock();
    }

    void Finish() override {
        if (m_rows == 0)
            return;
        m_revisions.resize(m_rows);
        for (std::size_t index = 0; index < m_columns.size(); ++index)
            m_columns[index].Resize(m_table.columns[index].type, m_rows);
        if (m_table.HasRowNumber())
            m_row_numbers.resize(m_rows);
        WriteBlock();
    }

private:
    void WriteBlock() {
        m_session.Guard([this] { m_statement.execute(true); });
        m_rows = 0;
    }

    SociSession& m_session;
    SqlTable const& m_table;
    std::vector<long long> m_revisions;
    std::vector<ValueColumn> m_columns;
    std::vector<long long> m_row_numbers;
    soci::statement m_statement;
    std::size_t m_rows = 0;
    long long m_all_rows = 0;
};

} // namespace

std::optional<std::int64_t> Session::QueryNumber(std::string const& sql, SqlParameters const& parameters) {
    auto const rows = Query(sql, 1, parameters);
    if (rows.empty() || !rows.front().front())
        return std::nullopt;
    std::string const& text = *rows.front().front();
    std::int64_t number = 0;
    auto const [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || end != text.data() + text.size())
        throw DatabaseFault(FaultKind::Other, "'" + text + "' is no number");
    return number;
}

std::string SelectSql(SqlTable const& table) {
    return "SELECT " + table.ColumnList() + " FROM " + Quoted(table.name) + " WHERE " +
           Quoted(RevisionColumn) + " = :p1 ORDER BY " + table.PrimaryKey();
}

std::string InsertColumns(SqlTable const& table) {
    std::string list = Quoted(RevisionColumn) + ", " + table.ColumnList();
    return table.HasRowNumber() ? list + ", " + Quoted(RowNumberColumn) : list;
}

std::string OneLine(std::string_view text) {
    std::string line;
    for (char const byte : text) {
        bool const is_blank = byte == '\n' || byte == '\r' || byte == '\t' || byte == ' ';
        if (!is_blank)
            line += byte;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    line.erase(line.find_last_not_of(" .") + 1);
    return line;
}

SociSession::SociSession(std::string backend, std::string parameters, std::string place)
    : m_backend(std::move(backend)), m_parameters(std::move(parameters)), m_place(std::move(place)) {}

void SociSession::Connect() {
    Guard([this] { m_sql->open(m_backend, m_parameters); });
}

void SociSession::ConnectWithin(std::chrono::seconds patience) {
    std::packaged_task<std::unique_ptr<soci::session>()> task(
        [backend = m_backend, parameters = m_parameters] {
            return std::make_unique<soci::session>(backend, parameters);
        });
    auto session = task.get_future();
    std::thread(std::move(task)).detach();
    if (session.wait_for(patience) != std::future_status::ready)
        throw DatabaseFault(FaultKind::Away, "no answer within " + std::to_string(patience.count()) + " s");
    Guard([&] { m_sql = session.get(); });
}

void SociSession::Guard(std::function<void()> const& action) {
    BeginWaiting();
    try {
        action();
    } catch (soci::soci_error const& error) {
        EndWaiting();
        throw DatabaseFault(KindOf(error), TextOf(error));
    } catch (...) {
        EndWaiting();
        throw;
    }
    EndWaiting();
}

FaultKind SociSession::KindOf(soci::soci_error const& error) const {
    switch (error.get_error_category()) {
    case soci::soci_error::connection_error:
        return FaultKind::Away;
    case soci::soci_error::constraint_violation:
        return FaultKind::Conflict;
    default:
        return FaultKind::Other;
    }
}

std::string SociSession::TextOf(soci::soci_error const& error) const {
    std::string text = error.get_error_message();
    text = OneLine(text.substr(0, text.find("\nLINE ")));
    // What SOCI was doing, and how bad it is, stand ahead of the reason.
    for (std::string_view const head :
         {"Cannot establish connection to the database. ", "Cannot execute query. ",
          "Cannot prepare statement. ", "Fatal error. ", "ERROR: ", "FATAL: "})
        if (text.starts_with(head))
            text.erase(0, head.size());
    return text;
}

void SociSession::Execute(std::string const& statement_text, SqlParameters const& parameters) {
    Guard([&] {
        if (parameters.empty()) {
            *m_sql << statement_text;
            return;
        }
        soci::statement statement(*m_sql);
        BoundParameters const bound(statement, parameters);
        statement.alloc();
        statement.prepare(statement_text);
        statement.define_and_bind();
        statement.execute(true);
    });
}

std::vector<Session::TextRow> SociSession::Query(std::string const& query, std::size_t columns,
                                                 SqlParameters const& parameters) {
    std::vector<TextRow> rows;
    Guard([&] {
        std::vector<std::string> values(columns);
        std::vector<soci::indicator> indicators(columns);
        soci::statement statement(*m_sql);
        for (std::size_t column = 0; column < columns; ++column)
            statement.exchange(soci::into(values[column], indicators[column]));
        BoundParameters const bound(statement, parameters);
        statement.alloc();
        statement.prepare(query);
        statement.define_and_bind();
        statement.execute();
        while (statement.fetch()) {
            TextRow& row = rows.emplace_back(columns);
            std::size_t bytes = 0;
            for (std::size_t column = 0; column < columns; ++column)
                if (indicators[column] != soci::i_null) {
                    row[column] = values[column];
                    bytes += values[column].size();
                }
            TakeRow(columns, bytes);
        }
    });
    return rows;
}

void SociSession::BeginReading() {
    Guard([this] { m_sql->begin(); });
}

void SociSession::BeginWriting() {
    Guard([this] { m_sql->begin(); });
}

void SociSession::Commit() {
    Guard([this] { m_sql->commit(); });
}

void SociSession::Rollback() noexcept {
    try {
        Guard([this] { m_sql->rollback(); });
    } catch (std::exception const&) {
        // The connection is gone, and the transaction with it.
    }
}

std::unique_ptr<RowReader> SociSession::Read(SqlTable const& table, std::int64_t revision_id, std::uint64_t) {
    return std::make_unique<SociReader>(*this, table, revision_id);
}

std::unique_ptr<RowWriter> SociSession::Write(SqlTable const& table, std::int64_t revision_id) {
    return std::make_unique<SociWriter>(*this, table, revision_id);
}

std::unique_ptr<Session> OpenSession(ConnectionText const& connection, Access access,
                                     std::chrono::seconds timeout) {
    std::unique_ptr<SociSession> session;
    if (connection.backend == "sqlite3")
        session = MakeSqliteSession(connection, access, timeout);
    else if (connection.backend == "postgresql")
        session = MakePostgresSession(connection, timeout);
    else
        session =
            std::make_unique<SociSession>(connection.backend, connection.parameters, connection.Place());
    session->Connect();
    return session;
}

} // namespace paramdb::database
