// All tables with random rows, by every way in: a lake file, a table set, a sea.
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/service/param_store.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "layouts.h"
#include "table_data.h"
#include "table_support.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

using table_data::DumpOf;
using table_data::Random;
using table_data::Row;
using table_data::Style;
using table_data::Table;

namespace {

class AllTables : public testing::Test {
protected:
    AllTables() { ClearSources(); }
    ~AllTables() override { ClearSources(); }

    static void ClearSources() {
        CParameterLake::Lake().clear();
        ParamDb::CParameterTableSet::TableSet().clear();
    }

    std::wstring Dump(int limit = 0) {
        EXPECT_EQ(messages.Take(), std::vector<Message>());
        store.DumpTables(limit);
        return table_support::ProtocolText(messages);
    }

    MessageLog messages;
    CQtParamStore store;
};

// The tables stand in any order; one without rows may be missing.
std::string LakeText(std::vector<Table> const& tables, Random& random) {
    std::vector<std::size_t> order(tables.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t place = order.size(); place > 1; --place)
        std::swap(order[place - 1], order[random.Below(place)]);
    std::wstring text = L"; parameters\n<DbDesign.CacheVersion>: 216\n";
    for (std::size_t const index : order) {
        Table const& table = tables[index];
        if (table.rows.empty() && random.OneIn(2))
            continue;
        text += std::wstring(table.layout->tag) + L": {\n";
        for (Row const& row : table.rows)
            text += L"\t" + table_data::RandomLine(row, random) + L"\n";
        text += L"} ; end\n";
    }
    text += L"<DbDesign.CacheMinorVersion>: 1\n";
    std::string bytes;
    for (wchar_t const character : text)
        bytes += static_cast<char>(character);
    return bytes;
}

void FillTableSet(std::vector<Table> const& tables, Random& random, bool own_types) {
    auto& set = ParamDb::CParameterTableSet::TableSet();
    set.clear();
    set[L"<DbDesign.CacheVersion>"] = {{{216}}};
    set[L"<DbDesign.CacheMinorVersion>"] = {{{1}}};
    for (Table const& table : tables) {
        if (table.rows.empty() && random.OneIn(2))
            continue;
        auto& target = set[std::wstring(table.layout->tag)];
        for (Row const& row : table.rows) {
            ParamDb::row_t& cells = target.emplace_back();
            for (auto const& value : row)
                cells.push_back(own_types ? table_data::OwnCell(value)
                                          : table_data::OtherCell(value, random));
            if (!own_types && random.OneIn(8))
                cells.emplace_back(L"one more");
        }
    }
}

TEST_F(AllTables, EmptySourcesGiveEmptyTables) {
    std::vector<Table> tables;
    for (auto const& layout : layouts::All())
        tables.push_back({&layout, {}});
    EXPECT_EQ(Dump(), DumpOf(tables));
    table_support::ReadText(CParameterLake::Lake(),
                            "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n");
    EXPECT_TRUE(store.ReadTablesFromCandidateLake());
    EXPECT_EQ(Dump(), DumpOf(tables));
}

TEST_F(AllTables, RandomRowsFromALake) {
    Random random(51);
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto const tables = table_data::RandomTables(random, Style{});
        table_support::ReadText(CParameterLake::Lake(), LakeText(tables, random));
        ASSERT_TRUE(store.ReadTablesFromCandidateLake());
        ASSERT_EQ(Dump(), DumpOf(tables));
    }
}

TEST_F(AllTables, RandomRowsFromATableSetWithCellsOfTheFieldsTypes) {
    Random random(52);
    Style const style{.wide_texts = true, .longest_text = 198};
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto const tables = table_data::RandomTables(random, style);
        FillTableSet(tables, random, true);
        ASSERT_TRUE(store.ReadTablesFromCandidateLake());
        ASSERT_EQ(Dump(), DumpOf(tables));
    }
}

TEST_F(AllTables, RandomRowsFromATableSetWithCellsOfOtherTypes) {
    Random random(53);
    Style const style{.short_floats = true, .wide_texts = true};
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto const tables = table_data::RandomTables(random, style);
        FillTableSet(tables, random, false);
        ASSERT_TRUE(store.ReadTablesFromCandidateLake());
        ASSERT_EQ(Dump(), DumpOf(tables));
    }
}

TEST_F(AllTables, RandomRowsThroughSeas) {
    Random random(54);
    Style const style{.short_floats = true, .plain_texts = true, .wide_texts = true};
    CQtParamStore other;
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto const tables = table_data::RandomTables(random, style);
        CResourceSea sea;
        for (Table const& table : tables) {
            auto& lines = sea.MakeList(table.layout->tag);
            for (Row const& row : table.rows)
                lines.push_back(table_data::RandomLine(row, random));
        }
        for (auto const& entry : store.Entries())
            ASSERT_TRUE(entry.table->ReadTable(&sea));
        ASSERT_EQ(Dump(), DumpOf(tables));

        // What the tables write is their rows, and reads back as the same.
        CResourceSea written;
        for (auto const& entry : store.Entries())
            ASSERT_TRUE(entry.table->WriteTable(&written));
        for (Table const& table : tables) {
            CResourceSea::LineList lines;
            for (Row const& row : table_data::Kept(table))
                lines.push_back(table_data::PlainLine(row));
            ASSERT_EQ(*written.FindList(table.layout->tag), lines);
        }
        for (auto const& entry : other.Entries())
            ASSERT_TRUE(entry.table->ReadTable(&written));
        EXPECT_EQ(messages.Take(), std::vector<Message>());
        other.DumpTables(0);
        ASSERT_EQ(table_support::ProtocolText(messages), DumpOf(tables));
    }
}

TEST_F(AllTables, ClearAndPurgeEmptyEveryTable) {
    Random random(55);
    std::vector<Table> empty;
    for (auto const& layout : layouts::All())
        empty.push_back({&layout, {}});
    auto const tables = table_data::RandomTables(random, Style{});
    table_support::ReadText(CParameterLake::Lake(), LakeText(tables, random));
    ASSERT_TRUE(store.ReadTablesFromCandidateLake());
    store.Clear();
    EXPECT_EQ(Dump(), DumpOf(empty));
    ASSERT_TRUE(store.ReadTablesFromCandidateLake());
    EXPECT_EQ(Dump(), DumpOf(tables));
    store.PurgeTables();
    EXPECT_EQ(Dump(), DumpOf(empty));
}

} // namespace
