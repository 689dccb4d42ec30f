#include <paramdb/query/param_instance.h>

#include "tests/support/messages.h"
#include "tests/support/sources.h"
#include "tests/tools/names_lake.h"
#include "tools/kinds.h"
#include "tools/table_names.h"

#include <set>

using namespace paramdb::tools;

namespace {

class KindsTest : public LoadTest {
protected:
    KindsTest() {
        FillLake(NamesLake);
        if (!m_parameters.ReadTablesFromCandidateLake())
            ADD_FAILURE() << "not loaded";
    }

    // The rows of a kind as "id name", with commas between.
    static std::string Rows(std::string_view word) {
        std::string text;
        for (NamedId const& row : RowsOf(*FindKind(word)))
            text += (text.empty() ? "" : ", ") + std::to_string(row.id) + ' ' +
                    std::string(row.name.begin(), row.name.end());
        return text;
    }

    CQtParamInstance m_parameters;
};

} // namespace

TEST_F(KindsTest, HaveWordsAndTables) {
    std::set<std::string_view> words;
    for (Kind const& kind : Kinds()) {
        auto const* const table = FindTable(kind.table);
        ASSERT_NE(table, nullptr) << kind.word;
        EXPECT_EQ(table->key, "QIdx1") << kind.word;
        EXPECT_EQ(FindKind(kind.word), &kind);
        EXPECT_EQ(KindOf(*table), &kind);
        EXPECT_TRUE(words.insert(kind.word).second) << kind.word;
    }
    // Every name table is one of a kind.
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        bool const holds_names = table.container == "CDynNameIdTable";
        EXPECT_TRUE(!holds_names || KindOf(table) != nullptr) << TagOf(table);
    }
    EXPECT_EQ(FindKind("Mode"), nullptr);
    EXPECT_EQ(FindKind(""), nullptr);
    EXPECT_EQ(KindOf(*FindTable("LimSValue")), nullptr);
}

TEST_F(KindsTest, ListRows) {
    struct Case {
        char const* word;
        char const* rows;
    };
    Case const cases[] = {
        {"instrument", "17 , 1001 Spectral value, 2001 Track"},
        {"channel", "1 Fix, 3 Mix"},
        {"location", "4 Differential, 5 Input/output, 6 4"},
        {"parameter", "7 Mesh H1, 8 Mesh H1, 9 Level"},
        {"signal", "10 Input speed"},
        {"physmode", "1 Gear 1"},
        {"type", "1 Base"},
        {"bench", "1 Bench 1"},
        {"job", "1 Fast"},
        {"set", "1 Unit A"},
        {"sensorgroup", "5 Noise"},
        {"sensorconfig", "1 Standard"},
        {"trigger", "1 Speed"},
        {"unit", "2 Hz"},
        {"measurement", "4 Drag torque"},
        {"polygon", "5 Limit"},
        {"procedure", "1 Mean"},
        {"error", "11 Too loud"},
        {"errorgroup", "1 Bad"},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(Rows(test.word), test.rows);
        // Both directions agree with the rows.
        Kind const& kind = *FindKind(test.word);
        for (NamedId const& row : RowsOf(kind)) {
            std::wstring const name = row.id == 17 ? L"(Instr. 17)" : row.name;
            EXPECT_EQ(NameOf(kind, m_parameters, row.id), name) << test.word;
            auto const ids = IdsOf(kind, m_parameters, row.name);
            EXPECT_NE(std::find(ids.begin(), ids.end(), row.id), ids.end()) << test.word;
        }
        EXPECT_EQ(NameOf(kind, m_parameters, 99), std::nullopt) << test.word;
        EXPECT_EQ(NameOf(kind, m_parameters, -1), std::nullopt) << test.word;
        EXPECT_TRUE(IdsOf(kind, m_parameters, L"no such name").empty()) << test.word;
    }
}

TEST_F(KindsTest, SeveralIdsOfAName) {
    using Ids = std::vector<int>;
    Kind const& mode = *FindKind("mode");
    EXPECT_EQ(IdsOf(mode, m_parameters, L"Idle"), (Ids{30, 1})); // the row that was read first
    EXPECT_EQ(IdsOf(mode, m_parameters, L"idle"), Ids());
    EXPECT_EQ(IdsOf(mode, m_parameters, L""), Ids{20});
    EXPECT_EQ(NameOf(mode, m_parameters, 20), L"");
    EXPECT_EQ(IdsOf(*FindKind("parameter"), m_parameters, L"Mesh H1"), (Ids{7, 8}));
    // A long name is compared whole, and nothing is said about its length.
    MessageLog log;
    EXPECT_EQ(IdsOf(mode, m_parameters, std::wstring(1000, L'x')), Ids());
    EXPECT_TRUE(log.Take().empty());
}
