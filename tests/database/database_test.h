// What the tests of databases share: the databases to test with, and table sets of random content.
#pragma once

#include <paramdb/database.h>
#include <paramdb/database/layout.h>
#include <paramdb/platform/core/utf8.h>

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <tests/support/messages.h>
#include <tests/support/postgres.h>
#include <tests/support/temp_dir.h>
#include <vector>

enum class Kind { Sqlite, Postgres };

// A database of its own for a test.
class Database {
public:
    explicit Database(Kind kind) : m_kind(kind) {
        if (kind == Kind::Sqlite)
            m_place = "sqlite3:" + (m_folder / u8"a b.db").string();
        else
            m_place = test_support::PostgresServer::Object().NewDatabase();
    }

    Kind kind() const { return m_kind; }
    std::string const& Place() const { return m_place; }
    // The connection with a set behind it, such as "#gearbox@2".
    std::wstring Connection(std::string const& set = {}) const { return paramdb::FromUtf8(m_place + set); }
    // Runs statements past the library; see test_support::RunSql.
    std::string Run(std::string const& statements) const { return test_support::RunSql(m_place, statements); }
    // Lets revisions be changed, at a table, past the library.
    void DropGuards(std::string const& table) const {
        for (std::string const event : {"UPDATE", "DELETE", "INSERT"})
            if (m_kind == Kind::Sqlite)
                Run("DROP TRIGGER IF EXISTS \"" + table + "_" + event + "\"");
        if (m_kind == Kind::Postgres)
            Run("ALTER TABLE \"" + table + "\" DISABLE TRIGGER USER");
    }

private:
    Kind m_kind;
    test_support::TempDir m_folder;
    std::string m_place;
};

// A test over both kinds. Messages are taken up, and none may be left in the end.
class DatabaseTest : public testing::TestWithParam<Kind> {
protected:
    DatabaseTest() : m_database(GetParam()) {}
    void TearDown() override { EXPECT_EQ(m_log.Take(), std::vector<Message>()); }

    Database const& database() const { return m_database; }
    MessageLog& log() { return m_log; }

    // The messages since the last call, each without its end of line and with the place of the database as
    // PLACE; style, then text.
    std::vector<std::string> Messages() {
        std::vector<std::string> messages;
        for (Message const& message : m_log.Take()) {
            EXPECT_EQ(message.category, 8);
            std::string text = paramdb::ToUtf8(message.text);
            for (std::size_t at; (at = text.find(m_database.Place())) != text.npos;)
                text.replace(at, m_database.Place().size(), "PLACE");
            EXPECT_TRUE(text.ends_with('\n'));
            messages.push_back(std::to_string(message.style) + " " + text.substr(0, text.size() - 1));
        }
        return messages;
    }

private:
    Database m_database;
    MessageLog m_log;
};

using Lines = std::vector<std::string>;

inline std::string KindName(testing::TestParamInfo<Kind> const& info) {
    return info.param == Kind::Sqlite ? "Sqlite" : "Postgres";
}

// Without a server there is one kind.
inline std::vector<Kind> Kinds() {
    return std::string(PARAMDB_POSTGRES_DIR).empty() ? std::vector{Kind::Sqlite}
                                                     : std::vector{Kind::Sqlite, Kind::Postgres};
}

#define PARAMDB_BOTH_KINDS(Test)                                                                             \
    INSTANTIATE_TEST_SUITE_P(Database, Test, testing::ValuesIn(Kinds()), KindName)

// A set with that many rows in each table: extreme and random numbers, texts of every kind, keys in order.
// The version is one that loads take.
ParamDb::CDbTableSet RandomSet(std::uint32_t seed, std::size_t rows_of_each);
// The same of one table alone, with a version.
ParamDb::CDbTableSet LargeSet(std::wstring const& tag, std::size_t rows);
// A small one: two modes and a trigger.
ParamDb::CDbTableSet SmallSet();

// The first difference of two sets, bits of numbers and all; empty for none.
std::string Difference(ParamDb::CDbTableSet const& left, ParamDb::CDbTableSet const& right);
