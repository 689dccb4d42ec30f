#include "tools/diff/column_meaning.h"
#include "tools/language_option.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

using namespace paramdb::tools;

namespace {

std::string Narrow(std::wstring_view text) {
    return {text.begin(), text.end()};
}

// In which tables the columns that have a meaning stand, by "column: meaning".
std::map<std::string, std::set<std::string>> AllMeanings() {
    std::map<std::string, std::set<std::string>> result;
    for (auto const& table : paramdb::Catalogue()) {
        RowColumns const columns = RowColumnsOf(table);
        auto const meanings = MeaningsOf(table.tag, columns);
        EXPECT_EQ(meanings.size(), columns.columns.size());
        for (std::size_t column = 0; column < meanings.size(); ++column) {
            ColumnMeaning const& meaning = meanings[column];
            std::string text(columns.columns[column].name);
            text += ": ";
            if (meaning.kind != nullptr)
                result[text + std::string(meaning.kind->word)].insert(Narrow(table.tag));
            if (meaning.setting != -1)
                result[text + std::to_string(meaning.setting)].insert(Narrow(table.tag));
        }
    }
    return result;
}

} // namespace

TEST(ColumnMeaningTest, KnowsTheColumnsOfAllTables) {
    std::vector<std::string> found;
    for (auto const& [meaning, tables] : AllMeanings())
        found.push_back(meaning + " " + std::to_string(tables.size()));
    EXPECT_EQ(found, (std::vector<std::string>{"area_interpretation: 9 2",
                                               "base_order_reference: location 3",
                                               "bench: bench 2",
                                               "binary_operation_mode: 27 2",
                                               "calculation: 0 18",
                                               "calculation: 47 1",
                                               "calculation_special: 33 1",
                                               "channel: channel 11",
                                               "code: error 1",
                                               "configuration: sensorconfig 2",
                                               "gear: location 3",
                                               "group: errorgroup 1",
                                               "group: sensorgroup 2",
                                               "instrument: instrument 10",
                                               "interpretation: 2 3",
                                               "job: job 2",
                                               "learn_procedure_a: procedure 3",
                                               "learn_procedure_b: procedure 3",
                                               "location: location 10",
                                               "measurement: measurement 1",
                                               "mode: mode 12",
                                               "order_source: location 1",
                                               "parameter: parameter 55",
                                               "parent_channel: channel 1",
                                               "physical_gear: location 1",
                                               "physical_mode: physmode 7",
                                               "polygon: polygon 6",
                                               "polygon_mode: 42 1",
                                               "procedure: procedure 1",
                                               "referred_id: location 2",
                                               "referred_id: signal 1",
                                               "referred_id: type 1",
                                               "rotor: location 4",
                                               "second_polygon: polygon 1",
                                               "second_source_instrument: instrument 2",
                                               "second_source_parameter: parameter 2",
                                               "set: set 2",
                                               "shifting_evaluation: 34 1",
                                               "signal: signal 14",
                                               "source_instrument: instrument 11",
                                               "source_location: location 1",
                                               "source_parameter: parameter 20",
                                               "speed_source: location 1",
                                               "trigger: trigger 34",
                                               "type: type 2",
                                               "unit: unit 1"}));
}

// Each table that has names is one whose key is of that kind.
TEST(ColumnMeaningTest, KnowsTheKeysOfNames) {
    for (auto const& table : paramdb::Catalogue()) {
        Kind const* const kind = KindOf(table);
        if (kind != nullptr) {
            EXPECT_EQ(MeaningsOf(table.tag, RowColumnsOf(table))[0].kind, kind) << Narrow(table.tag);
        }
    }
}

TEST(ColumnMeaningTest, TellsTablesApart) {
    auto const meanings = AllMeanings();
    using Tags = std::set<std::string>;
    EXPECT_EQ(meanings.at("calculation: 47"), Tags{"<TIpSignalGuard>"});
    EXPECT_EQ(meanings.at("group: errorgroup"), Tags{"<TErrorGroup>"});
    EXPECT_EQ(meanings.at("group: sensorgroup"), (Tags{"<TSensorGroup>", "<TSensorGroupList>"}));
    EXPECT_EQ(meanings.at("referred_id: location"), (Tags{"<TRotorSpeedReference>", "<TRotorSpeedSource>"}));
    EXPECT_EQ(meanings.at("referred_id: signal"), Tags{"<TSpeedSource>"});
    EXPECT_EQ(meanings.at("referred_id: type"), Tags{"<TRetype>"});
    EXPECT_EQ(meanings.at("unit: unit"), Tags{"<TSignalUnit>"}); // not the text of a signal's unit
}

TEST(ColumnMeaningTest, GivesTheWordsOfSettings) {
    LanguageInForce const english(CLibMgr::Language::english);
    EXPECT_EQ(SettingWord(0, 0), L"not defined");
    EXPECT_EQ(SettingWord(0, 8), L"Position Minimum");
    EXPECT_EQ(SettingWord(0, 9), std::nullopt);
    EXPECT_EQ(SettingWord(0, -1), std::nullopt);
    EXPECT_EQ(SettingWord(47, 3), L"H\x00F6lder mean p6");
    EXPECT_EQ(SettingWord(42, 1), L"2 point definition");
    EXPECT_EQ(SettingWord(42, 2), std::nullopt);
    EXPECT_EQ(SettingWord(9, 15), L"Mean value overall");
    EXPECT_EQ(SettingWord(1, 0), std::nullopt); // a setting without words
}
