// The copy that a bench runs from while its server is away.
#include "tests/database/database_test.h"

#include <filesystem>

namespace {

using namespace ParamDb;

class LocalCopyTest : public DatabaseTest {
protected:
    std::string CopyName() const { return (m_folder / u8"gear box.copy").string(); }
    ImportOptions Options() const {
        return {.timeout = std::chrono::seconds(2), .local_copy = paramdb::FromUtf8(CopyName())};
    }
    std::optional<Import> Fetch(CDbTableSet& set, std::string const& name = "#a") {
        return ImportTables(database().Connection(name), set, Options());
    }
    std::size_t FilesInFolder() const {
        auto const files = std::filesystem::directory_iterator(m_folder.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    // The database cannot be reached while an object of this lives.
    class Away {
    public:
        explicit Away(Database const& database) : m_kind(database.kind()) {
            if (m_kind == Kind::Postgres) {
                test_support::PostgresServer::Object().Kill();
            } else {
                m_file = database.Place().substr(database.Place().find(':') + 1);
                std::filesystem::rename(m_file, m_file + ".away");
            }
        }
        Away(Away const&) = delete;
        Away& operator=(Away const&) = delete;
        ~Away() {
            if (m_kind == Kind::Postgres)
                test_support::PostgresServer::Object().Start();
            else
                std::filesystem::rename(m_file + ".away", m_file);
        }

    private:
        Kind m_kind;
        std::string m_file;
    };

    std::string Reason() const {
        if (GetParam() == Kind::Sqlite)
            return "there is no such file";
        std::string const port = std::to_string(test_support::PostgresServer::Object().port());
        return "connection to server at \"127.0.0.1\", port " + port +
               " failed: Connection refused Is the server running on that host and accepting TCP/IP "
               "connections?";
    }

private:
    test_support::TempDir m_folder;
};

TEST_P(LocalCopyTest, ServesWhileTheDatabaseIsAway) {
    auto const random = RandomSet(7, 10);
    auto const revision =
        ExportTables(random, database().Connection("#a"), {.who = L"me", .remark = L"first"});
    ASSERT_TRUE(revision);
    CDbTableSet set;
    auto import = Fetch(set);
    ASSERT_TRUE(import);
    EXPECT_FALSE(import->is_local_copy);
    std::string const copied =
        test_support::RunSql("sqlite3:" + CopyName(), "SELECT copied FROM paramdb_copy");
    {
        Away const away(database());
        set.clear();
        import = Fetch(set);
        ASSERT_TRUE(import);
        EXPECT_TRUE(import->is_local_copy);
        EXPECT_EQ(import->revision, *revision);
        EXPECT_EQ(Difference(set, random), "");
        EXPECT_EQ(Messages(), Lines{"1 ParamDb::ImportTables(): Import from 'PLACE' failed: " + Reason() +
                                    ". The local copy '" + CopyName() +
                                    "' is used: revision 1 of set 'a', copied " + copied});
        // It holds what was asked for, and nothing else.
        EXPECT_TRUE(Fetch(set, "#a@1"));
        EXPECT_TRUE(Fetch(set, ""));
        Messages();
        for (std::string const other : {"#b", "#a@2"}) {
            EXPECT_FALSE(Fetch(set, other));
            EXPECT_EQ(Messages(), Lines{"4 ParamDb::ImportTables(): Import from 'PLACE' failed: " + Reason() +
                                        ". The local copy '" + CopyName() +
                                        "' cannot be used: it is a copy of revision 1 of set 'a'"});
        }
        CDbTableSet data;
        EXPECT_FALSE(ImportTables(L"sqlite3:/nowhere/x.db#a", data, Options()));
        EXPECT_EQ(Messages(),
                  Lines{"4 ParamDb::ImportTables(): Import from 'sqlite3:/nowhere/x.db' failed: there is "
                        "no such file. The local copy '" +
                        CopyName() + "' cannot be used: it is a copy of 'PLACE'"});
    }
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_P(LocalCopyTest, FollowsTheDatabase) {
    ASSERT_TRUE(ExportTables(SmallSet(), database().Connection("#a")));
    CDbTableSet set;
    ASSERT_TRUE(Fetch(set));
    auto const first = std::filesystem::last_write_time(CopyName());
    ASSERT_TRUE(Fetch(set)); // nothing new: the file is left alone
    EXPECT_EQ(std::filesystem::last_write_time(CopyName()), first);

    auto changed = SmallSet();
    changed[L"<TMode>"].pop_back();
    ASSERT_TRUE(ExportTables(changed, database().Connection("#a")));
    ASSERT_TRUE(Fetch(set));
    EXPECT_EQ(
        test_support::RunSql("sqlite3:" + CopyName(), "SELECT group_concat(revision) FROM paramdb_revision"),
        "2");
    // A copy is a database like any other.
    CDbTableSet copy;
    auto const import = ImportTables(paramdb::FromUtf8("sqlite3:" + CopyName()), copy, {.strict = true});
    ASSERT_TRUE(import);
    EXPECT_EQ(import->revision.number, 2);
    EXPECT_EQ(Difference(copy, changed), "");
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_P(LocalCopyTest, FaultyDataAreNotKept) {
    ASSERT_TRUE(ExportTables(SmallSet(), database().Connection("#a")));
    database().DropGuards("TMode");
    database().Run("DELETE FROM \"TMode\"");
    CDbTableSet set;
    ASSERT_TRUE(Fetch(set));
    EXPECT_EQ(Messages(), (Lines{"3 ParamDb::ImportTables(): table 'TMode': 0 rows where the revision has 2",
                                 "1 ParamDb::ImportTables(): The local copy '" + CopyName() +
                                     "' stays as it is, since the import had faults"}));
    EXPECT_EQ(FilesInFolder(), 0u);
}

TEST_P(LocalCopyTest, CopyThatCannotBeWrittenOrRead) {
    ASSERT_TRUE(ExportTables(SmallSet(), database().Connection("#a")));
    CDbTableSet set;
    ImportOptions options = Options();
    options.local_copy = L"/nowhere/a.copy";
    ASSERT_TRUE(ImportTables(database().Connection("#a"), set, options));
    EXPECT_EQ(Difference(set, SmallSet()), "");
    EXPECT_EQ(Messages(),
              Lines{"1 ParamDb::ImportTables(): The local copy '/nowhere/a.copy' could not be written: "
                    "unable to open database file"});
    // One that was no copy is replaced, and serves for nothing before.
    test_support::WriteBytes(CopyName(), std::string(5000, 'x'));
    {
        Away const away(database());
        EXPECT_FALSE(Fetch(set));
        EXPECT_EQ(Messages(),
                  Lines{"4 ParamDb::ImportTables(): Import from 'PLACE' failed: " + Reason() +
                        ". The local copy '" + CopyName() + "' cannot be used: file is not a database"});
    }
    ASSERT_TRUE(Fetch(set));
    EXPECT_EQ(test_support::RunSql("sqlite3:" + CopyName(), "SELECT place FROM paramdb_copy"),
              database().Place());
}

// A database that was exported to is no copy of another one.
TEST_P(LocalCopyTest, DatabaseThatIsNoCopy) {
    ASSERT_TRUE(ExportTables(SmallSet(), database().Connection("#a")));
    std::string const copy = "sqlite3:" + CopyName();
    ASSERT_TRUE(ExportTables(SmallSet(), paramdb::FromUtf8(copy + "#a")));
    for (std::string const change : {"SELECT 1", "CREATE TABLE paramdb_copy (place TEXT, copied TEXT)",
                                     "INSERT INTO paramdb_copy VALUES ('one', 'now'), ('two', 'now')"}) {
        SCOPED_TRACE(change);
        test_support::RunSql(copy, change);
        Away const away(database());
        CDbTableSet set;
        EXPECT_FALSE(Fetch(set));
        EXPECT_EQ(Messages(), Lines{"4 ParamDb::ImportTables(): Import from 'PLACE' failed: " + Reason() +
                                    ". The local copy '" + CopyName() + "' cannot be used: it is no copy"});
    }
}

PARAMDB_BOTH_KINDS(LocalCopyTest);

} // namespace
