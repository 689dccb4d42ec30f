// Sets and revisions: their numbers, finding them, and that they stay as they are.
#include "tests/database/database_test.h"

#include <regex>

namespace {

using namespace ParamDb;

class RevisionTest : public DatabaseTest {
protected:
    Revision Export(std::string const& set, ExportOptions const& options = {},
                    CDbTableSet const& data = SmallSet()) {
        auto const revision = ExportTables(data, database().Connection(set), options);
        EXPECT_TRUE(revision);
        return revision.value_or(Revision());
    }

    // What is wrong with an import.
    Lines ImportFault(std::string const& set) {
        CDbTableSet data = SmallSet();
        EXPECT_FALSE(ImportTables(database().Connection(set), data));
        EXPECT_EQ(Difference(data, SmallSet()), "");
        return Messages();
    }
    static Lines ImportFailed(std::string const& reason) {
        return {"4 ParamDb::ImportTables(): Import from 'PLACE' failed: " + reason};
    }
};

TEST_P(RevisionTest, NumbersAreThoseOfTheSet) {
    EXPECT_EQ(Export("#a").number, 1);
    EXPECT_EQ(Export("#b").number, 1);
    EXPECT_EQ(Export("#a").number, 2);
    EXPECT_EQ(Export("").number, 1);
    EXPECT_EQ(Export("#a").number, 3);
    auto const revisions = Revisions(database().Connection());
    ASSERT_TRUE(revisions);
    std::vector<std::pair<std::wstring, int>> names;
    for (Revision const& revision : *revisions)
        names.emplace_back(revision.set, revision.number);
    EXPECT_EQ(names, (std::vector<std::pair<std::wstring, int>>{
                         {L"a", 1}, {L"a", 2}, {L"a", 3}, {L"b", 1}, {L"default", 1}}));
    EXPECT_EQ(Revisions(database().Connection("#a"))->size(), 3u);
    EXPECT_TRUE(Revisions(database().Connection("#none"))->empty());
}

TEST_P(RevisionTest, WhoWhenAndWhy) {
    auto const revision =
        Export("#gear box", {.who = L"J\xFCrgen'; DROP TABLE", .remark = L"\"new\" :limits"});
    EXPECT_EQ(revision.set, L"gear box");
    EXPECT_EQ(revision.who, L"J\xFCrgen'; DROP TABLE");
    EXPECT_EQ(revision.remark, L"\"new\" :limits");
    EXPECT_EQ(revision.tables, 2u);
    EXPECT_EQ(revision.rows, 3u);
    EXPECT_TRUE(
        std::regex_match(paramdb::ToUtf8(revision.when),
                         std::regex("20[0-9]{2}-[01][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-5][0-9]Z")));
    EXPECT_EQ(Revisions(database().Connection())->front(), revision);
    // The user and the host, where nobody is told.
    EXPECT_TRUE(std::regex_match(paramdb::ToUtf8(Export("#x").who), std::regex("[^@]+@.+")));
}

TEST_P(RevisionTest, EachKeepsItsData) {
    auto changed = SmallSet();
    changed[L"<TMode>"].pop_back();
    Export("#a");
    Export("#a", {}, changed);
    Export("#b");
    CDbTableSet data;
    ASSERT_TRUE(ImportTables(database().Connection("#a@1"), data));
    EXPECT_EQ(Difference(data, SmallSet()), "");
    ASSERT_TRUE(ImportTables(database().Connection("#a@2"), data));
    EXPECT_EQ(Difference(data, changed), "");
    EXPECT_EQ(ImportTables(database().Connection("#a"), data)->revision.number, 2);
    EXPECT_EQ(Difference(data, changed), "");
    ASSERT_TRUE(ImportTables(database().Connection("#b"), data));
    EXPECT_EQ(Difference(data, SmallSet()), "");
}

TEST_P(RevisionTest, WhatThereIsNot) {
    Export("#a");
    EXPECT_EQ(ImportFault("#a@2"), ImportFailed("set 'a' has no revision 2, the newest is 1"));
    EXPECT_EQ(ImportFault("#A"), ImportFailed("there is no set 'A', there is 'a'"));
    Export("#b");
    EXPECT_EQ(ImportFault(""), ImportFailed("the set is not told, there is 'a', 'b'"));
    EXPECT_EQ(ImportFault("#c"), ImportFailed("there is no set 'c', there is 'a', 'b'"));
}

TEST_P(RevisionTest, EmptyDatabases) {
    if (GetParam() == Kind::Sqlite)
        database().Run("CREATE TABLE other (x)");
    EXPECT_EQ(ImportFault("#a"), ImportFailed("the database holds no parameter data"));
    EXPECT_FALSE(Revisions(database().Connection()));
    EXPECT_EQ(
        Messages(),
        Lines{"4 ParamDb::Revisions(): Listing of 'PLACE' failed: the database holds no parameter data"});
    auto wrong = SmallSet();
    wrong[L"<TMode>"].push_back({std::wstring(L"x"), std::wstring(L"x")});
    EXPECT_FALSE(ExportTables(wrong, database().Connection()));
    EXPECT_EQ(Messages().size(), 2u);
    EXPECT_EQ(ImportFault(""), ImportFailed("the database holds no parameter data"));
    Export("#a");
    for (std::string const table : {"paramdb_revision"}) {
        database().DropGuards(table);
        database().Run("DELETE FROM " + table);
    }
    EXPECT_EQ(ImportFault("#a"), ImportFailed("there is no set 'a'"));
    EXPECT_EQ(ImportFault(""), ImportFailed("the database holds no set"));
}

TEST_P(RevisionTest, ForeignSchema) {
    Export("#a");
    database().Run("UPDATE paramdb_schema SET version = 7");
    std::string const reason = "table 'paramdb_schema', column 'version': 7 where 1 is known";
    EXPECT_EQ(ImportFault("#a"), ImportFailed(reason));
    EXPECT_FALSE(ExportTables(SmallSet(), database().Connection("#a")));
    EXPECT_EQ(Messages(), Lines{"4 ParamDb::ExportTables(): Export to 'PLACE' failed: " + reason});
    database().Run("DELETE FROM paramdb_schema");
    EXPECT_EQ(ImportFault("#a"),
              ImportFailed("table 'paramdb_schema', column 'version': none where 1 is known"));
}

TEST_P(RevisionTest, NobodyChangesOne) {
    Export("#a");
    std::string const id = database().Run("SELECT id FROM paramdb_revision");
    for (std::string const& statement :
         {std::string("UPDATE \"TMode\" SET name = 'x'"), std::string("DELETE FROM \"TMode\""),
          "INSERT INTO \"TMode\" VALUES (" + id + ", 9, 'x')",
          std::string("UPDATE paramdb_revision SET who = 'x'"), std::string("DELETE FROM paramdb_revision"),
          std::string("DELETE FROM paramdb_content"),
          "INSERT INTO paramdb_content VALUES (" + id + ", 'TChannel', 0, 0)",
          std::string("UPDATE paramdb_version SET minor = 2"), std::string("DELETE FROM \"TTrigger\"")}) {
        SCOPED_TRACE(statement);
        try {
            database().Run(statement);
            FAIL();
        } catch (std::runtime_error const& error) {
            EXPECT_NE(std::string(error.what()).find("a revision never changes"), std::string::npos)
                << error.what();
        }
    }
    CDbTableSet data;
    ASSERT_TRUE(ImportTables(database().Connection("#a"), data, {.strict = true}));
    EXPECT_EQ(Difference(data, SmallSet()), "");
}

TEST_P(RevisionTest, ExportToARevision) {
    EXPECT_FALSE(ExportTables(SmallSet(), database().Connection("#a@1")));
    EXPECT_EQ(Messages(),
              Lines{"4 ParamDb::ExportTables(): Export to 'PLACE' failed: the database gives the number of "
                    "the revision"});
    EXPECT_FALSE(ExportTables(SmallSet(), L"postgresql:password=secret"));
    CDbTableSet data;
    EXPECT_FALSE(ImportTables(L"postgresql:password=secret", data));
    EXPECT_FALSE(Revisions(L"gearbox.db"));
    std::string const password =
        "a connection holds no password: the environment (PGPASSWORD) or a password file does";
    EXPECT_EQ(
        Messages(),
        (Lines{
            "4 ParamDb::ExportTables(): Export failed: " + password,
            "4 ParamDb::ImportTables(): Import failed: " + password,
            "4 ParamDb::Revisions(): Listing failed: a connection begins with the name of a database such as "
            "sqlite3: or postgresql:"}));
}

PARAMDB_BOTH_KINDS(RevisionTest);

} // namespace
