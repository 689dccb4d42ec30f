// Data that go into a database and come back.
#include <paramdb/service/param_server.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "tests/database/database_test.h"

#include <tests/support/sources.h>

namespace {

using namespace ParamDb;

class RoundTrip : public DatabaseTest {};

TEST_P(RoundTrip, RandomSets) {
    for (std::uint32_t const seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        auto const set = RandomSet(seed, 40);
        auto const revision = ExportTables(set, database().Connection("#random"));
        ASSERT_TRUE(revision);
        EXPECT_EQ(revision->number, static_cast<std::int32_t>(seed));
        CDbTableSet back = SmallSet();
        auto const import = ImportTables(database().Connection("#random"), back, {.strict = true});
        ASSERT_TRUE(import);
        EXPECT_EQ(import->revision, *revision);
        EXPECT_EQ(import->faults, 0u);
        EXPECT_FALSE(import->is_local_copy);
        EXPECT_EQ(Difference(set, back), "");
    }
}

// More rows than go or come at once, and enough for two sessions.
TEST_P(RoundTrip, ManyRows) {
    auto set = LargeSet(L"<TMode>", 12'345);
    set.merge(LargeSet(L"<TLimSValue>", 10'000));
    ASSERT_TRUE(ExportTables(set, database().Connection()));
    CDbTableSet back;
    ASSERT_TRUE(ImportTables(database().Connection(), back));
    EXPECT_EQ(Difference(set, back), "");
}

// A block of rows holds 1000 or 5000 of them.
TEST_P(RoundTrip, WholeBlocks) {
    for (std::size_t const rows : {0u, 1u, 999u, 1000u, 1001u, 5000u, 5001u, 10'000u}) {
        SCOPED_TRACE(rows);
        auto set = LargeSet(L"<TMode>", rows);
        set[L"<TMode>"];
        ASSERT_TRUE(ExportTables(set, database().Connection()));
        CDbTableSet back;
        ASSERT_TRUE(ImportTables(database().Connection(), back));
        EXPECT_EQ(Difference(set, back), "");
    }
}

// Of several rows of a key each keeps its place.
TEST_P(RoundTrip, RowsOfOneKey) {
    auto set = SmallSet();
    auto& rows = set[L"<TSensorGroupList>"];
    for (std::int32_t const group : {1, 1, 1, 7, 7})
        rows.push_back({group, std::int32_t{100} - static_cast<std::int32_t>(rows.size()), std::int32_t{3}});
    rows.push_back(rows.back());
    ASSERT_TRUE(ExportTables(set, database().Connection()));
    CDbTableSet back;
    ASSERT_TRUE(ImportTables(database().Connection(), back));
    EXPECT_EQ(Difference(set, back), "");
}

// What is missing in a set stays so: a set of a few tables replaces these alone.
TEST_P(RoundTrip, TablesThatAreThere) {
    CDbTableSet set;
    set[L"<TMode>"].table_type() = static_cast<CDbTable::table_type_t>(17);
    set[L"<QType><FBaseName>"].push_back({std::wstring(L"Gear"), std::wstring(L"box")});
    ASSERT_TRUE(ExportTables(set, database().Connection()));
    CDbTableSet back;
    ASSERT_TRUE(ImportTables(database().Connection(), back));
    set[L"<QType><FBaseName>"] = {{std::wstring(L"Gear box")}};
    EXPECT_EQ(Difference(set, back), "");
}

// Cells of other types than the fields come back as the fields have them.
TEST_P(RoundTrip, CellsOfOtherTypes) {
    auto set = SmallSet();
    set[L"<TMode>"] = {{2.0, std::wstring(L"b")},
                       {std::uint64_t{1}, std::wstring(L"a"), std::wstring(L"more")}};
    set[L"<TRotorSpeed>"] = {
        {std::int32_t{1}, std::uint32_t{4294967295}, std::int32_t{3}, 1.0f, std::int64_t{-2}}};
    ASSERT_TRUE(ExportTables(set, database().Connection()));
    CDbTableSet back;
    ASSERT_TRUE(ImportTables(database().Connection(), back));
    set[L"<TMode>"] = {{std::int32_t{1}, std::wstring(L"a")}, {std::int32_t{2}, std::wstring(L"b")}};
    set[L"<TRotorSpeed>"] = {{std::int32_t{1}, std::int32_t{-1}, 3.0, std::int32_t{1}, std::int32_t{-2}}};
    EXPECT_EQ(Difference(set, back), "");
}

PARAMDB_BOTH_KINDS(RoundTrip);

// From the lake of the example through a database into the tables.
class Example : public LoadTest, public testing::WithParamInterface<Kind> {
protected:
    static std::vector<Message> Load() {
        EXPECT_TRUE(CQtParamInstance().ReadTablesFromCandidateLake());
        MessageLog log;
        CQtParamInstance().DumpTables(0);
        return log.Take();
    }
};

TEST_P(Example, DumpIsThatOfTheLake) {
    CParameterLake::Lake().read(paramdb::FromUtf8(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake"));
    auto const dump = Load();
    ASSERT_GT(dump.size(), 6000u);
    Database const database(GetParam());
    CQtParamInstance const parameters;
    ASSERT_TRUE(ExportTables(parameters, database.Connection("#gearbox"), {.foreign_keys = true}));
    CString const base_type = parameters.BaseType();

    Reset();
    ASSERT_TRUE(
        ImportTables(database.Connection("#gearbox"), CParameterTableSet::TableSet(), {.strict = true}));
    EXPECT_EQ(Load(), dump);
    EXPECT_EQ(std::wstring(CQtParamInstance().BaseType().GetString()), base_type.GetString());
    EXPECT_FALSE(base_type.IsEmpty());
}

PARAMDB_BOTH_KINDS(Example);

} // namespace
