#include <paramdb/service/table_manager.h>

#include <gtest/gtest.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>

namespace {

using ParamDb::CParameterTableSet;

// A table that only counts what is asked of it.
class CountingTable : public CQParamSeaTable {
public:
    explicit CountingTable(std::string& log, char name) : m_log(log), m_name(name) {}
    void Clear() override { Note("clear"); }
    void PurgeTable() override { Note("purge"); }
    void DumpTable(int limit) override { Note("dump" + std::to_string(limit)); }
    bool ReadTable(CResourceSea*) override { return Note("sea"); }
    bool ReadTable(ParamDb::CDbTableSet& set) override {
        return Note(&set == &CParameterTableSet::TableSet() ? "set" : "other set");
    }
    bool ReadTable(CLake& lake) override {
        return Note(&lake == &CParameterLake::Lake() ? "lake" : "other lake");
    }
    bool WriteTable(CResourceSea* sea) override { return Note(sea == nullptr ? "write" : "write to sea"); }

private:
    bool Note(std::string const& what) {
        m_log += what + " " + m_name + ", ";
        return false;
    }
    std::string& m_log;
    char m_name;
};

class TableManagerTest : public LoadTest {
protected:
    TableManagerTest() {
        manager.RegisterTable(first);
        manager.RegisterTable(second);
    }
    std::string log;
    CountingTable first{log, 'a'};
    CountingTable second{log, 'b'};
    CQTableManager manager;
    MessageLog messages;
};

std::wstring const Beginning =
    L"CQTableManager::ReadTablesFromCandidateLake(): Loading parameter data base failed:\n\tTable version ";
std::wstring const Less = L"is less than the supported version 216.1\n"
                          L"\tPlease contact Brelix for a parameter database update.\n";
std::wstring const Greater = L"is greater than the supported major version 216\t"
                             L"Please contact Brelix for a software update.\n";

struct GateCase {
    int major;
    int minor;
    std::wstring refusal; // behind the beginning; empty: accepted
};

GateCase const GateCases[] = {
    {216, 1, L""},
    {216, 7, L""},
    {216, 2147483647, L""},
    {217, 0, L"217.0 " + Greater},
    {2147483647, -1, L"2147483647.-1 " + Greater},
    {216, 0, L"216.0 " + Less + Less},
    {216, -5, L"216.-5 " + Less + Less},
    {215, 9, L"215.9 " + Less + Less},
    {202, 1, L"202.1 " + Less + Less},
    {201, 5, L"201.5 " + Less},
    {0, 0, L"0.0 " + Less},
    {-1, -1, L"-1.-1 " + Less},
    {-2147483647 - 1, 1, L"-2147483648.1 " + Less},
};

std::vector<Message> Refusal(std::wstring const& text) {
    if (text.empty())
        return {};
    return {{8, 4, Beginning + text}};
}

TEST(TableManager, CountsRegisteredTables) {
    std::string log;
    CountingTable table(log, 'a');
    CQTableManager manager;
    EXPECT_EQ(manager.Table(0), nullptr);
    EXPECT_EQ(manager.RegisterTable(table), 1u);
    EXPECT_EQ(manager.RegisterTable(table), 2u);
    EXPECT_EQ(manager.Table(0), &table);
    EXPECT_EQ(manager.Table(2), nullptr);
    EXPECT_EQ(manager.Table(~std::uint64_t{0}), nullptr);
}

TEST_F(TableManagerTest, AppliesEveryOperationInOrder) {
    manager.Clear();
    manager.PurgeTables();
    manager.DumpTables(0);
    manager.DumpTables(3);
    manager.WriteTablesToLocalSeas();
    EXPECT_EQ(log,
              "clear a, clear b, purge a, purge b, dump0 a, dump0 b, dump3 a, dump3 b, write a, write b, ");
}

TEST_F(TableManagerTest, EmptySourcesFailWithoutMessage) {
    EXPECT_FALSE(manager.ReadTables());
    EXPECT_FALSE(manager.ReadTablesFromCandidateLake());
    EXPECT_EQ(log, "");
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(TableManagerTest, GateOfTheLake) {
    for (auto const& [major, minor, refusal] : GateCases) {
        SCOPED_TRACE(std::to_string(major) + "." + std::to_string(minor));
        FillLake("<DbDesign.CacheVersion>: " + std::to_string(major) +
                 "\n<DbDesign.CacheMinorVersion>: " + std::to_string(minor) + "\n");
        EXPECT_EQ(manager.ReadTablesFromCandidateLake(), refusal.empty());
        EXPECT_EQ(std::exchange(log, ""), refusal.empty() ? "lake a, lake b, " : "");
        EXPECT_EQ(messages.Take(), Refusal(refusal));
    }
}

TEST_F(TableManagerTest, GateOfTheTableSet) {
    for (auto const& [major, minor, refusal] : GateCases) {
        SCOPED_TRACE(std::to_string(major) + "." + std::to_string(minor));
        auto& set = CParameterTableSet::TableSet();
        set[L"<DbDesign.CacheVersion>"] = {{{major}}};
        set[L"<DbDesign.CacheMinorVersion>"] = {{{minor}}};
        EXPECT_EQ(manager.ReadTables(), refusal.empty());
        EXPECT_EQ(std::exchange(log, ""), refusal.empty() ? "set a, set b, " : "");
        EXPECT_EQ(messages.Take(), Refusal(refusal));
    }
}

TEST_F(TableManagerTest, VersionOfALakeIsItsLeadingNumber) {
    struct {
        char const* lines;
        wchar_t const* version;
    } const cases[] = {
        {"x: 1\n", L"0.0 "},
        {"<DbDesign.CacheVersion>:\n<DbDesign.CacheMinorVersion>: 4\n", L"0.4 "},
        {"<DbDesign.CacheVersion>: 12x\n<DbDesign.CacheMinorVersion>: 0x7\n", L"12.0 "},
        {"<DbDesign.CacheVersion>: 99999999999\n", L"2147483647.0 "},
        {"<DbDesign.CacheVersion>: \"216\"\n<DbDesign.CacheMinorVersion>: -3.9\n", L"0.-3 "},
        {"<DbDesign.CacheVersion>: 100\n<DbDesign.CacheVersion>: 216\n", L"100.0 "},
    };
    for (auto const& [lines, version] : cases) {
        SCOPED_TRACE(lines);
        FillLake(lines);
        EXPECT_FALSE(manager.ReadTablesFromCandidateLake());
        auto const taken = messages.Take();
        ASSERT_EQ(taken.size(), 1u);
        EXPECT_EQ(taken[0].text.substr(0, (Beginning + version).size()), Beginning + version);
    }
}

TEST_F(TableManagerTest, VersionOfATableSet) {
    auto& set = CParameterTableSet::TableSet();
    set[L"<TMode>"];
    EXPECT_FALSE(manager.ReadTables());
    EXPECT_EQ(messages.Take(), Refusal(L"-1.-1 " + Less));

    set[L"<DbDesign.CacheVersion>"];
    set[L"<DbDesign.CacheMinorVersion>"] = {ParamDb::row_t()};
    EXPECT_FALSE(manager.ReadTables());
    EXPECT_EQ(messages.Take(), Refusal(L"-1.-1 " + Less));

    set[L"<DbDesign.CacheVersion>"] = {{{216.0, 5}}, {{1}}};
    set[L"<DbDesign.CacheMinorVersion>"] = {{{std::uint64_t{1}}}};
    EXPECT_TRUE(manager.ReadTables());
    EXPECT_EQ(messages.Take(), Refusal(L""));
    EXPECT_EQ(set.size(), 3u);
}

TEST_F(TableManagerTest, VersionCellThatIsNoWholeNumberThrows) {
    auto& set = CParameterTableSet::TableSet();
    for (ParamDb::cell_t const& cell : {ParamDb::cell_t(L"216"), ParamDb::cell_t(216.5)}) {
        set[L"<DbDesign.CacheVersion>"] = {{cell}};
        EXPECT_THROW(manager.ReadTables(), std::bad_variant_access);
        EXPECT_THROW(CQtParamInstance().ReadTablesFromCandidateLake(), std::bad_variant_access);
    }
    EXPECT_EQ(log, "");
}

} // namespace
