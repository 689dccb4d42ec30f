#include <paramdb/tables/catalogue.h>

#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using TablesVerbTest = CommandTest;

std::size_t CountLines(std::string const& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

} // namespace

TEST_F(TablesVerbTest, ListsEveryTableInTheOrderOfTheCatalogue) {
    auto const run = RunCommand({"tables", File(u8"a.lake", SampleLake), "--format", "json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    auto const list = nlohmann::ordered_json::parse(run.out);
    ASSERT_EQ(list.size(), 103U);
    std::size_t place = 0;
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        auto const& object = list[place++];
        EXPECT_EQ(object["tag"], std::string(table.tag, table.tag + std::wstring_view(table.tag).size()));
        EXPECT_EQ(object["key_columns"].size(), table.key_columns.size());
        EXPECT_EQ(object["row_columns"].size(), table.row_columns.size());
        EXPECT_EQ(object["rows"] == 0, object["tag"] != "<TMode>" && object["tag"] != "<TRotorSpeed>" &&
                                           object["tag"] != "<TAuxStrings>");
    }
    EXPECT_EQ(list[0]["rows"], 4);
    EXPECT_GT(list[0]["bytes"], 4 * 8);
}

TEST_F(TablesVerbTest, ListsTablesWithRows) {
    auto const run = RunCommand({"tables", File(u8"a.lake", SampleLake), "--with-rows"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    std::regex const form("Tag +Rows +Bytes +Container +Class +Key \\| row\n"
                          "<TMode> +4 +[0-9 ]+  CDynNameIdTable +mode:int \\| name:text\n"
                          "<TRotorSpeed> +3 +[0-9 ]+  CDbUniqueMap +physical_mode:int, rotor:int \\| "
                          "ratio:double,\n +numerator:int, denominator:int\n"
                          "<TAuxStrings> +2 +[0-9 ]+  CDbUniqueMap +name:text \\| value_1:text\n"
                          "3 of 103 with rows +9 +[0-9 ]+\n");
    EXPECT_TRUE(std::regex_match(run.out, form)) << run.out;
}

TEST_F(TablesVerbTest, LinesFitATerminal) {
    auto const run = RunCommand({"tables", File(u8"a.lake", SampleLake)});
    EXPECT_GE(CountLines(run.out), 105U);
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 120U) << line;
}

TEST_F(TablesVerbTest, FindingsAndRefusals) {
    auto const faulty = RunCommand({"tables", File(u8"faulty.lake", FaultyLake), "--with-rows"});
    EXPECT_EQ(faulty.code, 1);
    EXPECT_NE(faulty.err.find("<TTrigger>"), std::string::npos) << faulty.err;
    EXPECT_NE(faulty.out.find("\n4 of 103 with rows "), std::string::npos) << faulty.out;
    auto const refused = RunCommand({"tables", File(u8"old.lake", RefusedLake)});
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_NE(refused.err.find("999.0"), std::string::npos) << refused.err;
    auto const missing = RunCommand({"tables", Name(u8"missing.lake")});
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.out, "");
}
