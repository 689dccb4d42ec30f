#include <paramdb/query/param_instance.h>

#include "tests/support/messages.h"
#include "tests/support/sources.h"
#include "tools/row_buffer.h"
#include "tools/row_origins.h"
#include "tools/table_names.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <vector>

using namespace paramdb;
using namespace paramdb::tools;

namespace {

class RowOriginsTest : public LoadTest {
protected:
    // The lines of the rows of a table in key order, "-" for none.
    static std::vector<std::wstring> LinesOf(std::string const& lake, char const* table) {
        FillLake(lake);
        Silence const silence;
        CatalogueEntry const& entry = EntryOf(*FindTable(table));
        entry.table->ReadTable(CParameterLake::Lake());
        RowOrigins const origins(entry, CParameterLake::Lake());
        std::vector<std::wstring> lines;
        for (std::size_t row = 0; row < entry.rows->RowCount(); ++row)
            lines.push_back(origins.Line(row) != nullptr ? origins.Line(row)->value() : L"-");
        return lines;
    }
};

using RowLines = std::vector<std::wstring>;

} // namespace

TEST_F(RowOriginsTest, InOrderAndOutOfIt) {
    EXPECT_EQ(LinesOf("<TMode>: {\n1 a\n2 b\n}\n", "Mode"), (RowLines{L"1 a", L"2 b"}));
    EXPECT_EQ(LinesOf("<TMode>: {\n2 b\n1 a\n}\n", "Mode"), (RowLines{L"1 a", L"2 b"}));
    EXPECT_EQ(LinesOf("<TMode>: {\n2 b\nx\n1 a\n2 c\n1 d\n}\n", "Mode"), (RowLines{L"1 a", L"2 b"}));
    EXPECT_EQ(LinesOf("<TMode>: {\n}\n", "Mode"), RowLines{});
    EXPECT_EQ(LinesOf("", "Mode"), RowLines{});
}

TEST_F(RowOriginsTest, RowsOfOneKeyHaveTheirOwn) {
    EXPECT_EQ(LinesOf("<TSensorGroupList>: {\n2 5 0\n1 7 0\n2 4 0\n1 7 1\n}\n", "SensorGroupList"),
              (RowLines{L"1 7 0", L"1 7 1", L"2 5 0", L"2 4 0"}));
}

TEST_F(RowOriginsTest, LinesWithoutFields) {
    EXPECT_EQ(LinesOf("<TMode>: {\n; c\n1 a\n\n}\n", "Mode"), (RowLines{L"", L"1 a"}));
}

// The load writes the instrument into their keys.
TEST_F(RowOriginsTest, RelativeLimits) {
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
             "<TInstrumentParam>: {\n7 1001 a 0 0 0\n8 1003 b 0 0 0\n}\n"
             "<TRelativeLimit>: {\n-1 1003 -1 -1 8 -1 1 2\n-1 2500 -1 -1 7 -1 3 4\n-1 -1 -1 -1 7 -1 5 6\n"
             "-1 -1 -1 -1 7 -1 7 8\n-1 1001 -1 -1 8 -1 9 10\n}\n");
    CQtParamInstance const parameters;
    CQtParamInstance().ReadTablesFromCandidateLake();
    RowOrigins const origins(EntryOf(*FindTable("RelativeLimit")), CParameterLake::Lake());
    RowLines lines;
    for (std::size_t row = 0; row < parameters.RelativeLimit().size(); ++row)
        lines.push_back(origins.Line(row) != nullptr ? origins.Line(row)->value() : L"-");
    EXPECT_EQ(lines, (RowLines{L"-1 -1 -1 -1 7 -1 5 6", L"-1 1001 -1 -1 8 -1 9 10", L"-1 1003 -1 -1 8 -1 1 2",
                               L"-1 2500 -1 -1 7 -1 3 4"}));
}

TEST_F(RowOriginsTest, RowsThatWereAddedHaveNone) {
    FillLake("<TMode>: {\n2 b\n}\n");
    CatalogueEntry const& entry = EntryOf(*FindTable("Mode"));
    entry.table->ReadTable(CParameterLake::Lake());
    dynamic_cast<CDynNameIdTable&>(*entry.table).Add(1, L"a");
    RowOrigins const origins(entry, CParameterLake::Lake());
    EXPECT_EQ(origins.Line(0), nullptr);
    ASSERT_NE(origins.Line(1), nullptr);
    EXPECT_EQ(origins.Line(1)->value(), L"2 b");
}

// Nothing of the reading shows outside.
TEST_F(RowOriginsTest, IsSilent) {
    FillLake("<TMode>: {\nx\n1 a\n}\n");
    CatalogueEntry const& entry = EntryOf(*FindTable("Mode"));
    {
        Silence const silence;
        entry.table->ReadTable(CParameterLake::Lake());
    }
    MessageLog log;
    RowOrigins const origins(entry, CParameterLake::Lake());
    EXPECT_TRUE(log.Take().empty());
}

TEST_F(RowOriginsTest, NewRowsAreThoseOfTheTables) {
    for (TableDescription const& table : Catalogue()) {
        RowBuffer row(table);
        for (ConstField const field : row.Key()) {
            field.Visit([&]<class T>(T const& value) {
                if constexpr (std::is_integral_v<T>) {
                    EXPECT_EQ(value, static_cast<T>(-1)) << TagOf(table);
                }
            });
        }
        std::string packed;
        PackFields(row.Key(), packed);
        EXPECT_FALSE(packed.empty() && table.key_columns.size() > 1);
        EXPECT_TRUE(SameFields(row.Key(), row.Key()));
    }
}

// Rows in random order, some twice, some faulty: each row has the first good line of its key.
TEST_F(RowOriginsTest, AgreeWithAModel) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string text = "<TRotorSpeed>: {\n";
        std::map<std::pair<int, int>, std::wstring> model;
        for (int line = 0; line < 20; ++line) {
            int const mode = static_cast<int>(random() % 4);
            int const rotor = static_cast<int>(random() % 4);
            bool const is_good = random() % 5 != 0;
            std::string const row = std::to_string(mode) + ' ' + std::to_string(rotor) + " 0.5 " +
                                    std::to_string(line) + (is_good ? " 2" : " x");
            text += row + '\n';
            if (is_good)
                model.try_emplace({mode, rotor}, row.begin(), row.end());
        }
        RowLines expected;
        for (auto const& [key, row] : model)
            expected.push_back(row);
        EXPECT_EQ(LinesOf(text + "}\n", "RotorSpeed"), expected);
    }
}
