// A backend without a session of its own keeps to standard SQL. Here it meets databases that could do more.
#include <paramdb/database/revision_rows.h>
#include <paramdb/database/schema.h>
#include <paramdb/database/soci_session.h>
#include <paramdb/database/table_content.h>

#include "tests/database/database_test.h"

#include <regex>

namespace {

using namespace paramdb::database;
using ParamDb::CDbTableSet;

class OtherBackend : public DatabaseTest {
protected:
    OtherBackend() {
        auto const parsed = ParseConnectionText(database().Place());
        auto const& connection = std::get<ConnectionText>(parsed);
        m_session = std::make_unique<SociSession>(connection.backend, Parameters(connection), "PLACE");
        m_session->Connect();
        // The list of tables that the standard names.
        if (GetParam() == Kind::Sqlite) {
            m_session->Execute("ATTACH DATABASE ':memory:' AS information_schema");
            m_session->Execute("CREATE TABLE information_schema.tables (table_name TEXT)");
            m_session->Execute("CREATE TABLE information_schema.columns (table_name TEXT, column_name TEXT)");
        }
    }

    SociSession& session() { return *m_session; }

    void Make() {
        MakeSchema(session(), false);
        if (GetParam() == Kind::Sqlite) {
            session().Execute("INSERT INTO information_schema.tables SELECT name FROM main.sqlite_master");
            session().Execute("INSERT INTO information_schema.columns SELECT m.name, c.name FROM "
                              "main.sqlite_master m, pragma_table_info(m.name) c");
        }
    }

    static ParamDb::Revision Write(Session& session, CDbTableSet const& set, std::string const& name,
                                   std::optional<std::int32_t> number = {}) {
        Report report(L"Test", "Test");
        SetContent const content(set, report);
        EXPECT_EQ(report.faults(), 0u);
        return WriteRevision(session, content.content(),
                             {.set = name, .who = "who", .remark = "remark", .number = number});
    }

private:
    static std::string Parameters(ConnectionText const& connection) {
        return connection.backend == "sqlite3" ? "dbname=\"" + connection.parameters + "\""
                                               : connection.parameters;
    }

    std::unique_ptr<SociSession> m_session;
};

// The fault that an action throws.
template <class Action>
std::pair<FaultKind, std::string> FaultOf(Action const& action) {
    try {
        action();
    } catch (DatabaseFault const& fault) {
        return {fault.kind(), fault.what()};
    }
    ADD_FAILURE() << "no fault";
    return {};
}

TEST_P(OtherBackend, SetsGoInAndComeBack) {
    EXPECT_EQ(session().dialect(), Dialect::Other);
    auto const set = RandomSet(7, 25);
    {
        Transaction transaction(session(), Access::Write);
        EXPECT_EQ(FindSchema(session()), SchemaState::Missing);
        LockSchema(session());
        Make();
        EXPECT_EQ(FindSchema(session()), SchemaState::WithoutForeignKeys);
        ParamDb::Revision const revision = Write(session(), set, "gearbox");
        EXPECT_EQ(revision.number, 1);
        EXPECT_TRUE(std::regex_match(paramdb::ToUtf8(revision.when),
                                     std::regex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z")));
        EXPECT_EQ(Write(session(), SmallSet(), "gearbox").number, 2);
        transaction.Commit();
    }
    Transaction const reading(session(), Access::Read);
    EXPECT_EQ(FindColumns(session()).at("TMode"), (std::set<std::string>{"revision_id", "mode", "name"}));
    auto const revisions = ListRevisions(session(), "gearbox");
    ASSERT_EQ(revisions.size(), 2u);
    Report report(L"Test", "Test");
    auto const none = []() -> std::unique_ptr<Session> { throw DatabaseFault(FaultKind::Away, "no other"); };
    EXPECT_EQ(Difference(ReadRevision(session(), revisions[0].id, none, report), set), "");
    EXPECT_EQ(Difference(ReadRevision(session(), revisions[1].id, none, report), SmallSet()), "");
    EXPECT_EQ(report.faults(), 0u);
}

TEST_P(OtherBackend, WhatIsNotCommittedIsUndone) {
    {
        Transaction const transaction(session(), Access::Write);
        session().Execute("CREATE TABLE undone (number INTEGER)");
    }
    EXPECT_EQ(FaultOf([&] { session().Execute("DROP TABLE undone"); }).first, FaultKind::Other);
    session().Rollback(); // without a transaction
    session().Execute("CREATE TABLE done (number INTEGER)");
    session().Execute("INSERT INTO done (number) VALUES (:p1)", {std::int64_t{-5}});
    EXPECT_EQ(session().QueryNumber("SELECT number FROM done"), -5);
    EXPECT_EQ(session().QueryNumber("SELECT number FROM done WHERE number = :p1", {std::int64_t{6}}),
              std::nullopt);
    EXPECT_EQ(session().QueryNumber("SELECT max(number) FROM done WHERE number > 0"), std::nullopt);
    EXPECT_EQ(FaultOf([&] { session().QueryNumber("SELECT 'a' FROM done"); }).second, "'a' is no number");
    EXPECT_EQ(FaultOf([&] { session().QueryNumber("SELECT '5a' FROM done"); }).second, "'5a' is no number");
}

TEST_P(OtherBackend, FaultsAreToldInOneLine) {
    auto const [kind, text] = FaultOf([&] { session().Execute("SELECT\n  nonsense"); });
    EXPECT_EQ(kind, FaultKind::Other);
    EXPECT_NE(text.find("nonsense"), std::string::npos) << text;
    EXPECT_EQ(text.find('\n'), std::string::npos) << text;

    SociSession unreachable(
        GetParam() == Kind::Sqlite ? "sqlite3" : "postgresql",
        GetParam() == Kind::Sqlite ? "dbname=/nowhere/at/all.db" : "host=127.0.0.1 port=1", "PLACE");
    EXPECT_EQ(FaultOf([&] { unreachable.Connect(); }).second.find('\n'), std::string::npos);
}

TEST(OneLine, BlanksAreOneAndTheEndIsBare) {
    std::pair<char const*, char const*> const cases[] = {
        {"", ""},
        {" ", ""},
        {"a", "a"},
        {"  a  b\n", "a b"},
        {"a.\n", "a"},
        {"a. b...", "a. b"},
        {"a\r\n\tb .", "a b"},
        {"\ta\rb\nc d", "a b c d"},
    };
    for (auto const& [text, line] : cases)
        EXPECT_EQ(OneLine(text), line);
}

PARAMDB_BOTH_KINDS(OtherBackend);

} // namespace
