#include <paramdb/query/param_instance.h>

#include "tools/table_names.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

using Tags = std::vector<std::string>;

std::string Found(std::string_view name) {
    auto const* const table = FindTable(name);
    return table != nullptr ? TagOf(*table) : "";
}

} // namespace

TEST(TableNames, EveryTagIsFoundInItsThreeForms) {
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        std::string const tag = TagOf(table);
        std::string const inner = tag.substr(1, tag.size() - 2);
        EXPECT_EQ(FindTable(tag), &table) << tag;
        EXPECT_EQ(FindTable(inner), &table) << tag;
        EXPECT_EQ(FindTable(inner.substr(1)), &table) << tag;
    }
}

TEST(TableNames, NothingElseIsATable) {
    EXPECT_EQ(Found("Mode"), "<TMode>");
    for (char const* const name : {"", "<", ">", "<>", "T", "<T>", "<Mode>", "TMode>", "<TMode", "mode",
                                   "tMode", "ode", "Mode ", "TTMode", "ModeX", "<DbDesign.CacheVersion>"})
        EXPECT_EQ(Found(name), "") << name;
}

TEST(TableNames, AnEntryIsThatOfItsDescription) {
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        EXPECT_EQ(EntryOf(table).description, &table);
        EXPECT_NE(EntryOf(table).table, nullptr);
    }
    CQtParamInstance const parameters;
    EXPECT_EQ(EntryOf(*FindTable("Mode")).rows, &parameters.Mode());
    EXPECT_EQ(EntryOf(*FindTable("IpRms")).rows, &parameters.IpTimeCalcVal().at(1003));
}

TEST(TableNames, WrongNamesAreLikeTags) {
    struct Case {
        std::string name;
        Tags tags;
    };
    Case const cases[] = {
        {"Mdoe", {"<TMode>"}},    // swapped
        {"Mod", {"<TMode>"}},     // left out
        {"Moode", {"<TMode>"}},   // put in
        {"Mude", {"<TMode>"}},    // replaced
        {"<TMdoe>", {"<TMode>"}}, // in any form
        {"TMdoe", {"<TMode>"}},
        {"mode", {"<TMode>"}},
        {"MODE", {"<TMode>"}},
        {"ModeProperties", {"<TModeProperty>"}},
        {"Triger", {"<TTrigger>"}},
        {"IpRmsTrak", {"<TIpRmsTrack>"}},
        // The nearest comes first, then the one that a load visits first.
        {"IpRmz", {"<TIpRms>"}},
        {"LimValue", {"<TLimSValue>", "<TLimCValue>"}},
        // What holds the name counts, however long it is.
        {"sensorgroup", {"<TSensorGroup>", "<TSensorGroupList>"}},
        {"polygon", {"<TIpPolygon>"}},
        {"Clavis", {"<TClavisUserNames>"}},
        {"", {}},
        {"<>", {}},
        {"q", {}},
        {"gearbox.lake", {}},
        {std::string(10000, 'M'), {}},
    };
    for (Case const& test : cases) {
        Tags const tags = TagsLike(test.name);
        ASSERT_GE(tags.size(), test.tags.size()) << test.name;
        EXPECT_EQ(Tags(tags.begin(), tags.begin() + static_cast<std::ptrdiff_t>(test.tags.size())), test.tags)
            << test.name;
        EXPECT_LE(tags.size(), test.tags.empty() ? 0U : 3U) << test.name;
    }
}

TEST(TableNames, TheMessageNamesWhatMayBeMeant) {
    EXPECT_EQ(UnknownTable("Moode", "no such table"), "Moode: no such table; did you mean <TMode>?\n");
    EXPECT_EQ(UnknownTable("LimXValue", "no such table"),
              "LimXValue: no such table; did you mean <TLimSValue> or <TLimCValue>?\n");
    EXPECT_EQ(UnknownTable("Sensor", "odd"),
              "Sensor: odd; did you mean <TSensorGroup>, <TTpSensorConfig> or <TSensorGroupList>?\n");
    EXPECT_EQ(UnknownTable("x.lake", "neither a file nor a table"),
              "x.lake: neither a file nor a table; `paramdb tables FILE...` lists them\n");
    EXPECT_EQ(UnknownTable("", "no such table"),
              "\"\": no such table; `paramdb tables FILE...` lists them\n");
    EXPECT_EQ(UnknownTable("zz\x1B\xC3\xBCzzzz", "no such table"),
              "zz\xEF\xBF\xBD\xC3\xBCzzzz: no such table; `paramdb tables FILE...` lists them\n");
}
