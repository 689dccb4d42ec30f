// What cannot be exported.
#include "tests/database/database_test.h"

#include <limits>

namespace {

using namespace ParamDb;

class ExportFaults : public DatabaseTest {
protected:
    static std::string Fault(std::string const& text) { return "3 ParamDb::ExportTables(): " + text; }
    static std::string Failed(std::string const& reason) {
        return "4 ParamDb::ExportTables(): Export to 'PLACE' failed: " + reason;
    }
    std::size_t RevisionCount() {
        auto const revisions = Revisions(database().Connection());
        return revisions ? revisions->size() : 0;
    }
};

TEST_P(ExportFaults, CellsThatALoadRefuses) {
    ASSERT_TRUE(ExportTables(SmallSet(), database().Connection()));
    auto set = SmallSet();
    std::wstring const text = L"x";
    set[L"<TMode>"] = {{std::int32_t{1}},
                       {},
                       {text, text},
                       {2.5, text},
                       {std::int64_t{3000000000}, text},
                       {std::int32_t{2}, std::int32_t{3}},
                       {std::int32_t{3}, std::wstring(199, L'x')},
                       {std::int32_t{4}, std::wstring(L"a\0b", 3)},
                       {std::int32_t{5}, text}};
    set[L"<TIpPolygonValue>"] = {{std::int32_t{1}, std::numeric_limits<float>::infinity(), 1.0f}};
    set[L"<QType><FBaseName>"] = {{std::int32_t{1}}};
    set[paramdb::database::MinorVersionKey] = {{1.5}};
    EXPECT_FALSE(ExportTables(set, database().Connection()));
    EXPECT_EQ(
        Messages(),
        (Lines{Fault("table '<DbDesign.CacheMinorVersion>': 1.5 is no whole number"),
               Fault("table '<QType><FBaseName>': the value is no text"),
               Fault("table 'TMode', column 'name', key '1': the cell is missing"),
               Fault("table 'TMode', column 'mode': the cell is missing"),
               Fault("table 'TMode', column 'mode', key 'x': the text 'x' where int is wanted"),
               Fault("table 'TMode', column 'mode', key '2.5': 2.5 is no whole number"),
               Fault("table 'TMode', column 'mode', key '3000000000': 3000000000 is out of range for int"),
               Fault("table 'TMode', column 'name', key '2': 3 where text is wanted"),
               Fault("table 'TMode', column 'name', key '3': a text of 199 characters where 198 fit"),
               Fault("table 'TMode', column 'name', key '4': a text with a zero character"),
               Failed("10 faults in the data")}));
    EXPECT_EQ(RevisionCount(), 1u);
}

TEST_P(ExportFaults, KeyThatIsNoNumber) {
    auto set = SmallSet();
    set[L"<TIpPolygonValue>"] = {{std::int32_t{1}, std::numeric_limits<float>::quiet_NaN(), 1.0f}};
    EXPECT_FALSE(ExportTables(set, database().Connection()));
    EXPECT_EQ(Messages(),
              (Lines{Fault("table 'TIpPolygonValue', column 'x', key '1/nan': a key that is no number"),
                     Failed("1 fault in the data")}));
}

TEST_P(ExportFaults, WhatALoadPassesOver) {
    auto set = SmallSet();
    set[L"<TMode>"].push_back({std::int32_t{1}, std::wstring(L"again")});
    set[L"<TMode>"].push_back({1.0, std::wstring(L"and again")});
    set[L"<THost>"].push_back({std::int32_t{1}});
    ASSERT_TRUE(ExportTables(set, database().Connection()));
    EXPECT_EQ(
        Messages(),
        (Lines{"1 ParamDb::ExportTables(): table '<THost>': is no table of parameter data and is left out",
               "1 ParamDb::ExportTables(): table 'TMode': 2 rows with the key of an earlier row left out"}));
    CDbTableSet back;
    ASSERT_TRUE(ImportTables(database().Connection(), back));
    EXPECT_EQ(Difference(back, SmallSet()), "");
}

TEST_P(ExportFaults, ForeignKeys) {
    auto set = SmallSet();
    set[L"<TModeProperty>"] = {
        {std::int32_t{1}, std::int32_t{-1}, std::uint32_t{0}, std::int32_t{0}, std::int32_t{0}},
        {std::int32_t{9}, std::int32_t{4}, std::uint32_t{0}, std::int32_t{0}, std::int32_t{0}}};
    Lines const faults{Fault("table 'TModeProperty', column 'mode', key '9': 9 is no key of table 'TMode'"),
                       Fault("table 'TModeProperty', column 'physical_mode', key '9': 4 is no key of table "
                             "'TPhysMode'"),
                       Failed("2 faults in the data")};
    EXPECT_FALSE(ExportTables(set, database().Connection(), {.foreign_keys = true}));
    EXPECT_EQ(Messages(), faults);
    ASSERT_TRUE(ExportTables(SmallSet(), database().Connection(), {.foreign_keys = true}));
    // The database keeps to it.
    EXPECT_FALSE(ExportTables(set, database().Connection()));
    EXPECT_EQ(Messages(), faults);
    EXPECT_EQ(RevisionCount(), 1u);
    EXPECT_THROW(
        database().Run("PRAGMA foreign_keys = ON; BEGIN; INSERT INTO \"TModeProperty\" (revision_id, mode, "
                       "physical_mode, flags, value_3, value_4) VALUES (99, 9, 4, 0, 0, 0); COMMIT"),
        std::runtime_error);
}

TEST_P(ExportFaults, WithoutForeignKeysNothingIsAsked) {
    auto set = SmallSet();
    set[L"<TModeProperty>"] = {
        {std::int32_t{9}, std::int32_t{4}, std::uint32_t{0}, std::int32_t{0}, std::int32_t{0}}};
    EXPECT_TRUE(ExportTables(set, database().Connection()));
    EXPECT_FALSE(ExportTables(set, database().Connection(), {.foreign_keys = true}));
    EXPECT_EQ(Messages().size(), 3u);
    EXPECT_EQ(RevisionCount(), 1u);
}

PARAMDB_BOTH_KINDS(ExportFaults);

} // namespace
