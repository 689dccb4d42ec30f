// What is wrong with the data in a database, and what becomes of the rest.
#include "tests/database/database_test.h"

namespace {

using namespace ParamDb;

class ImportFaults : public DatabaseTest {
protected:
    ImportFaults() { EXPECT_TRUE(ExportTables(SmallSet(), database().Connection())); }

    static std::string Fault(std::string const& text) { return "3 ParamDb::ImportTables(): " + text; }

    // Changes the database past the library, imports, and returns the messages. The tables that are gone or
    // have lost rows are those of `expected`.
    Lines Import(std::string const& table, std::string const& statements, CDbTableSet const& expected) {
        database().DropGuards(table);
        database().Run(statements);
        CDbTableSet data;
        auto const import = ImportTables(database().Connection(), data);
        EXPECT_TRUE(import);
        auto const messages = Messages();
        EXPECT_EQ(import.value_or(ParamDb::Import{}).faults, messages.size());
        EXPECT_EQ(Difference(data, expected), "");

        // The same is a failure to a strict one, and nothing comes of it.
        CDbTableSet untouched = SmallSet();
        EXPECT_FALSE(ImportTables(database().Connection(), untouched, {.strict = true}));
        EXPECT_EQ(Difference(untouched, SmallSet()), "");
        auto strict = Messages();
        EXPECT_FALSE(strict.empty());
        if (!strict.empty()) {
            EXPECT_EQ(strict.back(), "4 ParamDb::ImportTables(): Import from 'PLACE' failed: " +
                                         std::to_string(messages.size()) +
                                         (messages.size() == 1 ? " fault" : " faults") + " in the data");
            strict.pop_back();
        }
        EXPECT_EQ(strict, messages);
        return messages;
    }

    static CDbTableSet Without(std::size_t mode) {
        auto set = SmallSet();
        auto& modes = set[L"<TMode>"];
        modes.erase(modes.begin() + static_cast<std::ptrdiff_t>(mode));
        return set;
    }
};

TEST_P(ImportFaults, TextTooLong) {
    EXPECT_EQ(Import("TMode", "UPDATE \"TMode\" SET name = '" + std::string(199, 'x') + "' WHERE mode = 2",
                     Without(1)),
              Lines{Fault("table 'TMode', column 'name', key '2': a text of 199 characters where 198 fit")});
}

TEST_P(ImportFaults, MissingTable) {
    auto expected = SmallSet();
    expected.erase(L"<TMode>");
    EXPECT_EQ(Import("TMode", "DROP TABLE \"TMode\"", expected),
              Lines{Fault("table 'TMode': the table is missing")});
}

TEST_P(ImportFaults, MissingColumns) {
    auto expected = SmallSet();
    expected.erase(L"<TTrigger>");
    EXPECT_EQ(
        Import("TTrigger",
               "ALTER TABLE \"TTrigger\" RENAME COLUMN name TO title; ALTER TABLE \"TTrigger\" RENAME COLUMN "
               "value_2 TO x",
               expected),
        (Lines{Fault("table 'TTrigger', column 'name': the column is missing"),
               Fault("table 'TTrigger', column 'value_2': the column is missing")}));
}

TEST_P(ImportFaults, MissingAndAddedRows) {
    EXPECT_EQ(Import("TMode", "DELETE FROM \"TMode\" WHERE mode = 1", Without(0)),
              Lines{Fault("table 'TMode': 1 row where the revision has 2")});
}

TEST_P(ImportFaults, MoreRows) {
    auto expected = SmallSet();
    expected[L"<TMode>"].push_back({std::int32_t{3}, std::wstring(L"more")});
    EXPECT_EQ(
        Import("TMode",
               "INSERT INTO \"TMode\" (revision_id, mode, name) SELECT revision_id, 3, 'more' FROM \"TMode\" "
               "WHERE mode = 2",
               expected),
        Lines{Fault("table 'TMode': 3 rows where the revision has 2")});
}

TEST_P(ImportFaults, ForeignContent) {
    EXPECT_EQ(Import("paramdb_content",
                     "INSERT INTO paramdb_content SELECT id, 'TX', 0, 0 FROM paramdb_revision", SmallSet()),
              Lines{Fault("table 'TX': there is no such table in parameter data")});
    EXPECT_EQ(Import("paramdb_text",
                     "DELETE FROM paramdb_content WHERE table_name = 'TX'; INSERT INTO paramdb_text SELECT "
                     "id, 'x', 'y' "
                     "FROM paramdb_revision",
                     SmallSet()),
              Lines{Fault(
                  "table 'paramdb_text', column 'name', key 'x': there is no such text in parameter data")});
}

// Columns that the database would refuse such values for are made anew without their rules.
TEST_P(ImportFaults, NullsAndOtherTypes) {
    bool const is_sqlite = GetParam() == Kind::Sqlite;
    // The key is read first and tells the row; the values follow in the order of the columns.
    std::string const change =
        is_sqlite
            ? "DROP TABLE \"TTrigger\"; CREATE TABLE \"TTrigger\" (revision_id, trigger, name, value_2); "
              "INSERT INTO \"TTrigger\" SELECT id, 5, NULL, 2.5 FROM paramdb_revision UNION ALL "
              "SELECT id, 6, 7, 'abc' FROM paramdb_revision UNION ALL "
              "SELECT id, 7, x'00', 3000000000 FROM paramdb_revision UNION ALL "
              "SELECT id, 8, 'good', 3.0 FROM paramdb_revision"
            : "ALTER TABLE \"TTrigger\" ALTER name DROP NOT NULL, ALTER value_2 TYPE text; "
              "UPDATE \"TTrigger\" SET name = NULL, value_2 = '2.5'; INSERT INTO \"TTrigger\" "
              "SELECT id, 6, 'b', 'abc' FROM paramdb_revision UNION ALL "
              "SELECT id, 7, 'c', '3000000000' FROM paramdb_revision UNION ALL "
              "SELECT id, 8, 'good', '3.0' FROM paramdb_revision";
    auto expected = SmallSet();
    expected[L"<TTrigger>"] = {{std::int32_t{8}, std::wstring(L"good"), std::int32_t{3}}};
    Lines lines{Fault("table 'TTrigger', column 'name', key '5': NULL where text is wanted"),
                Fault("table 'TTrigger', column 'value_2', key '5': 2.5 is no whole number")};
    if (is_sqlite)
        lines.push_back(Fault("table 'TTrigger', column 'name', key '6': 7 where text is wanted"));
    lines.push_back(Fault("table 'TTrigger', column 'value_2', key '6': the text 'abc' where int is wanted"));
    if (is_sqlite)
        lines.push_back(Fault("table 'TTrigger', column 'name', key '7': bytes where text is wanted"));
    lines.push_back(Fault("table 'TTrigger', column 'value_2', key '7': 3000000000 is out of range for int"));
    lines.push_back(Fault("table 'TTrigger': 4 rows where the revision has 1"));
    EXPECT_EQ(Import("TTrigger", change, expected), lines);
}

// A number that is none has its bits elsewhere; a NULL without them is a fault.
TEST_P(ImportFaults, NullOfANumber) {
    auto set = SmallSet();
    set[L"<TBaseOrder>"] = {{std::int32_t{1}, -0.0f},
                            {std::int32_t{2}, std::numeric_limits<float>::quiet_NaN()}};
    ASSERT_TRUE(ExportTables(set, database().Connection()));
    CDbTableSet data;
    ASSERT_TRUE(ImportTables(database().Connection(), data));
    EXPECT_EQ(Difference(data, set), "");
    set[L"<TBaseOrder>"] = {{std::int32_t{1}, -0.0f}};
    database().DropGuards("TBaseOrder");
    EXPECT_EQ(Import("paramdb_number", "DELETE FROM paramdb_number WHERE row_key = '2'", set),
              Lines{Fault("table 'TBaseOrder', column 'base_order', key '2': NULL where float is wanted")});
}

TEST_P(ImportFaults, VersionThatIsNoNumber) {
    auto expected = SmallSet();
    expected.erase(L"<DbDesign.CacheVersion>");
    expected.erase(L"<DbDesign.CacheMinorVersion>");
    EXPECT_EQ(
        Import(
            "paramdb_version",
            "DROP TABLE paramdb_version; CREATE TABLE paramdb_version (revision_id BIGINT, major TEXT, minor "
            "TEXT); INSERT INTO paramdb_version SELECT id, 'new', NULL FROM paramdb_revision",
            expected),
        Lines{Fault("table 'paramdb_version', column 'major': the text 'new' where int is wanted")});
}

TEST_P(ImportFaults, TextsThatAreNone) {
    Lines lines{Fault("table 'paramdb_text', column 'value', key 'base_type': NULL where text is wanted")};
    std::string change =
        "DROP TABLE paramdb_text; CREATE TABLE paramdb_text (revision_id BIGINT, name TEXT, value "
        "TEXT); INSERT INTO paramdb_text SELECT id, 'base_type', NULL FROM paramdb_revision";
    if (GetParam() == Kind::Sqlite) { // the server itself refuses such texts
        change += " UNION ALL SELECT id, 'alias_type', CAST(x'C3' AS TEXT) FROM paramdb_revision";
        lines.insert(lines.begin(),
                     Fault("table 'paramdb_text', column 'value', key 'alias_type': the text is no UTF-8"));
    }
    EXPECT_EQ(Import("paramdb_text", change, SmallSet()), lines);
}

// Without the numbers of rows there is nothing to hold the rows against.
TEST_P(ImportFaults, CountsThatAreNone) {
    bool const is_sqlite = GetParam() == Kind::Sqlite; // whose columns hold values of any type
    for (std::string const count : {"NULL", "'many'", "'2x'"}) {
        if (!is_sqlite && count != "NULL")
            continue;
        SCOPED_TRACE(count);
        database().DropGuards("paramdb_content");
        database().Run("DROP TABLE paramdb_content; CREATE TABLE paramdb_content (revision_id BIGINT, "
                       "table_name TEXT, row_count BIGINT, table_type INTEGER); INSERT INTO paramdb_content "
                       "SELECT id, 'TMode', " +
                       count + ", 0 FROM paramdb_revision");
        auto data = SmallSet();
        EXPECT_FALSE(ImportTables(database().Connection(), data));
        EXPECT_EQ(Difference(data, SmallSet()), "");
        std::string const shown = count == "NULL" ? count : count.substr(1, count.size() - 2);
        EXPECT_EQ(Messages(), Lines{"4 ParamDb::ImportTables(): Import from 'PLACE' failed: table "
                                    "'paramdb_content', column 'row_count': " +
                                    shown + " is no number"});
    }
}

PARAMDB_BOTH_KINDS(ImportFaults);

} // namespace
