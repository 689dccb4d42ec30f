// A session over SOCI, as it serves for every backend. The sessions of single backends replace what they do
// better.
#pragma once

#include <paramdb/database/session.h>

#include <functional>
#include <soci/soci.h>
#include <string_view>

namespace paramdb::database {

class SociSession : public Session {
public:
    // Does not connect yet. The parameters are those of the backend.
    SociSession(std::string backend, std::string parameters, std::string place);

    Dialect dialect() const override { return Dialect::Other; }
    void Execute(std::string const& sql, SqlParameters const& parameters = {}) override;
    std::vector<TextRow> Query(std::string const& sql, std::size_t columns,
                               SqlParameters const& parameters = {}) override;
    void BeginReading() override;
    void BeginWriting() override;
    void Commit() override;
    void Rollback() noexcept override;
    std::unique_ptr<RowReader> Read(SqlTable const& table, std::int64_t revision_id,
                                    std::uint64_t expected_rows) override;
    std::unique_ptr<RowWriter> Write(SqlTable const& table, std::int64_t revision_id) override;

    virtual void Connect();

    // Runs what talks to the database. Faults of SOCI become those of this library.
    void Guard(std::function<void()> const& action);

    soci::session& sql() { return *m_sql; }

protected:
    // What a fault of SOCI means.
    virtual FaultKind KindOf(soci::soci_error const& error) const;
    // Its text, in one line and without the statement.
    virtual std::string TextOf(soci::soci_error const& error) const;
    // Stands around every call that may wait for the server.
    virtual void BeginWaiting() {}
    virtual void EndWaiting() noexcept {}
    // Counts a row that has been read. Throws where there are more than the database can have.
    virtual void TakeRow(std::size_t /*columns*/, std::size_t /*text_bytes*/) {}

    // Connects in a thread of its own and gives up when that takes longer: the connection is then left to the
    // thread, which closes it whenever it comes about.
    void ConnectWithin(std::chrono::seconds patience);

    std::string const& parameters() const { return m_parameters; }
    std::string const& place() const { return m_place; }

private:
    std::string m_backend;
    std::string m_parameters;
    std::string m_place; // for messages
    std::unique_ptr<soci::session> m_sql = std::make_unique<soci::session>();
};

// SELECT of the columns of a table, in key order, for the revision :p1.
std::string SelectSql(SqlTable const& table);
// The columns that are written, and a name for the value of each: the revision's is :p1, the others :c1 on.
std::string InsertColumns(SqlTable const& table);

// The end of a message in one line.
std::string OneLine(std::string_view text);

std::unique_ptr<SociSession> MakeSqliteSession(ConnectionText const& connection, Access access,
                                               std::chrono::seconds timeout);
std::unique_ptr<SociSession> MakePostgresSession(ConnectionText const& connection,
                                                 std::chrono::seconds timeout);

} // namespace paramdb::database
