// A connection to a database: what import and export need of one, whatever its kind.
//
// What fails throws DatabaseFault. Nothing waits longer than the time-out: for the connection, for a lock,
// for the answer to a statement. A session is used by one thread.
#pragma once

#include <paramdb/database/cells.h>
#include <paramdb/database/connection_text.h>
#include <paramdb/database/fault.h>
#include <paramdb/database/layout.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace paramdb::database {

// Kinds whose SQL differs. Other stands for what keeps to the standard.
enum class Dialect { Sqlite, Postgres, Other };

using SqlParameter = std::variant<std::int64_t, std::string>;
using SqlParameters = std::vector<SqlParameter>;

// The rows of one table and revision, in key order.
class RowReader {
public:
    RowReader() = default;
    RowReader(RowReader const&) = delete;
    RowReader& operator=(RowReader const&) = delete;
    virtual ~RowReader() = default;

    // Appends the cells of the next row to `row`, which is empty. What does not fit its column is added to
    // the faults. False behind the last row.
    virtual bool Next(ParamDb::row_t& row, ColumnFaults& faults) = 0;
};

// Takes rows of one table and revision, in any order.
class RowWriter {
public:
    RowWriter() = default;
    RowWriter(RowWriter const&) = delete;
    RowWriter& operator=(RowWriter const&) = delete;
    virtual ~RowWriter() = default;

    // The fields are those of a key and a row. A text must be one that EncodeSqlText takes. A number that is
    // none is written as NULL.
    virtual void Add(std::span<ConstField const> key, std::span<ConstField const> row) = 0;
    // Writes what is still held back.
    virtual void Finish() = 0;
};

class Session {
public:
    Session() = default;
    Session(Session const&) = delete;
    Session& operator=(Session const&) = delete;
    virtual ~Session() = default;

    virtual Dialect dialect() const = 0;

    // One statement without results.
    virtual void Execute(std::string const& sql, SqlParameters const& parameters = {}) = 0;
    // All rows of a small result, each with that many columns as text; none for NULL. Parameters are called
    // :p1, :p2 and so on.
    using TextRow = std::vector<std::optional<std::string>>;
    virtual std::vector<TextRow> Query(std::string const& sql, std::size_t columns,
                                       SqlParameters const& parameters = {}) = 0;

    // A transaction that sees one state of the data, or one that will write.
    virtual void BeginReading() = 0;
    virtual void BeginWriting() = 0;
    virtual void Commit() = 0;
    // Throws nothing: what cannot be told to the server any more is undone there by itself.
    virtual void Rollback() noexcept = 0;

    // Both need a transaction. How many rows there should be decides how they are fetched.
    virtual std::unique_ptr<RowReader> Read(SqlTable const& table, std::int64_t revision_id,
                                            std::uint64_t expected_rows) = 0;
    virtual std::unique_ptr<RowWriter> Write(SqlTable const& table, std::int64_t revision_id) = 0;

    // The first column of the only row as a number; none without a row or for NULL.
    std::optional<std::int64_t> QueryNumber(std::string const& sql, SqlParameters const& parameters = {});
};

enum class Access { Read, Write };

// Connects. With Access::Read a file must be there.
std::unique_ptr<Session> OpenSession(ConnectionText const& connection, Access access,
                                     std::chrono::seconds timeout);

// A transaction that is undone unless it is committed.
class Transaction {
public:
    Transaction(Session& session, Access access) : m_session(session) {
        if (access == Access::Read)
            session.BeginReading();
        else
            session.BeginWriting();
    }
    Transaction(Transaction const&) = delete;
    Transaction& operator=(Transaction const&) = delete;
    ~Transaction() {
        if (!m_is_over)
            m_session.Rollback();
    }

    void Commit() {
        m_session.Commit();
        m_is_over = true;
    }

private:
    Session& m_session;
    bool m_is_over = false;
};

} // namespace paramdb::database
