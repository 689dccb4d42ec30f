// PostgreSQL: the shared server.
//
// Rows come through a cursor, a block at a time, so that a large table is never held as a whole and each
// answer has its own time. They go as one array for each column, which takes one statement for a block of
// rows.
#include <paramdb/database/soci_session.h>
#include <paramdb/database/sql_text.h>
#include <paramdb/database/watch.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <soci/postgresql/soci-postgresql.h>
#include <system_error>

namespace paramdb::database {
namespace {

constexpr std::size_t BlockSize = 5000;

// How much longer than for a lock the server may take for a statement as a whole, and how much longer than
// that the client waits: each in turn knows less of the reason.
constexpr std::chrono::seconds StatementGrace(1);
constexpr std::chrono::seconds Grace(2);

char const* ArrayType(FieldType type) {
    switch (type) {
    case FieldType::Int:
        return "integer[]";
    case FieldType::Unsigned:
    case FieldType::Int64:
        return "bigint[]";
    case FieldType::Float:
        return "real[]";
    case FieldType::Double:
        return "double precision[]";
    case FieldType::Text:
        break;
    }
    return "text[]";
}

// The text of an array.
class ArrayText {
public:
    void Clear() { m_text = "{"; }
    void Close() { m_text += '}'; }
    std::string& text() { return m_text; }

    template <class Number>
    void AddNumber(Number number) {
        Separate();
        if constexpr (std::is_floating_point_v<Number>) {
            if (std::isnan(number)) {
                m_text += "NULL";
                return;
            }
        }
        char digits[32];
        m_text.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
    }

    void AddText(std::wstring_view text) {
        if (!EncodeSqlText(text, m_bytes))
            throw DatabaseFault(FaultKind::Other, "a text holds what no database keeps");
        Separate();
        m_text += '"';
        for (char const byte : m_bytes) {
            if (byte == '"' || byte == '\\')
                m_text += '\\';
            m_text += byte;
        }
        m_text += '"';
    }

    void Add(ConstField field) {
        field.Visit([this]<class Value>(Value const& value) {
            if constexpr (std::is_same_v<Value, CFixedText>)
                AddText(value.view());
            else
                AddNumber(value);
        });
    }

private:
    void Separate() {
        if (m_text.size() > 1)
            m_text += ',';
    }

    std::string m_text = "{";
    std::string m_bytes;
};

class PostgresReader : public RowReader {
public:
    PostgresReader(SociSession& session, SqlTable const& table, std::int64_t revision_id)
        : m_session(session), m_table(table), m_columns(table.columns.size()), m_statement(session.sql()) {
        m_session.Execute("DECLARE paramdb_rows NO SCROLL CURSOR FOR " + SelectSql(table), {revision_id});
        m_session.Guard([this] {
            Resize();
            for (Column& column : m_columns)
                m_statement.exchange(soci::into(column.values, column.indicators));
            m_statement.alloc();
            m_statement.prepare("FETCH FORWARD " + std::to_string(BlockSize) + " FROM paramdb_rows");
            m_statement.define_and_bind();
        });
    }
    ~PostgresReader() override {
        try {
            m_session.Guard([this] { m_statement.clean_up(); });
            m_session.Execute("CLOSE paramdb_rows");
        } catch (DatabaseFault const&) {
            // Whoever reads has been told of the fault that matters; the cursor ends with its transaction.
        }
    }

    bool Next(ParamDb::row_t& row, ColumnFaults& faults) override {
        if (m_next == m_rows) {
            if (m_rows < BlockSize && !m_is_first)
                return false;
            Fetch();
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

    void Resize() {
        for (Column& column : m_columns) {
            column.values.resize(BlockSize);
            column.indicators.resize(BlockSize);
        }
    }

    void Fetch() {
        m_is_first = false;
        m_next = 0;
        Resize();
        m_session.Guard([this] { m_rows = m_statement.execute(true) ? m_columns.front().values.size() : 0; });
    }

    SociSession& m_session;
    SqlTable const& m_table;
    std::vector<Column> m_columns;
    soci::statement m_statement;
    bool m_is_first = true;
    std::size_t m_rows = 0;
    std::size_t m_next = 0;
};

class PostgresWriter : public RowWriter {
public:
    PostgresWriter(SociSession& session, SqlTable const& table, std::int64_t revision_id)
        : m_session(session), m_has_row_number(table.HasRowNumber()), m_revision_id(revision_id),
          m_columns(table.columns.size() + (m_has_row_number ? 1 : 0)), m_statement(session.sql()) {
        m_session.Guard([&] {
            std::string arrays;
            m_statement.exchange(soci::use(m_revision_id));
            for (std::size_t index = 0; index < m_columns.size(); ++index) {
                m_statement.exchange(soci::use(m_columns[index].text()));
                bool const is_row_number = index == table.columns.size();
                arrays += (index == 0 ? "CAST(:c" : ", CAST(:c") + std::to_string(index + 1) + " AS " +
                          (is_row_number ? "bigint[]" : ArrayType(table.columns[index].type)) + ")";
            }
            m_statement.alloc();
            m_statement.prepare("INSERT INTO " + Quoted(table.name) + " (" + InsertColumns(table) +
                                ") SELECT CAST(:p1 AS bigint), added.* FROM unnest(" + arrays + ") AS added");
            m_statement.define_and_bind();
        });
    }
    ~PostgresWriter() override {
        try {
            m_session.Guard([this] { m_statement.clean_up(); });
        } catch (DatabaseFault const&) {
            // Whoever writes has been told of the fault that matters.
        }
    }

    void Add(std::span<ConstField const> key, std::span<ConstField const> row) override {
        std::size_t index = 0;
        for (auto const fields : {key, row})
            for (ConstField const& field : fields)
                m_columns[index++].Add(field);
        ++m_all_rows;
        if (m_has_row_number)
            m_columns[index].AddNumber(m_all_rows);
        if (++m_rows == BlockSize)
            Finish();
    }

    void Finish() override {
        if (m_rows == 0)
            return;
        for (ArrayText& column : m_columns)
            column.Close();
        m_session.Guard([this] { m_statement.execute(true); });
        for (ArrayText& column : m_columns)
            column.Clear();
        m_rows = 0;
    }

private:
    SociSession& m_session;
    bool m_has_row_number;
    long long m_revision_id;
    std::vector<ArrayText> m_columns;
    soci::statement m_statement;
    std::size_t m_rows = 0;
    long long m_all_rows = 0;
};

// The options of a connection.
class ConnectionOptions {
public:
    explicit ConnectionOptions(std::string const& parameters) {
        std::string const text = parameters.starts_with("//") ? "postgresql:" + parameters : parameters;
        char* fault = nullptr;
        m_options = PQconninfoParse(text.c_str(), &fault);
        if (m_options == nullptr) {
            std::string const reason = fault != nullptr ? OneLine(fault) : "out of memory";
            PQfreemem(fault);
            throw DatabaseFault(FaultKind::Other, reason);
        }
    }
    ConnectionOptions(ConnectionOptions const&) = delete;
    ConnectionOptions& operator=(ConnectionOptions const&) = delete;
    ~ConnectionOptions() { PQconninfoFree(m_options); }

    // All that are given, as "name='value' ...".
    std::string Text() const {
        std::string text;
        for (auto const* option = m_options; option->keyword != nullptr; ++option)
            if (option->val != nullptr)
                text += Assigned(option->keyword, option->val);
        return text;
    }

    // Such an assignment, empty if the option is given already.
    std::string Default(std::string_view name, std::string const& value) const {
        for (auto const* option = m_options; option->keyword != nullptr; ++option)
            if (name == option->keyword && option->val != nullptr)
                return {};
        return Assigned(name, value);
    }

private:
    static std::string Assigned(std::string_view name, std::string_view value) {
        std::string text(name);
        text += "='";
        for (char const byte : value) {
            if (byte == '\'' || byte == '\\')
                text += '\\';
            text += byte;
        }
        return text + "' ";
    }

    PQconninfoOption* m_options;
};

std::string ParametersWithTimes(std::string const& parameters, std::chrono::seconds timeout) {
    ConnectionOptions const options(parameters);
    std::string const seconds = std::to_string(timeout.count());
    return options.Text() + options.Default("connect_timeout", seconds) +
           options.Default("keepalives_idle", seconds) +
           options.Default("tcp_user_timeout", std::to_string(timeout.count() * 1000)) +
           options.Default("fallback_application_name", "paramdb");
}

class PostgresSession : public SociSession {
public:
    PostgresSession(ConnectionText const& connection, std::chrono::seconds timeout)
        : SociSession("postgresql", ParametersWithTimes(connection.parameters, timeout), connection.Place()),
          m_timeout(timeout) {}

    Dialect dialect() const override { return Dialect::Postgres; }

    void Connect() override {
        try {
            ConnectWithin(ConnectingTime());
            m_is_connected = true;
            m_watch = std::make_unique<Watch>(PQsocket(Connection()), m_timeout + Grace);
        } catch (std::system_error const& error) {
            throw DatabaseFault(FaultKind::Other, error.what()); // the system has no thread to give
        }
        auto const milliseconds = [](std::chrono::seconds time) {
            return std::to_string(time.count() * 1000);
        };
        Execute("SET client_encoding TO 'UTF8'; SET client_min_messages TO error; "
                "SET lock_timeout TO " +
                milliseconds(m_timeout) + "; SET statement_timeout TO " +
                milliseconds(m_timeout + StatementGrace));
    }

    void BeginReading() override { Execute("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"); }

    std::unique_ptr<RowReader> Read(SqlTable const& table, std::int64_t revision_id,
                                    std::uint64_t expected_rows) override {
        if (expected_rows <= BlockSize) // most tables are small, and each turn to the server takes its time
            return SociSession::Read(table, revision_id, expected_rows);
        return std::make_unique<PostgresReader>(*this, table, revision_id);
    }
    std::unique_ptr<RowWriter> Write(SqlTable const& table, std::int64_t revision_id) override {
        return std::make_unique<PostgresWriter>(*this, table, revision_id);
    }

protected:
    FaultKind KindOf(soci::soci_error const& error) const override {
        if (!m_is_connected || m_watch->HasFired() || PQstatus(Connection()) == CONNECTION_BAD)
            return FaultKind::Away;
        auto const* const known = dynamic_cast<soci::postgresql_soci_error const*>(&error);
        std::string const state = known != nullptr ? known->sqlstate() : std::string();
        // The connection; the server shuts down; it took too long; a lock did.
        if (state.starts_with("08") || state.starts_with("57") || state == "55P03")
            return FaultKind::Away;
        // A key that is there already; two transactions that stand in each other's way.
        if (state == "23505" || state == "40001" || state == "40P01")
            return FaultKind::Conflict;
        return FaultKind::Other;
    }

    std::string TextOf(soci::soci_error const& error) const override {
        if (m_watch && m_watch->HasFired())
            return "no answer within " + std::to_string((m_timeout + Grace).count()) + " s";
        return SociSession::TextOf(error);
    }

    void BeginWaiting() override {
        if (m_watch)
            m_watch->Begin();
    }
    void EndWaiting() noexcept override {
        if (m_watch)
            m_watch->End();
    }

private:
    // The client library has a time of its own for each address, at least two seconds, but none for finding
    // the addresses of a name nor for the statement that SOCI sends as soon as it is let in.
    std::chrono::seconds ConnectingTime() const {
        constexpr std::chrono::seconds least(2);
        constexpr int addresses = 2; // of a name: an old one and a new one
        auto const hosts = 1 + std::count(parameters().begin(), parameters().end(), ',');
        return std::max(m_timeout, least) * addresses * hosts + Grace;
    }

    PGconn* Connection() const {
        auto* const backend = const_cast<PostgresSession*>(this)->sql().get_backend();
        return static_cast<soci::postgresql_session_backend*>(backend)->conn_;
    }

    std::chrono::seconds m_timeout;
    bool m_is_connected = false;
    std::unique_ptr<Watch> m_watch;
};

} // namespace

std::unique_ptr<SociSession> MakePostgresSession(ConnectionText const& connection,
                                                 std::chrono::seconds timeout) {
    return std::make_unique<PostgresSession>(connection, timeout);
}

} // namespace paramdb::database
