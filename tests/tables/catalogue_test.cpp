#include <paramdb/tables/catalogue.h>

#include "layouts.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using layouts::Container;
using layouts::Layout;
using paramdb::Catalogue;
using paramdb::ColumnDescription;
using paramdb::TableDescription;

namespace {

// The types of columns as the letters of a layout.
std::string Letters(std::vector<ColumnDescription> const& columns) {
    std::string letters;
    for (auto const& column : columns)
        letters += "iuqfdt"[static_cast<std::size_t>(column.type)];
    return letters;
}

std::string_view ContainerName(Container container) {
    switch (container) {
    case Container::Tree:
        return "CUniqueTreeMap";
    case Container::NameTable:
        return "CDynNameIdTable";
    case Container::MultiMap:
        return "CDbMultiMap";
    default:
        return "CDbUniqueMap";
    }
}

// The tag without the brackets and the T.
std::string PlainName(std::wstring_view tag) {
    return {tag.begin() + 2, tag.end() - 1};
}

TEST(Catalogue, HasAllTablesInTheOrderOfRegistration) {
    ASSERT_EQ(layouts::All().size(), 103U);
    ASSERT_EQ(Catalogue().size(), 103U);
    for (std::size_t place = 0; place < 103; ++place) {
        Layout const& layout = layouts::All()[place];
        TableDescription const& table = Catalogue()[place];
        SCOPED_TRACE(PlainName(layout.tag));
        EXPECT_EQ(table.tag, layout.tag);
        EXPECT_EQ(table.key, layouts::KeyClass(layout.key));
        EXPECT_EQ(Letters(table.key_columns), layout.key);
        EXPECT_EQ(table.row, layout.row_class);
        EXPECT_EQ(Letters(table.row_columns), layout.row);
        EXPECT_EQ(table.container, ContainerName(layout.container));
        EXPECT_EQ(table.has_unique_keys, layout.has_unique_keys());
        EXPECT_EQ(table.instrument_class, layout.instrument_class);
        EXPECT_EQ(table.accessor, layout.accessor.empty() ? PlainName(layout.tag) : layout.accessor);
    }
}

TEST(Catalogue, NamesAreUnique) {
    std::set<std::wstring> tags;
    std::set<std::pair<std::string_view, int>> accessors;
    std::set<std::string_view> families;
    std::set<std::string_view> singles;
    for (TableDescription const& table : Catalogue()) {
        EXPECT_TRUE(tags.insert(table.tag).second);
        EXPECT_TRUE(accessors.insert({table.accessor, table.instrument_class}).second) << table.accessor;
        (table.instrument_class >= 0 ? families : singles).insert(table.accessor);
    }
    EXPECT_EQ(families, (std::set<std::string_view>{"IpSvOfSpec", "IpTimeCalcVal", "IpCalcTrack",
                                                    "IpSimpleTrack", "IpSvBinOp"}));
    EXPECT_EQ(singles.size(), 81U);
    for (auto const family : families)
        EXPECT_FALSE(singles.contains(family)) << family;
}

TEST(Catalogue, ColumnsHaveNamesOfTheirOwn) {
    for (TableDescription const& table : Catalogue()) {
        std::set<std::string_view> names;
        for (auto const* const columns : {&table.key_columns, &table.row_columns})
            for (ColumnDescription const& column : *columns) {
                EXPECT_FALSE(column.name.empty()) << table.accessor;
                EXPECT_TRUE(names.insert(column.name).second) << table.accessor << ' ' << column.name;
                // Names serve as columns of databases and on command lines.
                EXPECT_EQ(column.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"),
                          std::string_view::npos)
                    << table.accessor << ' ' << column.name;
            }
    }
}

TEST(Catalogue, EntriesAreTheTablesOfTheStore) {
    CParamTables tables;
    auto const entries = paramdb::CatalogueEntries(tables);
    ASSERT_EQ(entries.size(), 103U);
    std::set<CQParamSeaTable const*> different;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        EXPECT_EQ(entries[place].description, &Catalogue()[place]);
        ASSERT_NE(entries[place].table, nullptr);
        EXPECT_TRUE(different.insert(entries[place].table).second);
        EXPECT_EQ(dynamic_cast<CQParamTableRows const*>(entries[place].table), entries[place].rows);
        auto const* const base = dynamic_cast<CQParamBaseTable const*>(entries[place].table);
        ASSERT_NE(base, nullptr);
        EXPECT_EQ(base->tag(), std::wstring(Catalogue()[place].tag));
        EXPECT_EQ(entries[place].rows->RowCount(), 0U);
    }
    EXPECT_EQ(entries[0].table, &tables.Mode);
    EXPECT_EQ(entries[12].table, &tables.TypeNames);
    EXPECT_EQ(entries[102].table, &tables.ExternalName);
}

// Each class of a layout has its table in its own family and in no other.
template <class Family>
void CheckFamily(Family& family, std::string_view name, std::size_t size) {
    EXPECT_EQ(family.size(), size) << name;
    for (Layout const& layout : layouts::All()) {
        if (layout.instrument_class < 0)
            continue;
        SCOPED_TRACE(std::string(name) + " " + std::to_string(layout.instrument_class));
        if (layout.accessor == name) {
            EXPECT_EQ(family.at(QIdx1(layout.instrument_class)).tag(), std::wstring(layout.tag));
            continue;
        }
        try {
            family.at(QIdx1(layout.instrument_class));
            ADD_FAILURE() << "the family has the class";
        } catch (std::out_of_range const& error) {
            EXPECT_STREQ(error.what(), "invalid map<K, T> key");
        }
    }
}

TEST(Catalogue, Families) {
    CParamTables tables;
    CheckFamily(tables.IpSvOfSpec, "IpSvOfSpec", 3);
    CheckFamily(tables.IpTimeCalcVal, "IpTimeCalcVal", 4);
    CheckFamily(tables.IpCalcTrack, "IpCalcTrack", 5);
    CheckFamily(tables.IpSimpleTrack, "IpSimpleTrack", 8);
    CheckFamily(tables.IpSvBinOp, "IpSvBinOp", 2);
}

} // namespace
