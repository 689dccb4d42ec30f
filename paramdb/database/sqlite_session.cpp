// SQLite: the embedded default.
//
// Rows are read through SQLite's own functions on SOCI's connection: its columns hold values of any type,
// which SOCI would convert without a word, and it copies every value twice on the way.
#include <paramdb/database/soci_session.h>
#include <paramdb/platform/core/utf8.h>

#include <filesystem>
#include <soci/sqlite3/soci-sqlite3.h>

namespace paramdb::database {
namespace {

using namespace sqlite_api;

class SqliteReader : public RowReader {
public:
    SqliteReader(sqlite3* database, SqlTable const& table, std::int64_t revision_id) : m_database(database) {
        for (SqlColumn const& column : table.columns)
            m_types.push_back(column.type);
        std::string const select = SelectSql(table);
        sqlite3_stmt* statement = nullptr;
        Check(sqlite3_prepare_v2(database, select.c_str(), static_cast<int>(select.size()) + 1, &statement,
                                 nullptr));
        m_statement.reset(statement);
        Check(sqlite3_bind_int64(statement, 1, revision_id));
    }

    bool Next(ParamDb::row_t& row, ColumnFaults& faults) override {
        // Many small calls follow, each of which would take the lock anew.
        Lock const lock(m_database);
        sqlite3_stmt* const statement = m_statement.get();
        int const result = sqlite3_step(statement);
        if (result != SQLITE_ROW) {
            if (result != SQLITE_DONE)
                Check(result);
            return false;
        }
        row.reserve(m_types.size());
        for (std::size_t column = 0; column < m_types.size(); ++column)
            Take(row, m_types[column], sqlite3_column_value(statement, static_cast<int>(column)), faults);
        return true;
    }

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

    class Lock {
    public:
        explicit Lock(sqlite3* database) : m_mutex(sqlite3_db_mutex(database)) {
            sqlite3_mutex_enter(m_mutex);
        }
        Lock(Lock const&) = delete;
        Lock& operator=(Lock const&) = delete;
        ~Lock() { sqlite3_mutex_leave(m_mutex); }

    private:
        sqlite3_mutex* m_mutex;
    };

    void Check(int result) const {
        if (result != SQLITE_OK)
            throw DatabaseFault(result == SQLITE_BUSY ? FaultKind::Away : FaultKind::Other,
                                OneLine(sqlite3_errmsg(m_database)));
    }

    static std::string_view TextOf(sqlite3_value* value) {
        auto const* const text = reinterpret_cast<char const*>(sqlite3_value_text(value));
        return {text != nullptr ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
    }

    static void Take(ParamDb::row_t& row, FieldType type, sqlite3_value* value, ColumnFaults& faults) {
        switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER: {
            std::int64_t const number = sqlite3_value_int64(value);
            auto const narrow = static_cast<std::int32_t>(number);
            if (type == FieldType::Int && narrow == number)
                row.emplace_back(std::in_place_type<std::int32_t>, narrow);
            else
                AddInteger(row, type, number, faults);
            return;
        }
        case SQLITE_FLOAT:
            return AddReal(row, type, sqlite3_value_double(value), faults);
        case SQLITE_TEXT:
            return AddText(row, type, TextOf(value), faults);
        case SQLITE_NULL:
            return AddNull(row, type, faults);
        default:
            return AddForeign(row, type, faults);
        }
    }

    sqlite3* m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    std::vector<FieldType> m_types;
};

class SqliteSession : public SociSession {
public:
    SqliteSession(ConnectionText const& connection, Access access, std::chrono::seconds timeout)
        : SociSession("sqlite3", "dbname=\"" + connection.parameters + "\"", connection.Place()),
          m_file(connection.parameters), m_access(access), m_timeout(timeout) {}

    Dialect dialect() const override { return Dialect::Sqlite; }

    void Connect() override {
        std::error_code fault;
        auto const path = std::filesystem::path(std::u8string(m_file.begin(), m_file.end()));
        if (m_access == Access::Read && !std::filesystem::exists(path, fault))
            throw DatabaseFault(FaultKind::Away, "there is no such file");
        SociSession::Connect();
        constexpr long long longest = 24 * 60 * 60;
        auto const seconds = std::min<long long>(m_timeout.count(), longest);
        sqlite3_busy_timeout(Database(), static_cast<int>(seconds * 1000));
        // SQLite looks at a file when it first reads from it.
        Execute("PRAGMA foreign_keys = ON");
        QueryNumber("SELECT count(*) FROM sqlite_master");
    }

    // The lock is taken at once: a reader that became a writer later could not wait for another one.
    void BeginWriting() override { Execute("BEGIN IMMEDIATE"); }
    void BeginReading() override { Execute("BEGIN"); }
    void Commit() override { Execute("COMMIT"); }

    std::unique_ptr<RowReader> Read(SqlTable const& table, std::int64_t revision_id, std::uint64_t) override {
        return std::make_unique<SqliteReader>(Database(), table, revision_id);
    }

protected:
    FaultKind KindOf(soci::soci_error const& error) const override {
        auto const* const known = dynamic_cast<soci::sqlite3_soci_error const*>(&error);
        switch (known != nullptr ? known->result() : SQLITE_OK) {
        case SQLITE_BUSY:
        case SQLITE_CANTOPEN:
        case SQLITE_IOERR:
            return FaultKind::Away;
        case SQLITE_CONSTRAINT:
            return FaultKind::Conflict;
        default:
            return FaultKind::Other;
        }
    }

    // What SOCI says ahead of the text of SQLite names its own functions.
    std::string TextOf(soci::soci_error const& error) const override {
        std::string const text = SociSession::TextOf(error);
        auto const* const known = dynamic_cast<soci::sqlite3_soci_error const*>(&error);
        if (known == nullptr)
            return text;
        std::size_t const colon = text.rfind(": ");
        return colon == text.npos ? text : text.substr(colon + 2);
    }

private:
    sqlite3* Database() { return static_cast<soci::sqlite3_session_backend*>(sql().get_backend())->conn_; }

    std::string m_file;
    Access m_access;
    std::chrono::seconds m_timeout;
};

} // namespace

std::unique_ptr<SociSession> MakeSqliteSession(ConnectionText const& connection, Access access,
                                               std::chrono::seconds timeout) {
    return std::make_unique<SqliteSession>(connection, access, timeout);
}

} // namespace paramdb::database
