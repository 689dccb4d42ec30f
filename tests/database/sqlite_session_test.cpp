// SQLite files that anybody may have made: an answer comes in time, and no more of it than a file can hold.
#include "tests/database/database_test.h"

#include <chrono>

namespace {

using namespace ParamDb;
using namespace std::chrono_literals;

constexpr char EndlessNumbers[] = "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r) ";

class SqliteSessionTest : public testing::Test {
protected:
    SqliteSessionTest() : m_database(Kind::Sqlite) {
        EXPECT_TRUE(ExportTables(SmallSet(), m_database.Connection("#a")));
    }
    void TearDown() override { EXPECT_EQ(m_log.Take(), std::vector<Message>()); }

    // Puts a view in the place of a table.
    void Replace(std::string const& table, std::string const& select) const {
        m_database.Run("DROP TABLE \"" + table + "\"");
        m_database.Run("CREATE VIEW \"" + table + "\" AS " + select);
    }

    // The one message of what failed.
    std::string Reason(std::string const& operation) {
        auto const messages = m_log.Take();
        EXPECT_EQ(messages.size(), 1u);
        if (messages.size() != 1)
            return {};
        EXPECT_EQ(messages.front().category, 8);
        EXPECT_EQ(messages.front().style, 4);
        std::string const text = paramdb::ToUtf8(messages.front().text);
        std::string const head = operation + " '" + m_database.Place() + "' failed: ";
        EXPECT_TRUE(text.starts_with(head)) << text;
        return text.substr(std::min(head.size(), text.size()));
    }
    std::string ImportReason(std::chrono::seconds timeout) {
        CDbTableSet set = SmallSet();
        auto const start = std::chrono::steady_clock::now();
        EXPECT_FALSE(ImportTables(m_database.Connection(), set, {.timeout = timeout}));
        EXPECT_LT(std::chrono::steady_clock::now() - start, timeout + 30s);
        EXPECT_EQ(Difference(set, SmallSet()), "");
        return Reason("ParamDb::ImportTables(): Import from");
    }

    Database m_database;
    MessageLog m_log;
};

TEST_F(SqliteSessionTest, AnAnswerThatNeverComes) {
    Replace("TMode", EndlessNumbers +
                         std::string("SELECT 1 AS revision_id, n AS mode, 'x' AS name FROM r WHERE n < 0"));
    EXPECT_EQ(ImportReason(1s), "no answer within 1 s\n");
}

TEST_F(SqliteSessionTest, AListThatNeverComes) {
    Replace("paramdb_number", EndlessNumbers + std::string("SELECT 1 AS revision_id, '' AS table_name, '' AS "
                                                           "column_name, '' AS row_key, 0 AS bits FROM r "
                                                           "WHERE n < 0"));
    EXPECT_EQ(ImportReason(1s), "no answer within 1 s\n");
}

TEST_F(SqliteSessionTest, ATriggerThatNeverEnds) {
    m_database.Run("CREATE TRIGGER endless BEFORE INSERT ON paramdb_revision WHEN (" +
                   std::string(EndlessNumbers) + "SELECT count(*) FROM r) > 0 BEGIN SELECT 1; END");
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(ExportTables(SmallSet(), m_database.Connection("#a"), {.timeout = 1s}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
    EXPECT_EQ(Reason("ParamDb::ExportTables(): Export to"), "no answer within 1 s\n");
    auto const revisions = Revisions(m_database.Connection("#a"));
    ASSERT_TRUE(revisions);
    EXPECT_EQ(revisions->size(), 1u) << "nothing of it is left";
}

TEST_F(SqliteSessionTest, ManyRowsOfNothing) {
    Replace("paramdb_number",
            "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r WHERE n < 1000000) SELECT 1 AS "
            "revision_id, 'TMode' AS table_name, '' AS column_name, n AS row_key, 0 AS bits FROM r");
    EXPECT_EQ(ImportReason(60s), "there is more data than the file can hold\n");
}

TEST_F(SqliteSessionTest, ATextOfNothing) {
    Replace("TMode", "SELECT 1 AS revision_id, 1 AS mode, hex(zeroblob(400000000)) AS name");
    EXPECT_EQ(ImportReason(60s), "string or blob too big\n");
}

TEST_F(SqliteSessionTest, ManyTextsOfNothing) {
    Replace("TMode",
            "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r WHERE n < 1000) SELECT 1 AS "
            "revision_id, n AS mode, hex(zeroblob(50000)) AS name FROM r");
    EXPECT_EQ(ImportReason(60s), "there is more data than the file can hold\n");
}

// What a file does hold comes through, however small its rows, and whatever stands in the place of a table.
TEST_F(SqliteSessionTest, WhatAFileHolds) {
    CDbTableSet dense = SmallSet();
    auto& modes = dense[L"<TMode>"];
    modes.clear();
    for (std::int32_t mode = 0; mode < 60'000; ++mode)
        modes.push_back({mode % 2 == 0 ? mode / 2 : -1 - mode / 2, std::wstring()});
    std::sort(modes.begin(), modes.end());
    ASSERT_TRUE(ExportTables(dense, m_database.Connection("#dense")));
    m_database.Run("ALTER TABLE \"TMode\" RENAME TO other");
    m_database.Run("CREATE VIEW \"TMode\" AS SELECT * FROM other");
    CDbTableSet set;
    ASSERT_TRUE(ImportTables(m_database.Connection("#dense"), set, {.strict = true}));
    EXPECT_EQ(Difference(set, dense), "");
}

TEST_F(SqliteSessionTest, TextsOfTwoBytesInUtf16) {
    test_support::TempDir const folder;
    std::string const place = "sqlite3:" + (folder / u8"utf16.db").string();
    test_support::RunSql(place, "PRAGMA encoding = 'UTF-16le'; CREATE TABLE other(x)");
    CDbTableSet wide = SmallSet();
    auto& modes = wide[L"<TMode>"];
    modes.clear();
    for (std::int32_t mode = 0; mode < 5'000; ++mode)
        modes.push_back({mode, std::wstring(150, L'\u6A21')});
    ASSERT_TRUE(ExportTables(wide, paramdb::FromUtf8(place + "#a")));
    CDbTableSet set;
    ASSERT_TRUE(ImportTables(paramdb::FromUtf8(place + "#a"), set, {.strict = true}));
    EXPECT_EQ(Difference(set, wide), "");
}

} // namespace
