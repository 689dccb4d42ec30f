// SQLite: the embedded default.
//
// Rows are read through SQLite's own functions on SOCI's connection: its columns hold values of any type,
// which SOCI would convert without a word, and it copies every value twice on the way.
//
// A file may be damaged or made by anybody. Whatever SQLite works on without an answer is interrupted in
// time, and a file of which more comes than can stand in it, as from a view without end, is given up.
#include <paramdb/database/soci_session.h>
#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <soci/sqlite3/soci-sqlite3.h>

namespace paramdb::database {
namespace {

using namespace sqlite_api;

// How long SQLite has been at work for one answer. It is asked for that now and then while it works.
class WorkClock {
public:
    explicit WorkClock(std::chrono::seconds patience) : m_patience(std::max(patience, Shortest)) {}
    WorkClock(WorkClock const&) = delete;
    WorkClock& operator=(WorkClock const&) = delete;

    void Watch(sqlite3* database) {
        constexpr int instructions = 10'000;
        sqlite3_progress_handler(
            database, instructions, [](void* clock) { return static_cast<WorkClock*>(clock)->Ask(); }, this);
    }
    // The next answer is waited for. The time counts from the first question on, as most come without one.
    void Restart() { m_is_running = false; }
    std::string Text() const { return "no answer within " + std::to_string(m_patience.count()) + " s"; }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds Shortest{1};

    // Whether to interrupt.
    int Ask() {
        auto const now = Clock::now();
        if (!m_is_running)
            m_start = now;
        m_is_running = true;
        return now - m_start > m_patience ? 1 : 0;
    }

    std::chrono::seconds m_patience;
    Clock::time_point m_start;
    bool m_is_running = false;
};

// How much a file can hold at most: a row takes some bytes of it, as do its texts. Lists of columns, which
// are put together from names, stay far below four times that.
class RowBudget {
public:
    void SetFileBytes(std::int64_t bytes) {
        constexpr std::uint64_t least = 1 << 20;
        m_left = 4 * static_cast<std::uint64_t>(bytes) + least;
    }
    std::uint64_t left() const { return m_left; }

    void TakeRow(std::size_t columns, std::size_t text_bytes) {
        constexpr std::size_t least_of_row = 3;
        std::uint64_t const cost = least_of_row + columns + text_bytes;
        if (cost > m_left)
            throw DatabaseFault(FaultKind::Other, "there is more data than the file can hold");
        m_left -= cost;
    }

private:
    std::uint64_t m_left = std::numeric_limits<std::uint64_t>::max();
};

class SqliteReader : public RowReader {
public:
    SqliteReader(sqlite3* database, WorkClock& clock, RowBudget& budget, SqlTable const& table,
                 std::int64_t revision_id)
        : m_database(database), m_clock(clock), m_budget(budget) {
        m_clock.Restart();
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
        m_clock.Restart();
        int const result = sqlite3_step(statement);
        if (result != SQLITE_ROW) {
            if (result != SQLITE_DONE)
                Check(result);
            return false;
        }
        row.reserve(m_types.size());
        m_text_bytes = 0;
        for (std::size_t column = 0; column < m_types.size(); ++column)
            Take(row, m_types[column], sqlite3_column_value(statement, static_cast<int>(column)), faults);
        m_budget.TakeRow(m_types.size(), m_text_bytes);
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
        if (result == SQLITE_INTERRUPT)
            throw DatabaseFault(FaultKind::Away, m_clock.Text());
        if (result != SQLITE_OK)
            throw DatabaseFault(result == SQLITE_BUSY ? FaultKind::Away : FaultKind::Other,
                                OneLine(sqlite3_errmsg(m_database)));
    }

    static std::string_view TextOf(sqlite3_value* value) {
        auto const* const text = reinterpret_cast<char const*>(sqlite3_value_text(value));
        return {text != nullptr ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
    }

    void Take(ParamDb::row_t& row, FieldType type, sqlite3_value* value, ColumnFaults& faults) {
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
        case SQLITE_TEXT: {
            std::string_view const text = TextOf(value);
            m_text_bytes += text.size();
            return AddText(row, type, text, faults);
        }
        case SQLITE_NULL:
            return AddNull(row, type, faults);
        default:
            return AddForeign(row, type, faults);
        }
    }

    sqlite3* m_database;
    WorkClock& m_clock;
    RowBudget& m_budget;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    std::vector<FieldType> m_types;
    std::size_t m_text_bytes = 0; // of one row
};

class SqliteSession : public SociSession {
public:
    SqliteSession(ConnectionText const& connection, Access access, std::chrono::seconds timeout)
        : SociSession("sqlite3", "dbname=\"" + connection.parameters + "\"", connection.Place()),
          m_file(connection.parameters), m_access(access), m_timeout(timeout), m_clock(timeout) {}

    Dialect dialect() const override { return Dialect::Sqlite; }

    void Connect() override {
        std::error_code fault;
        auto const path = std::filesystem::path(std::u8string(m_file.begin(), m_file.end()));
        if (m_access == Access::Read && !std::filesystem::exists(path, fault))
            throw DatabaseFault(FaultKind::Away, "there is no such file");
        SociSession::Connect();
        m_clock.Watch(Database());
        constexpr long long longest = 24 * 60 * 60;
        auto const seconds = std::min<long long>(m_timeout.count(), longest);
        sqlite3_busy_timeout(Database(), static_cast<int>(seconds * 1000));
        // SQLite looks at a file when it first reads from it.
        Execute("PRAGMA foreign_keys = ON");
        QueryNumber("SELECT count(*) FROM sqlite_master");
    }

    // The lock is taken at once: a reader that became a writer later could not wait for another one.
    void BeginWriting() override { Execute("BEGIN IMMEDIATE"); }
    void BeginReading() override {
        Execute("BEGIN");
        m_budget.SetFileBytes(QueryNumber("PRAGMA page_count").value_or(0) *
                              QueryNumber("PRAGMA page_size").value_or(0));
        std::uint64_t const longest = std::numeric_limits<int>::max();
        sqlite3_limit(Database(), SQLITE_LIMIT_LENGTH, static_cast<int>(std::min(m_budget.left(), longest)));
    }
    void Commit() override { Execute("COMMIT"); }

    std::unique_ptr<RowReader> Read(SqlTable const& table, std::int64_t revision_id, std::uint64_t) override {
        return std::make_unique<SqliteReader>(Database(), m_clock, m_budget, table, revision_id);
    }

protected:
    FaultKind KindOf(soci::soci_error const& error) const override {
        auto const* const known = dynamic_cast<soci::sqlite3_soci_error const*>(&error);
        switch (known != nullptr ? known->result() : SQLITE_OK) {
        case SQLITE_BUSY:
        case SQLITE_CANTOPEN:
        case SQLITE_INTERRUPT:
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
        std::string text = SociSession::TextOf(error);
        auto const* const known = dynamic_cast<soci::sqlite3_soci_error const*>(&error);
        if (known == nullptr)
            return text;
        if (known->result() == SQLITE_INTERRUPT)
            return m_clock.Text();
        std::size_t const colon = text.rfind(": ");
        return colon == std::string::npos ? text : text.substr(colon + 2);
    }

    void BeginWaiting() override { m_clock.Restart(); }
    void TakeRow(std::size_t columns, std::size_t text_bytes) override {
        m_budget.TakeRow(columns, text_bytes);
    }

private:
    sqlite3* Database() { return static_cast<soci::sqlite3_session_backend*>(sql().get_backend())->conn_; }

    std::string m_file;
    Access m_access;
    std::chrono::seconds m_timeout;
    WorkClock m_clock;
    RowBudget m_budget;
};

} // namespace

std::unique_ptr<SociSession> MakeSqliteSession(ConnectionText const& connection, Access access,
                                               std::chrono::seconds timeout) {
    return std::make_unique<SqliteSession>(connection, access, timeout);
}

} // namespace paramdb::database
